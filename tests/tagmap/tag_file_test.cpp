#include "suite/tagmap/audio_file.h"
#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/pictures.h"
#include "suite/tagmap/tag_file.h"
#include "tests/querytrackdata/test_files.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

#include <audioproperties.h>

#include <algorithm>
#include <functional>
#include <map>
#include <ostream>

// Each format by the same questions: does what is written come back, does a
// second write leave the file alone, does a damaged file do harm. What stands
// in which native field is asked in the tests of the single formats.
namespace {
using namespace tagmap;

struct Sample {
    const char* File;
    bool HoldsPictures;
    bool HoldsDescriptions; // of pictures, in the editor's own words
};

void PrintTo(const Sample& sample, std::ostream* out) {
    *out << sample.File;
}

const Sample Samples[] = {
    {"sample.mp3", true, true},        {"sample-id3v1.mp3", true, true},
    {"sample-id3v22.mp3", true, true}, {"sample-id3v24.mp3", true, true},
    {"sample-ape.mp3", true, true},    {"sample.flac", true, true},
    {"sample.ogg", true, true},        {"sample.opus", true, true},
    {"sample.spx", true, true},        {"sample.oga", true, true},
    {"sample.m4a", true, false},       {"sample-alac.m4a", true, false},
    {"sample.wma", true, true},        {"sample.wav", true, true},
    {"sample-id3.wav", true, true},    {"sample.aiff", true, true},
    {"sample.ape", true, true},        {"sample.wv", true, true},
    {"sample.mpc", true, true},        {"sample.tta", true, true},
};

std::wstring SamplePath(const char* name) {
    return HostPath((std::string(TONEWRIGHT_SOURCE_DIR "/build/samples/") + name).c_str());
}

std::wstring NameOf(const char* file) {
    const std::string name = file;
    return std::wstring(name.begin(), name.end());
}

// A value that the element of a row can hold in every format.
const wchar_t* ValueFor(const std::wstring& element) {
    static const std::map<std::wstring, const wchar_t*> special = {
        {L"track", L"7/19"},        {L"disc", L"2/3"},         {L"year", L"1987"},
        {L"tempo", L"128"},         {L"rating", L"8"},         {L"genre", L"Tr\u00E4umerei \u6B4C"},
        {L"isrc", L"DEA321800123"}, {L"upc", L"4006381333931"}};
    const auto found = special.find(element);
    return found == special.end() ? L"W\u00E9rt \u4E2D\u6587 \xD83C\xDFB5" : found->second;
}

void AddEveryMappedElement(clTagRecord& record) {
    for (const clMappingRow& row : MappingRows())
        record.Add(row.Element, ValueFor(row.Element));
}

bool HasAudio(const std::wstring& path) {
    AudioFile file(path.c_str(), FileStream::Mode::Read, true);
    return file.IsValid() && file.File().audioProperties() &&
           file.File().audioProperties()->sampleRate() > 0;
}

// What became of a file that was to be changed: as it was, or done, and then as
// sound as it was before.
void ExpectNoHarm(const Bytes& before, const std::wstring& path, Outcome outcome) {
    if (outcome != Outcome::Done) {
        EXPECT_NE(outcome, Outcome::CannotWrite);
        EXPECT_TRUE(ReadWhole(path) == before);
        return;
    }
    const std::wstring old = path + L".before";
    WriteWhole(old, before);
    EXPECT_TRUE(SoundsAlike(old.c_str(), path.c_str()) || !HasAudio(old));
}

// The first half of a sample that isn't tag, as far as `before`, made of the
// sample, still has it. Pages of Ogg have numbers of their own, and change.
void ExpectTheAudioOf(const Bytes& before, const Bytes& sample, const std::wstring& path) {
    const auto begin = static_cast<ptrdiff_t>(sample.size() / 4);
    const auto end = static_cast<ptrdiff_t>(std::min(sample.size() * 5 / 8, before.size()));
    const std::string ogg = "OggS";
    if (begin >= end || std::equal(ogg.begin(), ogg.end(), sample.begin()))
        return;
    const Bytes after = ReadWhole(path);
    // Silence looks alike wherever it is.
    const std::boyer_moore_searcher audio(before.begin() + begin, before.begin() + end);
    EXPECT_NE(std::search(after.begin(), after.end(), audio), after.end());
}

const std::string FrontCover = "\x89PNG\r\n\x1A\n front";
const std::string BackCover = "\xFF\xD8\xFF\xE0 back";

class TagFile : public testing::TestWithParam<Sample> {
protected:
    void SetUp() override {
        path_ = folder_.Write(NameOf(GetParam().File), ReadWhole(SamplePath(GetParam().File)));
    }
    Outcome Set(clTagRecord& changes) { return SetTags(path_.c_str(), changes, refused_); }
    Outcome Delete(const NStringList& names) { return DeleteTags(path_.c_str(), names); }
    void Read() { ASSERT_EQ(ReadTags(path_.c_str(), record_), Outcome::Done); }

