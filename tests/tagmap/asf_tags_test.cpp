#include "suite/tagmap/asf_tags.h"
#include "suite/tagmap/mapping_table.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

#include <asffile.h>
#include <asfpicture.h>
#include <tbytevectorstream.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace tagmap {
namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::ASF::Attribute;
using TagLib::ASF::AttributeList;
using TagLib::ASF::Picture;
using TagLib::ASF::Tag;

const std::string Png = "\x89PNG\r\n\x1a\n picture";
const std::string Jpeg = "\xff\xd8\xff picture";

// The values of a native field, with "|" between them.
std::wstring Native(const Tag& tag, const wchar_t* field) {
    if (std::wstring(field) == L"Title")
        return tag.title().toWString();
    if (std::wstring(field) == L"Author")
        return tag.artist().toWString();
    if (std::wstring(field) == L"Copyright")
        return tag.copyright().toWString();
    if (std::wstring(field) == L"Description")
        return tag.comment().toWString();
    std::wstring values;
    for (const Attribute& attribute : tag.attributeListMap().value(field)) {
        values += values.empty() ? L"" : L"|";
        values += attribute.type() == Attribute::DWordType ? std::to_wstring(attribute.toUInt())
                                                           : attribute.toString().toWString();
    }
    return values;
}

std::wstring Set(Tag& tag, const wchar_t* name, const wchar_t* value) {
    clTagRecord changes;
    changes.Add(name, value);
    Refusals refused;
    SetAsf(tag, changes, refused);
    return RefusedNames(refused);
}

void SetBytes(Tag& tag, const wchar_t* name, const std::string& bytes) {
    clTagRecord changes;
    AddBytes(changes, name, bytes);
    Refusals refused;
    SetAsf(tag, changes, refused);
    ASSERT_EQ(RefusedNames(refused), L"");
}

std::wstring Read(const Tag& tag, const wchar_t* name) {
    clTagRecord record;
    ReadAsf(tag, record);
    return ValueOf(record, name);
}

std::wstring Names(const Tag& tag) {
    clTagRecord record;
    ReadAsf(tag, record);
    return NamesOf(record);
}

void Delete(Tag& tag, std::initializer_list<const wchar_t*> texts) {
    NStringList names;
    for (const wchar_t* text : texts)
        names.Add(text);
    DeleteAsf(tag, names);
}

struct Row {
    const wchar_t* Element;
    const wchar_t* Value;
    const wchar_t* Field;
    const wchar_t* Native;
};

constexpr Row Rows[] = {
    {L"artist", L"A", L"Author", L"A"},
    {L"title", L"T", L"Title", L"T"},
    {L"album", L"L", L"WM/AlbumTitle", L"L"},
    {L"track", L"3/12", L"WM/TrackNumber", L"3/12"},
    {L"disc", L"1/2", L"WM/PartOfSet", L"1/2"},
    {L"genre", L"Rock\rPop", L"WM/Genre", L"Rock|Pop"},
    {L"year", L"2004", L"WM/Year", L"2004"},
    {L"comment", L"C", L"Description", L"C"},
    {L"album artist", L"AA", L"WM/AlbumArtist", L"AA"},
    {L"band", L"B", L"BAND", L"B"},
    {L"composer", L"Co", L"WM/Composer", L"Co"},
    {L"conductor", L"Cn", L"WM/Conductor", L"Cn"},
    {L"label", L"Lb", L"WM/Publisher", L"Lb"},
    {L"isrc", L"DEA", L"WM/ISRC", L"DEA"},
    {L"upc", L"0123", L"WM/Barcode", L"0123"},
    {L"mood", L"M", L"WM/Mood", L"M"},
    {L"style", L"S", L"STYLE", L"S"},
    {L"copyright", L"\u00a9 X", L"Copyright", L"\u00a9 X"},
    {L"tempo", L"120", L"WM/BeatsPerMinute", L"120"},
    {L"rating", L"7", L"WM/SharedUserRating", L"70"},
    {L"encoder", L"E", L"WM/EncodingSettings", L"E"},
};

