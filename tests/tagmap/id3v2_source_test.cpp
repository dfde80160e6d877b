#include "suite/tagmap/id3v2_source.h"
#include "suite/tagmap/id3v2_tags.h"
#include "tests/tagmap/id3v2_bytes.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

#include <utility>

namespace tagmap {
namespace {

TagLib::ByteVector BytesOf(const std::string& bytes) {
    return TagLib::ByteVector(bytes.data(), static_cast<unsigned>(bytes.size()));
}

bool Survives(const std::string& tag) {
    TagInFile file(tag);
    return Id3v2Source(&file.Tag(), BytesOf(tag)).SurvivesSave();
}

// The genre as it is read, and the frame as it is saved.
std::wstring GenreOf(const std::string& tag) {
    TagInFile file(tag);
    const Id3v2Source source(&file.Tag(), BytesOf(tag));
    clTagRecord record;
    ReadId3v2(file.Tag(), record);
    return ValueOf(record, L"genre");
}
std::string SavedGenre(const std::string& tag, int version) {
    TagInFile file(tag);
    const Id3v2Source source(&file.Tag(), BytesOf(tag));
    PrepareId3v2Save(file.Tag(), version);
    return FramesIn(file.Saved(version), "TCON");
}

// The tag's flags, for all else as TagBytes makes it.
std::string WithTagFlags(std::string tag, char flags) {
    tag[5] = flags;
    return tag;
}

// What is asked for of a tag that is only read, and then of one that is to be saved.
struct BytesAsked {
    unsigned ForReading = 0;
    unsigned ForSaving = 0;
};
BytesAsked AskedOf(const std::string& tag) {
    TagInFile file(tag);
    unsigned asked = 0;
    Id3v2Source source(&file.Tag(), [&](unsigned at, unsigned count) {
        const TagLib::ByteVector bytes = BytesOf(tag).mid(at, count);
        asked += bytes.size();
        return bytes;
    });
    BytesAsked all;
    all.ForReading = std::exchange(asked, 0);
    EXPECT_TRUE(source.SurvivesSave());
    EXPECT_TRUE(source.SurvivesSave());
    all.ForSaving = asked;
    return all;
}

const RawFrame Title = {"TIT2", Latin1Text("t")};
const RawFrame Artist = {"TPE1", Latin1Text("a")};

} // namespace

TEST(Id3v2Source, ATagThatIsReadToItsPaddingSurvives) {
    EXPECT_TRUE(Survives(TagBytes(3, {Title, Artist})));
    EXPECT_TRUE(Survives(TagBytes(4, {Title, Artist})));
    EXPECT_TRUE(Survives(TagBytes(2, {{"TT2", Latin1Text("t")}, {"TP1", Latin1Text("a")}})));
    EXPECT_TRUE(Id3v2Source(nullptr, TagLib::ByteVector()).SurvivesSave());
}

TEST(Id3v2Source, ATagWithoutPaddingSurvives) {
    const std::string padded = TagBytes(3, {Title});
    std::string tag = padded.substr(0, padded.size() - 32);
    tag.replace(6, 4, BigEndian(static_cast<uint32_t>(tag.size() - 10), SynchSafeBits));
    EXPECT_TRUE(Survives(tag));
}

TEST(Id3v2Source, FramesBehindAnEmptyOneWouldBeLost) {
    EXPECT_FALSE(Survives(TagBytes(3, {Title, {"TALB", ""}, Artist})));
    EXPECT_FALSE(Survives(TagBytes(4, {Title, {"TALB", ""}, Artist})));
}

TEST(Id3v2Source, FramesBehindAMalformedNameWouldBeLost) {
    EXPECT_FALSE(Survives(TagBytes(3, {Title, {"ta b", Latin1Text("x")}, Artist})));
}

TEST(Id3v2Source, AFrameThatClaimsMoreThanTheTagWouldBeLost) {
    std::string tag = TagBytes(3, {Title, Artist});
    tag[10 + 4] = 1; // the top byte of the first frame's size
    EXPECT_FALSE(Survives(tag));
}

TEST(Id3v2Source, ASecondTagBehindTheFirstWouldBeLost) {
    EXPECT_FALSE(Survives(TagBytes(3, {Title}) + TagBytes(3, {Artist})));
}

TEST(Id3v2Source, ATagThatClaimsMoreThanThereIsDoesNotSurvive) {
    const std::string tag = TagBytes(3, {Title});
    TagInFile file(tag);
    EXPECT_FALSE(Id3v2Source(&file.Tag(), BytesOf(tag.substr(0, tag.size() - 1))).SurvivesSave());
}

TEST(Id3v2Source, AnExtendedHeaderIsSkippedWhereItsSizeIsUnderstood) {
    constexpr char HasExtendedHeader = 0x40;
    const RawFrames frames = {Title, Artist};
    const std::string extended = std::string("\0\0\0\6\1\0", 6); // ID3v2.4: its own size, no flag
    std::string tag = TagBytes(4, frames);
    tag.insert(10, extended);
    tag.replace(6, 4, BigEndian(static_cast<uint32_t>(tag.size() - 10), SynchSafeBits));
    EXPECT_TRUE(Survives(WithTagFlags(tag, HasExtendedHeader)));
    // ID3v2.3: six bytes behind the size.
    std::string old = TagBytes(3, frames);
    old.insert(10, std::string("\0\0\0\6\0\0\0\0\0\0", 10));
    old.replace(6, 4, BigEndian(static_cast<uint32_t>(old.size() - 10), SynchSafeBits));
    EXPECT_FALSE(Survives(WithTagFlags(old, HasExtendedHeader)));
}

TEST(Id3v2Source, UnsynchronisedTagsAreWalkedAsTheyAreRead) {
    constexpr char IsUnsynchronised = static_cast<char>(0x80);
    const std::string units = std::string("\1\xff\xfe", 3) + std::string("t\0", 2);
    const std::string withZero = std::string("\1\xff\0\xfe", 4) + std::string("t\0", 2);
    // Before 2.4 the frame's size leaves the inserted byte out.
    std::string old = TagBytes(3, {{"TIT2", units}, Artist});
    old.replace(old.find(units), units.size(), withZero);
    old.replace(6, 4, BigEndian(static_cast<uint32_t>(old.size() - 10), SynchSafeBits));
    EXPECT_TRUE(Survives(WithTagFlags(old, IsUnsynchronised)));
    const std::string flags("\0\2", 2);
    EXPECT_TRUE(
        Survives(WithTagFlags(TagBytes(4, {{"TIT2", withZero}, Artist}, flags), IsUnsynchronised)));
}

TEST(Id3v2Source, OldestFramesWithoutANewNameWouldBeLost) {
    for (const char* id : {"LNK", "CRM", "XYZ"})
        EXPECT_FALSE(Survives(TagBytes(2, {{"TT2", Latin1Text("t")}, {id, "something"}}))) << id;
    for (const char* id : {"EQU", "RVA", "TDA", "TIM", "TSI", "TP1", "PIC"})
        EXPECT_TRUE(Survives(TagBytes(2, {{"TT2", Latin1Text("t")}, {id, "something"}}))) << id;
}

TEST(Id3v2Source, WhatStandsInBracketsBeforeAGenreStays) {
    for (const char* genre :
         {"(Live)Rock", "(Live)", "((Live)Rock", "(17)(Live)Rock", "(Live) Rock"}) {
        const std::string text(genre);
        const std::wstring wide(text.begin(), text.end());
        EXPECT_EQ(GenreOf(TagBytes(3, {{"TCON", Latin1Text(text)}, Artist})), wide);
        EXPECT_EQ(SavedGenre(TagBytes(3, {{"TCON", Latin1Text(text)}, Artist}), 3),
                  Latin1Text(text));
        EXPECT_EQ(SavedGenre(TagBytes(4, {{"TCON", Utf8Text(text)}, Artist}), 4), Utf8Text(text));
    }
    EXPECT_EQ(GenreOf(TagBytes(4, {{"TCON", Utf8Text(std::string("(Live)Rock\0Pop", 14))}})),
              L"(Live)Rock\rPop");
    EXPECT_EQ(GenreOf(TagBytes(2, {{"TCO", Latin1Text("(Live)Rock")}})), L"(Live)Rock");
}

TEST(Id3v2Source, GenresOfUnsynchronisedFramesAreUnderstood) {
    constexpr char IsUnsynchronised = static_cast<char>(0x80);
    std::string units = Utf16Text(L"(Live)\u00C4");
    units.insert(2, 1, '\0');
    EXPECT_EQ(GenreOf(WithTagFlags(TagBytes(4, {{"TCON", units}}), IsUnsynchronised)),
              L"(Live)\u00C4");
}

TEST(Id3v2Source, GenreNumbersInBracketsAreReadAsBefore) {
    EXPECT_EQ(GenreOf(TagBytes(3, {{"TCON", Latin1Text("(17)Own")}})), L"Rock\rOwn");
    EXPECT_EQ(GenreOf(TagBytes(3, {{"TCON", Latin1Text("(RX)")}})), L"Remix");
    EXPECT_EQ(GenreOf(TagBytes(3, {{"TCON", Latin1Text("(half")}})), L"(half");
}

TEST(Id3v2Source, AllBytesAreAskedForOnceATagIsToBeSaved) {
    const std::string tag = TagBytes(3, {Title, Artist});
    EXPECT_EQ(AskedOf(tag).ForReading, 0U);
    EXPECT_EQ(AskedOf(tag).ForSaving, tag.size());
}

TEST(Id3v2Source, AGenreWithoutBracketsIsAllThatAReadAsksFor) {
    const std::string genre = Latin1Text("Rock");
    const std::string tag = TagBytes(4, {Title, {"TCON", genre}, Artist});
    EXPECT_EQ(AskedOf(tag).ForReading, genre.size());
    EXPECT_EQ(AskedOf(tag).ForSaving, tag.size());
}

TEST(Id3v2Source, AFrameWithALengthInFrontHasAllBytesLookedAtOnce) {
    const std::string fields = BigEndian(2, SynchSafeBits) + Latin1Text("t");
    const std::string tag = TagBytes(4, {{"TIT2", fields}}, std::string("\0\1", 2));
    EXPECT_EQ(AskedOf(tag).ForReading, tag.size());
    EXPECT_EQ(AskedOf(tag).ForSaving, 0U);
}

TEST(Id3v2Source, AGenreWithBracketsHasAllBytesLookedAtOnce) {
    const std::string genre = Latin1Text("(Live)Rock");
    const std::string tag = TagBytes(4, {Title, {"TCON", genre}, Artist});
    EXPECT_EQ(AskedOf(tag).ForReading, genre.size() + tag.size());
    EXPECT_EQ(AskedOf(tag).ForSaving, 0U);
}

} // namespace tagmap
