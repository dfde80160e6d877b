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

    // A line of the program's about a file.
    static std::string Said(NString path, const char* what) {
        return std::string("shellhost: ") + Utf8Of(path) + ": " + what + "\n";
    }
    static void CopySample(const char* name, const NString& path) {
        NString source(TONEWRIGHT_SOURCE_DIR "/build/samples/");
        source.Append(NString(name));
        ASSERT_TRUE(CopyFileW(source.Text, path.Text, FALSE));
    }
    static std::string Utf8Of(const NString& text) {
        char bytes[1000] = {};
        WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, bytes, sizeof(bytes), nullptr, nullptr);
        return bytes;
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

TEST_F(Commands, TagsSaysWhatAFolderIs) {
    EXPECT_EQ(Run({L"tags", folder_.Path().Text}), ExitFailed);
    EXPECT_EQ(errors_.Text(), Said(folder_.Path(), "it is a folder, not a file"));
}

TEST_F(Commands, SetSaysThatTheFileIsNotThereIsAFolderOrIsNoAudio) {
    NString none = folder_.File(L"none.wav");
    EXPECT_EQ(Run({L"set", none.Text, L"title=One"}), ExitFailed);
    EXPECT_EQ(errors_.Text(), Said(none, "no such file"));
    EXPECT_EQ(Run({L"set", folder_.Path().Text, L"title=One"}), ExitFailed);
    EXPECT_EQ(errors_.Text(), Said(folder_.Path(), "it is a folder, not a file"));
    NString text = folder_.File(L"text.mp3");
    NFile(text, GENERIC_WRITE, CREATE_ALWAYS, false, false).Write("no audio", 8, NFile::NoSeek);
    EXPECT_EQ(Run({L"set", text.Text, L"title=One"}), ExitFailed);
    EXPECT_EQ(errors_.Text(), Said(text, "it isn't audio that the tag program can read"));
}

TEST_F(Commands, SetSaysThatAReadOnlyFileWasNotWritten) {
    SetFileAttributesW(file_.Text, FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Run({L"set", file_.Text, L"title=One", L"album="}), ExitFailed);
    EXPECT_EQ(errors_.Text(), Said(file_, "nothing was written: it is read-only"));
}

TEST_F(Commands, SetSaysThatAnotherProgramHasTheFileOpen) {
    NFile other(file_, GENERIC_READ, OPEN_EXISTING, false, true);
    EXPECT_EQ(Run({L"set", file_.Text, L"title=One"}), ExitFailed);
    EXPECT_EQ(errors_.Text(), Said(file_, "nothing was written: another program has it open"));
}

TEST_F(Commands, SetSaysThatAWriteWasRefused) {
    NString fragments = folder_.File(L"a.m4a");
    CopySample("odd/fragmented.m4a", fragments);
    EXPECT_EQ(Run({L"set", fragments.Text, L"title=One"}), ExitFailed);
    EXPECT_EQ(errors_.Text(), Said(fragments, "nothing was written: the tag program refuses the "
                                              "change, or its format can't hold it"));
}

TEST_F(Commands, SetNamesEachValueThatWasNotTaken) {
    NString sample = folder_.File(L"a.m4a");
    CopySample("sample.m4a", sample);
    // A number in this format.
    EXPECT_EQ(Run({L"set", sample.Text, L"title=One", L"tempo=rather fast"}), ExitFailed);
    EXPECT_EQ(errors_.Text(), Said(sample, "the value was not taken: tempo: rather fast"));
}

// In this format the encoder's name is no part of the tag.
TEST_F(Commands, SetAndDeleteNameEachElementThatIsLeft) {
    NString sample = folder_.File(L"a.ogg");
    CopySample("sample.ogg", sample);
    EXPECT_EQ(Run({L"set", sample.Text, L"title=One", L"encoder="}), ExitFailed);
    EXPECT_EQ(errors_.Text(), Said(sample, "still holds encoder"));
    EXPECT_EQ(Run({L"delete", sample.Text, L"title", L"encoder"}), ExitFailed);
    EXPECT_EQ(errors_.Text(), Said(sample, "still holds encoder"));
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

TEST_F(Commands, DeleteSaysThatAReadOnlyFileWasNotWritten) {
    ASSERT_EQ(Run({L"set", file_.Text, L"title=One", L"album=Two"}), ExitDone);
    SetFileAttributesW(file_.Text, FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Run({L"delete", file_.Text, L"title", L"mood"}), ExitFailed);
    EXPECT_EQ(errors_.Text(), Said(file_, "nothing was written: it is read-only"));
    EXPECT_EQ(Run({L"delete", file_.Text}), ExitFailed);
    EXPECT_EQ(errors_.Text(), Said(file_, "nothing was written: it is read-only"));
}
