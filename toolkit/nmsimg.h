#pragma once

#include "foundation/ndll.h"

// The two functions that are bound at run time; either may be absent, and
// whoever uses one does without it then.
class NMsImgDLL : public NDLL {
public:
    // Loads the library once. False if it can't be loaded; a function that it
    // lacks is no failure, and stays null.
    bool Load(const wchar_t* name) override;

    decltype(&::TransparentBlt) transparentBlt = nullptr;
    decltype(&::GradientFill) gradientFill = nullptr;
};

// The one object of the process, loaded with "Msimg32.dll" at the first call.
// That is tried once. On any thread.
const NMsImgDLL& NProcessMsImg();
