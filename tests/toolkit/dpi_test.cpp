#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/watched_calls.h"
#include "toolkit/dpi.h"
#include "toolkit/nwindow.h"

#include <gtest/gtest.h>

namespace {
// Puts the screen's resolution back.
class Dpi : public testing::Test {
protected:
    ~Dpi() override { logPixelsX = former_; }

private:
    int32_t former_ = logPixelsX;
};

// A screen of 144 pixels to the inch across alone, unless it can't be read.
class Screen : WatchedCalls {
public:
    Screen() {
        timesRead = 0;
        canBeRead = true;
        __wrap___imp_GetDeviceCaps = [](HDC, int index) {
            ++timesRead;
            if (!canBeRead)
                return 0;
            return index == LOGPIXELSX ? 144 : 120;
        };
    }
    static inline int timesRead;
    static inline bool canBeRead;
};
} // namespace

TEST_F(Dpi, SizesScaleByTheScreensPixelsCutOffTowardZero) {
    const struct {
        int32_t pixelsPerInch;
        int32_t value;
        int32_t scaled;
    } cases[] = {
        {96, 21, 21},
        {96, 0, 0},
        {96, -7, -7},
        {120, 21, 26},
        {120, -21, -26},
        {144, 13, 19},
        {144, -13, -19},
        {144, 1, 1},
        {144, -1, -1},
        {192, 0xFFFF, 0x1FFFE},
        {72, 1, 0},
        {72, -1, 0},
        {96, INT32_MAX, INT32_MAX},
        {96, INT32_MIN, INT32_MIN},
    };
    for (const auto& c : cases) {
        logPixelsX = c.pixelsPerInch;
        EXPECT_EQ(c.scaled, ScaleToDpi(c.value)) << c.value << " at " << c.pixelsPerInch;
    }
}

TEST_F(Dpi, TheScreenIsReadOnceAndKept) {
    Screen screen;
    logPixelsX = -1;
    EXPECT_EQ(144, ScaleToDpi(96));
    EXPECT_EQ(144, logPixelsX);
    EXPECT_EQ(15, ScaleToDpi(10));
    EXPECT_EQ(1, Screen::timesRead);
}

TEST_F(Dpi, AScreenThatCannotBeReadCountsAsAUsualOneForThisOnce) {
    Screen screen;
    logPixelsX = -1;
    Screen::canBeRead = false;
    EXPECT_EQ(10, ScaleToDpi(10));
    EXPECT_EQ(-1, logPixelsX);
    Screen::canBeRead = true;
    EXPECT_EQ(15, ScaleToDpi(10));
    EXPECT_EQ(144, logPixelsX);
}

TEST_F(Dpi, DialogUnitsGoByTheDialogsFont) {
    NWindow dialog;
    dialog.ShowDialog(IDD_PLAIN, nullptr, false);
    ASSERT_NE(nullptr, dialog.hwnd);
    // The button stands at 10, 10 and is 50 by 14.
    RECT button = {};
    GetClientRect(dialog.GetItem(IDOK), &button);
    EXPECT_EQ(button.right, DialogUnitsX(50, dialog.hwnd));
    EXPECT_EQ(button.bottom, DialogUnitsY(14, dialog.hwnd));
    EXPECT_NE(DialogUnitsX(50, dialog.hwnd), DialogUnitsY(50, dialog.hwnd));
    EXPECT_EQ(0, DialogUnitsX(0, dialog.hwnd));
    EXPECT_EQ(0, DialogUnitsY(0, dialog.hwnd));
}

TEST_F(Dpi, WithoutADialogDialogUnitsStayAsTheyAre) {
    EXPECT_EQ(50, DialogUnitsX(50, nullptr));
    EXPECT_EQ(14, DialogUnitsY(14, nullptr));
}