    TestFolder folder_;
    std::wstring path_;
    clTagRecord record_;
    Refusals refused_;
};
} // namespace

TEST_P(TagFile, EveryMappedElementComesBackAsWritten) {
    clTagRecord changes;
    AddEveryMappedElement(changes);
    ASSERT_EQ(Set(changes), Outcome::Done);
    EXPECT_EQ(RefusedNames(refused_), L"");
    Read();
    for (const clMappingRow& row : MappingRows())
        EXPECT_EQ(ValueOf(record_, row.Element), ValueFor(row.Element))
            << ToTagLib(row.Element).to8Bit();
    EXPECT_TRUE(Holds(path_.c_str(), changes, refused_));
    EXPECT_TRUE(SoundsAlike(SamplePath(GetParam().File).c_str(), path_.c_str()));
}

TEST_P(TagFile, WritingTwiceChangesNothingTheSecondTime) {
    clTagRecord changes;
    AddEveryMappedElement(changes);
    ASSERT_EQ(Set(changes), Outcome::Done);
    const Bytes once = ReadWhole(path_);
    ASSERT_EQ(Set(changes), Outcome::Done);
    EXPECT_TRUE(ReadWhole(path_) == once);
}

TEST_P(TagFile, AnElementThatIsNotNamedStays) {
    Read();
    const std::wstring artist = ValueOf(record_, L"artist");
    clTagRecord changes;
    changes.Add(L"title", L"another");
    ASSERT_EQ(Set(changes), Outcome::Done);
    Read();
    EXPECT_EQ(ValueOf(record_, L"artist"), artist);
    EXPECT_EQ(ValueOf(record_, L"title"), L"another");
}

TEST_P(TagFile, AFreeNameComesBack) {
    clTagRecord changes;
    changes.Add(L"Played With", L"felt \u00E4");
    ASSERT_EQ(Set(changes), Outcome::Done);
    Read();
    EXPECT_EQ(ValueOf(record_, L"played with"), L"felt \u00E4");
}

TEST_P(TagFile, AnEmptyElementRemovesItsField) {
    clTagRecord changes;
    changes.Add(L"artist", L"");
    ASSERT_EQ(Set(changes), Outcome::Done);
    Read();
    EXPECT_EQ(ValueOf(record_, L"artist"), Absent);
    EXPECT_TRUE(Holds(path_.c_str(), changes, refused_));
}

TEST_P(TagFile, SeveralValuesComeBackAsASet) {
    clTagRecord changes;
    changes.Add(L"artist", L"First\rSecond\rThird");
    ASSERT_EQ(Set(changes), Outcome::Done);
    EXPECT_TRUE(Holds(path_.c_str(), changes, refused_));
    Read();
    const NString value(ValueOf(record_, L"artist").c_str());
    for (const wchar_t* part : {L"First", L"Second", L"Third"})
        EXPECT_NE(value.Find(part), 0);
}

TEST_P(TagFile, DeletesByName) {
    NStringList names;
    names.Add(L"ARTIST");
    names.Add(L"year");
    names.Add(L"no such name");
    ASSERT_EQ(Delete(names), Outcome::Done);
    Read();
    EXPECT_EQ(ValueOf(record_, L"artist"), Absent);
    EXPECT_EQ(ValueOf(record_, L"year"), Absent);
    EXPECT_NE(ValueOf(record_, L"title"), Absent);
    EXPECT_TRUE(LacksAll(path_.c_str(), names));
    EXPECT_TRUE(WasDeleted(SamplePath(GetParam().File).c_str(), path_.c_str(), names));
    EXPECT_FALSE(LacksAll(SamplePath(GetParam().File).c_str(), names));
}

TEST_P(TagFile, DeletesTheWholeTagAndKeepsTheAudio) {
    clTagRecord changes;
    AddEveryMappedElement(changes);
    if (GetParam().HoldsPictures)
        AddBytes(changes, L"_albumart_1", FrontCover);
    ASSERT_EQ(Set(changes), Outcome::Done);
    ASSERT_EQ(Delete(NStringList()), Outcome::Done);
    Read();
    for (int index = 0; index < record_.Count(); ++index)
        EXPECT_STREQ(record_[index]->Name.c_str(), L"encoder"); // the audio stream's own
    EXPECT_TRUE(LacksAll(path_.c_str(), NStringList()));
    EXPECT_TRUE(SoundsAlike(SamplePath(GetParam().File).c_str(), path_.c_str()));
}

