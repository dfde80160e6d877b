#pragma once

#include "foundation/unique_handle.h"
#include "foundation/windows_lean.h"

#include <string>

// An event that a program which the test starts opens by its name, which
// stands in an environment variable.
class SharedEvent {
public:
    explicit SharedEvent(const wchar_t* variable) : variable_(variable) {
        std::wstring name = variable_ + std::to_wstring(GetCurrentProcessId());
        event_.Reset(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
        SetEnvironmentVariableW(variable_.c_str(), name.c_str());
    }
    ~SharedEvent() { SetEnvironmentVariableW(variable_.c_str(), nullptr); }
    SharedEvent(const SharedEvent&) = delete;
    SharedEvent& operator=(const SharedEvent&) = delete;

    void Set() { SetEvent(event_.Get()); }
    void Reset() { ResetEvent(event_.Get()); }
    bool WaitFor(DWORD milliseconds) {
        return WaitForSingleObject(event_.Get(), milliseconds) == WAIT_OBJECT_0;
    }

private:
    std::wstring variable_;
    UniqueKernelHandle event_;
};
