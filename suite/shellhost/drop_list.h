#pragma once

#include "foundation/nlists.h"
#include "foundation/unique_handle.h"

struct GlobalMemoryTraits {
    using Handle = HGLOBAL;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { GlobalFree(handle); }
};
using UniqueGlobalMemory = UniqueHandle<GlobalMemoryTraits>;

// The wide drop list (CF_HDROP: a DROPFILES header, then each path with its
// terminator, then one further terminator) in movable global memory. Null if
// there is no memory. `paths` may be empty.
UniqueGlobalMemory MakeDropList(const NStringList& paths);
