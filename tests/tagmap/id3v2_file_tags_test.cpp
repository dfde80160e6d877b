#include "suite/tagmap/id3v2_file_tags.h"
#include "suite/tagmap/tag_file.h"
#include "tests/querytrackdata/test_files.h"
#include "tests/tagmap/id3v2_bytes.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

#include <apetag.h>
#include <mpegfile.h>

namespace tagmap {
namespace {

std::string SampleBytes(const char* name) {
    const Bytes content =
        ReadWhole(HostPath((std::string(TONEWRIGHT_SOURCE_DIR "/build/samples/") + name).c_str()));
    return std::string(content.begin(), content.end());
}

bool HasTag(const std::string& file) {
    return file.starts_with("ID3");
}

size_t TagSize(const std::string& file) {
    return HasTag(file) ? 10 + Number(file.substr(6, 4), SynchSafeBits) : 0;
}

// The sample with another tag in front.
std::string WithTag(const char* sample, const std::string& tag) {
    const std::string file = SampleBytes(sample);
    return tag + file.substr(TagSize(file));
}

class Id3v2FileTags : public testing::Test {
protected:
    void Make(const wchar_t* name, const std::string& content) {
        path_ = folder_.Write(name, BytesOf(content));
    }
    std::string Content() const {
        const Bytes content = ReadWhole(path_);
        return std::string(content.begin(), content.end());
    }
    std::string Tag() const { return Content().substr(0, TagSize(Content())); }
    Outcome Set(clTagRecord& changes) {
        Refusals refused;
        const Outcome outcome = SetTags(path_.c_str(), changes, refused);
        EXPECT_EQ(RefusedNames(refused), L"");
        return outcome;
    }
    Outcome SetTitle() {
        clTagRecord changes;
        changes.Add(L"title", L"x");
        return Set(changes);
    }
    Outcome Delete(const wchar_t* name) {
        NStringList names;
        names.Add(name);
        return DeleteTags(path_.c_str(), names);
    }
    std::wstring Read(const wchar_t* name) {
        clTagRecord record;
        EXPECT_EQ(ReadTags(path_.c_str(), record), Outcome::Done);
        return ValueOf(record, name);
    }

    // Neither a change of a field nor a deletion touches the file.
    void ExpectRefused(const wchar_t* name, const std::string& content) {
        Make(name, content);
        EXPECT_EQ(SetTitle(), Outcome::Refused);
        EXPECT_EQ(Delete(L"title"), Outcome::Refused);
        EXPECT_EQ(Content(), content);
    }

