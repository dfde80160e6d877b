#include "foundation/unique_handle.h"
#include "suite/shellhost/file_problem.h"
#include "tests/shellhost/sound_file.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace {
class FileProblem : public testing::Test {
protected:
    FileProblem() { WriteSoundFile(path_); }

    UniqueFileHandle Hold(DWORD access, DWORD sharing) {
        return UniqueFileHandle(
            CreateFileW(path_.Text, access, sharing, nullptr, OPEN_EXISTING, 0, nullptr));
    }

    TempFolder folder_;
    NString path_ = folder_.File(L"a.wav");
};

constexpr wchar_t IsOpen[] = L"another program has it open";
constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
} // namespace

TEST_F(FileProblem, AnOrdinaryFileHasNone) {
    EXPECT_EQ(ReadProblem(path_), L"");
    EXPECT_EQ(WriteProblem(path_), L"");
}

TEST_F(FileProblem, WhatIsMissingOrAFolderCanBeNeitherReadNorWritten) {
    NString missing = folder_.File(L"none");
    EXPECT_EQ(ReadProblem(missing), L"no such file");
    EXPECT_EQ(WriteProblem(missing), L"no such file");
    EXPECT_EQ(ReadProblem(folder_.Path()), L"it is a folder, not a file");
    EXPECT_EQ(WriteProblem(L"C:\\"), L"it is a folder, not a file");
}

TEST_F(FileProblem, AReadOnlyFileCanBeRead) {
    SetFileAttributesW(path_.Text, FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(ReadProblem(path_), L"");
    EXPECT_EQ(WriteProblem(path_), L"it is read-only");
}

TEST_F(FileProblem, AReaderThatSharesReadingAloneHindersWritingAlone) {
    UniqueFileHandle reader = Hold(GENERIC_READ, FILE_SHARE_READ);
    EXPECT_EQ(ReadProblem(path_), L"");
    EXPECT_EQ(WriteProblem(path_), IsOpen);
}

TEST_F(FileProblem, AReaderThatSharesAllHindersNothing) {
    UniqueFileHandle reader = Hold(GENERIC_READ, ShareAll);
    EXPECT_EQ(WriteProblem(path_), L"");
}

TEST_F(FileProblem, AnotherWriterHindersWriting) {
    UniqueFileHandle writer = Hold(GENERIC_WRITE, ShareAll);
    EXPECT_EQ(WriteProblem(path_), IsOpen);
}

TEST_F(FileProblem, AFileThatIsNotSharedHindersReading) {
    UniqueFileHandle owner = Hold(GENERIC_READ, 0);
    EXPECT_EQ(ReadProblem(path_), IsOpen);
}

TEST_F(FileProblem, APathThatIsTooLongIsNoFile) {
    NString path(L"\\\\server\\share\\");
    path.SetLength(300, L'x');
    EXPECT_EQ(ReadProblem(path), L"no such file");
}
