#pragma once

#include "shell/com_module.h"

// Makes a class factory for a class of the module's table, and hands out its
// interface `iid`. E_POINTER, E_NOINTERFACE or E_OUTOFMEMORY, with `*factory`
// null, if it can't. A factory holds the module loaded, and belongs to the
// apartment that asked for it.
HRESULT NMakeClassFactory(const ComObjectEntry& entry, REFIID iid, void** factory);
