#include "tests/tagmap/file_to_save.h"
#include "tests/tagmap/id3v2_bytes.h"

#include <gtest/gtest.h>

#include <string>

// Tags and frames whose flags say that zeros were put in behind bytes FF, where
// it is so and where it isn't; and frames with a length of their data in front.
namespace tagmap {
namespace {

const std::string NoFlags(2, '\0');
const std::string LengthInFront("\0\1", 2);
const std::string IsUnsynchronised("\0\2", 2);
const std::string IsUnsynchronisedWithLength("\0\3", 2);

// Zeros of its own stand behind two of its bytes FF.
const std::string Jpeg("\xFF\xD8\xFF\xE0\0\x10JFIF, scanned \xFF\0\x55\xFF\0\xE1 \xFF\xD9", 29);
const std::string JpegWithoutZeros("\xFF\xD8\xFF\xE0\0\x10JFIF, scanned \xFF\xD9", 22);
// "Ro", high bytes first.
const std::string WideTitle("\1\xFE\xFF\0R\0o", 7);
constexpr wchar_t Cover[] = L"_albumart_1_Front Album Cover";

std::string Apic(const std::string& picture) {
    return Latin1Text("image/jpeg") + std::string("\0\3\0", 3) + picture;
}

// As the format says.
std::string Encoded(const std::string& bytes) {
    std::string encoded;
    for (size_t at = 0; at < bytes.size(); ++at) {
        encoded += bytes[at];
        const bool isLast = at + 1 == bytes.size();
        if (bytes[at] == '\xFF' && (isLast || bytes[at + 1] == 0 || (bytes[at + 1] & 0xE0) == 0xE0))
            encoded += '\0';
    }
    return encoded;
}

// With a zero behind each FF.
std::string EncodedMore(const std::string& bytes) {
    std::string encoded;
    for (const char byte : bytes)
        encoded += byte == '\xFF' ? std::string("\xFF\0", 2) : std::string(1, byte);
    return encoded;
}

std::string WithLength(size_t length, const std::string& fields) {
    return BigEndian(static_cast<uint32_t>(length), SynchSafeBits) + fields;
}

std::string Audio() {
    return SampleContent("sample-id3v1.mp3");
}

// The tag says that all of it is unsynchronised.
std::string Flagged(std::string tag) {
    tag[5] = '\x80';
    return tag;
}

// What stands behind the tag's header is encoded as a whole.
std::string EncodedTag(const std::string& tag) {
    const std::string body = Encoded(tag.substr(10));
    return Flagged(tag.substr(0, 6) + BigEndian(static_cast<uint32_t>(body.size()), SynchSafeBits) +
                   body);
}

std::string TagIn(const std::string& file) {
    return file.substr(0, 10 + Number(file.substr(6, 4), SynchSafeBits));
}

// All frames but the one that is named stay as these.
void ExpectKept(const std::string& tag, const RawFrames& frames) {
    FileToSave file(tag + Audio());
    ASSERT_EQ(file.Set(L"album", L"another"), Outcome::Done);
    RawFrames found = FramesIn(TagIn(file.Content()));
    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found.back().first, "TALB");
    found.pop_back();
    EXPECT_EQ(found, frames);
}

void ExpectRefused(const std::string& tag) {
    EXPECT_TRUE(FileToSave(tag + Audio()).IsRefused());
}

std::string CoverOf(const std::string& tag) {
    const FileToSave file(tag + Audio());
    clTagRecord record;
    EXPECT_EQ(ReadTags(file.Path().c_str(), record), Outcome::Done);
    return DataOf(record, Cover);
}

} // namespace

TEST(Id3v2Unsynchronisation, ATagThatSaysSoOfPlainFramesIsRefused) {
    ExpectRefused(Flagged(TagBytes(4, {{"APIC", Apic(Jpeg)}, {"TIT2", Utf8Text("t")}})));
    ExpectRefused(Flagged(TagBytes(4, {{"TIT2", WideTitle}})));
    // Whether these were encoded nothing tells.
    ExpectRefused(Flagged(TagBytes(4, {{"TIT2", Encoded(Utf16Text(L"t"))}})));
}

TEST(Id3v2Unsynchronisation, AFrameThatSaysSoOfPlainBytesIsRefused) {
    for (const std::string& flags : {IsUnsynchronised, IsUnsynchronisedWithLength}) {
        const std::string front =
            flags == IsUnsynchronised ? "" : WithLength(Apic(Jpeg).size(), "");
        ExpectRefused(TagBytes(4, {{"APIC", front + Apic(Jpeg)}}, flags));
    }
    ExpectRefused(TagBytes(4, {{"TIT2", WideTitle}}, IsUnsynchronised));
}

TEST(Id3v2Unsynchronisation, FramesInWhichNothingWasPutKeepTheirBytes) {
    const RawFrames frames = {{"APIC", Apic(JpegWithoutZeros)}, {"TIT2", Utf16Text(L"\u0152")}};
    ExpectKept(Flagged(TagBytes(4, frames)), frames);
    ExpectKept(TagBytes(4, frames, IsUnsynchronised), frames);
    ExpectKept(Flagged(TagBytes(3, frames)), frames);
}

TEST(Id3v2Unsynchronisation, EncodedFramesThatSaySoKeepWhatTheyHold) {
    const RawFrames frames = {{"APIC", Apic(Jpeg)}, {"TIT2", Utf16Text(L"t")}};
    RawFrames encoded = frames;
    for (auto& [id, fields] : encoded)
        fields = Encoded(fields);
    const std::string tag = TagBytes(4, encoded, IsUnsynchronised);
    EXPECT_EQ(CoverOf(tag), Jpeg);
    ExpectKept(tag, frames);
    ExpectKept(Flagged(tag), frames);
}

