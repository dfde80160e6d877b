#include "suite/tagmap/aiff_text_chunks.h"
#include "suite/tagmap/tag_file.h"
#include "tests/querytrackdata/test_files.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

namespace {
using namespace tagmap;

std::string BigEndian32(size_t number) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift);
    return bytes;
}

std::string Chunk(const std::string& name, const std::string& data) {
    return name + BigEndian32(data.size()) + data + (data.size() % 2 ? std::string(1, '\0') : "");
}

// Eight samples of silence: 1 channel, 8 frames, 16 bits, 44100 Hz.
std::string AiffWith(const std::string& chunks) {
    const std::string common("\0\1\0\0\0\10\0\20\100\16\254\104\0\0\0\0\0\0", 18);
    const std::string sound(8 + 16, '\0');
    const std::string body = "AIFF" + Chunk("COMM", common) + chunks + Chunk("SSND", sound);
    return "FORM" + BigEndian32(body.size()) + body;
}

class AiffTextChunks : public testing::Test {
protected:
    void Make(const std::string& chunks) {
        path_ = folder_.Write(L"x.aiff", BytesOf(AiffWith(chunks)));
    }
    void Read() { ASSERT_EQ(ReadTags(path_.c_str(), record_), Outcome::Done); }
    std::string Content() {
        const Bytes bytes = ReadWhole(path_);
        return std::string(bytes.begin(), bytes.end());
    }
    TestFolder folder_;
    std::wstring path_;
    clTagRecord record_;
    Refusals refused_;
};
} // namespace

TEST_F(AiffTextChunks, AreReadWhereTheId3ChunkHasNoSuchElement) {
    Make(Chunk("NAME", "T\xC3\xB6ne") + Chunk("AUTH", "Latin \xE4") + Chunk("(c) ", "2020 X") +
         Chunk("ANNO", "one") + Chunk("ANNO", std::string("two\0", 4)));
    Read();
    EXPECT_EQ(ValueOf(record_, L"title"), L"T\u00F6ne");
    EXPECT_EQ(ValueOf(record_, L"artist"), L"Latin \u00E4");
    EXPECT_EQ(ValueOf(record_, L"copyright"), L"2020 X");
    EXPECT_EQ(ValueOf(record_, L"comment"), L"one\rtwo");
}

TEST_F(AiffTextChunks, FollowAChangeOfTheirElement) {
    Make(Chunk("NAME", "old") + Chunk("AUTH", "stays"));
    clTagRecord changes;
    changes.Add(L"title", L"n\u00E9w\rsecond");
    changes.Add(L"comment", L"no chunk is made");
    ASSERT_EQ(SetTags(path_.c_str(), changes, refused_), Outcome::Done);
    EXPECT_NE(Content().find(Chunk("NAME", "n\xC3\xA9w; second")), std::string::npos);
    EXPECT_NE(Content().find(Chunk("AUTH", "stays")), std::string::npos);
    EXPECT_EQ(Content().find("ANNO"), std::string::npos);
    Read();
    EXPECT_EQ(ValueOf(record_, L"artist"), L"stays");
    EXPECT_TRUE(Holds(path_.c_str(), changes, refused_));
}

TEST_F(AiffTextChunks, GoWhenTheirElementIsEmptiedOrDeleted) {
    Make(Chunk("NAME", "old") + Chunk("AUTH", "old too") + Chunk("ANNO", "and this"));
    clTagRecord changes;
    changes.Add(L"title", L"");
    ASSERT_EQ(SetTags(path_.c_str(), changes, refused_), Outcome::Done);
    EXPECT_EQ(Content().find("NAME"), std::string::npos);
    NStringList names;
    names.Add(L"Artist");
    ASSERT_EQ(DeleteTags(path_.c_str(), names), Outcome::Done);
    EXPECT_EQ(Content().find("AUTH"), std::string::npos);
    EXPECT_NE(Content().find("ANNO"), std::string::npos);
    ASSERT_EQ(DeleteTags(path_.c_str(), NStringList()), Outcome::Done);
    EXPECT_EQ(Content().find("ANNO"), std::string::npos);
}
