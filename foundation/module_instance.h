#pragma once

#include "foundation/windows_lean.h"

// The instance handle of the module or program that this code is linked into:
// resources are loaded from it, and the sibling programs lie in its folder.
// The module sets it in DllMain, at every call; until someone does, it is the
// program's own handle. Set and read on any thread.
HINSTANCE NModuleInstance();
void NSetModuleInstance(HINSTANCE instance);
