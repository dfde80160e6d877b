#pragma once

#include "foundation/ndll.h"

#include <cstdint>

// The function that fades a window, which is bound at run time and may be
// absent.
class NUserDLLFade : public NDLL {
public:
    // Loads the library once. False if it can't be loaded; a function that it
    // lacks is no failure, and stays null.
    bool Load(const wchar_t* name) override;

    // Sets the opacity of a layered window, 0 to 255. Without the function it
    // does nothing.
    void SetAlpha(HWND window, int32_t alpha) const;

    decltype(&::SetLayeredWindowAttributes) setLayeredWindowAttributes = nullptr;
};

// The one object of the process, loaded with "user32.dll" at the first call.
// That is tried once. On any thread.
const NUserDLLFade& NProcessFade();
