#pragma once

#include <cstdint>

// The one seam between NString and the platform's code pages. On Windows it
// is MultiByteToWideChar and its reverse; the native test build has a fixed
// choice in their place (tests/support/codepage_native.cpp).

// Turns `text` (zero-terminated) into units at `output`, which has room for
// `capacity` of them, terminator included. Returns the units written without
// the terminator, 0 if nothing could be converted.
int NWideFromNarrow(const char* text, wchar_t* output, int capacity);
int NWideFromUtf8(const char* text, wchar_t* output, int capacity);

// The size in bytes, terminator included, of the text in the narrow code
// page; with a buffer of that size, writes it there. 0 on failure.
int NNarrowFromWide(const wchar_t* text, char* output, int capacity);