// An ASF file in memory that holds the two objects without which none is read.
class AsfFile {
public:
    // With `extensionFirst` a header extension precedes all texts.
    explicit AsfFile(bool extensionFirst = false) : stream_(Empty(extensionFirst)) { Open(); }

    TagLib::ASF::File& File() { return *file_; }

    Tag& Tags() { return *file_->tag(); }
    void SaveAndOpen() {
        ASSERT_TRUE(file_->save());
        Open();
    }

private:
    static ByteVector Object(const char (&guid)[17], const ByteVector& content) {
        constexpr unsigned ObjectHeader = 24;
        ByteVector object(guid, 16);
        object.append(ByteVector::fromLongLong(content.size() + ObjectHeader, false));
        object.append(content);
        return object;
    }
    static ByteVector Empty(bool extensionFirst) {
        constexpr unsigned HeaderSize = 30;
        ByteVector objects =
            Object("\xA1\xDC\xAB\x8C\x47\xA9\xCF\x11\x8E\xE4\x00\xC0\x0C\x20\x53\x65",
                   ByteVector(80, '\0')) +
            Object("\x91\x07\xDC\xB7\xB7\xA9\xCF\x11\x8E\xE6\x00\xC0\x0C\x20\x53\x65",
                   ByteVector(78, '\0'));
        if (extensionFirst)
            objects.append(
                Object("\xB5\x03\xBF\x5F\x2E\xA9\xCF\x11\x8E\xE3\x00\xC0\x0C\x20\x53\x65",
                       ByteVector("\x11\xD2\xD3\xAB\xBA\xA9\xcf\x11"
                                  "\x8E\xE6\x00\xC0\x0C\x20\x53\x65\x06\x00",
                                  18) +
                           ByteVector(4, '\0')));
        ByteVector file("\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C", 16);
        file.append(ByteVector::fromLongLong(objects.size() + HeaderSize, false));
        file.append(ByteVector::fromUInt(extensionFirst ? 3 : 2, false));
        file.append(ByteVector("\x01\x02", 2));
        file.append(objects);
        file.append(ByteVector("audio"));
        return file;
    }
    void Open() {
        stream_.seek(0);
        file_ = std::make_unique<TagLib::ASF::File>(&stream_, false);
        ASSERT_TRUE(file_->isValid());
    }

    TagLib::ByteVectorStream stream_;
    std::unique_ptr<TagLib::ASF::File> file_;
};

TEST(AsfTags, EveryElementOfTheTableStandsInItsOwnField) {
    ASSERT_EQ(std::size(Rows), MappingRows().size());
    for (const Row& row : Rows) {
        Tag tag;
        EXPECT_EQ(Set(tag, row.Element, row.Value), L"") << row.Element;
        EXPECT_EQ(Native(tag, row.Field), row.Native) << row.Element;
        EXPECT_LE(tag.attributeListMap().size(), 1u) << row.Element;
        EXPECT_EQ(Names(tag), row.Element);
        EXPECT_EQ(Read(tag, row.Element), row.Value);
    }
}

TEST(AsfTags, EveryElementComesBackFromTheFile) {
    AsfFile asf;
    for (const Row& row : Rows)
        Set(asf.Tags(), row.Element, row.Value);
    asf.SaveAndOpen();
    for (const Row& row : Rows) {
        EXPECT_EQ(Native(asf.Tags(), row.Field), row.Native) << row.Element;
        EXPECT_EQ(Read(asf.Tags(), row.Element), row.Value) << row.Element;
    }
}

