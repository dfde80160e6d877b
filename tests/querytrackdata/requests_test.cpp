#include "suite/querytrackdata/requests.h"
#include "tests/querytrackdata/test_files.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

const std::wstring Path = L"C:\\m\u00fcsic\\\u6b4c.mp3";

NBuffer Buffer(const Bytes& bytes) {
    NBuffer buffer;
    buffer.Set(bytes.data(), static_cast<uint32_t>(bytes.size()));
    return buffer;
}

Bytes Block(const std::wstring& name, const std::wstring& value, const Bytes& data = {}) {
    Bytes content = BytesOf(name + L'\0') + BytesOf(value + L'\0') + data;
    return LittleEndian32(static_cast<uint32_t>(4 + content.size())) + content;
}

Bytes SetRequest(const Bytes& record, const std::wstring& path = Path,
                 uint32_t marker = 0x12945633) {
    return LittleEndian32(static_cast<uint32_t>(record.size())) + record + LittleEndian32(marker) +
           BytesOf(path);
}

bool ParsesAsSet(const Bytes& bytes) {
    NString path;
    clTagRecord changes;
    return ParseSetRequest(Buffer(bytes), path, changes);
}

bool ParsesAsRead(const Bytes& bytes) {
    NString path;
    return ParseReadRequest(Buffer(bytes), path);
}

bool ParsesAsDelete(const Bytes& bytes) {
    NString path;
    NStringList names;
    return ParseDeleteRequest(Buffer(bytes), path, names);
}

const Bytes TwoElements = LittleEndian32(2) + Block(L"title", L"caf\u00e9") +
                          Block(L"_albumart_1", L"", BytesOf("picture"));

} // namespace

TEST(ReadRequest, IsThePathAndNothingElse) {
    NString path;
    ASSERT_TRUE(ParseReadRequest(Buffer(BytesOf(Path)), path));
    EXPECT_EQ(path.c_str(), Path);
}

TEST(ReadRequest, IsRefusedWithoutAPathWithHalfAUnitOrWithAZeroInIt) {
    EXPECT_FALSE(ParsesAsRead({}));
    EXPECT_FALSE(ParsesAsRead(BytesOf(Path) + Bytes{65}));
    EXPECT_FALSE(ParsesAsRead(BytesOf(Path + L'\0')));
    EXPECT_FALSE(ParsesAsRead(BytesOf(L"C:\\a" + std::wstring(1, L'\0') + L"b")));
}

TEST(ReadRequest, TakesTheLongestPathAndNoLongerOne) {
    EXPECT_TRUE(ParsesAsRead(BytesOf(std::wstring(32767, L'a'))));
    EXPECT_FALSE(ParsesAsRead(BytesOf(std::wstring(32768, L'a'))));
}

TEST(SetRequest, IsARecordAMarkerAndThePath) {
    NString path;
    clTagRecord changes;
    ASSERT_TRUE(ParseSetRequest(Buffer(SetRequest(TwoElements)), path, changes));
    EXPECT_EQ(path.c_str(), Path);
    ASSERT_EQ(changes.Count(), 2);
    EXPECT_STREQ(changes[0]->Name.c_str(), L"title");
    EXPECT_STREQ(changes[0]->Value.c_str(), L"caf\u00e9");
    EXPECT_STREQ(changes[1]->Name.c_str(), L"_albumart_1");
    EXPECT_EQ(changes[1]->Data.Size, 7u);
}

TEST(SetRequest, MayHoldARecordWithoutElements) {
    NString path;
    clTagRecord changes;
    ASSERT_TRUE(ParseSetRequest(Buffer(SetRequest(LittleEndian32(0))), path, changes));
    EXPECT_EQ(changes.Count(), 0);
}

