#include "foundation/ndropfiles.h"
#include "foundation/unique_handle.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>
#include <string>
#include <vector>

namespace {
// The block that a shell hands over: a header, then the paths, each with a
// terminator, and a further one.
UniqueGlobalMemory MakeDrop(const std::vector<std::wstring>& paths) {
    std::wstring text;
    for (const std::wstring& path : paths)
        text += path + L'\0';
    text += L'\0';
    if (paths.empty())
        text += L'\0';
    size_t size = sizeof(DROPFILES) + text.size() * sizeof(wchar_t);
    UniqueGlobalMemory block(GlobalAlloc(GHND, size));
    auto* header = static_cast<DROPFILES*>(GlobalLock(block.Get()));
    header->pFiles = sizeof(DROPFILES);
    header->fWide = TRUE;
    memcpy(header + 1, text.data(), text.size() * sizeof(wchar_t));
    GlobalUnlock(block.Get());
    return block;
}

// A block of exactly these bytes behind a header that leads to `offset`. Behind
// its end lies what a longer block has left there.
UniqueGlobalMemory MakeBlock(DWORD offset, BOOL wide, const void* bytes, size_t size) {
    constexpr size_t Room = 4096;
    UniqueGlobalMemory block(GlobalAlloc(GMEM_MOVEABLE, Room));
    memset(GlobalLock(block.Get()), 'x', Room);
    GlobalUnlock(block.Get());
    block.Reset(GlobalReAlloc(block.Release(), sizeof(DROPFILES) + size, GMEM_MOVEABLE));
    auto* header = static_cast<DROPFILES*>(GlobalLock(block.Get()));
    *header = {};
    header->pFiles = offset;
    header->fWide = wide;
    memcpy(header + 1, bytes, size);
    GlobalUnlock(block.Get());
    return block;
}

void ReadBlock(const UniqueGlobalMemory& block, NStringList& list) {
    list.Add(L"old");
    NDropFilesRead(static_cast<HDROP>(block.Get()), list);
}

void Read(const std::vector<std::wstring>& paths, NStringList& list) {
    UniqueGlobalMemory block = MakeDrop(paths);
    NDropFilesRead(static_cast<HDROP>(block.Get()), list);
}
} // namespace

TEST(DropFiles, PathsComeInTheOrderOfTheDrop) {
    NStringList list;
    Read({L"C:\\b.mp3", L"C:\\a \u4E2D.flac", L"C:\\folder"}, list);
    ASSERT_EQ(list.Count, 3);
    EXPECT_EQ(*list[0], L"C:\\b.mp3");
    EXPECT_EQ(*list[1], L"C:\\a \u4E2D.flac");
    EXPECT_EQ(*list[2], L"C:\\folder");
}

TEST(DropFiles, ANewDropReplacesTheOldList) {
    NStringList list;
    Read({L"C:\\a", L"C:\\b"}, list);
    Read({L"C:\\c"}, list);
    ASSERT_EQ(list.Count, 1);
    EXPECT_EQ(*list[0], L"C:\\c");
}

TEST(DropFiles, APathBeyondTheUsualLimitIsKeptWhole) {
    std::wstring path = L"C:\\" + std::wstring(1000, L'x');
    NStringList list;
    Read({path, L"C:\\b"}, list);
    ASSERT_EQ(list.Count, 2);
    EXPECT_EQ(*list[0], path.c_str());
}

TEST(DropFiles, ADropOfNothingGivesAnEmptyList) {
    NStringList list;
    list.Add(L"old");
    Read({}, list);
    EXPECT_EQ(list.Count, 0);
}

TEST(DropFiles, ANullHandleGivesAnEmptyList) {
    NStringList list;
    list.Add(L"old");
    NDropFilesRead(nullptr, list);
    EXPECT_EQ(list.Count, 0);
}

TEST(DropFiles, ABlockTooShortForItsHeaderIsNoList) {
    UniqueGlobalMemory block(GlobalAlloc(GMEM_MOVEABLE, sizeof(DROPFILES) - 1));
    memset(GlobalLock(block.Get()), 'x', sizeof(DROPFILES) - 1);
    GlobalUnlock(block.Get());
    NStringList list;
    ReadBlock(block, list);
    EXPECT_EQ(list.Count, 0);
}

TEST(DropFiles, ATextThatIsToLieBehindTheBlockIsNotLookedFor) {
    NStringList list;
    for (DWORD offset : {DWORD{sizeof(DROPFILES) + 5}, DWORD{0x7FFFFF00}, DWORD{0xFFFFFFFF}}) {
        ReadBlock(MakeBlock(offset, TRUE, L"a", 4), list);
        EXPECT_EQ(list.Count, 0) << offset;
    }
}

TEST(DropFiles, AHeaderThatLeadsToTheBlocksEndGivesAnEmptyList) {
    NStringList list;
    ReadBlock(MakeBlock(sizeof(DROPFILES), TRUE, L"", 0), list);
    EXPECT_EQ(list.Count, 0);
}

TEST(DropFiles, OfAListWithoutItsEndAllThatTheBlockHoldsIsTaken) {
    NStringList list;
    // One unit short of the second terminator, then of the first one too.
    for (size_t units : {10, 9}) {
        ReadBlock(MakeBlock(sizeof(DROPFILES), TRUE, L"C:\\a\0C:\\b", units * 2), list);
        ASSERT_EQ(list.Count, 2) << units;
        EXPECT_EQ(*list[0], L"C:\\a");
        EXPECT_EQ(*list[1], L"C:\\b");
    }
    ReadBlock(MakeBlock(sizeof(DROPFILES), FALSE, "C:\\a\0C:\\b", 9), list);
    ASSERT_EQ(list.Count, 2);
    EXPECT_EQ(*list[1], L"C:\\b");
}

TEST(DropFiles, HalfAUnitAtTheBlocksEndLeadsNoFurther) {
    NStringList list;
    ReadBlock(MakeBlock(sizeof(DROPFILES), TRUE, "C\0:\0\\\0a\0b", 9), list);
    ASSERT_EQ(list.Count, 1);
    EXPECT_EQ(*list[0], L"C:\\ab");
}
