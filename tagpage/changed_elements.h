#pragma once

#include "codec/tag_record.h"

// Appends to `changed` each element of `wanted` that the file, whose tag is
// `inFile`, does not hold like that: what is left for a write. An element that
// is missing from `wanted` asks for nothing.
//
// Names compare without regard to ASCII case, values exactly. Where the file
// has data, they alone decide. A value that holds DifferentMark is no wish.
void AddChangedElements(clTagRecord& wanted, clTagRecord& inFile, clTagRecord& changed);