TEST_P(TagFile, PicturesComeBackByteForByte) {
    if (!GetParam().HoldsPictures)
        return;
    NStringList all;
    ASSERT_EQ(Delete(all), Outcome::Done);
    clTagRecord changes;
    AddBytes(changes, L"_albumart_1_Front Album Cover", FrontCover);
    AddBytes(changes, L"_albumart_2_Back Album Cover", BackCover);
    if (GetParam().HoldsDescriptions) {
        ASSERT_EQ(Set(changes), Outcome::Done);
        Read();
        EXPECT_EQ(DataOf(record_, L"_albumart_1_Front Album Cover"), FrontCover);
        EXPECT_EQ(DataOf(record_, L"_albumart_2_Back Album Cover"), BackCover);
    } else {
        ASSERT_EQ(Set(changes), Outcome::Done);
        Read();
        EXPECT_EQ(DataOf(record_, L"_albumart_1"), FrontCover);
        EXPECT_EQ(DataOf(record_, L"_albumart_2"), BackCover);
    }
    EXPECT_TRUE(Holds(path_.c_str(), changes, refused_));
}

TEST_P(TagFile, APictureIsReplacedByItsNumberAndDeletedByIt) {
    if (!GetParam().HoldsPictures)
        return;
    ASSERT_EQ(Delete(NStringList()), Outcome::Done);
    clTagRecord changes;
    AddBytes(changes, L"_albumart_1_Front Album Cover", FrontCover);
    AddBytes(changes, L"_albumart_2_Back Album Cover", BackCover);
    ASSERT_EQ(Set(changes), Outcome::Done);

    clTagRecord second;
    AddBytes(second, L"_albumart_2_Back Album Cover", FrontCover + "2");
    ASSERT_EQ(Set(second), Outcome::Done);
    Read();
    NString description;
    EXPECT_EQ(DataOf(record_, record_.FindAlbumArt(2, description)->Name.c_str()),
              FrontCover + "2");

    const std::wstring before = folder_.Write(L"before.bin", ReadWhole(path_));
    NStringList names;
    names.Add(L"_albumart_1_Front Album Cover");
    ASSERT_EQ(Delete(names), Outcome::Done);
    EXPECT_TRUE(WasDeleted(before.c_str(), path_.c_str(), names));
    Read();
    ASSERT_NE(record_.FindAlbumArt(1, description), nullptr);
    EXPECT_EQ(record_.FindAlbumArt(2, description), nullptr);
    EXPECT_EQ(DataOf(record_, record_.FindAlbumArt(1, description)->Name.c_str()),
              FrontCover + "2");
}

TEST_P(TagFile, APictureIsRemovedByAnEmptyElement) {
    ASSERT_EQ(Delete(NStringList()), Outcome::Done);
    clTagRecord changes;
    AddBytes(changes, L"_albumart_1_Front Album Cover", FrontCover);
    AddBytes(changes, L"_albumart_2_Back Album Cover", BackCover);
    ASSERT_EQ(Set(changes), Outcome::Done);
    const std::wstring before = folder_.Write(L"before.bin", ReadWhole(path_));

    clTagRecord removal;
    removal.Add(L"_albumart_1_Front Album Cover", L"");
    EXPECT_FALSE(Holds(path_.c_str(), removal, refused_));
    EXPECT_FALSE(WasSet(before.c_str(), path_.c_str(), removal, refused_));
    ASSERT_EQ(Set(removal), Outcome::Done);
    EXPECT_TRUE(WasSet(before.c_str(), path_.c_str(), removal, refused_));
    Read();
    NString description;
    ASSERT_NE(record_.FindAlbumArt(1, description), nullptr);
    EXPECT_EQ(DataOf(record_, record_.FindAlbumArt(1, description)->Name.c_str()), BackCover);
}