TEST(AsfTags, AnEmptyElementOrADeletedNameRemovesItsFieldAlone) {
    for (const Row& row : Rows) {
        Tag tag;
        tag.setAttribute("WM/Provider", Attribute(String("stay")));
        Set(tag, row.Element, row.Value);
        EXPECT_EQ(Set(tag, row.Element, L""), L"");
        EXPECT_EQ(Names(tag), L"WM/Provider") << row.Element;
        Set(tag, row.Element, row.Value);
        Delete(tag, {row.Element});
        EXPECT_EQ(Names(tag), L"WM/Provider") << row.Element;
        EXPECT_EQ(tag.attributeListMap().size(), 1u) << row.Element;
    }
}

TEST(AsfTags, SeveralValuesAreJoinedWhereTheFieldIsASingleText) {
    Tag tag;
    Set(tag, L"artist", L"A\rB");
    EXPECT_EQ(Native(tag, L"Author"), L"A; B");
    EXPECT_EQ(Read(tag, L"artist"), L"A; B");
}

TEST(AsfTags, TwoEqualValuesStayTwo) {
    Tag tag;
    Set(tag, L"genre", L"Rock\rRock");
    EXPECT_EQ(Read(tag, L"genre"), L"Rock\rRock");
}

TEST(AsfTags, FurtherAuthorsInAttributesAreReadAndReplaced) {
    Tag tag;
    tag.setArtist("A");
    tag.setAttribute("Author", Attribute(String("B")));
    EXPECT_EQ(Read(tag, L"artist"), L"A\rB");
    Set(tag, L"artist", L"C");
    EXPECT_EQ(Read(tag, L"artist"), L"C");
    EXPECT_TRUE(tag.attributeListMap().isEmpty());
}

TEST(AsfTags, ARatingIsANumberOfThirtyTwoBits) {
    Tag tag;
    Set(tag, L"rating", L"10");
    const AttributeList attributes = tag.attributeListMap().value("WM/SharedUserRating");
    ASSERT_EQ(attributes.size(), 1u);
    EXPECT_EQ(attributes.front().type(), Attribute::DWordType);
    EXPECT_EQ(attributes.front().toUInt(), 99u);
}

TEST(AsfTags, ARatingAsTextOrUnderItsOwnNameIsReadAndReplaced) {
    Tag tag;
    tag.setAttribute("RATING", Attribute(String("60")));
    EXPECT_EQ(Read(tag, L"rating"), L"6");
    tag.setAttribute("WM/SharedUserRating", Attribute(String("75")));
    EXPECT_EQ(Read(tag, L"rating"), L"8");
    Set(tag, L"rating", L"2");
    EXPECT_EQ(Native(tag, L"WM/SharedUserRating"), L"1");
    EXPECT_EQ(tag.attributeListMap().size(), 1u);
}

TEST(AsfTags, ARatingThatIsNoneIsRefusedAndTheOldOneStays) {
    Tag tag;
    Set(tag, L"rating", L"4");
    for (const wchar_t* value : {L"11", L"abc", L"3.5"})
        EXPECT_EQ(Set(tag, L"rating", value), L"rating") << value;
    EXPECT_EQ(Native(tag, L"WM/SharedUserRating"), L"25");
}

TEST(AsfTags, NumbersAndFlagsAreReadAsTextAndStayNumbers) {
    Tag tag;
    tag.setAttribute("WM/TrackNumber", Attribute(7u));
    tag.setAttribute("WM/IsCompilation", Attribute(true));
    tag.setAttribute("Word", Attribute(static_cast<unsigned short>(8)));
    tag.setAttribute("Long", Attribute(5000000000ull));
    EXPECT_EQ(Read(tag, L"track"), L"7");
    EXPECT_EQ(Read(tag, L"WM/IsCompilation"), L"1");
    EXPECT_EQ(Read(tag, L"Word"), L"8");
    EXPECT_EQ(Read(tag, L"Long"), L"5000000000");
    Set(tag, L"track", L"9");
    Set(tag, L"WM/IsCompilation", L"0");
    Set(tag, L"Word", L"65535");
    Set(tag, L"Long", L"6000000000");
    EXPECT_EQ(tag.attributeListMap()["WM/TrackNumber"].front().type(), Attribute::DWordType);
    EXPECT_EQ(tag.attributeListMap()["WM/TrackNumber"].front().toUInt(), 9u);
    EXPECT_EQ(tag.attributeListMap()["WM/IsCompilation"].front().type(), Attribute::BoolType);
    EXPECT_EQ(tag.attributeListMap()["WM/IsCompilation"].front().toBool(), 0);
    EXPECT_EQ(tag.attributeListMap()["Word"].front().toUShort(), 65535);
    EXPECT_EQ(tag.attributeListMap()["Long"].front().toULongLong(), 6000000000ull);
}

