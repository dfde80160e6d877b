#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/mp4_tags.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

#include <mp4coverart.h>
#include <mp4item.h>
#include <tbytevectorstream.h>

#include <memory>
#include <string>

namespace tagmap {
namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::StringList;
using TagLib::MP4::CoverArt;
using TagLib::MP4::CoverArtList;
using TagLib::MP4::Item;
using TagLib::MP4::Tag;

const std::string Png = "\x89PNG\r\n\x1a\n picture";
const std::string Jpeg = "\xff\xd8\xff picture";

// The values of a native item of text, with "|" between them; "" if there is
// none.
std::wstring Native(const Tag& tag, const wchar_t* key) {
    const auto found = tag.itemMap().find(key);
    return found == tag.itemMap().end() ? L""
                                        : found->second.toStringList().toString(L"|").toWString();
}

std::wstring Set(Tag& tag, const wchar_t* name, const wchar_t* value) {
    clTagRecord changes;
    changes.Add(name, value);
    Refusals refused;
    SetMp4(tag, changes, refused);
    return RefusedNames(refused);
}

void SetBytes(Tag& tag, const wchar_t* name, const std::string& bytes) {
    clTagRecord changes;
    AddBytes(changes, name, bytes);
    Refusals refused;
    SetMp4(tag, changes, refused);
    ASSERT_EQ(RefusedNames(refused), L"");
}

std::wstring Read(const Tag& tag, const wchar_t* name) {
    clTagRecord record;
    ReadMp4(tag, record);
    return ValueOf(record, name);
}

std::wstring Names(const Tag& tag) {
    clTagRecord record;
    ReadMp4(tag, record);
    return NamesOf(record);
}

void Delete(Tag& tag, std::initializer_list<const wchar_t*> texts) {
    NStringList names;
    for (const wchar_t* text : texts)
        names.Add(text);
    DeleteMp4(tag, names);
}

void PutText(Tag& tag, const wchar_t* key, const wchar_t* value) {
    tag.setItem(key, StringList(String(value)));
}

struct Row {
    const wchar_t* Element;
    const wchar_t* Value;
    const wchar_t* Key;
    const wchar_t* Native; // null for an item that is no text
};

constexpr Row Rows[] = {
    {L"artist", L"A\rB", L"\u00a9ART", L"A|B"},
    {L"title", L"T", L"\u00a9nam", L"T"},
    {L"album", L"L", L"\u00a9alb", L"L"},
    {L"track", L"3/12", L"trkn", nullptr},
    {L"disc", L"1/2", L"disk", nullptr},
    {L"genre", L"Rock\rPop", L"\u00a9gen", L"Rock|Pop"},
    {L"year", L"2004", L"\u00a9day", L"2004"},
    {L"comment", L"C", L"\u00a9cmt", L"C"},
    {L"album artist", L"AA", L"aART", L"AA"},
    {L"band", L"B", L"----:com.apple.iTunes:BAND", L"B"},
    {L"composer", L"Co", L"\u00a9wrt", L"Co"},
    {L"conductor", L"Cn", L"----:com.apple.iTunes:CONDUCTOR", L"Cn"},
    {L"label", L"Lb", L"----:com.apple.iTunes:LABEL", L"Lb"},
    {L"isrc", L"DEA", L"----:com.apple.iTunes:ISRC", L"DEA"},
    {L"upc", L"0123", L"----:com.apple.iTunes:BARCODE", L"0123"},
    {L"mood", L"M", L"----:com.apple.iTunes:MOOD", L"M"},
    {L"style", L"S\rT", L"----:com.apple.iTunes:STYLE", L"S|T"},
    {L"copyright", L"\u00a9 X", L"cprt", L"\u00a9 X"},
    {L"tempo", L"120", L"tmpo", nullptr},
    {L"rating", L"7", L"rate", L"70"},
    {L"encoder", L"E", L"\u00a9too", L"E"},
};

ByteVector Atom(const char* name, const ByteVector& content) {
    constexpr unsigned AtomHeader = 8;
    return ByteVector::fromUInt(content.size() + AtomHeader) + ByteVector(name, 4) + content;
}

ByteVector Data(int type, const ByteVector& bytes) {
    return Atom("data",
                ByteVector::fromUInt(static_cast<unsigned>(type)) + ByteVector(4, '\0') + bytes);
}

// An MP4 file in memory with the given content of its item list.
class Mp4File {
public:
    explicit Mp4File(const ByteVector& items) : stream_(Bytes(items)) { Open(); }

