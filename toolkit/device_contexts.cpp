#include "toolkit/device_contexts.h"

#include <cstddef>

static_assert(offsetof(NWindowDC, window) == 0);
static_assert(offsetof(NWindowDC, dc) == 8);
static_assert(offsetof(NMemoryDC, dc) == 0);

void NWindowDC::Release() {
    if (dc)
        ReleaseDC(window, dc);
    dc = nullptr;
}

void NMemoryDC::Release() {
    if (dc)
        DeleteDC(dc);
    dc = nullptr;
}
