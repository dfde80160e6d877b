#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

#include <vector>

// Sets a variable of this process's environment, or removes it for null, and
// puts the old value back at the end of the scope.
class ScopedEnvironment {
public:
    ScopedEnvironment(const wchar_t* name, const wchar_t* value) : name_(name) {
        std::vector<wchar_t> old(LongestValue);
        hadValue_ = GetEnvironmentVariableW(name, old.data(), LongestValue) != 0;
        old_ = old.data();
        SetEnvironmentVariableW(name, value);
    }
    ~ScopedEnvironment() { SetEnvironmentVariableW(name_.Text, hadValue_ ? old_.Text : nullptr); }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    static constexpr DWORD LongestValue = 32767; // the platform's own limit

    NString name_;
    NString old_;
    bool hadValue_;
};
