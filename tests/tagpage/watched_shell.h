#pragma once

#include "foundation/windows_lean.h"

#include <string>
#include <vector>

// What this program's own code has told the user and the desktop shell. A
// program that uses it is linked with --wrap for these functions.

// An SHChangeNotify; `path` is its first item, which has to be one.
struct ShellChange {
    LONG event;
    UINT flags;
    std::wstring path;
    const void* second;
};
// Those since the last call, in turn.
std::vector<ShellChange> TakeShellChanges();

// The owner and the MB_ type of each message box since the last call, in turn.
struct BoxCall {
    HWND owner;
    UINT type;
};
std::vector<BoxCall> TakeBoxCalls();
