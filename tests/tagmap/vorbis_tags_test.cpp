#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/vorbis_tags.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

namespace tagmap {
namespace {

using TagLib::Ogg::XiphComment;

// The values of a native field, with "|" between them.
std::wstring Native(const XiphComment& comment, const wchar_t* field) {
    return comment.fieldListMap().value(field).toString(L"|").toWString();
}

std::wstring Set(XiphComment& comment, const wchar_t* name, const wchar_t* value) {
    clTagRecord changes;
    changes.Add(name, value);
    Refusals refused;
    SetVorbis(comment, changes, refused);
    return RefusedNames(refused);
}

std::wstring Read(const XiphComment& comment, const wchar_t* name) {
    clTagRecord record;
    ReadVorbis(comment, record);
    return ValueOf(record, name);
}

void Delete(XiphComment& comment, const wchar_t* name) {
    NStringList names;
    names.Add(name);
    DeleteVorbis(comment, names);
}

struct Row {
    const wchar_t* Element;
    const wchar_t* Value;
    const wchar_t* Field;
    const wchar_t* Native;
};

constexpr Row Rows[] = {
    {L"artist", L"A\rB", L"ARTIST", L"A|B"},
    {L"title", L"T", L"TITLE", L"T"},
    {L"album", L"L", L"ALBUM", L"L"},
    {L"track", L"3", L"TRACKNUMBER", L"3"},
    {L"disc", L"1", L"DISCNUMBER", L"1"},
    {L"genre", L"Rock\rPop", L"GENRE", L"Rock|Pop"},
    {L"year", L"2004", L"DATE", L"2004"},
    {L"comment", L"C", L"COMMENT", L"C"},
    {L"album artist", L"AA", L"ALBUMARTIST", L"AA"},
    {L"band", L"B", L"BAND", L"B"},
    {L"composer", L"Co", L"COMPOSER", L"Co"},
    {L"conductor", L"Cn", L"CONDUCTOR", L"Cn"},
    {L"label", L"Lb", L"LABEL", L"Lb"},
    {L"isrc", L"DEA", L"ISRC", L"DEA"},
    {L"upc", L"0123", L"BARCODE", L"0123"},
    {L"mood", L"M", L"MOOD", L"M"},
    {L"style", L"S", L"STYLE", L"S"},
    {L"copyright", L"\u00a9 X", L"COPYRIGHT", L"\u00a9 X"},
    {L"tempo", L"120", L"BPM", L"120"},
    {L"rating", L"7", L"RATING", L"70"},
    {L"encoder", L"E", L"ENCODER", L"E"},
};

TEST(VorbisTags, EveryElementOfTheTableStandsInItsOwnComment) {
    ASSERT_EQ(std::size(Rows), MappingRows().size());
    for (const Row& row : Rows) {
        XiphComment comment;
        EXPECT_EQ(Set(comment, row.Element, row.Value), L"") << row.Element;
        EXPECT_EQ(Native(comment, row.Field), row.Native) << row.Element;
        EXPECT_EQ(comment.fieldListMap().size(), 1u) << row.Element;
        EXPECT_EQ(Read(comment, row.Element), row.Value) << row.Element;
    }
}

TEST(VorbisTags, EveryElementComesBackFromTheRenderedComment) {
    XiphComment comment;
    for (const Row& row : Rows)
        Set(comment, row.Element, row.Value);
    const XiphComment again(comment.render());
    for (const Row& row : Rows)
        EXPECT_EQ(Read(again, row.Element), row.Value) << row.Element;
}

TEST(VorbisTags, SettingTheSameAgainChangesNoByte) {
    XiphComment comment;
    for (const Row& row : Rows)
        Set(comment, row.Element, row.Value);
    const TagLib::ByteVector before = comment.render();
    clTagRecord record;
    ReadVorbis(comment, record);
    Refusals refused;
    SetVorbis(comment, record, refused);
    EXPECT_EQ(RefusedNames(refused), L"");
    EXPECT_TRUE(comment.render() == before);
}

TEST(VorbisTags, AnEmptyElementRemovesItsCommentAlone) {
    for (const Row& row : Rows) {
        XiphComment comment;
        comment.addField("LYRICS", "stay");
        Set(comment, row.Element, row.Value);
        EXPECT_EQ(Set(comment, row.Element, L""), L"");
        EXPECT_EQ(comment.fieldListMap().size(), 1u) << row.Element;
        EXPECT_EQ(Native(comment, L"LYRICS"), L"stay");
    }
}

TEST(VorbisTags, DeletingANameRemovesItsCommentAlone) {
    for (const Row& row : Rows) {
        XiphComment comment;
        comment.addField("LYRICS", "stay");
        Set(comment, row.Element, row.Value);
        Delete(comment, row.Element);
        EXPECT_EQ(comment.fieldListMap().size(), 1u) << row.Element;
    }
}

TEST(VorbisTags, ElementNamesAreFoundWhateverTheirCase) {
    XiphComment comment;
    Set(comment, L"Album ARTIST", L"X");
    EXPECT_EQ(Native(comment, L"ALBUMARTIST"), L"X");
    Delete(comment, L"ALBUM artist");
    EXPECT_TRUE(comment.fieldListMap().isEmpty());
}

TEST(VorbisTags, TrackAndDiscWithATotalAreTwoComments) {
    XiphComment comment;
    Set(comment, L"track", L"3/12");
    Set(comment, L"disc", L"1/2");
    EXPECT_EQ(Native(comment, L"TRACKNUMBER"), L"3");
    EXPECT_EQ(Native(comment, L"TRACKTOTAL"), L"12");
    EXPECT_EQ(Native(comment, L"DISCNUMBER"), L"1");
    EXPECT_EQ(Native(comment, L"DISCTOTAL"), L"2");
    EXPECT_EQ(Read(comment, L"track"), L"3/12");
    EXPECT_EQ(Read(comment, L"disc"), L"1/2");
}

TEST(VorbisTags, TheOtherNamesOfTotalsAreReadAndReplaced) {
    XiphComment comment;
    comment.addField("TRACKNUMBER", "4");
    comment.addField("TOTALTRACKS", "9");
    comment.addField("DISCNUMBER", "1");
    comment.addField("TOTALDISCS", "3");
    EXPECT_EQ(Read(comment, L"track"), L"4/9");
    EXPECT_EQ(Read(comment, L"disc"), L"1/3");
    Set(comment, L"track", L"5");
    Set(comment, L"disc", L"2/4");
    EXPECT_EQ(Read(comment, L"track"), L"5");
    EXPECT_FALSE(comment.contains("TOTALTRACKS"));
    EXPECT_FALSE(comment.contains("TOTALDISCS"));
    EXPECT_EQ(Native(comment, L"DISCTOTAL"), L"4");
}

TEST(VorbisTags, ANumberThatHasItsTotalWithItStandsAsItIs) {
    XiphComment comment;
    comment.addField("TRACKNUMBER", "4/9");
    comment.addField("TRACKTOTAL", "10");
    EXPECT_EQ(Read(comment, L"track"), L"4/9");
}

TEST(VorbisTags, ATotalWithoutANumberComesBack) {
    XiphComment comment;
    Set(comment, L"track", L"/9");
    EXPECT_FALSE(comment.contains("TRACKNUMBER"));
    EXPECT_EQ(Native(comment, L"TRACKTOTAL"), L"9");
    EXPECT_EQ(Read(comment, L"track"), L"/9");
}

TEST(VorbisTags, ANumberOfAnyFormComesBackAsItWas) {
    for (const wchar_t* value : {L"03/12", L"3/", L"/", L"A1", L"1/2/3", L"1\r2"}) {
        XiphComment comment;
        EXPECT_EQ(Set(comment, L"track", value), L"");
        EXPECT_EQ(Read(comment, L"track"), value);
    }
}

TEST(VorbisTags, DescriptionReadsAsCommentAndPublisherAsLabel) {
    XiphComment comment;
    comment.addField("DESCRIPTION", "words");
    comment.addField("PUBLISHER", "house");
    EXPECT_EQ(Read(comment, L"comment"), L"words");
    EXPECT_EQ(Read(comment, L"label"), L"house");
    EXPECT_EQ(Read(comment, L"description"), Absent);
    EXPECT_EQ(Read(comment, L"publisher"), Absent);
    Set(comment, L"comment", L"new");
    Delete(comment, L"label");
    EXPECT_FALSE(comment.contains("DESCRIPTION"));
    EXPECT_FALSE(comment.contains("PUBLISHER"));
    EXPECT_EQ(Read(comment, L"comment"), L"new");
    EXPECT_EQ(Read(comment, L"label"), Absent);
}

TEST(VorbisTags, TwoNamesOfOneElementShowEachTextOnce) {
    XiphComment comment;
    comment.addField("COMMENT", "same");
    comment.addField("DESCRIPTION", "same");
    comment.addField("DESCRIPTION", "other", false);
    EXPECT_EQ(Read(comment, L"comment"), L"same\rother");
}

TEST(VorbisTags, ACommentOfTheElementsOwnNameStandsInAndIsReplaced) {
    XiphComment comment;
    comment.addField("ALBUM ARTIST", "old");
    comment.addField("YEAR", "1999");
    EXPECT_EQ(Read(comment, L"album artist"), L"old");
    EXPECT_EQ(Read(comment, L"year"), L"1999");
    Set(comment, L"album artist", L"new");
    EXPECT_FALSE(comment.contains("ALBUM ARTIST"));
    EXPECT_EQ(Read(comment, L"album artist"), L"new");
}

TEST(VorbisTags, TheEncoderIsTheVendorStringUnlessACommentSaysIt) {
    // Vendor "libX", no comments.
    const TagLib::ByteVector data("\4\0\0\0libX\0\0\0\0", 12);
    XiphComment comment(data);
    EXPECT_EQ(Read(comment, L"encoder"), L"libX");
    Set(comment, L"encoder", L"mine");
    EXPECT_EQ(Read(comment, L"encoder"), L"mine");
    EXPECT_EQ(comment.vendorID(), TagLib::String("libX"));
    Delete(comment, L"encoder");
    EXPECT_EQ(Read(comment, L"encoder"), L"libX");
}

TEST(VorbisTags, ARatingByEmailIsAFractionAndRatingCountsBeforeIt) {
    XiphComment comment;
    comment.addField("RATING:me@example.org", "0.8");
    EXPECT_EQ(Read(comment, L"rating"), L"8");
    EXPECT_EQ(Read(comment, L"rating:me@example.org"), Absent);
    comment.addField("RATING", "30");
    EXPECT_EQ(Read(comment, L"rating"), L"3");
}

TEST(VorbisTags, WritingARatingTakesThoseByEmailAlong) {
    XiphComment comment;
    comment.addField("RATING:me@example.org", "0.8");
    Set(comment, L"rating", L"5");
    EXPECT_EQ(Native(comment, L"RATING"), L"50");
    EXPECT_EQ(Native(comment, L"RATING:ME@EXAMPLE.ORG"), L"0.5");
    Delete(comment, L"rating");
    EXPECT_TRUE(comment.fieldListMap().isEmpty());
}

TEST(VorbisTags, ARatingThatIsNoneIsRefusedAndTheOldOneStays) {
    XiphComment comment;
    comment.addField("RATING", "30");
    for (const wchar_t* value : {L"11", L"abc", L"3.5", L"1\r2"})
        EXPECT_EQ(Set(comment, L"rating", value), L"rating") << value;
    EXPECT_EQ(Native(comment, L"RATING"), L"30");
}

TEST(VorbisTags, OtherNamesAreCommentsOfThatName) {
    XiphComment comment;
    Set(comment, L"MyField", L"a\rb");
    EXPECT_EQ(Native(comment, L"MYFIELD"), L"a|b");
    EXPECT_EQ(Read(comment, L"myfield"), L"a\rb");
    Delete(comment, L"myFIELD");
    EXPECT_TRUE(comment.fieldListMap().isEmpty());
}

TEST(VorbisTags, TheTableOfContentsIsACommentOfText) {
    XiphComment comment;
    EXPECT_EQ(Set(comment, L"_cdtoc", L"3+96+A0"), L"");
    EXPECT_EQ(Native(comment, L"CDTOC"), L"3+96+A0");
    EXPECT_EQ(Read(comment, L"_cdtoc"), L"3+96+A0");
    EXPECT_EQ(Read(comment, L"cdtoc"), Absent);
    Delete(comment, L"_CDTOC");
    EXPECT_TRUE(comment.fieldListMap().isEmpty());
}

TEST(VorbisTags, WhatNoCommentCanHoldIsRefusedAndTheRestIsWritten) {
    XiphComment comment;
    clTagRecord changes;
    changes.Add(L"a=b", L"x");
    changes.Add(L"na\u00efve", L"x");
    changes.Add(L"", L"x");
    changes.Add(L"_riff_INAM", L"x");
    changes.AddData(L"_cdtoc", "\1\2", 2);
    changes.AddData(L"title", "\1\2", 2);
    changes.Add(L"metadata_block_picture", L"x");
    changes.Add(L"coverart", L"x");
    changes.Add(L"waveformatextensible_channel_mask", L"0x3");
    changes.Add(L"artist", L"written");
    Refusals refused;
    SetVorbis(comment, changes, refused);
    EXPECT_EQ(RefusedNames(refused),
              L"a=b|na\u00efve||_riff_INAM|_cdtoc|title|metadata_block_picture|coverart|"
              L"waveformatextensible_channel_mask");
    EXPECT_EQ(comment.fieldListMap().size(), 1u);
    EXPECT_EQ(Native(comment, L"ARTIST"), L"written");
}

TEST(VorbisTags, CommentsThatAreNotNamedStay) {
    XiphComment comment;
    comment.addField("REPLAYGAIN_TRACK_GAIN", "-3 dB");
    comment.addField("CHAPTER001", "00:00:00.000");
    comment.addField("ODD", "1");
    comment.addField("ODD", "2", false);
    Set(comment, L"title", L"T");
    Delete(comment, L"title");
    EXPECT_EQ(comment.fieldListMap().size(), 3u);
    EXPECT_EQ(Native(comment, L"ODD"), L"1|2");
}

TEST(VorbisTags, DeletingAllLeavesTheChannelMaskThatPlayersNeed) {
    XiphComment comment;
    comment.addField("WAVEFORMATEXTENSIBLE_CHANNEL_MASK", "0x33");
    comment.addField("TITLE", "T");
    comment.addField("ODD", "1");
    EXPECT_EQ(Read(comment, L"waveformatextensible_channel_mask"), Absent);
    DeleteVorbis(comment, NStringList());
    EXPECT_EQ(comment.fieldListMap().size(), 1u);
    EXPECT_EQ(Native(comment, L"WAVEFORMATEXTENSIBLE_CHANNEL_MASK"), L"0x33");
}

TEST(VorbisTags, CharactersOutsideTheBasicPlaneComeBack) {
    XiphComment comment;
    Set(comment, L"title", L"\U0001F3B5 \u97f3");
    EXPECT_EQ(Read(XiphComment(comment.render()), L"title"), L"\U0001F3B5 \u97f3");
}

} // namespace
} // namespace tagmap
