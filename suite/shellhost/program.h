#pragma once

// shellhost.exe: what the desktop shell is to the module, on a console. It
// creates the module's class, hands it files in a drop list, and goes on with
// one of its commands.

// The program's exit codes.
inline constexpr int ExitDone = 0;
inline constexpr int ExitFailed = 1;
inline constexpr int ExitUsage = 2;

// The whole program: `arguments` are those of wmain, its own name first.
// Returns an exit code; no exception leaves it.
int RunShellHost(int count, const wchar_t* const* arguments) noexcept;
