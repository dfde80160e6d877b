// The page's pictures, compared with ones that were looked at. Texts are left
// out of them: their looks are those of the machine's fonts.
#include "tests/audiopage/page_fixture.h"

#include <algorithm>
#include <vector>

namespace {
// A misplaced edge or mark is more pixels than that.
constexpr PictureTolerance Tolerance = {.colour = 24, .pixels = 8};
constexpr uint32_t White = 0xFFFFFF;

class PagePictures : public PageTest {
protected:
    // The cover with its arrows, and the line of buttons below it; white for
    // what is beside them.
    Picture WithoutTexts() {
        const Picture seen = window_.Seen();
        const RECT cover = {window_.X(7), window_.Y(7), window_.X(7) + 100, window_.Y(7) + 90};
        std::vector<RECT> buttons;
        for (int index = 0; index < Page().Buttons.buttons.Count; ++index)
            buttons.push_back(
                window_.PlaceOf(static_cast<NButton*>(Page().Buttons.buttons.At(index))->window));
        Picture picture{seen.width, 0, {}};
        AddLines(seen, cover.top, cover.bottom, {cover}, picture);
        AddLines(seen, buttons[0].top, buttons[0].bottom, buttons, picture);
        return picture;
    }
    static void AddLines(const Picture& from, int top, int bottom, const std::vector<RECT>& places,
                         Picture& to) {
        for (int y = top; y < bottom; ++y) {
            for (int x = 0; x < from.width; ++x) {
                const bool isKept =
                    std::any_of(places.begin(), places.end(), [x, y](const RECT& place) {
                        return PtInRect(&place, POINT{x, y}) != FALSE;
                    });
                to.pixels.push_back(isKept ? from.At(x, y) : White);
            }
        }
        to.height += bottom - top;
    }
    void ExpectLike(const char* name) {
        EXPECT_TRUE(LooksLike(WithoutTexts(),
                              std::filesystem::path(TONEWRIGHT_SOURCE_DIR) /
                                  "tests/audiopage/golden" / name,
                              Tolerance, std::filesystem::path(TONEWRIGHT_BUILD_DIR) / "pictures"));
    }
    void PaintButtons(int32_t state) {
        for (int index = 0; index < Page().Buttons.buttons.Count; ++index) {
            auto& button = *static_cast<NButton*>(Page().Buttons.buttons.At(index));
            button.Enable();
            button.Paint(nullptr, state, true);
        }
    }
};
} // namespace

TEST_F(PagePictures, OfOneFile) {
    AddFileWithCovers(1);
    window_.OpenAndRead();
    ExpectLike("page_one_file.bmp");
}

TEST_F(PagePictures, OfManyFiles) {
    AddFiles(3);
    window_.OpenAndRead();
    ExpectLike("page_many_files.bmp");
}

TEST_F(PagePictures, OfReading) {
    const DecoderEvent release(L"TonewrightPicturesRelease");
    ScriptedAudio audio;
    release.PutInto(audio.says.eventToAwait);
    AddScripted(audio);
    window_.Open();
    ExpectLike("page_reading.bmp");
    DecoderEvent(L"TonewrightPicturesRelease").Set();
    window_.FinishReading();
}

TEST_F(PagePictures, OfACoverWithArrows) {
    AddFiles(1);
    AddFileWithCovers(3);
    AddFiles(1);
    window_.OpenAndRead();
    Page().cmdViewSingle.OnClick(false);
    Page().cmdSkipNext.OnClick(false);
    Page().ArtIndex = 1;
    ExpectLike("page_arrows.bmp");
}

TEST_F(PagePictures, OfTheButtonsUnderTheCursor) {
    AddFiles(3);
    window_.OpenAndRead();
    PaintButtons(ButtonHovered);
    ExpectLike("page_buttons_hover.bmp");
}

TEST_F(PagePictures, OfTheButtonsPressed) {
    AddFiles(3);
    window_.OpenAndRead();
    PaintButtons(ButtonPressed);
    ExpectLike("page_buttons_down.bmp");
}
