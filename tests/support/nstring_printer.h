#pragma once

#include "foundation/nstring.h"

#include <ostream>

// How the test framework shows a string when an expectation fails: printable
// ASCII as it is, other units as \uXXXX.
inline void PrintTo(const NString& text, std::ostream* out) {
    static const char digits[] = "0123456789abcdef";
    *out << '"';
    for (int position = 1; position < text.Length; ++position) {
        unsigned unit = text.At(position);
        if (unit >= 32 && unit < 127) {
            *out << static_cast<char>(unit);
            continue;
        }
        *out << "\\u";
        for (int shift = 12; shift >= 0; shift -= 4)
            *out << digits[(unit >> shift) & 15];
    }
    *out << '"';
}
