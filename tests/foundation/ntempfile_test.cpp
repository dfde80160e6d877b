#include "foundation/ndisk.h"
#include "foundation/nfile.h"
#include "foundation/nfilefind.h"
#include "foundation/nfolders.h"
#include "foundation/npath.h"
#include "foundation/ntempfile.h"
#include "tests/support/message_box_driver.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace {
class TempFiles : public testing::Test {
protected:
    static bool Exists(const NString& path) {
        bool isFolder = false;
        return NPathExists(path, isFolder);
    }
    static int FilesIn(const NString& folder) {
        NFileFind find(L"*", folder);
        int count = 0;
        while (find.Next())
            ++count;
        return count;
    }

    TempFolder folder_;
    ScopedEnvironment temp_{L"TMP", folder_.Path().Text};
};
} // namespace

TEST_F(TempFiles, AnEmptyFileStandsInTheTempFolderWithThePrefix) {
    NTempFile file("tNP");
    EXPECT_EQ(NGetFolder(file), NAppendBackslash(folder_.Path()));
    EXPECT_EQ(NGetFileName(file).Left(3), L"tNP");
    bool failed = true;
    EXPECT_EQ(NGetFileSize(file, failed), 0);
    EXPECT_FALSE(failed);
}

TEST_F(TempFiles, WithoutAPrefixTheNameBeginsWithTmp) {
    NTempFile file;
    EXPECT_EQ(NGetFileName(file).Left(3), L"TMP");
}

TEST_F(TempFiles, ASuffixIsAddedAndNoOtherFileIsLeft) {
    NTempFile file("tNP", ".jpg");
    EXPECT_EQ(file.Right(8), L".tmp.jpg");
    EXPECT_TRUE(Exists(file));
    EXPECT_EQ(FilesIn(folder_.Path()), 1);
}

TEST_F(TempFiles, TheFileGoesWithItsObject) {
    NString path;
    {
        NTempFile file("tNP");
        path = file;
        ASSERT_TRUE(Exists(path));
    }
    EXPECT_FALSE(Exists(path));
}

TEST_F(TempFiles, AFileMadeReadOnlyGoesToo) {
    {
        NTempFile file("tNP");
        NSetFileAttributes(file, FILE_ATTRIBUTE_READONLY, 0);
    }
    EXPECT_EQ(FilesIn(folder_.Path()), 0);
}

TEST_F(TempFiles, AnEmptiedPathDeletesNothing) {
    NString path;
    {
        NTempFile file("tNP");
        path = file;
        file.Assign(L"");
    }
    EXPECT_TRUE(Exists(path));
}

TEST_F(TempFiles, TwoFilesHaveTwoNames) {
    NTempFile first("tNP");
    NTempFile second("tNP");
    EXPECT_FALSE(first == second);
}

TEST_F(TempFiles, AMissingFolderIsMadeAtTheSecondTry) {
    NString missing = folder_.File(L"new\\deep");
    ScopedEnvironment temp(L"TMP", missing.Text);
    NTempFile file("tNPlong");
    EXPECT_TRUE(Exists(file));
    // The name is a random number, and the whole prefix stands in it.
    EXPECT_EQ(NGetFolder(file), NAppendBackslash(missing));
    NString name = NGetFileName(file);
    EXPECT_EQ(name.Left(7), L"tNPlong");
    EXPECT_EQ(name.Right(4), L".tmp");
    NString number = name.Mid(8, name.CharCount() - 4);
    EXPECT_EQ(NString::FromInt(number.ToInt()), number);
    EXPECT_GE(number.ToInt(), 0);
    EXPECT_LT(number.ToInt(), 9999);
}

TEST_F(TempFiles, ASuffixFollowsTheRandomNameInAMissingFolder) {
    NString missing = folder_.File(L"new\\deep");
    ScopedEnvironment temp(L"TMP", missing.Text);
    NTempFile file("tNP", ".jpg");
    EXPECT_TRUE(Exists(file));
    EXPECT_EQ(NGetFolder(file), NAppendBackslash(missing));
    NString name = NGetFileName(file);
    EXPECT_EQ(name.Left(3), L"tNP");
    EXPECT_EQ(name.Right(8), L".tmp.jpg");
    NString number = name.Mid(4, name.CharCount() - 8);
    EXPECT_EQ(NString::FromInt(number.ToInt()), number);
    EXPECT_EQ(FilesIn(missing), 1);
}

TEST_F(TempFiles, WhenNoFileCanBeMadeThePathStandsAllTheSame) {
    // A file lies where the folder should be.
    NString inTheWay = folder_.File(L"file");
    { NFile file(inTheWay, GENERIC_WRITE, CREATE_ALWAYS, false, true); }
    ScopedEnvironment temp(L"TMP", folder_.File(L"file\\below").Text);
    MessageBoxDriver driver;
    NTempFile file("tNP");
    EXPECT_FALSE(file.IsEmpty());
    EXPECT_FALSE(Exists(file));
    EXPECT_FALSE(NFile(file, GENERIC_READ, OPEN_EXISTING, false, true).IsOpen());
    EXPECT_TRUE(driver.Boxes().empty());
}
