#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

// Writes a bitmap, which must not be selected into a device context, as a PNG
// file; an existing file is replaced. False if that failed.
bool WritePng(HBITMAP bitmap, const NString& path);
