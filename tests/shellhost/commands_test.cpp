#include "foundation/ndisk.h"
#include "foundation/nstring.h"
#include "suite/shellhost/program.h"
#include "tests/shellhost/caught_stream.h"
#include "tests/shellhost/sound_file.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

namespace {
// The commands with the module and the tag program, on a file of silence.
class Commands : public testing::Test {
protected:
    Commands() { WriteSoundFile(file_); }

    int Run(std::initializer_list<const wchar_t*> arguments) {
        std::vector<const wchar_t*> all = {L"shellhost", L"--module", module_.Text};
        all.insert(all.end(), arguments);
        return RunShellHost(static_cast<int>(all.size()), all.data());
    }
    // What `tags` shows of the file, without its path.
    std::string Tags() {
        output_.Text();
        EXPECT_EQ(Run({L"tags", file_.Text}), ExitDone);
        std::string text = output_.Text();
        return text.substr(text.find('\n') + 1);
    }

    TempFolder folder_;
    NString module_{TONEWRIGHT_SUITE_DIR "/tNWShell.DLL"};
    NString file_ = folder_.File(L"a.wav");
    CaughtStream output_{STD_OUTPUT_HANDLE};
    CaughtStream errors_{STD_ERROR_HANDLE};
};
} // namespace

TEST_F(Commands, TagsShowsThePathAndThatThereIsNoTag) {
    ASSERT_EQ(Run({L"tags", file_.Text}), ExitDone);
    std::string text = output_.Text();
    EXPECT_EQ(text.substr(text.rfind('\\') + 1), "a.wav\n  (no tag)\n");
}

TEST_F(Commands, TagsFailsIfItsOutputIsLost) {
    output_.Break();
    EXPECT_EQ(Run({L"tags", file_.Text}), ExitFailed);
    EXPECT_EQ(errors_.Text(), "shellhost: the output can't be written\n");
}

TEST_F(Commands, TagsGoesOnBehindAFileThatCanNotBeRead) {
    EXPECT_EQ(Run({L"tags", folder_.File(L"none").Text, file_.Text}), ExitFailed);
    EXPECT_NE(output_.Text().find("(no tag)"), std::string::npos);
    EXPECT_NE(errors_.Text().find("no such file"), std::string::npos);
}

TEST_F(Commands, SetWritesWhatTagsShows) {
    EXPECT_EQ(Run({L"set", file_.Text, L"title=One", L"artist=A", L"artist=B"}), ExitDone);
    // The file's INFO list has no repeated fields.
    EXPECT_EQ(Tags(), "  artist: A; B\n  title: One\n");
    EXPECT_EQ(errors_.Text(), "");
}

TEST_F(Commands, SetTakesAnEmptyValueForNoPart) {
    EXPECT_EQ(Run({L"set", file_.Text, L"genre=", L"genre=Jazz"}), ExitDone);
    EXPECT_EQ(errors_.Text(), "");
    EXPECT_EQ(Tags(), "  genre: Jazz\n");
}

TEST_F(Commands, SetRemovesAnElementOfNoValue) {
    ASSERT_EQ(Run({L"set", file_.Text, L"title=One", L"album=Two"}), ExitDone);
    EXPECT_EQ(Run({L"set", file_.Text, L"title="}), ExitDone);
    EXPECT_EQ(Tags(), "  album: Two\n");
}

TEST_F(Commands, SetNamesEachElementThatTheFileDoesNotHold) {
    SetFileAttributesW(file_.Text, FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Run({L"set", file_.Text, L"title=One", L"album="}), ExitFailed);
    EXPECT_EQ(errors_.Text(), "shellhost: the file doesn't hold title: One\n");
}

TEST_F(Commands, SetFailsOnAPictureThatCanNotBeRead) {
    NString picture(L"_albumart_1=@");
    picture.Append(folder_.File(L"none.png"));
    EXPECT_EQ(Run({L"set", file_.Text, L"title=One", picture.Text}), ExitFailed);
    EXPECT_NE(errors_.Text().find("can't read the file"), std::string::npos);
    EXPECT_EQ(Tags(), "  (no tag)\n");
}

TEST_F(Commands, SetTakesAWordOfTheWrongFormForAFaultOfUsage) {
    EXPECT_EQ(Run({L"set", file_.Text, L"title=One", L"album"}), ExitUsage);
    EXPECT_EQ(Tags(), "  (no tag)\n");
}

TEST_F(Commands, DeleteRemovesWhatItNamesOrAll) {
    ASSERT_EQ(Run({L"set", file_.Text, L"title=One", L"album=Two", L"genre=Jazz"}), ExitDone);
    EXPECT_EQ(Run({L"delete", file_.Text, L"title", L"ALBUM", L"mood"}), ExitDone);
    EXPECT_EQ(Tags(), "  genre: Jazz\n");
    EXPECT_EQ(Run({L"delete", file_.Text}), ExitDone);
    EXPECT_EQ(Tags(), "  (no tag)\n");
    EXPECT_EQ(errors_.Text(), "");
}

TEST_F(Commands, DeleteNamesEachElementThatIsLeft) {
    ASSERT_EQ(Run({L"set", file_.Text, L"title=One", L"album=Two"}), ExitDone);
    SetFileAttributesW(file_.Text, FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Run({L"delete", file_.Text, L"title", L"mood"}), ExitFailed);
    EXPECT_EQ(errors_.Text(), "shellhost: the file still holds title\n");
    EXPECT_EQ(Run({L"delete", file_.Text}), ExitFailed);
    std::string text = errors_.Text();
    EXPECT_NE(text.find("still holds title\n"), std::string::npos) << text;
    EXPECT_NE(text.find("still holds album\n"), std::string::npos) << text;
}
