#include "foundation/npath.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

namespace {
// "C:\" and as many further characters as make `length` in all.
NString DrivePath(int length) {
    NString path(L"C:\\");
    path.SetLength(length, L'a');
    return path;
}

NString UncPath(int length) {
    NString path(L"\\\\server\\share\\");
    path.SetLength(length, L'a');
    return path;
}

struct Popped {
    NString path;
    NString part;
};
Popped Pop(const wchar_t* text) {
    Popped popped;
    popped.path = text;
    popped.part = NPopPathPart(popped.path);
    return popped;
}
} // namespace

TEST(Path, TheExtensionStartsAtTheLastDot) {
    EXPECT_EQ(NGetFileExt(L"C:\\Music\\song.mp3"), L".mp3");
    EXPECT_EQ(NGetFileExt(L"c.tar.gz"), L".gz");
    EXPECT_EQ(NGetFileExt(L".hidden"), L".hidden");
    EXPECT_EQ(NGetFileExt(L"ends."), L".");
}

TEST(Path, ADotBeforeTheLastBackslashIsNoExtension) {
    EXPECT_EQ(NGetFileExt(L"C:\\a.b\\c"), L".");
    EXPECT_EQ(NGetFileExt(L"C:\\a.b\\"), L".");
}

TEST(Path, WithoutAnExtensionTheResultIsADot) {
    EXPECT_EQ(NGetFileExt(L"song"), L".");
    EXPECT_EQ(NGetFileExt(L""), L".");
}

TEST(Path, ASlashDoesntSeparate) {
    EXPECT_EQ(NGetFileExt(L"C:/a.b/c"), L".b/c");
    EXPECT_EQ(NGetFileName(L"C:\\a/b"), L"a/b");
    EXPECT_EQ(NAppendBackslash(L"C:/a/"), L"C:/a/\\");
}

TEST(Path, TheFileNameStandsBehindTheLastBackslash) {
    EXPECT_EQ(NGetFileName(L"C:\\Music\\song.mp3"), L"song.mp3");
    EXPECT_EQ(NGetFileName(L"song.mp3"), L"song.mp3");
    EXPECT_EQ(NGetFileName(L"C:\\Music\\"), L"");
    EXPECT_EQ(NGetFileName(L""), L"");
}

TEST(Path, RemovingTheExtensionTakesTheLastDotWhereverItStands) {
    EXPECT_EQ(NRemoveExt(L"song.live.mp3"), L"song.live");
    EXPECT_EQ(NRemoveExt(L"C:\\a.b\\c"), L"C:\\a");
    EXPECT_EQ(NRemoveExt(L"song"), L"song");
    EXPECT_EQ(NRemoveExt(L".hidden"), L"");
}

TEST(Path, TheFolderKeepsItsBackslash) {
    EXPECT_EQ(NGetFolder(L"C:\\Music\\song.mp3"), L"C:\\Music\\");
    EXPECT_EQ(NGetFolder(L"C:\\Music\\"), L"C:\\Music\\");
    EXPECT_EQ(NGetFolder(L"song.mp3"), L"song.mp3");
}

TEST(Path, TheBaseNameHasNeitherFolderNorExtension) {
    EXPECT_EQ(NGetBaseName(L"C:\\a.b\\song.live.mp3"), L"song.live");
    EXPECT_EQ(NGetBaseName(L"C:\\a.b\\c"), L"c");
}

TEST(Path, OneBackslashIsAddedUnlessThereIsOne) {
    EXPECT_EQ(NAppendBackslash(L"C:\\Music"), L"C:\\Music\\");
    EXPECT_EQ(NAppendBackslash(L"C:\\Music\\"), L"C:\\Music\\");
    EXPECT_EQ(NAppendBackslash(L""), L"\\");
}

TEST(Path, AllBackslashesAtTheEndGo) {
    EXPECT_EQ(NRemoveBackslashes(L"C:\\Music\\\\\\"), L"C:\\Music");
    EXPECT_EQ(NRemoveBackslashes(L"C:\\Music"), L"C:\\Music");
    EXPECT_EQ(NRemoveBackslashes(L"\\\\"), L"");
    EXPECT_EQ(NRemoveBackslashes(L""), L"");
}

TEST(Path, TwoBackslashesAtTheStartMakeAUncPath) {
    EXPECT_TRUE(NIsUncPath(L"\\\\server\\share"));
    EXPECT_TRUE(NIsUncPath(L"\\\\"));
    EXPECT_FALSE(NIsUncPath(L"\\server"));
    EXPECT_FALSE(NIsUncPath(L"C:\\\\"));
    EXPECT_FALSE(NIsUncPath(L""));
}

TEST(Path, QuotingAddsNothingButTheQuotes) {
    EXPECT_EQ(NQuote(L"C:\\My Music"), L"\"C:\\My Music\"");
    EXPECT_EQ(NQuote(L""), L"\"\"");
}