TEST(SetRequest, IsRefusedWhereverItIsCutBeforeThePath) {
    Bytes whole = SetRequest(TwoElements);
    size_t pathStart = whole.size() - 2 * Path.size();
    for (size_t size = 0; size <= pathStart; ++size)
        EXPECT_FALSE(ParsesAsSet(Bytes(whole.begin(), whole.begin() + static_cast<int>(size))))
            << "cut at " << size;
    EXPECT_TRUE(ParsesAsSet(whole));
}

TEST(SetRequest, IsRefusedWithAnotherMarker) {
    EXPECT_FALSE(ParsesAsSet(SetRequest(TwoElements, Path, 0x12945634)));
    EXPECT_FALSE(ParsesAsSet(SetRequest(TwoElements, Path, 0x33569412)));
}

TEST(SetRequest, IsRefusedWithASizeThatLeadsElsewhere) {
    for (uint32_t size : {0u, 1u, 3u, 5u, 0x7fffffffu, 0x80000000u, 0xfffffff8u, 0xffffffffu}) {
        Bytes request = SetRequest(TwoElements);
        Bytes wrong = LittleEndian32(size);
        std::copy(wrong.begin(), wrong.end(), request.begin());
        EXPECT_FALSE(ParsesAsSet(request)) << size;
    }
}

TEST(SetRequest, IsRefusedWhenItsRecordIsCutShort) {
    for (size_t size = 0; size < TwoElements.size(); ++size) {
        Bytes record(TwoElements.begin(), TwoElements.begin() + static_cast<int>(size));
        EXPECT_FALSE(ParsesAsSet(SetRequest(record))) << "cut at " << size;
    }
}

TEST(SetRequest, IsRefusedWhenABlockLacksATerminator) {
    Bytes noValue = BytesOf(L"title" + std::wstring(1, L'\0'));
    Bytes block = LittleEndian32(static_cast<uint32_t>(4 + noValue.size())) + noValue;
    EXPECT_FALSE(ParsesAsSet(SetRequest(LittleEndian32(1) + block)));
    Bytes noEnd = BytesOf(L"title" + std::wstring(1, L'\0') + L"value");
    block = LittleEndian32(static_cast<uint32_t>(4 + noEnd.size())) + noEnd;
    EXPECT_FALSE(ParsesAsSet(SetRequest(LittleEndian32(1) + block)));
}

TEST(SetRequest, IsRefusedWithABlockSmallerThanItsOwnSize) {
    for (uint32_t size : {0u, 1u, 3u, 0x80000000u, 0xffffffffu})
        EXPECT_FALSE(ParsesAsSet(
            SetRequest(LittleEndian32(1) + LittleEndian32(size) + BytesOf(L"abcdefgh"))))
            << size;
}

TEST(SetRequest, BytesBehindTheLastBlockAreIgnored) {
    EXPECT_TRUE(ParsesAsSet(SetRequest(TwoElements + BytesOf("more"))));
}

TEST(SetRequest, AnElementWithoutANameIsLeftOut) {
    NString path;
    clTagRecord changes;
    Bytes record = LittleEndian32(2) + Block(L"", L"lost") + Block(L"album", L"kept");
    ASSERT_TRUE(ParseSetRequest(Buffer(SetRequest(record)), path, changes));
    ASSERT_EQ(changes.Count(), 1);
    EXPECT_STREQ(changes[0]->Name.c_str(), L"album");
}

TEST(SetRequest, MoreElementsThanATagHoldsAreRefusedBeforeMemoryIsTaken) {
    Bytes blocks;
    for (uint32_t index = 0; index <= MaxElements; ++index)
        blocks = std::move(blocks) + Block(L"", L"");
    EXPECT_TRUE(ParsesAsSet(SetRequest(LittleEndian32(MaxElements) + blocks)));
    EXPECT_FALSE(ParsesAsSet(SetRequest(LittleEndian32(MaxElements + 1) + blocks)));
}