    TestFolder folder_;
    std::wstring path_;
};

const RawFrame Artist = {"TPE1", Latin1Text("a")};
const RawFrames CutOff = {Artist, {"TALB", ""}, {"TCOM", Latin1Text("c")}};

// An IFF file's chunk; `sizeOf` gives the bytes of its size.
template <typename SizeOf>
std::string WithChunk(std::string file, const std::string& id, const std::string& data,
                      SizeOf sizeOf) {
    file += id + sizeOf(static_cast<uint32_t>(data.size())) + data;
    if (data.size() % 2 != 0)
        file += '\0';
    file.replace(4, 4, sizeOf(static_cast<uint32_t>(file.size() - 8)));
    return file;
}
std::string BigSize(uint32_t size) {
    return BigEndian(size, PlainBits);
}
std::string LittleSize(uint32_t size) {
    const std::string big = BigSize(size);
    return std::string(big.rbegin(), big.rend());
}

std::string Picture(const std::string& bytes, int type) {
    return Latin1Text("image/png") + '\0' + static_cast<char>(type) + '\0' + bytes;
}

// An APE tag with covers, which that format sorts by what they show.
std::string ApeTag(const std::string& front, const std::string& back) {
    TagLib::APE::Tag tag;
    const auto add = [&](const char* key, const std::string& bytes) {
        const std::string data = std::string("c.png") + '\0' + bytes;
        tag.setItem(
            key,
            TagLib::APE::Item(
                key, TagLib::ByteVector(data.data(), static_cast<unsigned>(data.size())), true));
    };
    add("Cover Art (Front)", front);
    add("Cover Art (Back)", back);
    const TagLib::ByteVector bytes = tag.render();
    return std::string(bytes.data(), bytes.size());
}

std::string ApePart(const std::string& content) {
    return content.substr(content.find("APETAGEX"));
}

// The back cover stands first in the ID3v2 tag, and second in the APE tag.
std::string TwoOrders() {
    return WithTag("sample.mp3",
                   TagBytes(3, {{"APIC", Picture("-back-", 4)}, {"APIC", Picture("-front-", 3)}})) +
           ApeTag("-front-", "-back-");
}

} // namespace

TEST_F(Id3v2FileTags, ATagKeepsItsVersionInTheFile) {
    for (const char* sample : {"sample.mp3", "sample.flac", "sample.tta"}) {
        for (const int version : {3, 4}) {
            Make(L"versions", WithTag(sample, TagBytes(version, {Artist, {"XABC", "unknown"}})));
            ASSERT_EQ(SetTitle(), Outcome::Done) << sample;
            EXPECT_EQ(Tag()[3], version) << sample;
            EXPECT_EQ(FramesIn(Tag(), "TIT2"), version == 3 ? Utf16Text(L"x") : Utf8Text("x"));
            EXPECT_EQ(FramesIn(Tag(), "XABC"), "unknown");
            ASSERT_EQ(Delete(L"artist"), Outcome::Done) << sample;
            EXPECT_EQ(Tag()[3], version) << sample;
            EXPECT_EQ(FramesIn(Tag(), "TPE1"), "");
            EXPECT_TRUE(Read(L"title") == L"x");
        }
    }
}

TEST_F(Id3v2FileTags, FramesOfTheNewVersionLastInAnOldTagOfEachFormat) {
    for (const char* sample : {"sample.mp3", "sample.flac", "sample.tta"}) {
        Make(L"carried", WithTag(sample, TagBytes(3, {Artist, {"RVA2", "album\0\1\1\1\0"}})));
        ASSERT_EQ(SetTitle(), Outcome::Done);
        EXPECT_EQ(FrameIdsIn(Tag()).find("RVA2") == std::string::npos, false) << sample;
        ASSERT_EQ(SetTitle(), Outcome::Done);
        EXPECT_EQ(FrameIdsIn(Tag()).find("RVA2") == std::string::npos, false) << sample;
    }
}

TEST_F(Id3v2FileTags, TheOldestVersionBecomesTheNext) {
    Make(L"oldest.mp3", WithTag("sample.mp3", TagBytes(2, {{"TP1", Latin1Text("a")}})));
    ASSERT_EQ(SetTitle(), Outcome::Done);
    EXPECT_EQ(Tag()[3], 3);
    EXPECT_EQ(Read(L"artist"), L"a");
}

TEST_F(Id3v2FileTags, ANewTagIsOfTheVersionThatAllPlayersRead) {
    for (const char* sample : {"sample.mp3", "sample.tta"}) {
        Make(L"new", WithTag(sample, ""));
        ASSERT_FALSE(HasTag(Content()));
        ASSERT_EQ(SetTitle(), Outcome::Done);
        EXPECT_EQ(Tag()[3], 3) << sample;
    }
}

TEST_F(Id3v2FileTags, ANewTagGetsAllThatTheOthersShow) {
    const std::string old = "TAG" + std::string("Title") + std::string(25, '\0') + "Artist" +
                            std::string(24, '\0') + std::string(30, '\0') + "2004" +
                            std::string(30, '\0') + '\x11';
    for (const char* sample : {"sample.mp3", "sample.tta"}) {
        Make(L"old", WithTag(sample, "") + old);
        ASSERT_EQ(SetTitle(), Outcome::Done);
        EXPECT_EQ(FramesIn(Tag(), "TIT2"), Utf16Text(L"x")) << sample;
        EXPECT_EQ(FramesIn(Tag(), "TPE1"), Utf16Text(L"Artist")) << sample;
        EXPECT_EQ(FramesIn(Tag(), "TYER"), Latin1Text("2004")) << sample;
        EXPECT_EQ(FramesIn(Tag(), "TCON"), Latin1Text("Rock")) << sample;
    }
    Make(L"old.mp3", WithTag("sample.mp3", "") + ApeTag("-front-", "-back-"));
    ASSERT_EQ(SetTitle(), Outcome::Done);
    EXPECT_NE(FramesIn(Tag(), "APIC").find("-front-"), std::string::npos);
    EXPECT_NE(FramesIn(Tag(), "APIC").find("-back-"), std::string::npos);
    // Here the new tag is of the other kind.
    Make(L"old.wv", SampleBytes("sample.wv"));
    ASSERT_EQ(DeleteTags(path_.c_str(), NStringList()), Outcome::Done);
    Make(L"old.wv", Content() + old);
    ASSERT_EQ(SetTitle(), Outcome::Done);
    const std::string ape = ApePart(Content());
    EXPECT_NE(ape.substr(0, ape.size() - 128).find("Artist"), std::string::npos);
}

TEST_F(Id3v2FileTags, AFrameWithAWrongLengthInFrontStaysWhole) {
    const std::string content(20000, 'p');
    // In plain bits; read as synch-safe it is less.
    const std::string fields = BigEndian(20000, PlainBits) + "owner" + content;
    std::string tag = TagBytes(4, {{"PRIV", fields}, Artist});
    tag[10 + 9] = 1; // the flag of the first frame
    Make(L"length.mp3", WithTag("sample.mp3", tag));
    ASSERT_EQ(SetTitle(), Outcome::Done);
    EXPECT_EQ(FramesIn(Tag(), "PRIV"), "owner" + content);
}

TEST_F(Id3v2FileTags, TagsOfOtherKindsAreNotMade) {
    Make(L"plain.mp3", WithTag("sample.mp3", ""));
    ASSERT_EQ(SetTitle(), Outcome::Done);
    const std::string content = Content();
    EXPECT_NE(content.substr(content.size() - 128, 3), "TAG");
    EXPECT_EQ(content.find("APETAGEX"), std::string::npos);
}

TEST_F(Id3v2FileTags, AnEncryptedOrGroupedFrameIsRefusedInEachFormat) {
    const std::string encrypted("\0\x40", 2);
    const std::string grouped("\0\x20", 2);
    for (const std::string& flags : {encrypted, grouped}) {
        const std::string tag = TagBytes(3, {{"XABC", "1unknown"}}, flags);
        for (const char* sample : {"sample.mp3", "sample.flac", "sample.tta"})
            ExpectRefused(L"flagged", WithTag(sample, tag));
    }
}

TEST_F(Id3v2FileTags, ATagThatTheLibraryWouldCutIsRefusedInEachFormat) {
    const std::string tag = TagBytes(3, CutOff);
    for (const char* sample : {"sample.mp3", "sample.flac", "sample.tta"})
        ExpectRefused(L"cut", WithTag(sample, tag));
}

TEST_F(Id3v2FileTags, AChunkThatTheLibraryWouldCutIsRefused) {
    Make(L"plain.wav", SampleBytes("sample.wav"));
    ASSERT_EQ(DeleteTags(path_.c_str(), NStringList()), Outcome::Done);
    const std::string wav = Content();
    ExpectRefused(L"cut.wav", WithChunk(wav, "id3 ", TagBytes(3, CutOff), LittleSize));
    Make(L"plain.aiff", SampleBytes("sample.aiff"));
    ASSERT_EQ(DeleteTags(path_.c_str(), NStringList()), Outcome::Done);
    const std::string aiff = Content();
    ExpectRefused(L"cut.aiff", WithChunk(aiff, "ID3 ", TagBytes(3, CutOff), BigSize));
}

TEST_F(Id3v2FileTags, TwoChunksOfTagsAreRefused) {
    const std::string tag = TagBytes(3, {Artist});
    ExpectRefused(L"two.wav", WithChunk(SampleBytes("sample-id3.wav"), "id3 ", tag, LittleSize));
    ExpectRefused(L"two.aiff", WithChunk(SampleBytes("sample.aiff"), "ID3 ", tag, BigSize));
}

TEST_F(Id3v2FileTags, ASecondTagBehindTheFirstIsRefused) {
    ExpectRefused(L"two.mp3", WithTag("sample.mp3", TagBytes(3, {Artist}) + TagBytes(3, {Artist})));
}

TEST_F(Id3v2FileTags, BracketsBeforeAGenreLastThroughAWriteOfSomethingElse) {
    const RawFrames frames = {{"TCON", Latin1Text("(Live)Rock")}};
    for (const char* sample : {"sample.mp3", "sample.tta"}) {
        Make(L"genre", WithTag(sample, TagBytes(3, frames)));
        EXPECT_EQ(Read(L"genre"), L"(Live)Rock") << sample;
        ASSERT_EQ(SetTitle(), Outcome::Done);
        EXPECT_EQ(FramesIn(Tag(), "TCON"), Latin1Text("(Live)Rock")) << sample;
    }
}

TEST_F(Id3v2FileTags, FramesThatAreNotNamedKeepTheirBytesAndTheirOrder) {
    const std::string subFrame = "TIT2" + BigEndian(0, PlainBits) + std::string(2, '\0');
    const RawFrames odd = {
        {"TALB", "\3\xC4lbum"},                                 // Latin-1 that says UTF-8
        {"TPE2", std::string("\1b\0a\0", 5)},                   // UTF-16 without a byte order
        {"TXXX", std::string("\0\0value", 7)},                  // without a description
        {"COMM", std::string("\3eng\0\xC4", 6)},                // Latin-1 that says UTF-8
        {"POPM", std::string("a@b\0\x80\0\0\0\1\0\0\0\2", 13)}, // a counter of 8 bytes
        {"CHAP", "one" + std::string(1, '\0') + std::string(16, '\1') + subFrame + "rest"},
        {"TCON", Latin1Text("(300)Own")},
        {"TMOO", Latin1Text("calm")},
        {"TXXX", Latin1Text(std::string("MOOD\0other", 10))},
        {"TSOP", Latin1Text("sorted")},
    };
    RawFrames old = odd;
    old.push_back({"TYER", Latin1Text("2004")});
    old.push_back({"TDAT", Latin1Text("ab-c")});
    old.push_back({"TYER", Latin1Text("2005")});
    old.push_back({"TORY", Latin1Text("1999")});
    old.push_back({"TORY", Latin1Text("1998")});
    old.push_back({"IPLS", Latin1Text(std::string("producer\0A\0mixer", 16))});
    old.push_back({"IPLS", Latin1Text("alone")});
    RawFrames current = odd;
    current.push_back({"TIPL", Utf8Text(std::string("producer\0\0mixer\0B", 17))});
    current.push_back({"TDRC", Utf8Text("sometime")});
    for (const char* sample : {"sample.mp3", "sample.flac", "sample.tta"}) {
        for (const int version : {3, 4}) {
            const RawFrames& frames = version == 3 ? old : current;
            Make(L"odd", WithTag(sample, TagBytes(version, frames)));
            ASSERT_EQ(SetTitle(), Outcome::Done) << sample << version;
            RawFrames found = FramesIn(Tag());
            ASSERT_FALSE(found.empty());
            EXPECT_EQ(found.back().first, "TIT2");
            found.pop_back();
            EXPECT_EQ(found, frames) << sample << version;
            ASSERT_EQ(Delete(L"title"), Outcome::Done);
            EXPECT_EQ(FramesIn(Tag()), frames) << sample << version;
        }
    }
}

TEST_F(Id3v2FileTags, FramesOfAChunkKeepTheirBytes) {
    const RawFrames frames = {{"TALB", "\3\xC4lbum"}, {"TYER", Latin1Text("2004")}};
    for (const char* sample : {"sample.wav", "sample.aiff"}) {
        Make(L"chunk", SampleBytes(sample));
        ASSERT_EQ(DeleteTags(path_.c_str(), NStringList()), Outcome::Done);
        const std::string plain = Content();
        const bool isWav = plain.starts_with("RIFF");
        Make(L"chunk", WithChunk(plain, "ID3 ", TagBytes(3, frames), isWav ? LittleSize : BigSize));
        ASSERT_EQ(SetTitle(), Outcome::Done) << sample;
        const std::string content = Content();
        const std::string tag = content.substr(content.find("ID3\3"));
        RawFrames found = FramesIn(tag);
        EXPECT_EQ(found.back().first, "TIT2");
        found.pop_back();
        EXPECT_EQ(found, frames) << sample;
    }
}

TEST_F(Id3v2FileTags, AFrameBehindZeroBytesIsRefused) {
    const std::string first = TagBytes(3, {Artist}); // ends in 32 zero bytes
    std::string tag = first + "TALB" + BigEndian(2, PlainBits) + std::string(2, '\0') +
                      Latin1Text("b") + std::string(20, '\0');
    tag.replace(6, 4, BigEndian(static_cast<uint32_t>(tag.size() - 10), SynchSafeBits));
    ExpectRefused(L"gap.mp3", WithTag("sample.mp3", tag));
}

TEST_F(Id3v2FileTags, APictureIsReplacedInTheOrderOfEachTag) {
    Make(L"orders.mp3", TwoOrders());
    clTagRecord changes;
    AddBytes(changes, L"_albumart_2_Front Album Cover", "-new front-");
    ASSERT_EQ(Set(changes), Outcome::Done);
    EXPECT_EQ(Tag().find("-front-"), std::string::npos);
    EXPECT_NE(Tag().find("-back-"), std::string::npos);
    const std::string ape = ApePart(Content());
    EXPECT_NE(ape.find("-new front-"), std::string::npos);
    EXPECT_NE(ape.find("-back-"), std::string::npos);
    EXPECT_EQ(ape.find("-front-"), std::string::npos);
}

TEST_F(Id3v2FileTags, APictureIsDeletedInTheOrderOfEachTag) {
    Make(L"orders.mp3", TwoOrders());
    ASSERT_EQ(Delete(L"_albumart_1"), Outcome::Done);
    const std::string ape = ApePart(Content());
    EXPECT_EQ(Tag().find("-back-"), std::string::npos);
    EXPECT_EQ(ape.find("-back-"), std::string::npos);
    EXPECT_NE(Tag().find("-front-"), std::string::npos);
    EXPECT_NE(ape.find("-front-"), std::string::npos);
}

TEST_F(Id3v2FileTags, APictureThatOnlyTheFirstTagHasLeavesTheOtherAlone) {
    Make(L"first.mp3", WithTag("sample.mp3", TagBytes(3, {{"APIC", Picture("-disc-", 6)}})) +
                           ApeTag("-front-", "-back-"));
    ASSERT_EQ(Delete(L"_albumart_1"), Outcome::Done);
    const std::string ape = ApePart(Content());
    EXPECT_EQ(Content().find("-disc-"), std::string::npos);
    EXPECT_NE(ape.find("-front-"), std::string::npos);
    EXPECT_NE(ape.find("-back-"), std::string::npos);
}

TEST_F(Id3v2FileTags, PicturesOfTheLesserTagAreChangedByTheNumbersThatAreShown) {
    const std::string content =
        WithTag("sample.mp3", TagBytes(3, {Artist})) + ApeTag("-front-", "-back-");
    Make(L"shown.mp3", content);
    clTagRecord changes;
    AddBytes(changes, L"_albumart_2_Back Album Cover", "-new back-");
    ASSERT_EQ(Set(changes), Outcome::Done);
    clTagRecord record;
    ReadTags(path_.c_str(), record);
    EXPECT_EQ(DataOf(record, L"_albumart_1_Front Album Cover"), "-front-");
    EXPECT_EQ(DataOf(record, L"_albumart_2_Back Album Cover"), "-new back-");
    const std::wstring before = folder_.Write(L"before.mp3", BytesOf(content));
    EXPECT_TRUE(WasSet(before.c_str(), path_.c_str(), changes, Refusals()));
    EXPECT_EQ(Content().find("-back-"), std::string::npos);
}

TEST_F(Id3v2FileTags, PicturesThatAreAddedAtOnceReachBothTags) {
    Make(L"add.mp3", WithTag("sample.mp3", TagBytes(3, {{"APIC", Picture("-front-", 3)}})) +
                         ApeTag("-front-", "-back-"));
    clTagRecord changes;
    AddBytes(changes, L"_albumart_5_Band", "-band-");
    AddBytes(changes, L"_albumart_6_Media", "-disc-");
    ASSERT_EQ(Set(changes), Outcome::Done);
    const std::string ape = ApePart(Content());
    for (const char* bytes : {"-band-", "-disc-"}) {
        EXPECT_NE(Tag().find(bytes), std::string::npos) << bytes;
        EXPECT_NE(ape.find(bytes), std::string::npos) << bytes;
    }
}

TEST_F(Id3v2FileTags, ThePicturesOfAFlacFilesTwoTagsKeepTheirOrders) {
    Make(L"plain.flac", SampleBytes("sample.flac"));
    ASSERT_EQ(DeleteTags(path_.c_str(), NStringList()), Outcome::Done);
    clTagRecord changes;
    AddBytes(changes, L"_albumart_1_Back Album Cover", "-back-");
    AddBytes(changes, L"_albumart_2_Front Album Cover", "-front-");
    ASSERT_EQ(Set(changes), Outcome::Done);
    Make(L"two.flac",
         TagBytes(4, {{"APIC", Picture("-front-", 3)}, {"APIC", Picture("-back-", 4)}}) +
             Content());
    ASSERT_EQ(Delete(L"_albumart_1"), Outcome::Done);
    EXPECT_EQ(Content().find("-back-"), std::string::npos);
    EXPECT_NE(Tag().find("-front-"), std::string::npos);
    EXPECT_NE(Content().substr(TagSize(Content())).find("-front-"), std::string::npos);
}

} // namespace tagmap
