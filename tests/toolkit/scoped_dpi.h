#pragma once

#include "toolkit/dpi.h"

#include <cstdint>

// The screen's pixels per inch to the end of the scope.
class ScopedDpi {
public:
    explicit ScopedDpi(int32_t pixels) : former_(logPixelsX) { logPixelsX = pixels; }
    ~ScopedDpi() { logPixelsX = former_; }
    ScopedDpi(const ScopedDpi&) = delete;
    ScopedDpi& operator=(const ScopedDpi&) = delete;

private:
    int32_t former_;
};
