#include "foundation/module_instance.h"
#include "foundation/nfolders.h"
#include "suite/shellhost/module_host.h"
#include "suite/shellhost/session.h"
#include "suite/shellhost/tag_reading.h"
#include "tests/shellhost/sound_file.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace {
class TagReading : public testing::Test {
protected:
    void LoadModule() {
        ASSERT_TRUE(module_.LoadFrom(NString(TONEWRIGHT_SUITE_DIR "/tNWShell.DLL").Text));
    }
    bool Read(const NString& path) { return ReadTag(path, tag_, problem_); }

    OleSession ole_;
    ModuleHost module_;
    TempFolder folder_;
    clTagRecord tag_;
    NString problem_;
};

NString ProblemWith(const NString& path, const wchar_t* reason) {
    NString text(L"shellhost: ");
    text.Append(path);
    text.Append(L": ");
    text.Append(reason);
    return text;
}
} // namespace

TEST_F(TagReading, AFileWithoutATagHasAnEmptyRecord) {
    LoadModule();
    NString path = folder_.File(L"ä.wav");
    WriteSoundFile(path);
    tag_.Add(L"title", L"from before");
    EXPECT_TRUE(Read(path));
    EXPECT_EQ(tag_.Count(), 0);
    EXPECT_TRUE(problem_.IsEmpty());
}

TEST_F(TagReading, SaysThatAFileIsNotThere) {
    LoadModule();
    NString path = folder_.File(L"none.wav");
    EXPECT_FALSE(Read(path));
    EXPECT_EQ(problem_, ProblemWith(path, L"no such file"));
}

TEST_F(TagReading, SaysThatAFolderIsOne) {
    LoadModule();
    EXPECT_FALSE(Read(folder_.Path()));
    EXPECT_EQ(problem_, ProblemWith(folder_.Path(), L"it is a folder, not a file"));
}

TEST_F(TagReading, SaysThatAnotherProgramHasTheFileOpen) {
    LoadModule();
    NString path = folder_.File(L"a.wav");
    WriteSoundFile(path);
    NFile other(path, GENERIC_READ, OPEN_EXISTING, false, false);
    EXPECT_FALSE(Read(path));
    EXPECT_EQ(problem_, ProblemWith(path, L"another program has it open"));
}

TEST_F(TagReading, SaysThatTheTagProgramCanNotReadIt) {
    LoadModule();
    NString path = folder_.File(L"text.mp3");
    NFile(path, GENERIC_WRITE, CREATE_ALWAYS, false, false).Write("no audio", 8, NFile::NoSeek);
    EXPECT_FALSE(Read(path));
    EXPECT_EQ(problem_, ProblemWith(path, L"it isn't audio that the tag program can read"));
}

TEST_F(TagReading, SaysWhereTheTagProgramIsMissing) {
    // Without a module it is looked for beside this program.
    NString path = folder_.File(L"a.wav");
    WriteSoundFile(path);
    EXPECT_FALSE(Read(path));
    NString sibling = NGetModuleFolder(nullptr).Concat(L"QueryTrackData.exe");
    EXPECT_EQ(
        problem_,
        ProblemWith(path, NString(L"the tag program is missing: ").Concat(sibling.Text).Text));
}
