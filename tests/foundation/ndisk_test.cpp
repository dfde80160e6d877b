#include "foundation/ndisk.h"
#include "foundation/nfile.h"
#include "tests/foundation/scoped_current_folder.h"
#include "tests/support/message_box_driver.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace {
class Disk : public testing::Test {
protected:
    NString MakeFile(const wchar_t* name, uint32_t size = 0) {
        NString path = folder_.File(name);
        NFile file(path, GENERIC_WRITE, CREATE_ALWAYS, false, true);
        for (uint32_t index = 0; index < size; ++index)
            file.Write("x", 1, NFile::NoSeek);
        return path;
    }
    bool Exists(const NString& path) {
        return GetFileAttributesW(path.Text) != INVALID_FILE_ATTRIBUTES;
    }

    TempFolder folder_;
};
} // namespace

TEST_F(Disk, TheSizeOfAFileIsInBytes) {
    bool failed = true;
    EXPECT_EQ(NGetFileSize(MakeFile(L"file", 5), failed), 5);
    EXPECT_FALSE(failed);
}

TEST_F(Disk, TheSizeOfAFileMayExceedFourGigabytes) {
    NString path = folder_.File(L"sparse");
    NFile file(path, GENERIC_WRITE, CREATE_ALWAYS, false, true);
    ASSERT_TRUE(file.Seek(0x180000001, NFile::FromStart));
    ASSERT_TRUE(SetEndOfFile(file.Handle));
    file.Close();
    bool failed = true;
    EXPECT_EQ(NGetFileSize(path, failed), 0x180000001);
}

TEST_F(Disk, AMissingFileHasNeitherSizeNorAttributes) {
    NString missing = folder_.File(L"missing");
    bool failed = false;
    EXPECT_EQ(NGetFileSize(missing, failed), 0);
    EXPECT_TRUE(failed);
    failed = false;
    EXPECT_EQ(NGetFileAttributes(missing, failed), 0u);
    EXPECT_TRUE(failed);
    EXPECT_FALSE(NSetFileAttributes(missing, FILE_ATTRIBUTE_READONLY, 0));
}

