#include "tests/audiopage/screen_resolution.h"

#include "foundation/windows_lean.h"

#include <atomic>

extern "C" {
extern decltype(&::GetDeviceCaps) __real___imp_GetDeviceCaps;
extern decltype(&::GetDeviceCaps) __wrap___imp_GetDeviceCaps;
}

namespace {
constexpr int AsItIs = 0;
std::atomic<int> given = AsItIs;

int WINAPI GivenDeviceCaps(HDC dc, int index) {
    return index == LOGPIXELSY && given != AsItIs ? given.load()
                                                  : __real___imp_GetDeviceCaps(dc, index);
}
} // namespace

decltype(&::GetDeviceCaps) __wrap___imp_GetDeviceCaps = GivenDeviceCaps;

ScreenResolution::ScreenResolution(int linesPerInch) {
    given = linesPerInch;
}

ScreenResolution::~ScreenResolution() {
    given = AsItIs;
}
