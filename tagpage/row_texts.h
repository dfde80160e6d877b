#pragma once

#include "foundation/nstring.h"

// What the rows of the ID-Tag page say, where more than one place knows it.

// Above the pictures.
inline constexpr wchar_t ArtHeading[] = L"Album Art";
// The name and the value of a row until the user gives it others.
inline constexpr wchar_t EditMark[] = L"<edit>";

// The parts of a value stand with a carriage return between them in a tag, and
// with "; " in a row.
inline NString RowValueOf(const NString& elementValue) {
    NString value(elementValue);
    value.Replace(L"\r", L"; ");
    return value;
}
inline NString ElementValueOf(const NString& rowValue) {
    NString value(rowValue);
    value.Replace(L"; ", L"\r");
    return value;
}
