#pragma once

#include "foundation/nfile.h"
#include "foundation/nlists.h"

// The list of the selected files on its way to another program: UTF-16
// little-endian without a byte-order mark, each full path with a carriage
// return and a line feed behind it, the last one too.

// A name for a new list file in the user's temporary folder. No file of that
// name is there.
NString NNewListFileName();

// Writes the list at the current position. False at the first write that
// fails; nothing is written from there on.
bool NWriteFileList(NFile& file, const NStringList& paths);
