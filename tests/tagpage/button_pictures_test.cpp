// The pictures of the ID-Tag page's own buttons, compared with one that was
// looked at, and their room on the page.
#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "tests/support/picture_compare.h"
#include "toolkit/dpi.h"
#include "toolkit/nbuttonbar.h"

#include <array>

namespace {
// A misplaced edge or mark is more pixels than that.
constexpr PictureTolerance Tolerance = {.colour = 24, .pixels = 8};
constexpr int32_t PageFlags = ButtonDefault | ButtonHover | ButtonDisabled | ButtonMasked;

struct Placed {
    int bitmapId;
    int x; // dialog units
};
constexpr Placed Own[] = {
    {IDB_EDIT_SINGLE, 31},
    {IDB_ADD_ELEMENT, 98},
    {IDB_REMOVE_ELEMENT, 136},
    {IDB_CLEAR_TAGS, 175},
};
constexpr int NextStart[] = {72, 136, 175, 227}; // the last one is the list's right edge

class ButtonPictures : public testing::Test {
protected:
    ButtonPictures()
        : sheet_(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                                 nullptr)),
          dialog_(CreateDialogParamW(NModuleInstance(), MAKEINTRESOURCEW(IDD_TAG_PAGE), sheet_,
                                     Proc, 0)) {
        bar_.Start(dialog_);
        for (size_t index = 0; index < std::size(Own); ++index) {
            NButtonSpec spec;
            spec.x = DialogUnitsX(Own[index].x, dialog_);
            spec.flags = PageFlags;
            bar_.Add(buttons_[index], spec, Own[index].bitmapId, 0, NModuleInstance());
        }
    }
    ~ButtonPictures() override {
        bar_.Destroy();
        DestroyWindow(sheet_);
    }

    // One line: all buttons in that state, without what is between them.
    void PaintLine(HDC dc, int y, int32_t state) {
        int x = 0;
        for (NButton& button : buttons_) {
            SetViewportOrgEx(dc, x, y, nullptr);
            button.Paint(dc, state, true);
            x += button.frameWidth;
        }
        SetViewportOrgEx(dc, 0, 0, nullptr);
    }
    int Width() const {
        int width = 0;
        for (const NButton& button : buttons_)
            width += button.frameWidth;
        return width;
    }

    HWND sheet_;
    HWND dialog_;
    NButtonBar bar_;
    std::array<NButton, std::size(Own)> buttons_;

private:
    static INT_PTR CALLBACK Proc(HWND, UINT, WPARAM, LPARAM) { return FALSE; }
};
} // namespace

TEST_F(ButtonPictures, LookAsTheyDidInEveryState) {
    const int height = buttons_[0].frameHeight;
    NCanvas canvas;
    ASSERT_TRUE(canvas.Resize(Width(), 4 * height));
    PaintLine(canvas.dc, 0, ButtonIdle);
    PaintLine(canvas.dc, height, ButtonHovered);
    PaintLine(canvas.dc, 2 * height, ButtonPressed);
    for (NButton& button : buttons_)
        button.Disable();
    PaintLine(canvas.dc, 3 * height, ButtonIdle);
    EXPECT_TRUE(LooksLike(ReadPicture(canvas.dc, Width(), 4 * height),
                          std::filesystem::path(TONEWRIGHT_SOURCE_DIR) /
                              "tests/tagpage/golden/own_buttons.bmp",
                          Tolerance, std::filesystem::path(TONEWRIGHT_BUILD_DIR) / "pictures"));
}

TEST_F(ButtonPictures, AreNotWiderThanTheirRoomOnThePage) {
    for (size_t index = 0; index < std::size(Own); ++index) {
        ASSERT_GT(buttons_[index].frameWidth, 0);
        const int end = DialogUnitsX(Own[index].x, dialog_) + buttons_[index].frameWidth;
        EXPECT_LT(end, DialogUnitsX(NextStart[index], dialog_)) << Own[index].bitmapId;
    }
}

TEST_F(ButtonPictures, AreAsHighAsTheSkipButtons) {
    NButton first;
    NButtonSpec spec;
    spec.flags = PageFlags;
    bar_.Add(first, spec, IDB_SKIP_FIRST, 0, NModuleInstance());
    for (const NButton& button : buttons_)
        EXPECT_EQ(button.frameHeight, first.frameHeight);
    bar_.Destroy();
}