TEST_P(TagFile, ATruncatedFileIsReadAndWrittenWithoutHarm) {
    const Bytes whole = ReadWhole(path_);
    for (size_t part = 0; part < 40; ++part) {
        SCOPED_TRACE(part);
        const size_t size = whole.size() * part / 40;
        const Bytes cut(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size));
        const std::wstring path = folder_.Write(L"cut.bin", cut);
        ReadTags(path.c_str(), record_);
        EXPECT_TRUE(ReadWhole(path) == cut);
        clTagRecord changes;
        changes.Add(L"title", L"cut");
        Refusals refused;
        ExpectNoHarm(cut, path, SetTags(path.c_str(), changes, refused));
        ExpectTheAudioOf(cut, whole, path);
        WriteWhole(path, cut);
        ExpectNoHarm(cut, path, DeleteTags(path.c_str(), NStringList()));
        ExpectTheAudioOf(cut, whole, path);
    }
}

TEST_P(TagFile, AFileWithChangedBytesIsReadAndWrittenWithoutHarm) {
    const Bytes whole = ReadWhole(path_);
    // The containers' structures stand at both ends.
    const size_t edge = std::min<size_t>(whole.size() / 2, 600);
    for (size_t step = 0; step < 2 * edge; step += 9) {
        SCOPED_TRACE(step);
        Bytes changed = whole;
        const size_t at = step < edge ? step : whole.size() - 1 - (step - edge);
        changed[at] = static_cast<uint8_t>(changed[at] ^ 0xFF);
        const std::wstring path = folder_.Write(L"changed.bin", changed);
        ReadTags(path.c_str(), record_);
        EXPECT_TRUE(ReadWhole(path) == changed);
        clTagRecord changes;
        changes.Add(L"title", L"changed");
        Refusals refused;
        ExpectNoHarm(changed, path, SetTags(path.c_str(), changes, refused));
        ExpectTheAudioOf(changed, whole, path);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, TagFile, testing::ValuesIn(Samples), [](const auto& test) {
    std::string name = test.param.File;
    for (char& character : name)
        character = isalnum(static_cast<unsigned char>(character)) ? character : '_';
    return name;
});

namespace {
class TagFileOutcome : public testing::Test {
protected:
    Outcome SetTitle(const std::wstring& path) {
        clTagRecord changes;
        changes.Add(L"title", L"x");
        Refusals refused;
        return SetTags(path.c_str(), changes, refused);
    }
    TestFolder folder_;
    clTagRecord record_;
};
} // namespace

TEST_F(TagFileOutcome, AMissingFileCantBeOpened) {
    record_.Add(L"old", L"x");
    EXPECT_EQ(ReadTags(folder_.File(L"none.mp3").c_str(), record_), Outcome::CannotOpen);
    EXPECT_EQ(record_.Count(), 0);
    EXPECT_EQ(SetTitle(folder_.File(L"none.mp3")), Outcome::CannotOpen);
}

TEST_F(TagFileOutcome, ATextIsNoAudio) {
    const std::wstring path = folder_.Write(L"text.mp3", BytesOf("just text"));
    EXPECT_EQ(ReadTags(path.c_str(), record_), Outcome::NotAudio);
    EXPECT_EQ(SetTitle(path), Outcome::NotAudio);
}

TEST_F(TagFileOutcome, AFragmentedMp4IsReadAndNotWritten) {
    const Bytes content = ReadWhole(SamplePath("odd/fragmented.m4a"));
    const std::wstring path = folder_.Write(L"fragmented.m4a", content);
    EXPECT_EQ(ReadTags(path.c_str(), record_), Outcome::Done);
    EXPECT_EQ(SetTitle(path), Outcome::Refused);
    EXPECT_EQ(DeleteTags(path.c_str(), NStringList()), Outcome::Refused);
    EXPECT_TRUE(ReadWhole(path) == content);
}

TEST_F(TagFileOutcome, AnOggFlacWithAnUnknownHeaderCountDoesNoHarm) {
    const Bytes content = ReadWhole(SamplePath("odd/unknown-header-count.oga"));
    const std::wstring path = folder_.Write(L"odd.oga", content);
    ReadTags(path.c_str(), record_);
    EXPECT_TRUE(ReadWhole(path) == content);
    ExpectNoHarm(content, path, SetTitle(path));
}

TEST_F(TagFileOutcome, AnId3TagThatClaimsMoreThanTheFileIsNotWritten) {
    Bytes content = ReadWhole(SamplePath("sample.mp3"));
    content[6] = 0x7F; // the top seven bits of the tag's size
    const std::wstring path = folder_.Write(L"claims.mp3", content);
    EXPECT_EQ(SetTitle(path), Outcome::Refused);
    EXPECT_TRUE(ReadWhole(path) == content);
}

TEST_F(TagFileOutcome, ATrackerModuleIsReadAndNotWritten) {
    const std::wstring path = folder_.Write(
        L"test.xm",
        ReadWhole(HostPath(TONEWRIGHT_SOURCE_DIR "/build/taglib/source/tests/data/test.xm")));
    EXPECT_EQ(ReadTags(path.c_str(), record_), Outcome::Done);
    EXPECT_EQ(ValueOf(record_, L"title"), L"title of song");
    EXPECT_EQ(SetTitle(path), Outcome::Refused);
}

TEST_F(TagFileOutcome, ThreeTagsOfOneFileAreKeptInStep) {
    const std::wstring path =
        folder_.Write(L"three.mp3", ReadWhole(SamplePath("odd/three-tags.mp3")));
    ASSERT_EQ(SetTitle(path), Outcome::Done);
    ASSERT_EQ(ReadTags(path.c_str(), record_), Outcome::Done);
    EXPECT_EQ(ValueOf(record_, L"title"), L"x");
    NStringList title;
    title.Add(L"title");
    ASSERT_EQ(DeleteTags(path.c_str(), title), Outcome::Done);
    ReadTags(path.c_str(), record_);
    EXPECT_EQ(ValueOf(record_, L"title"), Absent);
}

TEST_F(TagFileOutcome, EachOfThreeTagsFollowsAChange) {
    const std::wstring path =
        folder_.Write(L"three.mp3", ReadWhole(SamplePath("odd/three-tags.mp3")));
    clTagRecord changes;
    changes.Add(L"title", L"Stepwise");
    Refusals refused;
    ASSERT_EQ(SetTags(path.c_str(), changes, refused), Outcome::Done);
    const Bytes content = ReadWhole(path);
    const std::string bytes(content.begin(), content.end());
    const size_t ape = bytes.find("APETAGEX");
    const size_t id3v1 = bytes.size() - 128;
    ASSERT_NE(ape, std::string::npos);
    ASSERT_EQ(bytes.substr(id3v1, 3), "TAG");
    EXPECT_NE(bytes.substr(ape, id3v1 - ape).find("Stepwise"), std::string::npos);
    EXPECT_EQ(bytes.substr(id3v1 + 3, 8), "Stepwise");
}

TEST_F(TagFileOutcome, WhatTheFirstTagRefusesReachesNoOther) {
    const Bytes before = ReadWhole(SamplePath("odd/three-tags.mp3"));
    const std::wstring path = folder_.Write(L"three.mp3", before);
    clTagRecord changes;
    changes.Add(L"genre", L"17"); // reads as the name of that number
    Refusals refused;
    ASSERT_EQ(SetTags(path.c_str(), changes, refused), Outcome::Done);
    EXPECT_EQ(RefusedNames(refused), L"genre");
    const Bytes after = ReadWhole(path);
    EXPECT_EQ(after.back(), before.back()); // the genre of ID3v1
    const std::string bytes(after.begin(), after.end());
    const size_t ape = bytes.find("APETAGEX");
    ASSERT_NE(ape, std::string::npos);
    EXPECT_EQ(bytes.substr(ape).find(std::string("Genre\0"
                                                 "17",
                                                 8)),
              std::string::npos);
}

TEST_F(TagFileOutcome, AWaveFileWithoutTagsGetsBothKinds) {
    const std::wstring path = folder_.Write(L"sample.wav", ReadWhole(SamplePath("sample.wav")));
    ASSERT_EQ(DeleteTags(path.c_str(), NStringList()), Outcome::Done);
    ASSERT_EQ(SetTitle(path), Outcome::Done);
    const Bytes content = ReadWhole(path);
    const std::string bytes(content.begin(), content.end());
    EXPECT_NE(bytes.find("INAM"), std::string::npos);
    EXPECT_NE(bytes.find("TIT2"), std::string::npos);
}

TEST_F(TagFileOutcome, TheLibrarysDamagedFilesAreReadAndWrittenWithoutHarm) {
    const std::wstring data = HostPath(TONEWRIGHT_SOURCE_DIR "/build/taglib/source/tests/data");
    int files = 0;
    for (const std::wstring& name : NamesIn(data)) {
        SCOPED_TRACE(std::string(name.begin(), name.end()));
        const Bytes content = ReadWhole(data + L"\\" + name);
        const std::wstring path = folder_.Write(name, content);
        ReadTags(path.c_str(), record_);
        EXPECT_TRUE(ReadWhole(path) == content);
        ExpectNoHarm(content, path, SetTitle(path));
        WriteWhole(path, content);
        ExpectNoHarm(content, path, DeleteTags(path.c_str(), NStringList()));
        ++files;
    }
    EXPECT_GT(files, 80);
}
