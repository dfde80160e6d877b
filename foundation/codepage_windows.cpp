#include "foundation/codepage.h"
#include "foundation/windows_lean.h"

namespace {
int Convert(UINT codePage, const char* text, wchar_t* output, int capacity) {
    int units = MultiByteToWideChar(codePage, 0, text, -1, output, capacity);
    return units > 0 ? units - 1 : 0;
}
} // namespace

int NWideFromNarrow(const char* text, wchar_t* output, int capacity) {
    return Convert(CP_ACP, text, output, capacity);
}

int NWideFromUtf8(const char* text, wchar_t* output, int capacity) {
    return Convert(CP_UTF8, text, output, capacity);
}

int NNarrowFromWide(const wchar_t* text, char* output, int capacity) {
    return WideCharToMultiByte(CP_ACP, 0, text, -1, output, capacity, nullptr, nullptr);
}