TEST(AsfTags, ANumberBecomesATextWhenTheNewValueIsNone) {
    Tag tag;
    for (const wchar_t* value : {L"7/9", L"07", L"4294967296", L"abc"}) {
        tag.setAttribute("WM/TrackNumber", Attribute(7u));
        Set(tag, L"track", value);
        EXPECT_EQ(tag.attributeListMap()["WM/TrackNumber"].front().type(), Attribute::UnicodeType);
        EXPECT_EQ(Read(tag, L"track"), value);
    }
}

TEST(AsfTags, NamesThatTheLibraryKnowsStandInItsAttributes) {
    Tag tag;
    Set(tag, L"lyrics", L"la la");
    EXPECT_EQ(Native(tag, L"WM/Lyrics"), L"la la");
    EXPECT_EQ(Names(tag), L"lyrics");
    Delete(tag, {L"Lyrics"});
    EXPECT_TRUE(tag.attributeListMap().isEmpty());
}

TEST(AsfTags, OtherNamesKeepTheirSpellingAndAreFoundWhateverTheirCase) {
    Tag tag;
    Set(tag, L"My Field", L"1");
    EXPECT_EQ(Names(tag), L"My Field");
    Set(tag, L"MY FIELD", L"2");
    EXPECT_EQ(Names(tag), L"My Field");
    EXPECT_EQ(Native(tag, L"My Field"), L"2");
    Delete(tag, {L"my field"});
    EXPECT_TRUE(tag.attributeListMap().isEmpty());
}

TEST(AsfTags, TheTableOfContentsIsBytes) {
    AsfFile asf;
    SetBytes(asf.Tags(), L"_cdtoc", std::string("\1\0\2\0", 4));
    asf.SaveAndOpen();
    EXPECT_EQ(asf.Tags().attributeListMap()["WM/MCDI"].front().type(), Attribute::BytesType);
    clTagRecord record;
    ReadAsf(asf.Tags(), record);
    EXPECT_EQ(NamesOf(record), L"_cdtoc");
    EXPECT_EQ(DataOf(record, L"_cdtoc"), std::string("\1\0\2\0", 4));
    Delete(asf.Tags(), {L"_cdtoc"});
    EXPECT_FALSE(asf.Tags().contains("WM/MCDI"));
}

TEST(AsfTags, ATableOfContentsThatIsTextStaysText) {
    Tag tag;
    Set(tag, L"_cdtoc", L"3+96+A0");
    EXPECT_EQ(Native(tag, L"WM/MCDI"), L"3+96+A0");
    EXPECT_EQ(Read(tag, L"_cdtoc"), L"3+96+A0");
    EXPECT_EQ(Set(tag, L"_cdtoc", L""), L"");
    EXPECT_TRUE(tag.attributeListMap().isEmpty());
}

