// What loading a library costs at the least: one that does nothing, and that
// imports what the module imports.
#include "foundation/windows_lean.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID);
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) {
    return TRUE;
}
