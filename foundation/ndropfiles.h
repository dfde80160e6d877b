#pragma once

#include "foundation/nlists.h"
#include "foundation/windows_lean.h"

#include <shellapi.h>

// Fills `list` with the full paths of a drop list, in its order, whatever they
// lead to and however long they are. A null handle gives an empty list, and so
// does a block that is none; of a list without its end all that the block holds
// is taken. std::bad_alloc leaves a part of the list.
void NDropFilesRead(HDROP drop, NStringList& list);
