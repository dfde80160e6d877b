#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

// A sub-key of its own for one test, below HKEY_CURRENT_USER; it isn't there
// until somebody makes it, and goes with all below it at the end of the scope.
class TestRegistryKey {
public:
    TestRegistryKey();
    ~TestRegistryKey();
    TestRegistryKey(const TestRegistryKey&) = delete;
    TestRegistryKey& operator=(const TestRegistryKey&) = delete;

    const wchar_t* Path() const { return path_.Text; }
    bool Exists() const;

private:
    NString path_;
};
