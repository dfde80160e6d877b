#include "suite/shellhost/program.h"
#include "suite/shellhost/property_sheet.h"
#include "tests/shellhost/caught_stream.h"
#include "tests/shellhost/sound_file.h"
#include "tests/support/dialog_hook.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/picture_compare.h"
#include "tests/support/private_current_user.h"
#include "tests/support/temp_folder.h"
#include "toolkit/ncanvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace {
// The edge of the disc case around a cover.
constexpr uint32_t CaseEdge = 0x7A8088;
constexpr int CaseEdges = 88; // pixels of its upper one

// The property sheet, with the module and the decoder plug-in as they were
// built.
class PropertiesCommand : public testing::Test {
protected:
    PropertiesCommand() { WriteSoundFile(file_); }

    int Run(std::initializer_list<const wchar_t*> arguments) {
        std::vector<const wchar_t*> all = {L"shellhost", L"--module", module_.Text, L"properties"};
        all.insert(all.end(), arguments);
        return RunShellHost(static_cast<int>(all.size()), all.data());
    }
    static Picture Load(const NString& path) {
        NBitmap file;
        EXPECT_TRUE(file.LoadFile(path));
        NCanvas canvas;
        canvas.LoadCopy(file.handle);
        return ReadPicture(canvas.dc, canvas.Width(), canvas.Height());
    }

    TempFolder folder_;
    NString module_{TONEWRIGHT_SUITE_DIR "/tNWShell.DLL"};
    NString file_ = folder_.File(L"silence.wav");
    NString picture_ = folder_.File(L"sheet.png");
    PrivateCurrentUser user_;
    CaughtStream errors_{STD_ERROR_HANDLE};
};
} // namespace

TEST_F(PropertiesCommand, WritesAPictureOfTheSheetWithThePageAsRead) {
    const NString sample(TONEWRIGHT_SOURCE_DIR "/build/samples/sample.flac");
    ASSERT_EQ(Run({sample.Text, L"--picture", picture_.Text}), ExitDone) << errors_.Text();
    const Picture sheet = Load(picture_);
    EXPECT_GT(sheet.width, 351); // the page alone
    EXPECT_GT(sheet.height, 406);
    EXPECT_GE(std::count(sheet.pixels.begin(), sheet.pixels.end(), CaseEdge), CaseEdges);
    EXPECT_GT(std::count(sheet.pixels.begin(), sheet.pixels.end(), 0x0000FFu), 20); // "Tonewright"
}

TEST_F(PropertiesCommand, SeveralFilesHaveNoCover) {
    const NString sample(TONEWRIGHT_SOURCE_DIR "/build/samples/sample.flac");
    ASSERT_EQ(Run({sample.Text, file_.Text, L"--picture", picture_.Text}), ExitDone);
    const Picture sheet = Load(picture_);
    EXPECT_LT(std::count(sheet.pixels.begin(), sheet.pixels.end(), CaseEdge), CaseEdges);
}

// The title of the list is on a gradient of this colour at its right end.
TEST_F(PropertiesCommand, WritesAPictureOfThePageThatIsAskedFor) {
    constexpr uint32_t titleEnd = 0xC8C8FF;
    const NString sample(TONEWRIGHT_SOURCE_DIR "/build/samples/sample.flac");
    for (const wchar_t* page : {L"1", L"2"}) {
        ASSERT_EQ(Run({sample.Text, L"--page", page, L"--picture", picture_.Text}), ExitDone)
            << errors_.Text();
        const Picture sheet = Load(picture_);
        EXPECT_EQ(std::count(sheet.pixels.begin(), sheet.pixels.end(), titleEnd) > 0,
                  page[0] == L'2');
    }
}

TEST_F(PropertiesCommand, FailsForAPageThatIsNotThere) {
    for (const wchar_t* page : {L"0", L"3", L"second"}) {
        EXPECT_EQ(Run({file_.Text, L"--page", page, L"--picture", picture_.Text}), ExitFailed);
        EXPECT_EQ(errors_.Text(), "shellhost: the sheet has no such page\n");
    }
}

TEST_F(PropertiesCommand, FailsIfThePictureCanNotBeWritten) {
    EXPECT_EQ(Run({file_.Text, L"--picture", folder_.File(L"none\\sheet.png").Text}), ExitFailed);
    EXPECT_EQ(errors_.Text(), "shellhost: the picture can't be written\n");
}

TEST_F(PropertiesCommand, WantsAFile) {
    EXPECT_EQ(Run({L"--picture", picture_.Text}), ExitUsage);
    EXPECT_EQ(errors_.Text(),
              "usage: shellhost properties FILE... [--page NUMBER] [--picture PNG]\n");
    EXPECT_EQ(Run({}), ExitUsage);
}

TEST_F(PropertiesCommand, ShowsTheSheetUntilItIsClosed) {
    int sheets = 0;
    const DialogHook hook([&sheets](HWND dialog) {
        if (GetWindowLongPtrW(dialog, GWL_STYLE) & WS_CHILD)
            return; // the page
        ++sheets;
        PostMessageW(dialog, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
    });
    EXPECT_EQ(Run({file_.Text}), ExitDone) << errors_.Text();
    EXPECT_EQ(sheets, 1);
}

TEST(SheetTitle, IsTheNameOfTheFirstFile) {
    NStringList paths;
    paths.Add(L"C:\\music\\one.mp3");
    EXPECT_EQ(SheetTitle(paths), L"one.mp3");
    paths.Add(L"C:\\music\\two.mp3");
    EXPECT_EQ(SheetTitle(paths), L"one.mp3, ...");
}
