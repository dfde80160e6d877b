#pragma once

// The tag program that is built to die: the environment variable holds the
// number of the change on the disk, counted from 1, behind which its process
// is ended with DiedExitCode.
inline constexpr wchar_t DieAtVariable[] = L"TONEWRIGHT_DIE_AT";
// The same for a fault in the process: a write to memory that isn't there.
inline constexpr wchar_t CrashAtVariable[] = L"TONEWRIGHT_CRASH_AT";
inline constexpr unsigned DiedExitCode = 77;
