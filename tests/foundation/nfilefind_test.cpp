#include "foundation/nfile.h"
#include "foundation/nfilefind.h"
#include "foundation/npath.h"
#include "tests/foundation/scoped_current_folder.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/temp_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {
class FileFind : public testing::Test {
protected:
    void MakeFile(const wchar_t* name, const char* bytes = "") {
        NFile file(folder_.File(name), GENERIC_WRITE, CREATE_ALWAYS, false, true);
        file.Write(bytes, static_cast<uint32_t>(strlen(bytes)), NFile::NoSeek);
    }
    void MakeFolder(const wchar_t* name) { CreateDirectoryW(folder_.File(name).Text, nullptr); }
    static std::vector<std::wstring> NamesOf(NFileFind& find) {
        std::vector<std::wstring> names;
        while (find.Next())
            names.push_back(find.FindData.cFileName);
        return names;
    }

    TempFolder folder_;
};
} // namespace

TEST_F(FileFind, TheFieldsStandInTheirOrder) {
    EXPECT_EQ(offsetof(NFileFind, Path), 0u);
    EXPECT_LT(offsetof(NFileFind, Path), offsetof(NFileFind, FindData));
    EXPECT_LT(offsetof(NFileFind, FindData), offsetof(NFileFind, Handle));
    EXPECT_LT(offsetof(NFileFind, Handle), offsetof(NFileFind, Pattern));
    EXPECT_LT(offsetof(NFileFind, Pattern), offsetof(NFileFind, FoldersOnly));
}

TEST_F(FileFind, FindsAllThatMatchesThePattern) {
    MakeFile(L"one.dll");
    MakeFile(L"two.dll");
    MakeFile(L"three.txt");
    NFileFind find(L"*.dll", folder_.Path());
    EXPECT_THAT(NamesOf(find), UnorderedElementsAre(L"one.dll", L"two.dll"));
}

TEST_F(FileFind, TheFoldersOwnEntriesArePassedOver) {
    MakeFolder(L"inner");
    MakeFile(L"file");
    NFileFind find(L"*", folder_.Path());
    EXPECT_THAT(NamesOf(find), UnorderedElementsAre(L"inner", L"file"));
}

TEST_F(FileFind, CanReportFoldersAlone) {
    MakeFile(L"file");
    MakeFolder(L"inner");
    NFileFind find(L"*", folder_.Path());
    EXPECT_FALSE(find.FoldersOnly);
    find.FoldersOnly = true;
    EXPECT_THAT(NamesOf(find), ElementsAre(L"inner"));
}

TEST_F(FileFind, AnEntryHasItsFullPathAndThePatternBecomesItsFolder) {
    MakeFile(L"file", "abc");
    NFileFind find(L"f*", folder_.Path());
    EXPECT_EQ(find.Handle, reinterpret_cast<HANDLE>(-1));
    ASSERT_TRUE(find.Next());
    EXPECT_NE(find.Handle, reinterpret_cast<HANDLE>(-1));
    EXPECT_EQ(find.Path, folder_.File(L"file"));
    EXPECT_EQ(find.Pattern, NAppendBackslash(folder_.Path()));
    EXPECT_EQ(find.FindData.nFileSizeLow, 3u);
    EXPECT_FALSE(find.IsFolder());
    EXPECT_FALSE(find.Next());
}

TEST_F(FileFind, APathAloneFindsItselfWithBackslashesAtItsEndToo) {
    MakeFolder(L"inner");
    NFileFind find(folder_.File(L"inner\\\\"));
    ASSERT_TRUE(find.Next());
    EXPECT_EQ(find.Path, folder_.File(L"inner"));
    EXPECT_TRUE(find.IsFolder());
}

TEST_F(FileFind, APatternWithoutAFolderIsLookedUpInTheCurrentOne) {
    MakeFile(L"one.dll");
    MakeFile(L"two.txt");
    ScopedCurrentFolder here(folder_.Path());
    NFileFind find(L"*.dll");
    ASSERT_TRUE(find.Next());
    EXPECT_EQ(find.Path, L"one.dll");
    EXPECT_EQ(find.Pattern, L"");
    EXPECT_FALSE(find.Next());
}

TEST_F(FileFind, APatternWithAnEmptyFolderIsLookedUpInTheRoot) {
    MakeFile(L"tonewright-test.dll");
    ScopedCurrentFolder here(folder_.Path());
    NFileFind find(L"tonewright-test.dll", L"");
    EXPECT_EQ(find.Pattern, L"\\tonewright-test.dll");
    EXPECT_FALSE(find.Next());
}

TEST_F(FileFind, WhatIsMissingGivesNothing) {
    NFileFind inMissingFolder(L"*", folder_.File(L"missing"));
    EXPECT_EQ(inMissingFolder.Next(), 0);
    NFileFind missing(folder_.File(L"missing"));
    EXPECT_EQ(missing.Next(), 0);
    EXPECT_EQ(missing.Next(), 0);
    NFileFind empty(L"");
    EXPECT_EQ(empty.Next(), 0);
}

TEST_F(FileFind, AFolderBeyondTheLimitOfLengthIsScanned) {
    NString folder = folder_.Path();
    while (folder.CharCount() < 260) {
        folder.Append(L"\\dddddddddddddddddddddddddddddddddddddddd");
        CreateDirectoryW(NString(L"\\\\?\\").Concat(folder.Text).Text, nullptr);
    }
    NString inner = NAppendBackslash(folder).Concat(L"inner");
    ASSERT_TRUE(CreateDirectoryW(NString(L"\\\\?\\").Concat(inner.Text).Text, nullptr));
    NFileFind find(L"*", folder);
    ASSERT_TRUE(find.Next());
    EXPECT_EQ(find.Path, inner);
}
