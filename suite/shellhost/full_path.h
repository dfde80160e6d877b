#pragma once

#include "foundation/nstring.h"

// The full path of a file as seen from the current folder; `path` itself if
// the platform can't tell.
NString FullPath(const wchar_t* path);
