#pragma once

#include "foundation/windows_lean.h"

// The entry point of our libraries, in place of the C run-time's, which it
// calls. (Link with `library_start`: the linker has to be told more than this.)
//
// The compiler's threads library, which the run-time uses for itself, takes a
// slot of thread-local storage and some handles for each load of a library that
// it is linked into, and keeps them when that is unloaded. A process has 1088
// slots; the load that finds none left ends it. So all that was taken since the
// load is given back at the end of the unloading.
extern "C" BOOL WINAPI NLibraryStart(HINSTANCE instance, DWORD reason, LPVOID reserved);
