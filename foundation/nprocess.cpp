#include "foundation/nprocess.h"

#include "foundation/npath.h"
#include "foundation/unique_handle.h"

namespace {
constexpr DWORD WaitStepMs = 250;
constexpr DWORD PauseMs = 25;

static_assert(sizeof(STARTUPINFOW) == 104);

bool HasEnded(HANDLE process, DWORD waitMs) {
    return WaitForSingleObject(process, waitMs) != WAIT_TIMEOUT;
}

// False if the process still ran when the time had gone.
bool WaitUpTo(HANDLE process, uint32_t timeoutMs) {
    DWORD start = GetTickCount();
    while (!HasEnded(process, WaitStepMs)) {
        if (GetTickCount() - start > timeoutMs)
            return false;
        Sleep(PauseMs);
    }
    return true;
}
} // namespace

bool NRunProcess(const NString& commandLine, bool wait, uint32_t timeoutMs, bool inherit,
                 DWORD flags) {
    // 1. The platform writes into the command line, hence the copy.
    NString line(commandLine);
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(nullptr, line.Text, nullptr, nullptr, inherit, flags, nullptr, nullptr,
                        &startup, &started))
        return false;
    UniqueKernelHandle process(started.hProcess);
    UniqueKernelHandle thread(started.hThread);
    // 2.
    if (!wait)
        return true;
    // 3.
    if (timeoutMs == 0) {
        WaitForSingleObject(process.Get(), INFINITE);
        return true;
    }
    // 4. and 5.
    return WaitUpTo(process.Get(), timeoutMs);
}

bool NRunProgram(const NString& program, const NString& parameters, bool wait, uint32_t timeoutMs,
                 bool inherit, DWORD flags) {
    NString line = NQuote(program);
    line.InsertChar(L' ');
    line.Append(parameters);
    return NRunProcess(line, wait, timeoutMs, inherit, flags);
}
