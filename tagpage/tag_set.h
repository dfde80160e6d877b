#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "foundation/nstring.h"

#include <cstdint>

// The tag of one file as the page has it, and what the next commit is to
// delete from the file before it writes. A set is found by its exact name.
struct clTagSet {
    NString Name;     // the file's full path, or CombinedName
    clTagRecord Tags; // what the file is taken to hold, with the edits so far
    uint8_t DeleteAll = 0;
    NStringList DeleteNames;
};
