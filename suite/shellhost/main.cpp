#include "foundation/windows_lean.h"
#include "suite/shellhost/program.h"

// The C start-up code would take a "?" or "*" in a path, as in "\\?\C:\", for
// a pattern of file names.
extern "C" int _dowildcard;
int _dowildcard = 0;

extern "C" int wmain(int count, wchar_t** arguments);
int wmain(int count, wchar_t** arguments) {
    return RunShellHost(count, arguments);
}
