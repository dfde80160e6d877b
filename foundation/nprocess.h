#pragma once

#include "foundation/ndropfiles.h"
#include "foundation/nfolders.h"
#include "foundation/nopenfiledialog.h"
#include "foundation/nstring.h"
#include "foundation/ntempfile.h"
#include "foundation/windows_lean.h"

#include <cstdint>

// Starts a program with CreateProcessW's creation flags. False if it couldn't
// be started. With `wait` the caller is blocked, without pumping messages,
// until the program has ended, or, with `timeoutMs` above 0, until that time
// and up to 275 ms more have gone; then the result is false, and the program
// runs on.
bool NRunProcess(const NString& commandLine, bool wait, uint32_t timeoutMs, bool inherit,
                 DWORD flags);
// The same with a program's path, which is quoted, a blank, and parameters.
bool NRunProgram(const NString& program, const NString& parameters, bool wait, uint32_t timeoutMs,
                 bool inherit, DWORD flags);
