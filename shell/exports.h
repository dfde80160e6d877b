#pragma once

#include "foundation/windows_lean.h"

#include <combaseapi.h>
#include <olectl.h>

// What the module's export table names, apart from EditIDTags
// (shell/edit_entry.h). The platform's headers declare the four COM exports:
//
// DllGetClassObject    CLASS_E_CLASSNOTAVAILABLE for any class but
//                      CLSID_tNWIShell, E_POINTER without a place for the
//                      result, E_NOINTERFACE for an interface that a class
//                      factory hasn't.
// DllCanUnloadNow      S_OK when the module lock count is 0, else S_FALSE;
//                      nothing else enters into it.
// DllRegisterServer, DllUnregisterServer
//                      see shell/registration.h.

// Keeps `instance` as the module's at every call, whatever the reason; starts
// and ends the COM support. Always TRUE.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);
