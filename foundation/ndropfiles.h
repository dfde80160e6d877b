#pragma once

#include "foundation/nlists.h"
#include "foundation/windows_lean.h"

#include <shellapi.h>

// Fills `list` with the full paths of a drop list, in its order, whatever they
// lead to and however long they are. A null handle gives an empty list.
void NDropFilesRead(HDROP drop, NStringList& list);