TEST_F(Disk, AttributesAreAddedAndTakenAway) {
    NString path = MakeFile(L"file");
    bool failed = true;
    uint32_t before = NGetFileAttributes(path, failed);
    EXPECT_FALSE(failed);
    EXPECT_TRUE(NSetFileAttributes(path, FILE_ATTRIBUTE_READONLY, 0));
    EXPECT_EQ(NGetFileAttributes(path, failed), before | FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(NSetFileAttributes(path, FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(NGetFileAttributes(path, failed), before | FILE_ATTRIBUTE_HIDDEN);
}

TEST_F(Disk, WhatIsBothSetAndClearedIsCleared) {
    NString path = MakeFile(L"file");
    NSetFileAttributes(path, FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_READONLY);
    bool failed = true;
    EXPECT_FALSE(NGetFileAttributes(path, failed) & FILE_ATTRIBUTE_READONLY);
}

TEST_F(Disk, FilesAndFoldersExist) {
    bool isFolder = true;
    EXPECT_TRUE(NPathExists(MakeFile(L"file"), isFolder));
    EXPECT_FALSE(isFolder);
    EXPECT_TRUE(NPathExists(folder_.Path(), isFolder));
    EXPECT_TRUE(isFolder);
    EXPECT_TRUE(NPathExists(folder_.File(L""), isFolder));
    EXPECT_TRUE(isFolder);
}

TEST_F(Disk, TheRootOfADriveIsAFolderThatExists) {
    for (const wchar_t* root : {L"C:\\", L"C:"}) {
        bool isFolder = false;
        EXPECT_TRUE(NPathExists(root, isFolder));
        EXPECT_TRUE(isFolder);
    }
}

TEST_F(Disk, WhatIsMissingDoesntExist) {
    for (const wchar_t* missing : {L"", L"B:\\", L"C:\\no such folder"}) {
        bool isFolder = true;
        EXPECT_FALSE(NPathExists(missing, isFolder));
        EXPECT_FALSE(isFolder);
    }
}

TEST_F(Disk, FoldersAreMadeFromTheRootDown) {
    NString deep = folder_.File(L"a\\b\\\u4E2D");
    EXPECT_NE(NCreateFolders(deep), 0);
    bool isFolder = false;
    EXPECT_TRUE(NPathExists(deep, isFolder));
    EXPECT_TRUE(isFolder);
}

TEST_F(Disk, MakingFoldersThatExistSucceeds) {
    EXPECT_NE(NCreateFolders(folder_.Path()), 0);
    EXPECT_NE(NCreateFolders(folder_.File(L"")), 0);
    EXPECT_NE(NCreateFolders(L"C:\\"), 0);
}

TEST_F(Disk, OfARelativePathTheFirstPartMustBeThere) {
    ScopedCurrentFolder here(folder_.Path());
    EXPECT_EQ(NCreateFolders(L"music\\new\\deep"), 0);
    EXPECT_FALSE(Exists(folder_.File(L"music")));
    ASSERT_TRUE(CreateDirectoryW(L"music", nullptr));
    EXPECT_NE(NCreateFolders(L"music\\new\\deep"), 0);
    EXPECT_TRUE(Exists(folder_.File(L"music\\new\\deep")));
}

TEST_F(Disk, ARelativePathOfOnePartIsAllRootAndMakesNothing) {
    ScopedCurrentFolder here(folder_.Path());
    EXPECT_NE(NCreateFolders(L"music"), 0);
    EXPECT_NE(NCreateFolders(L"music\\"), 0);
    EXPECT_FALSE(Exists(folder_.File(L"music")));
}

TEST_F(Disk, TheRootOfARelativePathReachesItsThirdCharacter) {
    ScopedCurrentFolder here(folder_.Path());
    ASSERT_TRUE(CreateDirectoryW(L"a", nullptr));
    EXPECT_EQ(NCreateFolders(L"a\\b\\c"), 0);
    EXPECT_FALSE(Exists(folder_.File(L"a\\b")));
    ASSERT_TRUE(CreateDirectoryW(L"a\\b", nullptr));
    EXPECT_NE(NCreateFolders(L"a\\b\\c"), 0);
    EXPECT_TRUE(Exists(folder_.File(L"a\\b\\c")));
}

TEST_F(Disk, FoldersBeyondTheLimitOfLengthAreMade) {
    NString deep = folder_.Path();
    while (deep.CharCount() < 300)
        deep.Append(L"\\dddddddddddddddddddddddddddddddddddddddd");
    EXPECT_NE(NCreateFolders(deep), 0);
    bool isFolder = false;
    EXPECT_TRUE(NPathExists(deep, isFolder));
}

TEST_F(Disk, AFileInTheWayEndsTheWalk) {
    NString file = MakeFile(L"file");
    EXPECT_EQ(NCreateFolders(folder_.File(L"file\\below\\further")), 0);
    // Whatever stands at the end of the path counts as being there: wanted.
    EXPECT_NE(NCreateFolders(file), 0);
}

TEST_F(Disk, APathTheLimitsRuleOutMakesNoFolder) {
    NString longUnc(L"\\\\?\\C:\\");
    longUnc.SetLength(248, L'a');
    EXPECT_EQ(NCreateFolders(longUnc), 0);
    EXPECT_EQ(NCreateFolders(L""), 0);
}

TEST_F(Disk, AFileThatCanBeOpenedMayBeTooLongForAllElse) {
    // Written with the prefix, so that the limits tell at all.
    for (int length : {247, 248, 259}) {
        NString path(L"\\\\?\\");
        path.Append(folder_.File(L"f"));
        path.SetLength(length, L'f');
        bool fits = length < 248;
        ASSERT_TRUE(NFile(path, GENERIC_WRITE, CREATE_ALWAYS, false, true).IsOpen());
        bool failed = false;
        NGetFileSize(path, failed);
        EXPECT_EQ(failed, !fits);
        bool isFolder = false;
        EXPECT_EQ(NPathExists(path, isFolder), fits);
        EXPECT_EQ(NSetFileAttributes(path, FILE_ATTRIBUTE_READONLY, 0), fits);
        EXPECT_EQ(NDeleteFile(path), fits);
        EXPECT_EQ(Exists(path), !fits);
    }
}

TEST_F(Disk, AFileIsDeleted) {
    NString path = MakeFile(L"file");
    EXPECT_TRUE(NDeleteFile(path));
    EXPECT_FALSE(Exists(path));
}

TEST_F(Disk, AReadOnlyFileIsDeletedOnTheSecondTry) {
    NString path = MakeFile(L"file");
    NSetFileAttributes(path, FILE_ATTRIBUTE_READONLY, 0);
    EXPECT_FALSE(NDeleteFile(path, true));
    ASSERT_TRUE(Exists(path));
    EXPECT_TRUE(NDeleteFile(path));
    EXPECT_FALSE(Exists(path));
}

TEST_F(Disk, AFileThatCantBeDeletedStaysWithoutAMessage) {
    MessageBoxDriver driver;
    NString path = MakeFile(L"file");
    NFile open(path, GENERIC_READ, OPEN_EXISTING, false, true);
    EXPECT_FALSE(NDeleteFile(path));
    EXPECT_TRUE(Exists(path));
    EXPECT_FALSE(NDeleteFile(folder_.File(L"missing")));
    EXPECT_TRUE(driver.Boxes().empty());
}
