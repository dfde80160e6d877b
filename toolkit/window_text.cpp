#include "toolkit/window_text.h"

#include <cstddef>
#include <vector>

namespace {
// What a scratch buffer has beyond the length that was told.
constexpr int SpareUnits = 10;

std::vector<wchar_t> ScratchFor(LRESULT length) {
    return std::vector<wchar_t>(static_cast<size_t>(length) + SpareUnits);
}
} // namespace

NString TextOfWindow(HWND window) {
    const LRESULT length = SendMessageW(window, WM_GETTEXTLENGTH, 0, 0);
    std::vector<wchar_t> scratch = ScratchFor(length > 0 ? length : 0);
    SendMessageW(window, WM_GETTEXT, scratch.size(), reinterpret_cast<LPARAM>(scratch.data()));
    return NString(scratch.data());
}

NString TextOfEntry(HWND combo, int entry) {
    const LRESULT length = SendMessageW(combo, CB_GETLBTEXTLEN, static_cast<WPARAM>(entry), 0);
    if (length < 0)
        return NString();
    std::vector<wchar_t> scratch = ScratchFor(length);
    SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(entry),
                 reinterpret_cast<LPARAM>(scratch.data()));
    return NString(scratch.data());
}