TEST(Id3v2Unsynchronisation, EncodedFramesWithALengthKeepWhatTheyHold) {
    const RawFrames frames = {{"TIT2", Utf16Text(L"t")}, {"APIC", Apic(Jpeg)}};
    RawFrames encoded = frames;
    RawFrames encodedMore = frames;
    for (auto& [id, fields] : encoded)
        fields = WithLength(fields.size(), Encoded(fields));
    for (auto& [id, fields] : encodedMore)
        fields = WithLength(fields.size(), EncodedMore(fields));
    const std::string tag = Flagged(TagBytes(4, encoded, IsUnsynchronisedWithLength));
    EXPECT_EQ(CoverOf(tag), Jpeg);
    ExpectKept(tag, frames);
    // The length alone tells that they are encoded.
    ExpectKept(Flagged(TagBytes(4, encoded, LengthInFront)), frames);
    ExpectKept(Flagged(TagBytes(4, encodedMore, IsUnsynchronisedWithLength)), frames);
}

TEST(Id3v2Unsynchronisation, AnEncodedTagOfAnOlderVersionKeepsWhatItHolds) {
    const RawFrames frames = {{"TIT2", Utf16Text(L"t")}, {"APIC", Apic(Jpeg)}};
    const std::string tag = EncodedTag(TagBytes(3, frames));
    EXPECT_EQ(CoverOf(tag), Jpeg);
    ExpectKept(tag, frames);
    const RawFrames last = {{"APIC", Apic(Jpeg)}, {"TIT2", Utf16Text(L"t")}};
    ExpectKept(EncodedTag(TagBytes(3, last)), last);
    const std::string oldest = EncodedTag(TagBytes(2, {{"TT2", Utf16Text(L"t")}}));
    ExpectKept(oldest, {{"TIT2", Utf16Text(L"t")}});
}

TEST(Id3v2Unsynchronisation, APlainTagOfAnOlderVersionThatSaysSoIsRefused) {
    ExpectRefused(Flagged(TagBytes(3, {{"TPE1", Latin1Text("a")}, {"APIC", Apic(Jpeg)}})));
    ExpectRefused(Flagged(TagBytes(3, {{"TPE1", Latin1Text("a")}, {"TIT2", WideTitle}})));
    ExpectRefused(Flagged(TagBytes(2, {{"TP1", Latin1Text("a")}, {"TT2", WideTitle}})));
}

TEST(Id3v2LengthInFront, APictureOfAWrongLengthIsReadWhole) {
    for (const size_t wrong : {size_t{0}, size_t{20}, Apic(Jpeg).size() + 20}) {
        const std::string fields = WithLength(wrong, Apic(Jpeg));
        EXPECT_EQ(CoverOf(TagBytes(4, {{"APIC", fields}}, LengthInFront)), Jpeg);
        const std::string encoded = WithLength(wrong, Encoded(Apic(Jpeg)));
        EXPECT_EQ(CoverOf(TagBytes(4, {{"APIC", encoded}}, IsUnsynchronisedWithLength)), Jpeg);
    }
}

TEST(Id3v2LengthInFront, TextsOfAWrongLengthAreReadWhole) {
    const FileToSave file(TagBytes(4,
                                   {{"TIT2", WithLength(3, Utf8Text("title"))},
                                    {"TCON", WithLength(2, Utf8Text("(17)(Live)Rock"))},
                                    {"TALB", WithLength(2, Utf8Text("album"))}},
                                   LengthInFront) +
                          Audio());
    EXPECT_EQ(file.Value(L"title"), L"title");
    EXPECT_EQ(file.Value(L"genre"), L"(17)(Live)Rock");
    EXPECT_EQ(file.Value(L"album"), L"album");
}

TEST(Id3v2LengthInFront, PicturesKeepTheirOrderWhenSomeAreReadAnew) {
    const RawFrames frames = {{"APIC", WithLength(Apic("one").size(), Apic("one"))},
                              {"APIC", WithLength(4, Apic("two"))},
                              {"APIC", WithLength(Apic("three").size(), Apic("three"))}};
    const FileToSave file(TagBytes(4, frames, LengthInFront) + Audio());
    clTagRecord record;
    ASSERT_EQ(ReadTags(file.Path().c_str(), record), Outcome::Done);
    EXPECT_EQ(DataOf(record, L"_albumart_1_Front Album Cover"), "one");
    EXPECT_EQ(DataOf(record, L"_albumart_2_Front Album Cover"), "two");
    EXPECT_EQ(DataOf(record, L"_albumart_3_Front Album Cover"), "three");
}

TEST(Id3v2LengthInFront, AChangeBesideAPictureOfAWrongLengthIsFoundRight) {
    const std::string content =
        TagBytes(4, {{"APIC", WithLength(20, Apic(Jpeg))}}, LengthInFront) + Audio();
    const FileToSave before(content);
    FileToSave file(content);
    clTagRecord changes;
    changes.Add(L"title", L"another");
    ASSERT_EQ(file.Set(changes), Outcome::Done);
    EXPECT_TRUE(WasSet(before.Path().c_str(), file.Path().c_str(), changes, Refusals()));
    EXPECT_EQ(FramesIn(TagIn(file.Content()), "APIC"), Apic(Jpeg));
}

} // namespace tagmap
