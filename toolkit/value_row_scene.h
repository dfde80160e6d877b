#pragma once

#include "toolkit/nvaluelist.h"

#include <cstdint>

// What a row of an NValueList looks like in all its states.

// The bits of a row's state, which its elements show by.
inline constexpr uint32_t RowWritable = 1;
inline constexpr uint32_t RowReadOnly = 2;
inline constexpr uint32_t RowSelected = 4;
inline constexpr uint32_t RowNotSelected = 8;
inline constexpr uint32_t RowMarkOff = 16;
inline constexpr uint32_t RowMarkOn = 32;
inline constexpr uint32_t RowFocused = 64;
inline constexpr uint32_t RowNotFocused = 128;
inline constexpr uint32_t RowNameShown = 256;
inline constexpr uint32_t RowValueShown = 512;

// Builds `row.scene`, which must be empty, in a row whose other fields are
// final. Its first text is the name, its second one the value.
void BuildRowScene(const NValueList& list, const NValueRowInit& init, NValueRow& row);

// The text of a row's button while the row has only a picture of it.
NString ButtonCaption(const NString& buttonText);