TEST(AsfTags, WhatAsfCannotHoldIsRefusedAndTheRestIsWritten) {
    Tag tag;
    clTagRecord changes;
    changes.Add(L"_riff_INAM", L"x");
    changes.Add(L"", L"x");
    changes.AddData(L"album", "\1\2", 2);
    changes.Add(L"WM/Picture", L"x");
    changes.Add(L"isvbr", L"0");
    changes.Add(L"_albumart_1", L"text");
    changes.Add(L"title", std::wstring(40000, L'x').c_str());
    changes.Add(L"artist", L"written");
    Refusals refused;
    SetAsf(tag, changes, refused);
    EXPECT_EQ(RefusedNames(refused), L"_riff_INAM||album|WM/Picture|isvbr|_albumart_1|title");
    EXPECT_EQ(Names(tag), L"artist");
}

TEST(AsfTags, PicturesAreOfTheirTypeWithDescriptionAndMimeType) {
    AsfFile asf;
    SetBytes(asf.Tags(), L"_albumart_1_Publisher Logo", Jpeg);
    asf.SaveAndOpen();
    const Picture picture = asf.Tags().attributeListMap()["WM/Picture"].front().toPicture();
    ASSERT_TRUE(picture.isValid());
    EXPECT_EQ(picture.type(), Picture::PublisherLogo);
    EXPECT_TRUE(picture.description().isEmpty());
    EXPECT_EQ(picture.mimeType(), String("image/jpeg"));
    EXPECT_EQ(std::string(picture.picture().data(), picture.picture().size()), Jpeg);
    EXPECT_EQ(Names(asf.Tags()), L"_albumart_1_Publisher Logo");
}

TEST(AsfTags, ALargePictureAndASmallOneBothComeBack) {
    AsfFile asf;
    SetBytes(asf.Tags(), L"_albumart_1_My cat", Png + std::string(100000, 'x'));
    SetBytes(asf.Tags(), L"_albumart_2", Jpeg);
    asf.SaveAndOpen();
    std::vector<int> types;
    for (const Attribute& attribute : asf.Tags().attributeListMap()["WM/Picture"])
        types.push_back(attribute.toPicture().type());
    std::sort(types.begin(), types.end());
    EXPECT_EQ(types, (std::vector<int>{Picture::Other, Picture::FrontCover}));
}

TEST(AsfTags, SeveralValuesAndPicturesKeepTheirOrderThroughSaves) {
    for (const bool extensionFirst : {false, true}) {
        AsfFile asf(extensionFirst);
        Set(asf.Tags(), L"genre", L"A\rB\rC");
        for (const wchar_t* name : {L"_albumart_1_a", L"_albumart_2_b", L"_albumart_3_c"})
            SetBytes(asf.Tags(), name, Png);
        for (int save = 0; save < 3; ++save) {
            ArrangeAsfForSave(asf.File());
            asf.SaveAndOpen();
            EXPECT_EQ(Names(asf.Tags()), L"genre|_albumart_1_a|_albumart_2_b|_albumart_3_c");
            EXPECT_EQ(Read(asf.Tags(), L"genre"), L"A\rB\rC") << extensionFirst << save;
        }
    }
}

TEST(AsfTags, LargeAndSmallPicturesKeepTheOrderThatTheFirstSaveGaveThem) {
    for (const bool extensionFirst : {false, true}) {
        AsfFile asf(extensionFirst);
        SetBytes(asf.Tags(), L"_albumart_1_small", Png);
        SetBytes(asf.Tags(), L"_albumart_2_large", Png + std::string(100000, 'x'));
        SetBytes(asf.Tags(), L"_albumart_3_large too", Png + std::string(100000, 'y'));
        ArrangeAsfForSave(asf.File());
        asf.SaveAndOpen();
        const std::wstring names = Names(asf.Tags());
        ArrangeAsfForSave(asf.File());
        asf.SaveAndOpen();
        EXPECT_EQ(Names(asf.Tags()), names);
    }
}

