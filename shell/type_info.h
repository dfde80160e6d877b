#pragma once

#include "foundation/com_owners.h"

#include <oaidl.h>

// The type library in this module's own resources, read anew at each call:
// nothing is held that would have to be freed before the module goes. A
// failing code, with nothing handed out, if there is none.
HRESULT NLoadModuleTypeLibrary(ComPtr<ITypeLib>& library);

// The description of one interface in it.
HRESULT NLoadModuleTypeInfo(REFIID iid, ComPtr<ITypeInfo>& info);
