#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

// Makes a folder this process's current one, and goes back at the end of the
// scope.
class ScopedCurrentFolder {
public:
    explicit ScopedCurrentFolder(const NString& folder) {
        GetCurrentDirectoryW(MAX_PATH, old_);
        SetCurrentDirectoryW(folder.c_str());
    }
    ~ScopedCurrentFolder() { SetCurrentDirectoryW(old_); }
    ScopedCurrentFolder(const ScopedCurrentFolder&) = delete;
    ScopedCurrentFolder& operator=(const ScopedCurrentFolder&) = delete;

private:
    wchar_t old_[MAX_PATH] = {};
};
