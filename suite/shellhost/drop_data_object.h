#pragma once

#include "foundation/com_owners.h"
#include "foundation/nlists.h"

// The data object of a selection of files: one format, CF_HDROP in global
// memory, which the receiver owns. Lives in the apartment that made it.
//
// The result holds one reference, and is never null: without memory for it
// std::bad_alloc is thrown. Its own operations throw nothing.
ComPtr<IDataObject> MakeDropDataObject(const NStringList& paths);
