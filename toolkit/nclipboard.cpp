#include "toolkit/nclipboard.h"

#include "foundation/unique_handle.h"

#include <cstring>
#include <cwchar>

namespace {
// Null if there is no memory for it.
UniqueGlobalMemory CopyOf(const void* data, size_t size) {
    UniqueGlobalMemory copy(GlobalAlloc(GMEM_MOVEABLE, size));
    void* bytes = copy ? GlobalLock(copy.Get()) : nullptr;
    if (!bytes)
        return UniqueGlobalMemory();
    memcpy(bytes, data, size);
    GlobalUnlock(copy.Get());
    return copy;
}

bool PutCopy(const void* data, size_t size, UINT format) {
    UniqueGlobalMemory copy = CopyOf(data, size);
    // To hand over nothing would promise the data for later.
    if (!copy || !SetClipboardData(format, copy.Get()))
        return false;
    static_cast<void>(copy.Release());
    return true;
}
} // namespace

bool NClipboard::Open(HWND window) {
    Close();
    isOpen_ = OpenClipboard(window) != FALSE;
    if (isOpen_ && !EmptyClipboard())
        Close();
    return isOpen_;
}

void NClipboard::Close() {
    if (isOpen_)
        CloseClipboard();
    isOpen_ = false;
}

bool NClipboard::SetData(const void* data, size_t size, UINT format, HWND window) {
    const bool forThisOnly = !isOpen_;
    if (!data || (forThisOnly && !Open(window)))
        return false;
    const bool set = size ? PutCopy(data, size, format)
                          : SetClipboardData(format, const_cast<void*>(data)) != nullptr;
    if (forThisOnly)
        Close();
    return set;
}

bool NClipboard::SetTextA(const char* text, HWND window) {
    return text && SetData(text, strlen(text) + 1, CF_TEXT, window);
}

bool NClipboard::SetTextW(const wchar_t* text, HWND window) {
    return text && SetData(text, (wcslen(text) + 1) * sizeof(wchar_t), CF_UNICODETEXT, window);
}