TEST(DeleteRequest, NamesStandBehindTheLineWithThePath) {
    NString path;
    NStringList names;
    Bytes request = BytesOf(Path + L"\r\ntitle{tag_sep}_albumart_1_caf\u00e9");
    ASSERT_TRUE(ParseDeleteRequest(Buffer(request), path, names));
    EXPECT_EQ(path.c_str(), Path);
    ASSERT_EQ(names.Count, 2);
    EXPECT_STREQ(names[0]->c_str(), L"title");
    EXPECT_STREQ(names[1]->c_str(), L"_albumart_1_caf\u00e9");
}

TEST(DeleteRequest, OneNameStandsWithoutASeparator) {
    NString path;
    NStringList names;
    ASSERT_TRUE(ParseDeleteRequest(Buffer(BytesOf(Path + L"\r\ntitle")), path, names));
    ASSERT_EQ(names.Count, 1);
    EXPECT_STREQ(names[0]->c_str(), L"title");
}

TEST(DeleteRequest, TheWordForAllGivesAnEmptyList) {
    NString path;
    NStringList names;
    names.Add(L"from an earlier use");
    ASSERT_TRUE(ParseDeleteRequest(Buffer(BytesOf(Path + L"\r\n[tag_del_all]")), path, names));
    EXPECT_EQ(names.Count, 0);
}

TEST(DeleteRequest, TheWordForAllAmongNamesIsAName) {
    NString path;
    NStringList names;
    ASSERT_TRUE(ParseDeleteRequest(Buffer(BytesOf(Path + L"\r\n[tag_del_all]{tag_sep}title")), path,
                                   names));
    EXPECT_EQ(names.Count, 2);
}

TEST(DeleteRequest, EmptyNamesAreLeftOutAndNeverMeanTheWholeTag) {
    NString path;
    NStringList names;
    ASSERT_TRUE(
        ParseDeleteRequest(Buffer(BytesOf(Path + L"\r\n{tag_sep}title{tag_sep}")), path, names));
    EXPECT_EQ(names.Count, 1);
    EXPECT_FALSE(ParsesAsDelete(BytesOf(Path + L"\r\n")));
    EXPECT_FALSE(ParsesAsDelete(BytesOf(Path + L"\r\n{tag_sep}")));
}

TEST(DeleteRequest, IsRefusedWithoutALineEndOrWithoutAPath) {
    EXPECT_FALSE(ParsesAsDelete({}));
    EXPECT_FALSE(ParsesAsDelete(BytesOf(Path)));
    EXPECT_FALSE(ParsesAsDelete(BytesOf(Path + L"\rtitle")));
    EXPECT_FALSE(ParsesAsDelete(BytesOf(Path + L"\ntitle")));
    EXPECT_FALSE(ParsesAsDelete(BytesOf(std::wstring(L"\r\ntitle"))));
    EXPECT_FALSE(ParsesAsDelete(BytesOf(Path + L"\r\ntitle") + Bytes{65}));
    EXPECT_FALSE(ParsesAsDelete(BytesOf(std::wstring(32768, L'a') + L"\r\ntitle")));
}

TEST(Requests, BytesAtRandomAreAnsweredAndNeverCrash) {
    std::mt19937 random(20260521);
    Bytes whole = SetRequest(TwoElements);
    for (int round = 0; round < 20000; ++round) {
        Bytes bytes = whole;
        bytes.resize(random() % (whole.size() + 1));
        for (uint32_t change = random() % 4; change > 0 && !bytes.empty(); --change)
            bytes[random() % bytes.size()] = static_cast<uint8_t>(random() % 4 ? random() : 0xff);
        NString path;
        clTagRecord changes;
        NStringList names;
        if (ParseReadRequest(Buffer(bytes), path)) {
            EXPECT_EQ(path.CharCount() * 2, static_cast<int>(bytes.size()));
        }
        if (ParseSetRequest(Buffer(bytes), path, changes)) {
            EXPECT_LE(changes.Count(), static_cast<int>(bytes.size() / 8));
        }
        if (ParseDeleteRequest(Buffer(bytes), path, names)) {
            EXPECT_GT(path.CharCount(), 0);
        }
    }
}
