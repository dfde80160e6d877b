#pragma once

// GDI+, whose header leaves out what it needs of others; the order counts.

// clang-format off
#include "foundation/windows_lean.h"

#include <objidl.h>
#include <gdiplus.h>
// clang-format on
