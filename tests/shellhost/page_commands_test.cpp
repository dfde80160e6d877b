#include "foundation/ndisk.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/program.h"
#include "tests/shellhost/caught_stream.h"
#include "tests/shellhost/sound_file.h"
#include "tests/support/private_current_user.h"
#include "tests/support/temp_folder.h"
#include "toolkit/nbitmap.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace {
// The commands about the page Audio Properties, with the module and the decoder
// plug-in as they were built.
class PageCommands : public testing::Test {
protected:
    PageCommands() { WriteSoundFile(file_); }

    int Run(std::initializer_list<const wchar_t*> arguments) {
        std::vector<const wchar_t*> all = {L"shellhost", L"--module", module_.Text};
        all.insert(all.end(), arguments);
        return RunShellHost(static_cast<int>(all.size()), all.data());
    }
    NString Sample(const char* name) {
        NString source(TONEWRIGHT_SOURCE_DIR "/build/samples/");
        source.Append(NString(name));
        NString path = folder_.File(NString(name).Text);
        EXPECT_TRUE(CopyFileW(source.Text, path.Text, FALSE));
        return path;
    }

    TempFolder folder_;
    NString module_{TONEWRIGHT_SUITE_DIR "/tNWShell.DLL"};
    NString file_ = folder_.File(L"silence.wav");
    PrivateCurrentUser user_;
    CaughtStream output_{STD_OUTPUT_HANDLE};
    CaughtStream errors_{STD_ERROR_HANDLE};
};

// What the page shows of one file of silence.
const char RowsOfSilence[] =
    "Artist\t\nTitle\t\nAlbum\t\nTrack\t\nDisc\t\nGenre\t\nYear\t\nRating\t\n"
    "Composer\t\n"
    "Size\t844 bytes  (105% of original, .9 to 1 compression)\n"
    "Original Size\t844 bytes\n"
    "Length\t100 mili-seconds\n"
    "Channels\t1  (mono)\n"
    "Sample Rate\t8 KHz\n"
    "Sample Size\t8 bit\n"
    "Bit Rate\t64 kbps\n";
} // namespace

TEST_F(PageCommands, RowsShowsWhatThePageSaysOfOneFile) {
    EXPECT_EQ(Run({L"rows", file_.Text}), ExitDone);
    const std::string rows = output_.Text();
    EXPECT_EQ(rows.substr(0, sizeof(RowsOfSilence) - 1), RowsOfSilence);
    EXPECT_NE(rows.find("\nAudio Quality\tLossless\n"), std::string::npos);
    EXPECT_NE(rows.find("\nFile\tsilence\n"), std::string::npos);
    EXPECT_EQ(errors_.Text(), "");
}

TEST_F(PageCommands, RowsOfSeveralFilesAreTheirSums) {
    const NString other = folder_.File(L"other.wav");
    WriteSoundFile(other);
    EXPECT_EQ(Run({L"rows", file_.Text, other.Text}), ExitDone);
    const std::string rows = output_.Text();
    EXPECT_NE(rows.find("\nCombined Length\t200 mili-seconds\n"), std::string::npos);
    EXPECT_NE(rows.find("\nAverage Bit Rate\t64 kbps\n"), std::string::npos);
    EXPECT_EQ(rows.find("\nEncoder\t"), std::string::npos);
}

TEST_F(PageCommands, RowsShowsTheFirstLineOfSeveral) {
    const NString sample = Sample("sample.flac");
    ASSERT_EQ(Run({L"set", sample.Text, L"artist=One", L"artist=Two"}), ExitDone);
    output_.Text();
    EXPECT_EQ(Run({L"rows", sample.Text}), ExitDone);
    EXPECT_EQ(output_.Text().find("Artist\tOne...\n"), 0u);
}

TEST_F(PageCommands, RowsTellsOfAFileThatCanNotBeRead) {
    const NString missing = folder_.File(L"none.wav");
    EXPECT_EQ(Run({L"rows", file_.Text, missing.Text}), ExitFailed);
    EXPECT_NE(errors_.Text().find("none.wav: no such file\n"), std::string::npos);
    EXPECT_NE(output_.Text().find("\nCombined Length\t100 mili-seconds\n"), std::string::npos);
}

TEST_F(PageCommands, RowsFailsIfItsOutputIsLost) {
    output_.Break();
    EXPECT_EQ(Run({L"rows", file_.Text}), ExitFailed);
    EXPECT_EQ(errors_.Text(), "shellhost: the output can't be written\n");
}

TEST_F(PageCommands, CoversWritesEachCoverInItsCase) {
    const NString sample = Sample("sample.flac");
    const NString picture(TONEWRIGHT_SOURCE_DIR "/build/samples/odd/back.jpg");
    NString added(L"_albumart_2_Back Album Cover=@");
    added.Append(picture);
    ASSERT_EQ(Run({L"set", sample.Text, added.Text}), ExitDone) << errors_.Text();
    output_.Text();
    const NString folder = folder_.File(L"new");
    EXPECT_EQ(Run({L"covers", sample.Text, L"--to", folder.Text}), ExitDone);
    for (const wchar_t* name : {L"new\\sample.flac-1.png", L"new\\sample.flac-2.png"}) {
        NBitmap cover;
        ASSERT_TRUE(cover.LoadFile(folder_.File(name))) << name;
        EXPECT_EQ(cover.Width(), 99);
        EXPECT_EQ(cover.Height(), 90);
    }
    bool isFolder = false;
    EXPECT_FALSE(NPathExists(folder_.File(L"new\\sample.flac-3.png"), isFolder));
    const std::string paths = output_.Text();
    EXPECT_NE(paths.find("sample.flac-1.png\n"), std::string::npos);
    EXPECT_NE(paths.find("sample.flac-2.png\n"), std::string::npos);
}

TEST_F(PageCommands, CoversFailsOnAFileWithoutATag) {
    EXPECT_EQ(Run({L"covers", file_.Text, L"--to", folder_.File(L"new").Text}), ExitFailed);
    EXPECT_NE(errors_.Text().find("silence.wav: has no tag that a decoder can read\n"),
              std::string::npos);
}

TEST_F(PageCommands, CoversFailsWhereItCanNotWrite) {
    const NString sample = Sample("sample.flac");
    // A file stands where the folder is to be.
    EXPECT_EQ(Run({L"covers", sample.Text, L"--to", file_.Text}), ExitFailed);
    EXPECT_NE(errors_.Text().find("sample.flac-1.png: can't be written\n"), std::string::npos);
}

TEST_F(PageCommands, CoversWantsItsFolder) {
    EXPECT_EQ(Run({L"covers", file_.Text, L"into", L"x"}), ExitUsage);
    EXPECT_EQ(errors_.Text(), "usage: shellhost covers FILE --to FOLDER\n");
    EXPECT_EQ(Run({L"covers", file_.Text}), ExitUsage);
}
