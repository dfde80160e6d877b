// The one place that includes windows.h: lean, wide, without its min and max
// (the build sets WIN32_LEAN_AND_MEAN, UNICODE and NOMINMAX). Files that need
// shellapi.h, objbase.h or commctrl.h include them behind this one.
#pragma once

#include <windows.h>
