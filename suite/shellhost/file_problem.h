#pragma once

#include "foundation/nstring.h"

// What hinders reading or writing a file, as far as it can be looked up, in
// words that follow the file's path and a colon. Empty if nothing does. Neither
// changes the file.
NString ReadProblem(const NString& path);
NString WriteProblem(const NString& path);
