#pragma once

#include "foundation/windows_lean.h"

// The module's entries below HKEY_CLASSES_ROOT: its class, by the registrar
// script in its resources, and its type library. COM must be initialised on
// the calling thread. The first failing code ends the operation and is
// returned; what was written before it stays.

// Existing entries are written over.
HRESULT NRegisterModule();

// The class goes first, so that a registration that broke off before the
// library can be taken back whole.
HRESULT NUnregisterModule();
