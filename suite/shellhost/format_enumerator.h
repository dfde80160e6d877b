#pragma once

#include "foundation/com_owners.h"

// The enumerator of a selection's formats: CF_HDROP as content in global
// memory, and no other. Null if there is no memory for it.
ComPtr<IEnumFORMATETC> MakeDropFormatEnumerator();