TEST(Path, UnquotingEndsAtTheNextQuote) {
    EXPECT_EQ(NUnquote(L"\"C:\\My Music\\a.dll\" /x"), L"C:\\My Music\\a.dll");
    EXPECT_EQ(NUnquote(L"\"C:\\a.dll"), L"C:\\a.dll");
    EXPECT_EQ(NUnquote(L"C:\\a.dll\" x"), L"C:\\a.dll\" x");
    EXPECT_EQ(NUnquote(L"\"\""), L"");
}

TEST(PopPathPart, TakesTheLastComponentAndLeavesABackslash) {
    Popped popped = Pop(L"C:\\Music\\Live");
    EXPECT_EQ(popped.part, L"Live");
    EXPECT_EQ(popped.path, L"C:\\Music\\");
}

TEST(PopPathPart, BackslashesBehindTheComponentGo) {
    Popped popped = Pop(L"C:\\Music\\Live\\\\");
    EXPECT_EQ(popped.part, L"Live");
    EXPECT_EQ(popped.path, L"C:\\Music\\");
}

TEST(PopPathPart, StopsAtTheRootOfADrive) {
    Popped last = Pop(L"C:\\a");
    EXPECT_EQ(last.part, L"a");
    EXPECT_EQ(last.path, L"C:\\");
    for (const wchar_t* root : {L"C:\\", L"C:\\\\", L"C:", L"C", L""}) {
        Popped popped = Pop(root);
        EXPECT_EQ(popped.part, L"");
        EXPECT_EQ(popped.path, root);
    }
}

TEST(PopPathPart, TheRootOfAServerIsItsName) {
    Popped popped = Pop(L"\\\\server\\share");
    EXPECT_EQ(popped.part, L"share");
    EXPECT_EQ(popped.path, L"\\\\server\\");
    EXPECT_EQ(Pop(L"\\\\server\\").part, L"");
}

TEST(PopPathPart, TheRootOfALongPathHoldsItsPrefix) {
    Popped popped = Pop(L"\\\\?\\C:\\a");
    EXPECT_EQ(popped.part, L"a");
    EXPECT_EQ(popped.path, L"\\\\?\\C:\\");
    EXPECT_EQ(Pop(L"\\\\?\\C:\\").part, L"");
}

TEST(PopPathPart, APathWithoutARootIsLeftAlone) {
    Popped popped = Pop(L"song.mp3");
    EXPECT_EQ(popped.part, L"");
    EXPECT_EQ(popped.path, L"song.mp3");
}

TEST(PathForApi, APathBelowTheLimitGoesAsItIs) {
    EXPECT_EQ(NPathForApi(DrivePath(259), NFilePathLimit), DrivePath(259));
    EXPECT_EQ(NPathForApi(DrivePath(247), NFolderPathLimit), DrivePath(247));
    EXPECT_EQ(NPathForApi(L"", NFilePathLimit), L"");
}

TEST(PathForApi, APathAtTheLimitGetsThePrefix) {
    EXPECT_EQ(NPathForApi(DrivePath(260), NFilePathLimit),
              NString(L"\\\\?\\").Concat(DrivePath(260).Text));
    EXPECT_EQ(NPathForApi(DrivePath(248), NFolderPathLimit),
              NString(L"\\\\?\\").Concat(DrivePath(248).Text));
}

TEST(PathForApi, CharactersOutsideTheCodePageAreNoMatterOnADrive) {
    EXPECT_EQ(NPathForApi(L"C:\\\u4E2D\u6587", NFilePathLimit), L"C:\\\u4E2D\u6587");
}

TEST(PathForApi, AUncPathBelowTheLimitGoesAsItIs) {
    EXPECT_EQ(NPathForApi(UncPath(259), NFilePathLimit), UncPath(259));
}

TEST(PathForApi, AUncPathAtTheLimitIsEmpty) {
    EXPECT_EQ(NPathForApi(UncPath(260), NFilePathLimit), L"");
    EXPECT_EQ(NPathForApi(UncPath(248), NFolderPathLimit), L"");
}

TEST(PathForApi, AUncPathWithACharacterOutsideTheCodePageIsEmpty) {
    // Half of a surrogate pair is in no code page at all.
    EXPECT_EQ(NPathForApi(L"\\\\server\\\xD800", NFilePathLimit), L"");
}

TEST(PathForApi, APathWithThePrefixCountsAsAUncPath) {
    NString longPath = NString(L"\\\\?\\").Concat(DrivePath(260).Text);
    EXPECT_EQ(NPathForApi(longPath, NFilePathLimit), L"");
    EXPECT_EQ(NPathForApi(L"\\\\?\\C:\\a", NFilePathLimit), L"\\\\?\\C:\\a");
}
