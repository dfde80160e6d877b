#include "tests/tagmap/file_to_save.h"
#include "tests/tagmap/id3v2_bytes.h"

#include <gtest/gtest.h>

#include <apetag.h>

#include <string>

// Files whose first tag is not there yet, and what it gets of the others.
namespace tagmap {
namespace {

// A file of the sample's audio, without a tag.
std::string WithoutTags(const char* sample) {
    const FileToSave file(SampleContent(sample));
    EXPECT_EQ(DeleteTags(file.Path().c_str(), NStringList()), Outcome::Done);
    return file.Content();
}

std::string Padded(const std::string& text, size_t length) {
    return text + std::string(length - text.size(), '\0');
}

std::string Id3v1(const std::string& title, const std::string& artist, const std::string& album) {
    return "TAG" + Padded(title, 30) + Padded(artist, 30) + Padded(album, 30) + "2004" +
           std::string(30, '\0') + '\x11';
}

std::string LastTag(const std::string& content) {
    return content.substr(content.size() - 128);
}

// With a front cover and a back cover.
std::string ApeTag() {
    TagLib::APE::Tag tag;
    const auto addCover = [&](const char* key, const char* bytes) {
        const std::string data = std::string("c.png") + '\0' + bytes;
        tag.setItem(
            key,
            TagLib::APE::Item(
                key, TagLib::ByteVector(data.data(), static_cast<unsigned>(data.size())), true));
    };
    tag.setArtist(L"\u00C4rtist");
    tag.setTitle(L"Title");
    tag.setItem("Composer", TagLib::APE::Item("Composer", TagLib::String("Composer")));
    addCover("Cover Art (Front)", "-front-");
    addCover("Cover Art (Back)", "-back-");
    const TagLib::ByteVector bytes = tag.render();
    return std::string(bytes.data(), bytes.size());
}

std::string Chunk(const std::string& name, const std::string& data) {
    return name + BigEndian(data.size()) + data + std::string(data.size() % 2, '\0');
}

// Eight samples of silence: 1 channel, 8 frames, 16 bits, 44100 Hz.
std::string AiffWith(const std::string& chunks) {
    const std::string common("\0\1\0\0\0\10\0\20\100\16\254\104\0\0\0\0\0\0", 18);
    const std::string body =
        "AIFF" + Chunk("COMM", common) + chunks + Chunk("SSND", std::string(8 + 16, '\0'));
    return "FORM" + BigEndian(body.size()) + body;
}

std::string TagIn(const std::string& content) {
    const size_t at = content.find("ID3\3");
    return at == std::string::npos ? "" : content.substr(at);
}

} // namespace

TEST(NewTag, OfAFileWithAnApeTagGetsItsTexts) {
    FileToSave file(WithoutTags("sample.mp3") + ApeTag());
    ASSERT_EQ(file.Set(L"title", L"another"), Outcome::Done);
    const std::string tag = TagIn(file.Content());
    EXPECT_EQ(FramesIn(tag, "TIT2"), Utf16Text(L"another"));
    EXPECT_EQ(FramesIn(tag, "TPE1"), Utf16Text(L"\u00C4rtist"));
    EXPECT_EQ(FramesIn(tag, "TCOM"), Utf16Text(L"Composer"));
}

TEST(NewTag, OfAnAiffFileGetsItsTexts) {
    FileToSave file(AiffWith(Chunk("NAME", "old") + Chunk("AUTH", "\xC3\x84rtist") +
                             Chunk("(c) ", "2020 X") + Chunk("ANNO", "a comment")));
    ASSERT_EQ(file.Set(L"title", L"another"), Outcome::Done);
    const std::string tag = TagIn(file.Content());
    EXPECT_EQ(FramesIn(tag, "TIT2"), Utf16Text(L"another"));
    EXPECT_EQ(FramesIn(tag, "TPE1"), Utf16Text(L"\u00C4rtist"));
    EXPECT_EQ(FramesIn(tag, "TCOP"), Utf16Text(L"2020 X"));
    EXPECT_NE(FramesIn(tag, "COMM").find(Utf16(L"a comment")), std::string::npos);
}

TEST(NewTag, IsNotMadeForARemoval) {
    const std::string old = Id3v1("Title", "Artist", "Album");
    for (const char* sample : {"sample.mp3", "sample.tta", "sample.wv", "sample.ape"}) {
        const std::string plain = WithoutTags(sample);
        FileToSave file(plain + old);
        ASSERT_EQ(file.Set(L"title", L""), Outcome::Done) << sample;
        EXPECT_EQ(file.Content(), plain + Id3v1("", "Artist", "Album")) << sample;
        EXPECT_EQ(file.Value(L"title"), Absent);
    }
}

TEST(NewTag, IsNotMadeForARemovalFromAnApeTag) {
    const std::string plain = WithoutTags("sample.mp3");
    FileToSave file(plain + ApeTag());
    ASSERT_EQ(file.Set(L"artist", L""), Outcome::Done);
    EXPECT_EQ(file.Content().substr(0, plain.size()), plain);
    EXPECT_EQ(file.Value(L"artist"), Absent);
    EXPECT_EQ(file.Value(L"title"), L"Title");
    ASSERT_EQ(file.Set(L"_albumart_1", L""), Outcome::Done);
    EXPECT_EQ(file.Content().substr(0, plain.size()), plain);
    EXPECT_FALSE(file.Contains("-front-"));
    EXPECT_TRUE(file.Contains("-back-"));
}

TEST(NewTag, IsNotMadeForARemovalFromTheTextsOfAnAiffFile) {
    FileToSave file(AiffWith(Chunk("NAME", "old") + Chunk("AUTH", "stays")));
    ASSERT_EQ(file.Set(L"title", L""), Outcome::Done);
    EXPECT_EQ(TagIn(file.Content()), "");
    EXPECT_EQ(file.Value(L"title"), Absent);
    EXPECT_EQ(file.Value(L"artist"), L"stays");
}

TEST(NewTag, IsMadeForARemovalBesideSomethingElse) {
    FileToSave file(WithoutTags("sample.mp3") + Id3v1("Title", "Artist", "Album"));
    clTagRecord changes;
    changes.Add(L"title", L"");
    changes.Add(L"composer", L"c");
    ASSERT_EQ(file.Set(changes), Outcome::Done);
    const std::string tag = TagIn(file.Content());
    EXPECT_EQ(FramesIn(tag, "TIT2"), "");
    EXPECT_EQ(FramesIn(tag, "TPE1"), Utf16Text(L"Artist"));
    EXPECT_EQ(FramesIn(tag, "TCOM"), Utf16Text(L"c"));
}

TEST(NewTag, GetsNoTextOfAnUnknownCodePage) {
    const std::string artist("\xC0\xF0\xF2\xE8\xF1\xF2"); // Cyrillic, as Windows writes it
    for (const char* sample : {"sample.mp3", "sample.tta"}) {
        FileToSave file(WithoutTags(sample) + Id3v1("Title", artist, "Album"));
        ASSERT_EQ(file.Set(L"title", L"another"), Outcome::Done);
        EXPECT_EQ(FramesIn(TagIn(file.Content()), "TPE1"), "") << sample;
        EXPECT_EQ(FramesIn(TagIn(file.Content()), "TALB"), Utf16Text(L"Album")) << sample;
        EXPECT_EQ(LastTag(file.Content()), Id3v1("another", artist, "Album")) << sample;
        EXPECT_EQ(file.Value(L"artist"), L"\u00C0\u00F0\u00F2\u00E8\u00F1\u00F2");
    }
    FileToSave file(WithoutTags("sample.wv") + Id3v1("Title", artist, "Album"));
    ASSERT_EQ(file.Set(L"title", L"another"), Outcome::Done);
    const std::string content = file.Content();
    const std::string ape = content.substr(content.find("APETAGEX"));
    EXPECT_NE(ape.substr(0, ape.size() - 128).find("Album"), std::string::npos);
    EXPECT_EQ(ape.find("\xC3\x80"), std::string::npos); // the first letter as Latin-1, in UTF-8
    EXPECT_EQ(LastTag(content), Id3v1("another", artist, "Album"));
}

TEST(NewTag, OfAnAiffFileGetsNoTextThatIsNoUtf8) {
    const std::string artist("\xC0\xF0\xF2\xE8\xF1\xF2"); // Cyrillic, as Windows writes it
    FileToSave file(AiffWith(Chunk("NAME", "old") + Chunk("AUTH", artist) +
                             Chunk("(c) ", "2020 \xC3\x84") + Chunk("ANNO", "sure") +
                             Chunk("ANNO", artist)));
    ASSERT_EQ(file.Set(L"title", L"another"), Outcome::Done);
    const std::string tag = TagIn(file.Content());
    EXPECT_EQ(FramesIn(tag, "TIT2"), Utf16Text(L"another"));
    EXPECT_EQ(FramesIn(tag, "TPE1"), "");
    EXPECT_EQ(FramesIn(tag, "COMM"), "");
    EXPECT_EQ(FramesIn(tag, "TCOP"), Utf16Text(L"2020 \u00C4"));
    EXPECT_TRUE(file.Contains(Chunk("AUTH", artist)));
    EXPECT_EQ(file.Value(L"artist"), L"\u00C0\u00F0\u00F2\u00E8\u00F1\u00F2");
}

TEST(NewTag, GetsATextOfAnUnknownCodePageThatIsNamed) {
    FileToSave file(WithoutTags("sample.mp3") + Id3v1("Title", "\xC4rtist", "Album"));
    ASSERT_EQ(file.Set(L"artist", L"\u00C4nother"), Outcome::Done);
    EXPECT_EQ(FramesIn(TagIn(file.Content()), "TPE1"), Utf16Text(L"\u00C4nother"));
    EXPECT_EQ(LastTag(file.Content()), Id3v1("Title", "\xC4nother", "Album"));
}

} // namespace tagmap
