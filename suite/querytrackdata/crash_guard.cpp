#include "suite/querytrackdata/crash_guard.h"

#include "foundation/windows_lean.h"

#include <cstring>

namespace {

constexpr UINT CrashExitCode = 1;
// Left over for the handler when the stack is what ran out.
constexpr ULONG StackForHandler = 0x10000;

// Nothing of the process can be relied on here: no memory is taken.
LONG WINAPI EndProcess(EXCEPTION_POINTERS*) {
    static constexpr char line[] = "QueryTrackData: internal error\r\n";
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), line, static_cast<DWORD>(strlen(line)), &written,
              nullptr);
    TerminateProcess(GetCurrentProcess(), CrashExitCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

} // namespace

void GuardAgainstCrashes() {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    ULONG stack = StackForHandler;
    SetThreadStackGuarantee(&stack);
    SetUnhandledExceptionFilter(EndProcess);
}
