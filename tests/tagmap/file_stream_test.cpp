#include "suite/tagmap/file_stream.h"
#include "tests/querytrackdata/test_files.h"

#include <gtest/gtest.h>

#include <string>

namespace {
using tagmap::FileStream;

int changesSeen = 0;

void CountChange() {
    ++changesSeen;
}

std::string Pattern(size_t size) {
    std::string text(size, '\0');
    for (size_t index = 0; index < size; ++index)
        text[index] = static_cast<char>('a' + index * 7 % 26);
    return text;
}

TagLib::ByteVector Vector(const std::string& text) {
    return TagLib::ByteVector(text.data(), static_cast<unsigned>(text.size()));
}

std::string Text(const TagLib::ByteVector& bytes) {
    return std::string(bytes.data(), bytes.size());
}

class FileStreamTest : public testing::Test {
protected:
    std::wstring Make(const std::string& text) { return folder_.Write(L"stream", BytesOf(text)); }
    std::string Content() {
        const Bytes bytes = ReadWhole(folder_.File(L"stream"));
        return std::string(bytes.begin(), bytes.end());
    }
    TestFolder folder_;
};

// Larger than the stream's cache and than the block it moves by.
constexpr size_t LargeSize = 2500000;
} // namespace

TEST_F(FileStreamTest, ReadsInSmallPiecesWhatTheFileHolds) {
    const std::string text = Pattern(200000);
    FileStream stream(Make(text).c_str(), FileStream::Mode::Read);
    std::string got;
    for (;;) {
        const TagLib::ByteVector piece = stream.readBlock(777);
        if (piece.isEmpty())
            break;
        got += Text(piece);
    }
    EXPECT_EQ(got, text);
    EXPECT_FALSE(stream.Failed());
}

TEST_F(FileStreamTest, ReadsAcrossItsCacheInEveryDirection) {
    const std::string text = Pattern(200000);
    FileStream stream(Make(text).c_str(), FileStream::Mode::Read);
    for (long at : {199990L, 0L, 65530L, 130000L, 5L}) {
        stream.seek(at, TagLib::IOStream::Beginning);
        EXPECT_EQ(Text(stream.readBlock(20)), text.substr(static_cast<size_t>(at), 20));
        EXPECT_EQ(stream.tell(), std::min(at + 20, 200000L));
    }
    stream.seek(0, TagLib::IOStream::Beginning);
    EXPECT_EQ(Text(stream.readBlock(150000)), text.substr(0, 150000));
}

TEST_F(FileStreamTest, WhatWasWrittenIsReadThoughItWasInMemoryBefore) {
    std::string text = Pattern(200000);
    FileStream stream(Make(text).c_str(), FileStream::Mode::ReadAndWrite);
    const auto read = [&](long at) {
        stream.seek(at, TagLib::IOStream::Beginning);
        return Text(stream.readBlock(20));
    };
    read(0);
    read(199970);
    for (long at : {5L, 199975L}) {
        stream.seek(at, TagLib::IOStream::Beginning);
        stream.writeBlock(TagLib::ByteVector("new", 3));
        text.replace(static_cast<size_t>(at), 3, "new");
    }
    for (long at : {0L, 199970L, 100000L, 0L, 199970L})
        EXPECT_EQ(read(at), text.substr(static_cast<size_t>(at), 20)) << at;
}

TEST_F(FileStreamTest, AReadBeyondTheEndGivesWhatIsThere) {
    FileStream stream(Make("abcdef").c_str(), FileStream::Mode::Read);
    stream.seek(4, TagLib::IOStream::Beginning);
    EXPECT_EQ(Text(stream.readBlock(0xFFFFFFFF)), "ef");
    stream.seek(100, TagLib::IOStream::Beginning);
    EXPECT_TRUE(stream.readBlock(10).isEmpty());
    EXPECT_FALSE(stream.Failed());
}

TEST_F(FileStreamTest, SeeksFromAllThreePlacesAndNeverBeforeTheStart) {
    FileStream stream(Make("abcdef").c_str(), FileStream::Mode::Read);
    stream.seek(-2, TagLib::IOStream::End);
    EXPECT_EQ(stream.tell(), 4);
    stream.seek(-3, TagLib::IOStream::Current);
    EXPECT_EQ(stream.tell(), 1);
    stream.seek(-100, TagLib::IOStream::Current);
    EXPECT_EQ(stream.tell(), 0);
    EXPECT_EQ(stream.length(), 6);
}

TEST_F(FileStreamTest, APlaceBeyondTheLibrarysNumbersIsTheEnd) {
    FileStream stream(Make("abcdef").c_str(), FileStream::Mode::Read);
    stream.seek(-0x7FFFFFF0, TagLib::IOStream::Beginning);
    EXPECT_EQ(stream.tell(), 6);
    stream.seek(0x7FFFFFFF, TagLib::IOStream::Current);
    EXPECT_EQ(stream.tell(), 6);
}

