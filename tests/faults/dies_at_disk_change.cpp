#include "foundation/windows_lean.h"
#include "suite/querytrackdata/disk_change.h"
#include "tests/faults/dies.h"

#include <cwchar>

namespace {

// 0 without the variable: nothing happens.
long ChangeIn(const wchar_t* variable) {
    wchar_t number[16] = L"";
    GetEnvironmentVariableW(variable, number, 16);
    return wcstol(number, nullptr, 10);
}

} // namespace

void AfterDiskChange() {
    static long changes = 0;
    DWORD lastError = GetLastError();
    ++changes;
    if (changes == ChangeIn(DieAtVariable))
        TerminateProcess(GetCurrentProcess(), DiedExitCode);
    if (changes == ChangeIn(CrashAtVariable))
        RaiseException(static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION), 0, 0, nullptr);
    SetLastError(lastError);
}

void BeforeMoveRetry() {}
