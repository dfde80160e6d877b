#pragma once

#include "foundation/nstring.h"

// The title above the rows, for the file `index` of `count`, alone or of
// several; its name stands without folder and extension, and is cut if it is
// long.
NString TitleOfFile(const NString& path, int index, int count);
// For all files in one.
NString TitleOfFiles(int count);