TEST_F(FileStreamTest, InsertsMoreThanItReplaces) {
    const std::string text = Pattern(LargeSize);
    const std::string inserted(100000, '#');
    {
        FileStream stream(Make(text).c_str(), FileStream::Mode::ReadAndWrite);
        stream.insert(Vector(inserted), 10, 5);
        EXPECT_EQ(stream.length(), static_cast<long>(LargeSize + 100000 - 5));
        stream.seek(10, TagLib::IOStream::Beginning);
        EXPECT_EQ(Text(stream.readBlock(3)), "###");
        EXPECT_FALSE(stream.Failed());
    }
    EXPECT_TRUE(Content() == text.substr(0, 10) + inserted + text.substr(15));
}

TEST_F(FileStreamTest, InsertsLessThanItReplaces) {
    const std::string text = Pattern(LargeSize);
    {
        FileStream stream(Make(text).c_str(), FileStream::Mode::ReadAndWrite);
        stream.insert(Vector("##"), 10, 100000);
    }
    EXPECT_TRUE(Content() == text.substr(0, 10) + "##" + text.substr(100010));
}

TEST_F(FileStreamTest, InsertsInPlaceAndAtTheEnd) {
    {
        FileStream stream(Make("abcdef").c_str(), FileStream::Mode::ReadAndWrite);
        stream.insert(Vector("XY"), 2, 2);
        stream.insert(Vector("Z"), 6, 0);
        stream.insert(Vector("!"), 7, 500);
    }
    EXPECT_EQ(Content(), "abXYefZ!");
}

TEST_F(FileStreamTest, RemovesABlock) {
    const std::string text = Pattern(LargeSize);
    {
        FileStream stream(Make(text).c_str(), FileStream::Mode::ReadAndWrite);
        stream.removeBlock(100, 1000000);
        stream.removeBlock(0, 0);
        EXPECT_EQ(stream.length(), static_cast<long>(LargeSize - 1000000));
    }
    EXPECT_TRUE(Content() == text.substr(0, 100) + text.substr(1000100));
}

TEST_F(FileStreamTest, WritesOverAndPastTheEndAndTruncates) {
    {
        FileStream stream(Make("abcdef").c_str(), FileStream::Mode::ReadAndWrite);
        EXPECT_EQ(Text(stream.readBlock(6)), "abcdef");
        stream.seek(4, TagLib::IOStream::Beginning);
        stream.writeBlock(Vector("XYZ"));
        EXPECT_EQ(stream.length(), 7);
        stream.seek(0, TagLib::IOStream::Beginning);
        EXPECT_EQ(Text(stream.readBlock(7)), "abcdXYZ");
        stream.truncate(5);
        EXPECT_EQ(stream.length(), 5);
    }
    EXPECT_EQ(Content(), "abcdX");
}

TEST_F(FileStreamTest, TellsOfEachChangeOfTheDisk) {
    changesSeen = 0;
    FileStream stream(Make("abcdef").c_str(), FileStream::Mode::ReadAndWrite, CountChange);
    stream.readBlock(6);
    EXPECT_EQ(changesSeen, 0);
    stream.insert(Vector("x"), 0, 0); // the tail, then the block
    EXPECT_EQ(changesSeen, 2);
    stream.truncate(1);
    EXPECT_EQ(changesSeen, 3);
}

TEST_F(FileStreamTest, AStreamForReadingFailsToWriteAndLeavesTheFile) {
    {
        FileStream stream(Make("abcdef").c_str(), FileStream::Mode::Read);
        EXPECT_TRUE(stream.readOnly());
        stream.writeBlock(Vector("XY"));
        EXPECT_TRUE(stream.Failed());
    }
    EXPECT_EQ(Content(), "abcdef");
}

TEST_F(FileStreamTest, AStreamForReadingLetsOthersWriteAndDelete) {
    const std::wstring path = Make("abcdef");
    FileStream stream(path.c_str(), FileStream::Mode::Read);
    ASSERT_TRUE(stream.isOpen());
    UniqueFileHandle writer(CreateFileW(path.c_str(), GENERIC_WRITE | DELETE,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(writer);
}

TEST_F(FileStreamTest, AMissingFileIsNotOpen) {
    FileStream stream(folder_.File(L"none").c_str(), FileStream::Mode::Read);
    EXPECT_FALSE(stream.isOpen());
    EXPECT_TRUE(stream.Failed());
}

TEST_F(FileStreamTest, OpensAPathBeyond260Characters) {
    std::wstring folder = folder_.Path();
    while (folder.size() < 280) {
        folder += L"\\a folder with a name of some length \u4E2D\u6587";
        MakeFolder(folder);
    }
    const std::wstring path = folder + L"\\file";
    WriteWhole(path, BytesOf("abc"));
    FileStream stream(path.c_str(), FileStream::Mode::Read);
    EXPECT_EQ(Text(stream.readBlock(10)), "abc");
}

TEST_F(FileStreamTest, AFileBeyondTheLibrarysNumbersIsNotOpened) {
    const std::wstring path = Make("");
    {
        // Sparse, so that the disk isn't filled.
        UniqueFileHandle file(
            CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        LARGE_INTEGER size;
        size.QuadPart = 0x80000000LL;
        ASSERT_TRUE(SetFilePointerEx(file.Get(), size, nullptr, FILE_BEGIN));
        ASSERT_TRUE(SetEndOfFile(file.Get()));
    }
    FileStream stream(path.c_str(), FileStream::Mode::Read);
    EXPECT_FALSE(stream.isOpen());
    EXPECT_TRUE(stream.IsTooLarge());
}