    TagLib::MP4::File& File() { return *file_; }
    Tag& Tags() { return *file_->tag(); }
    void SaveAndOpen() {
        ASSERT_TRUE(file_->save());
        Open();
    }
    const ByteVector& Content() { return *stream_.data(); }

private:
    static ByteVector Bytes(const ByteVector& items) {
        const ByteVector handler =
            Atom("hdlr", ByteVector(8, '\0') + ByteVector("mdirappl") + ByteVector(9, '\0'));
        const ByteVector meta = Atom("meta", ByteVector(4, '\0') + handler + Atom("ilst", items));
        return Atom("ftyp", ByteVector("M4A ") + ByteVector(4, '\0')) +
               Atom("moov", Atom("udta", meta)) + Atom("mdat", ByteVector("audio"));
    }
    void Open() {
        stream_.seek(0);
        file_ = std::make_unique<TagLib::MP4::File>(&stream_, false);
        ASSERT_TRUE(file_->isValid());
    }

    TagLib::ByteVectorStream stream_;
    std::unique_ptr<TagLib::MP4::File> file_;
};

TEST(Mp4Tags, EveryElementOfTheTableStandsInItsOwnItem) {
    ASSERT_EQ(std::size(Rows), MappingRows().size());
    for (const Row& row : Rows) {
        Tag tag;
        EXPECT_EQ(Set(tag, row.Element, row.Value), L"") << row.Element;
        EXPECT_EQ(tag.itemMap().size(), 1u) << row.Element;
        EXPECT_TRUE(tag.contains(row.Key)) << row.Element;
        if (row.Native) {
            EXPECT_EQ(Native(tag, row.Key), row.Native) << row.Element;
        }
        EXPECT_EQ(Names(tag), row.Element);
        EXPECT_EQ(Read(tag, row.Element), row.Value);
    }
}

TEST(Mp4Tags, EveryElementComesBackFromTheFileAndASecondSaveChangesNothing) {
    Mp4File mp4{ByteVector()};
    for (const Row& row : Rows)
        Set(mp4.Tags(), row.Element, row.Value);
    mp4.SaveAndOpen();
    for (const Row& row : Rows)
        EXPECT_EQ(Read(mp4.Tags(), row.Element), row.Value) << row.Element;
    const ByteVector before = mp4.Content();
    for (const Row& row : Rows)
        Set(mp4.Tags(), row.Element, row.Value);
    mp4.SaveAndOpen();
    EXPECT_TRUE(mp4.Content() == before);
}

TEST(Mp4Tags, AnEmptyElementOrADeletedNameRemovesItsItemAlone) {
    for (const Row& row : Rows) {
        Tag tag;
        PutText(tag, L"----:com.apple.iTunes:Other", L"stay");
        Set(tag, row.Element, row.Value);
        EXPECT_EQ(Set(tag, row.Element, L""), L"");
        EXPECT_EQ(Names(tag), L"Other") << row.Element;
        Set(tag, row.Element, row.Value);
        Delete(tag, {row.Element});
        EXPECT_EQ(Names(tag), L"Other") << row.Element;
        EXPECT_EQ(tag.itemMap().size(), 1u) << row.Element;
    }
}

TEST(Mp4Tags, TrackAndDiscArePairsOfNumbers) {
    Tag tag;
    Set(tag, L"track", L"03/12");
    Set(tag, L"disc", L"2");
    EXPECT_EQ(tag.item("trkn").toIntPair().first, 3);
    EXPECT_EQ(tag.item("trkn").toIntPair().second, 12);
    EXPECT_EQ(tag.item("disk").toIntPair().first, 2);
    EXPECT_EQ(tag.item("disk").toIntPair().second, 0);
    EXPECT_EQ(Read(tag, L"track"), L"3/12");
    EXPECT_EQ(Read(tag, L"disc"), L"2");
    Set(tag, L"track", L"/12");
    EXPECT_EQ(Read(tag, L"track"), L"/12");
}

TEST(Mp4Tags, NumbersOfSixteenBitsComeBackFromTheFile) {
    Mp4File mp4{ByteVector()};
    Set(mp4.Tags(), L"track", L"40000/65535");
    Set(mp4.Tags(), L"tempo", L"65535");
    mp4.SaveAndOpen();
    EXPECT_EQ(Read(mp4.Tags(), L"track"), L"40000/65535");
    EXPECT_EQ(Read(mp4.Tags(), L"tempo"), L"65535");
}

TEST(Mp4Tags, ANumberIsNeverMadeOfATextThatIsNone) {
    Tag tag;
    Set(tag, L"tempo", L"120");
    Set(tag, L"track", L"3");
    for (const wchar_t* value : {L"abc", L"128.5", L"-1", L"65536", L" 5"}) {
        EXPECT_EQ(Set(tag, L"tempo", value), L"tempo") << value;
        EXPECT_EQ(Set(tag, L"track", value), L"track") << value;
    }
    for (const wchar_t* value : {L"0", L"0/0", L"/"})
        EXPECT_EQ(Set(tag, L"track", value), L"track") << value;
    EXPECT_EQ(tag.item("tmpo").toInt(), 120);
    EXPECT_EQ(tag.item("trkn").toIntPair().first, 3);
}

TEST(Mp4Tags, ARatingThatIsNoneIsRefusedAndTheOldOneStays) {
    Tag tag;
    Set(tag, L"rating", L"4");
    for (const wchar_t* value : {L"11", L"abc", L"3.5"})
        EXPECT_EQ(Set(tag, L"rating", value), L"rating") << value;
    EXPECT_EQ(Native(tag, L"rate"), L"40");
}

TEST(Mp4Tags, ARatingAsNumberOrAsFreeFormIsReadAndReplaced) {
    Tag tag;
    PutText(tag, L"----:com.apple.iTunes:RATING", L"60");
    EXPECT_EQ(Read(tag, L"rating"), L"6");
    tag.setItem("rate", Item(80));
    EXPECT_EQ(Read(tag, L"rating"), L"8");
    Set(tag, L"rating", L"5");
    EXPECT_EQ(Native(tag, L"rate"), L"50");
    EXPECT_EQ(tag.itemMap().size(), 1u);
}

TEST(Mp4Tags, FreeFormNamesKeepTheirSpellingAndAreFoundWhateverTheirCase) {
    Tag tag;
    Set(tag, L"My Field", L"a\rb");
    EXPECT_EQ(Native(tag, L"----:com.apple.iTunes:My Field"), L"a|b");
    EXPECT_EQ(Names(tag), L"My Field");
    Set(tag, L"MY FIELD", L"c");
    EXPECT_EQ(Native(tag, L"----:com.apple.iTunes:My Field"), L"c");
    EXPECT_EQ(tag.itemMap().size(), 1u);
    Delete(tag, {L"my field"});
    EXPECT_TRUE(tag.itemMap().isEmpty());
}

TEST(Mp4Tags, ATableItemInAnotherCaseIsTheSameItem) {
    Tag tag;
    PutText(tag, L"----:com.apple.iTunes:Label", L"old");
    EXPECT_EQ(Read(tag, L"label"), L"old");
    Set(tag, L"label", L"new");
    EXPECT_EQ(Native(tag, L"----:com.apple.iTunes:Label"), L"new");
    EXPECT_EQ(tag.itemMap().size(), 1u);
}

TEST(Mp4Tags, AFreeFormItemOfTheElementsOwnNameStandsInAndIsReplaced) {
    Tag tag;
    PutText(tag, L"----:com.apple.iTunes:TITLE", L"old");
    EXPECT_EQ(Names(tag), L"title");
    Set(tag, L"title", L"new");
    EXPECT_EQ(Native(tag, L"\u00a9nam"), L"new");
    EXPECT_EQ(tag.itemMap().size(), 1u);
}

TEST(Mp4Tags, AnItemOfAnotherOwnerHasItsWholeNameAsTheElements) {
    Tag tag;
    PutText(tag, L"----:org.example:Thing", L"old");
    EXPECT_EQ(Names(tag), L"----:org.example:Thing");
    EXPECT_EQ(Set(tag, L"----:org.example:Thing", L"new"), L"");
    EXPECT_EQ(Native(tag, L"----:org.example:Thing"), L"new");
    Delete(tag, {L"----:org.example:Thing"});
    EXPECT_TRUE(tag.itemMap().isEmpty());
}

TEST(Mp4Tags, NamesThatTheLibraryKnowsStandInItsItems) {
    Tag tag;
    Set(tag, L"lyrics", L"la la");
    Set(tag, L"compilation", L"1");
    Set(tag, L"tvseason", L"4");
    EXPECT_EQ(Native(tag, L"\u00a9lyr"), L"la la");
    EXPECT_TRUE(tag.item("cpil").toBool());
    EXPECT_EQ(tag.item("tvsn").toInt(), 4);
    EXPECT_EQ(Read(tag, L"lyrics"), L"la la");
    EXPECT_EQ(Read(tag, L"compilation"), L"1");
    EXPECT_EQ(Read(tag, L"tvseason"), L"4");
    EXPECT_EQ(Set(tag, L"tvseason", L"abc"), L"tvseason");
    EXPECT_EQ(Set(tag, L"compilation", L"yes"), L"compilation");
    EXPECT_EQ(Read(tag, L"tvseason"), L"4");
    Delete(tag, {L"lyrics", L"compilation", L"tvseason"});
    EXPECT_TRUE(tag.itemMap().isEmpty());
}

TEST(Mp4Tags, AFreeFormItemBesideAKnownOneOfItsNameIsShownOnce) {
    Tag tag;
    PutText(tag, L"\u00a9lyr", L"known");
    PutText(tag, L"----:com.apple.iTunes:LYRICS", L"free");
    EXPECT_EQ(Names(tag), L"lyrics");
    EXPECT_EQ(Read(tag, L"lyrics"), L"known");
    Delete(tag, {L"lyrics"});
    EXPECT_TRUE(tag.itemMap().isEmpty());
}

TEST(Mp4Tags, ANameThatTheLibraryMapsToATableItemIsFreeForm) {
    Tag tag;
    Set(tag, L"encodedby", L"person");
    EXPECT_FALSE(tag.contains("\251too"));
    EXPECT_EQ(Native(tag, L"----:com.apple.iTunes:encodedby"), L"person");
    EXPECT_EQ(Names(tag), L"encodedby");
}

TEST(Mp4Tags, TheTableOfContentsIsAFreeFormText) {
    Tag tag;
    Set(tag, L"_cdtoc", L"3+96+A0");
    EXPECT_EQ(Native(tag, L"----:com.apple.iTunes:CDTOC"), L"3+96+A0");
    EXPECT_EQ(Names(tag), L"_cdtoc");
    Delete(tag, {L"_cdtoc"});
    EXPECT_TRUE(tag.itemMap().isEmpty());
}

TEST(Mp4Tags, WhatMp4CannotHoldIsRefusedAndTheRestIsWritten) {
    Tag tag;
    clTagRecord changes;
    changes.Add(L"_riff_INAM", L"x");
    changes.Add(L"", L"x");
    changes.Add(L"a:b", L"x");
    changes.Add(L"----:only", L"x");
    changes.Add(L"iTunSMPB", L"x");
    changes.AddData(L"_cdtoc", "\1\2", 2);
    changes.Add(L"_albumart_x", L"");
    changes.Add(L"title", L"written");
    Refusals refused;
    SetMp4(tag, changes, refused);
    EXPECT_EQ(RefusedNames(refused), L"_riff_INAM||a:b|----:only|iTunSMPB|_cdtoc|_albumart_x");
    EXPECT_EQ(Names(tag), L"title");
}

TEST(Mp4Tags, CoversAreOfTheFormatOfTheirBytesAndReadAsNumbersAlone) {
    Mp4File mp4{ByteVector()};
    SetBytes(mp4.Tags(), L"_albumart_1_Front Album Cover", Png);
    SetBytes(mp4.Tags(), L"_albumart_2", Jpeg);
    SetBytes(mp4.Tags(), L"_albumart_3", "GIF89a picture");
    SetBytes(mp4.Tags(), L"_albumart_4", "BM picture");
    SetBytes(mp4.Tags(), L"_albumart_5", "odd");
    mp4.SaveAndOpen();
    const CoverArtList covers = mp4.Tags().item("covr").toCoverArtList();
    ASSERT_EQ(covers.size(), 5u);
    EXPECT_EQ(covers[0].format(), CoverArt::PNG);
    EXPECT_EQ(covers[1].format(), CoverArt::JPEG);
    EXPECT_EQ(covers[2].format(), CoverArt::GIF);
    EXPECT_EQ(covers[3].format(), CoverArt::BMP);
    EXPECT_EQ(covers[4].format(), CoverArt::Unknown);
    clTagRecord record;
    ReadMp4(mp4.Tags(), record);
    EXPECT_EQ(NamesOf(record), L"_albumart_1|_albumart_2|_albumart_3|_albumart_4|_albumart_5");
    EXPECT_EQ(DataOf(record, L"_albumart_2"), Jpeg);
}

TEST(Mp4Tags, CoversAreReplacedAndDeletedByNumber) {
    Tag tag;
    for (const wchar_t* name : {L"_albumart_1", L"_albumart_2", L"_albumart_3"})
        SetBytes(tag, name, Png);
    SetBytes(tag, L"_albumart_2", Jpeg);
    Delete(tag, {L"_albumart_3", L"_albumart_1_any text"});
    clTagRecord record;
    ReadMp4(tag, record);
    EXPECT_EQ(NamesOf(record), L"_albumart_1");
    EXPECT_EQ(DataOf(record, L"_albumart_1"), Jpeg);
    Set(tag, L"_albumart_1", L"");
    EXPECT_TRUE(tag.itemMap().isEmpty());
}

TEST(Mp4Tags, ItemsThatAreNotNamedStay) {
    Mp4File mp4(Atom("stik", Data(21, "\1")) + Atom("\251grp", Data(1, "group")) +
                Atom("----", Atom("mean", ByteVector(4, '\0') + ByteVector("org.example")) +
                                 Atom("name", ByteVector(4, '\0') + ByteVector("bytes")) +
                                 Data(0, "\1\2\3")));
    Set(mp4.Tags(), L"title", L"T");
    mp4.SaveAndOpen();
    EXPECT_EQ(mp4.Tags().item("stik").toByte(), 1);
    EXPECT_EQ(Native(mp4.Tags(), L"\u00a9grp"), L"group");
    EXPECT_TRUE(mp4.Tags().item("----:org.example:bytes").toByteVectorList().front() ==
                ByteVector("\1\2\3"));
}

TEST(Mp4Tags, DeletingAllLeavesWhereTheAudioBeginsAndEnds) {
    Tag tag;
    for (const Row& row : Rows)
        Set(tag, row.Element, row.Value);
    SetBytes(tag, L"_albumart_1", Png);
    PutText(tag, L"----:com.apple.iTunes:iTunSMPB", L" 00000000 00000840");
    EXPECT_EQ(Read(tag, L"iTunSMPB"), Absent);
    DeleteMp4(tag, NStringList());
    EXPECT_EQ(tag.itemMap().size(), 1u);
    EXPECT_EQ(Native(tag, L"----:com.apple.iTunes:iTunSMPB"), L" 00000000 00000840");
}

} // namespace
} // namespace tagmap
