#include "suite/tagmap/id3v2_guard.h"
#include "tests/tagmap/file_to_save.h"
#include "tests/tagmap/id3v2_bytes.h"

#include <gtest/gtest.h>

#include <string>

// Left to the library alone, most of these tags take all memory, or the stack.
namespace tagmap {
namespace {

const std::string NoFlags(2, '\0');
const std::string HasLength("\0\1", 2);
const std::string FarLength("\x7F\x7F\x7F\x7F");

std::string Frame(const std::string& id, const std::string& fields,
                  const std::string& flags = NoFlags) {
    return id + BigEndian(static_cast<uint32_t>(fields.size()), SynchSafeBits) + flags + fields;
}

std::string Repeated(const std::string& bytes, int times) {
    std::string all;
    for (int count = 0; count < times; ++count)
        all += bytes;
    return all;
}

// What a chapter begins with: a name, two times and two offsets.
const std::string ChapterHead = std::string("a\0", 2) + std::string(16, '\0');
// What a table begins with: a name, flags, and one entry.
const std::string ContentsHead("a\0\0\1b\0", 6);

// Each reaches over all that follow, as its length says.
std::string Reaching(const std::string& id, const std::string& head, int count) {
    return Repeated(Frame(id, FarLength + head, HasLength), count);
}

std::string Nested(int depth) {
    std::string all;
    for (int level = 0; level < depth; ++level)
        all = Frame("CHAP", ChapterHead + all);
    return all;
}

constexpr int Many = 30;

std::string Tag(const std::string& frames, char flags = 0) {
    return std::string("ID3\4\0", 5) + flags +
           BigEndian(static_cast<uint32_t>(frames.size()), SynchSafeBits) + frames;
}

std::string MpegWith(const std::string& tag) {
    return tag + SampleContent("sample-id3v1.mp3");
}

std::string Chunk(const std::string& name, const std::string& size, const std::string& data) {
    return name + size + data + std::string(data.size() % 2, '\0');
}
std::string LittleChunk(const std::string& name, const std::string& data) {
    return Chunk(name, LittleEndian(data.size()), data);
}
std::string BigChunk(const std::string& name, const std::string& data) {
    return Chunk(name, BigEndian(data.size()), data);
}

// 1 channel of 16 bits at 44100 Hz, and some silence.
std::string WavWith(const std::string& tag) {
    const std::string format("\1\0\1\0\104\254\0\0\210\130\1\0\2\0\20\0", 16);
    return LittleChunk("RIFF", "WAVE" + LittleChunk("fmt ", format) +
                                   LittleChunk("data", std::string(64, '\0')) +
                                   LittleChunk("id3 ", tag));
}
std::string AiffWith(const std::string& tag) {
    const std::string common("\0\1\0\0\0\10\0\20\100\16\254\104\0\0\0\0\0\0", 18);
    return BigChunk("FORM", "AIFF" + BigChunk("COMM", common) +
                                BigChunk("SSND", std::string(24, '\0')) + BigChunk("ID3 ", tag));
}

Outcome Reading(const std::string& content) {
    const FileToSave file(content);
    clTagRecord record;
    return ReadTags(file.Path().c_str(), record);
}

// Neither read nor touched.
void ExpectNoAudio(const std::string& content) {
    EXPECT_EQ(Reading(content), Outcome::NotAudio);
    FileToSave file(content);
    EXPECT_EQ(file.Set(L"title", L"x"), Outcome::NotAudio);
    EXPECT_EQ(file.Content(), content);
}

void ExpectNoAudioInAnyFile(const std::string& tag) {
    ExpectNoAudio(MpegWith(tag));
    ExpectNoAudio(tag + SampleContent("sample.flac"));
    ExpectNoAudio(tag + SampleContent("sample.tta"));
    ExpectNoAudio(WavWith(tag));
    ExpectNoAudio(AiffWith(tag));
}

bool AreBounded(const std::string& frames) {
    const std::string tag = Tag(frames);
    const TagLib::ByteVector bytes(tag.data(), static_cast<unsigned>(tag.size()));
    return Id3v2FramesAreBounded(TagLib::ID3v2::Header(bytes),
                                 bytes.mid(TagLib::ID3v2::Header::size()));
}

} // namespace

TEST(Id3v2Guard, AFileWithAPlainTagIsRead) {
    const std::string tag = Tag(Frame("TIT2", Utf8Text("title")));
    for (const std::string& content :
         {MpegWith(tag), tag + SampleContent("sample.tta"), WavWith(tag), AiffWith(tag)})
        EXPECT_EQ(FileToSave(content).Value(L"title"), L"title");
    EXPECT_EQ(Reading(tag + SampleContent("sample.flac")), Outcome::Done);
}

TEST(Id3v2Guard, ChaptersThatReachOverAllThatFollowAreNoAudio) {
    ExpectNoAudioInAnyFile(Tag(Reaching("CHAP", ChapterHead, Many)));
}

TEST(Id3v2Guard, TablesThatReachOverAllThatFollowAreNoAudio) {
    ExpectNoAudioInAnyFile(Tag(Reaching("CTOC", ContentsHead, Many)));
}

TEST(Id3v2Guard, ChaptersThatReachOverTheirOwnChapterAreNoAudio) {
    ExpectNoAudio(MpegWith(Tag(Frame("CHAP", ChapterHead + Reaching("CHAP", ChapterHead, Many)))));
}

TEST(Id3v2Guard, SuchATagBehindAnExtendedHeaderIsNoAudio) {
    constexpr char hasExtendedHeader = 0x40;
    const std::string extended("\0\0\0\6\1\0", 6);
    ExpectNoAudio(MpegWith(Tag(extended + Reaching("CHAP", ChapterHead, Many), hasExtendedHeader)));
}

// In an unsynchronised frame the library stops at the frame's own end.
TEST(Id3v2Guard, UnsynchronisedFramesReachOverNothing) {
    constexpr char isUnsynchronised = static_cast<char>(0x80);
    EXPECT_EQ(Reading(MpegWith(Tag(Reaching("CHAP", ChapterHead, Many), isUnsynchronised))),
              Outcome::Done);
}

TEST(Id3v2Guard, ChaptersThousandsOfLevelsDeepAreNoAudio) {
    constexpr int depth = 10000;
    ExpectNoAudioInAnyFile(Tag(Nested(depth)));
}

TEST(Id3v2Guard, AFewLevelsOfChaptersAreRead) {
    constexpr int few = 8;
    EXPECT_EQ(Reading(MpegWith(Tag(Nested(few)))), Outcome::Done);
}

TEST(Id3v2Guard, TextsThatAreReadOverAndOverAreNoAudio) {
    constexpr int texts = 4000;
    ExpectNoAudio(MpegWith(Tag(Reaching("TIT2", Utf8Text("title"), texts))));
}

// A tag of some kilobytes; what the library makes of it takes a hundred times as
// much memory as the bytes that it reads.
TEST(Id3v2Guard, TextsOfMegabytesInAllFromASmallTagAreNoAudio) {
    constexpr int texts = 500;
    ExpectNoAudio(MpegWith(Tag(Reaching("TIT2", Utf8Text("title"), texts))));
}

// The library copies a genre from each closing bracket on: in a tag of ten megabytes
// that takes hours.
TEST(Id3v2Guard, AGenreOfManyBracketsIsNoAudio) {
    constexpr int many = 10000;
    const std::string genre = Repeated("(1)", many);
    ExpectNoAudioInAnyFile(Tag(Frame("TCON", Latin1Text(genre))));
    EXPECT_EQ(Reading(MpegWith(TagBytes(3, {{"TCON", Latin1Text(genre)}}))), Outcome::NotAudio);
    EXPECT_EQ(Reading(MpegWith(TagBytes(2, {{"TCO", Latin1Text(genre)}}))), Outcome::NotAudio);
    EXPECT_EQ(Reading(MpegWith(TagBytes(4, {{"TIT2", Latin1Text(genre)}}))), Outcome::Done);
}

TEST(Id3v2Guard, ManyGenresOfManyBracketsCountTogether) {
    constexpr int some = 1500;
    const std::string genre = Frame("TCON", Latin1Text(Repeated("(1)", some)));
    EXPECT_EQ(Reading(MpegWith(Tag(genre))), Outcome::Done);
    EXPECT_EQ(Reading(MpegWith(Tag(Repeated(genre, 20)))), Outcome::NotAudio);
}

TEST(Id3v2Guard, AFewWrongLengthsAreRead) {
    constexpr int few = 5;
    EXPECT_EQ(Reading(MpegWith(Tag(Reaching("TIT2", Utf8Text("title"), Many)))), Outcome::Done);
    EXPECT_EQ(Reading(MpegWith(Tag(Reaching("CHAP", ChapterHead, few)))), Outcome::Done);
}

TEST(Id3v2Guard, ATagOfManySmallFramesIsBounded) {
    constexpr int many = 100000;
    EXPECT_TRUE(AreBounded(Repeated(Frame("TIT2", "\3"), many)));
    EXPECT_TRUE(AreBounded(Repeated(Frame("CHAP", ChapterHead + Frame("TIT2", "\3")), many)));
}

TEST(Id3v2Guard, PackedFramesAreNotLookedInto) {
    const std::string compressed("\0\x09", 2);
    EXPECT_TRUE(AreBounded(Repeated(Frame("CHAP", FarLength + ChapterHead, compressed), Many)));
    EXPECT_FALSE(AreBounded(Reaching("CHAP", ChapterHead, Many)));
}

// A length that ends before its frame: only when the frame is read anew, by its
// own size, do those behind it count.
TEST(Id3v2Guard, AChapterThatIsReadAnewIsNotReadWithoutBounds) {
    const std::string shortLength("\0\0\0\1", 4);
    const std::string chapter =
        Frame("CHAP", shortLength + ChapterHead + Reaching("CHAP", ChapterHead, Many), HasLength);
    EXPECT_EQ(Reading(MpegWith(Tag(chapter + std::string(32, '\0')))), Outcome::Done);
}

TEST(Id3v2Guard, ATagOfMoreFramesThanAnyHasIsReadAndNotWritten) {
    constexpr int most = 10000;
    const std::string frames = Repeated(Frame("PRIV", std::string("x\0y", 3)), most);
    EXPECT_FALSE(FileToSave(MpegWith(Tag(frames))).IsRefused());
    const std::string more = MpegWith(Tag(frames + Frame("TIT2", Utf8Text("title"))));
    EXPECT_EQ(FileToSave(more).Value(L"title"), L"title");
    EXPECT_TRUE(FileToSave(more).IsRefused());
}

TEST(Id3v2Guard, AChapterWithATitleKeepsItsBytesInASave) {
    const std::string fields = ChapterHead + Frame("TIT2", Utf8Text("first chapter"));
    const std::string contents = ContentsHead + Frame("TIT2", Utf8Text("the table"));
    FileToSave file(MpegWith(Tag(Frame("CTOC", contents) + Frame("CHAP", fields) +
                                 Frame("TIT2", Utf8Text("old")) + std::string(64, '\0'))));
    ASSERT_EQ(file.Set(L"title", L"new"), Outcome::Done);
    EXPECT_EQ(FramesIn(file.Content(), "CHAP"), fields);
    EXPECT_EQ(FramesIn(file.Content(), "CTOC"), contents);
    EXPECT_EQ(file.Value(L"title"), L"new");
}

} // namespace tagmap
