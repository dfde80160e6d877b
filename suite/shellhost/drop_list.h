#pragma once

#include "foundation/nlists.h"
#include "foundation/unique_handle.h"

// The wide drop list (CF_HDROP: a DROPFILES header, then each path with its
// terminator, then one further terminator) in movable global memory. Null if
// there is no memory. `paths` may be empty.
UniqueGlobalMemory MakeDropList(const NStringList& paths);