TEST(AsfTags, ATypeOutsideTheOfferedOnesLastsThroughARoundTrip) {
    Tag tag;
    Picture picture;
    picture.setType(Picture::ColouredFish);
    picture.setPicture(ByteVector("fish"));
    tag.setAttribute("WM/Picture", Attribute(picture));
    EXPECT_EQ(Names(tag), L"_albumart_1");
    SetBytes(tag, L"_albumart_1", Png);
    EXPECT_EQ(tag.attributeListMap()["WM/Picture"].front().toPicture().type(),
              Picture::ColouredFish);
}

TEST(AsfTags, PicturesAreReplacedAppendedAndDeletedByNumber) {
    Tag tag;
    SetBytes(tag, L"_albumart_1_a", Png);
    SetBytes(tag, L"_albumart_2_b", Png);
    SetBytes(tag, L"_albumart_9_c", Png);
    SetBytes(tag, L"_albumart_2_B", Jpeg);
    EXPECT_EQ(Names(tag), L"_albumart_1_a|_albumart_2_B|_albumart_3_c");
    Delete(tag, {L"_albumart_1", L"_albumart_2", L"_albumart_8"});
    EXPECT_EQ(Names(tag), L"_albumart_1_c");
    Delete(tag, {L"_albumart_1_c"});
    EXPECT_TRUE(tag.attributeListMap().isEmpty());
}

TEST(AsfTags, BytesThatAreNoPictureStayBesideThePictures) {
    Tag tag;
    tag.setAttribute("WM/Picture", Attribute(ByteVector("odd")));
    SetBytes(tag, L"_albumart_1_a", Png);
    EXPECT_EQ(Names(tag), L"_albumart_1_a");
    Delete(tag, {L"_albumart_1"});
    ASSERT_EQ(tag.attributeListMap()["WM/Picture"].size(), 1u);
    EXPECT_TRUE(tag.attributeListMap()["WM/Picture"].front().toByteVector() == ByteVector("odd"));
}

TEST(AsfTags, FieldsThatAreNotNamedStay) {
    AsfFile asf;
    Tag& tag = asf.Tags();
    tag.setAttribute("Secret", Attribute(ByteVector("\0\1\2", 3)));
    tag.setAttribute("WM/WMADRCPeakReference", Attribute(17u));
    tag.setRating("PG");
    Attribute ofStream(String("about stream 2"));
    ofStream.setStream(2);
    tag.setAttribute("Title of stream", ofStream);
    Set(tag, L"title", L"T");
    asf.SaveAndOpen();
    EXPECT_TRUE(asf.Tags().attributeListMap()["Secret"].front().toByteVector() ==
                ByteVector("\0\1\2", 3));
    EXPECT_EQ(Native(asf.Tags(), L"WM/WMADRCPeakReference"), L"17");
    EXPECT_EQ(asf.Tags().rating(), String("PG"));
    EXPECT_EQ(asf.Tags().attributeListMap()["Title of stream"].front().stream(), 2);
    EXPECT_EQ(Names(asf.Tags()), L"title");
}

TEST(AsfTags, DeletingAllLeavesWhatTheAudioNeeds) {
    Tag tag;
    for (const Row& row : Rows)
        Set(tag, row.Element, row.Value);
    SetBytes(tag, L"_albumart_1", Png);
    tag.setRating("PG");
    tag.setAttribute("Secret", Attribute(ByteVector("\0\1\2", 3)));
    tag.setAttribute("IsVBR", Attribute(true));
    Attribute ofStream(String("about stream 2"));
    ofStream.setStream(2);
    tag.addAttribute("WM/Genre", ofStream);
    DeleteAsf(tag, NStringList());
    EXPECT_EQ(Names(tag), L"");
    EXPECT_TRUE(tag.rating().isEmpty());
    ASSERT_EQ(tag.attributeListMap().size(), 2u);
    EXPECT_TRUE(tag.contains("IsVBR"));
    ASSERT_EQ(tag.attributeListMap()["WM/Genre"].size(), 1u);
    EXPECT_EQ(tag.attributeListMap()["WM/Genre"].front().stream(), 2);
}

} // namespace
} // namespace tagmap
