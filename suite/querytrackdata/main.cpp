#include "suite/querytrackdata/crash_guard.h"
#include "suite/querytrackdata/program.h"

// The C start-up code would take a "?" or "*" in a path, as in "\\?\C:\", for
// a pattern of file names.
extern "C" int _dowildcard;
int _dowildcard = 0;

extern "C" int wmain(int count, wchar_t** arguments);
int wmain(int count, wchar_t** arguments) {
    GuardAgainstCrashes();
    return RunQueryTrackData(count, arguments);
}
