// The C library's wide functions for a wchar_t of 2 bytes: its own ones read 4,
// and std::wstring, which the test framework prints with, calls them.
#include <cstddef>

static_assert(sizeof(wchar_t) == 2);

// The prototypes are the C library's.
#pragma clang diagnostic ignored "-Wmissing-prototypes"
#pragma clang diagnostic ignored "-Wmissing-declarations"

extern "C" {

size_t wcslen(const wchar_t* text) {
    size_t units = 0;
    while (text[units])
        ++units;
    return units;
}

wchar_t* wmemcpy(wchar_t* to, const wchar_t* from, size_t count) {
    for (size_t index = 0; index < count; ++index)
        to[index] = from[index];
    return to;
}

wchar_t* wmemmove(wchar_t* to, const wchar_t* from, size_t count) {
    if (to < from)
        return wmemcpy(to, from, count);
    for (size_t index = count; index-- > 0;)
        to[index] = from[index];
    return to;
}

wchar_t* wmemset(wchar_t* to, wchar_t unit, size_t count) {
    for (size_t index = 0; index < count; ++index)
        to[index] = unit;
    return to;
}

int wmemcmp(const wchar_t* a, const wchar_t* b, size_t count) {
    for (size_t index = 0; index < count; ++index) {
        if (a[index] != b[index])
            return a[index] < b[index] ? -1 : 1;
    }
    return 0;
}

wchar_t* wmemchr(const wchar_t* text, wchar_t unit, size_t count) {
    for (size_t index = 0; index < count; ++index) {
        if (text[index] == unit)
            return const_cast<wchar_t*>(text + index);
    }
    return nullptr;
}

int wcscmp(const wchar_t* a, const wchar_t* b) {
    while (*a && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b ? 0 : *a < *b ? -1 : 1;
}

} // extern "C"
