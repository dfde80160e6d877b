#pragma once

#include "foundation/windows_lean.h"

#include <cstddef>

// Puts data on the clipboard: each in a round of its own, or several between
// Open and Close. The clipboard is one for the whole desktop, and nobody else
// can open it while it is held. Belongs to one thread.
class NClipboard {
public:
    NClipboard() = default;
    NClipboard(const NClipboard&) = delete;
    NClipboard& operator=(const NClipboard&) = delete;
    ~NClipboard() { Close(); }

    // Opens and empties the clipboard for `window`, or for no window with null;
    // one that is open here is closed first. False, and closed, if somebody else
    // holds it or it can't be emptied; IsOpen tells later.
    bool Open(HWND window);
    void Close();
    bool IsOpen() const { return isOpen_; }

    // Copies `size` bytes there in a CF_ format. With a `size` of 0 `data` is a
    // handle that is ready for the format; it is the clipboard's on success and
    // stays the caller's on failure. Without Open before, the clipboard is
    // opened for `window`, emptied, and closed again. False on failure. Null
    // `data` is a failure that leaves the clipboard as it is.
    bool SetData(const void* data, size_t size, UINT format, HWND window = nullptr);
    // As CF_TEXT and as CF_UNICODETEXT, with the terminator. Null is such a
    // failure too.
    bool SetTextA(const char* text, HWND window = nullptr);
    bool SetTextW(const wchar_t* text, HWND window = nullptr);

private:
    bool isOpen_ = false;
};
