#include "suite/tagmap/id3v2_tags.h"
#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/rating.h"
#include "tests/tagmap/id3v2_bytes.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

namespace tagmap {
namespace {

std::string SetAll(TagInFile& file, clTagRecord& changes, int version, std::wstring& refusedNames) {
    Refusals refused;
    SetId3v2(file.Tag(), changes, version, refused);
    refusedNames = RefusedNames(refused);
    return file.Saved(version);
}

// The tag as it is saved after the element was set, which has to be taken.
std::string Set(TagInFile& file, const wchar_t* name, const wchar_t* value, int version) {
    clTagRecord changes;
    changes.Add(name, value);
    std::wstring refused;
    const std::string saved = SetAll(file, changes, version, refused);
    EXPECT_EQ(refused, L"") << name;
    return saved;
}

std::string SetInNew(const wchar_t* name, const wchar_t* value, int version) {
    TagInFile file;
    return Set(file, name, value, version);
}

std::wstring RefusedIn(TagInFile& file, const wchar_t* name, const wchar_t* value, int version) {
    clTagRecord changes;
    changes.Add(name, value);
    std::wstring refused;
    SetAll(file, changes, version, refused);
    return refused;
}

std::wstring Read(TagInFile& file, const wchar_t* name) {
    clTagRecord record;
    ReadId3v2(file.Tag(), record);
    return ValueOf(record, name);
}

std::wstring ReadBytes(const std::string& bytes, const wchar_t* name) {
    TagInFile file(bytes);
    return Read(file, name);
}

std::wstring Names(const std::string& bytes) {
    TagInFile file(bytes);
    clTagRecord record;
    ReadId3v2(file.Tag(), record);
    return NamesOf(record);
}

std::string Delete(TagInFile& file, const wchar_t* name, int version) {
    NStringList names;
    if (name)
        names.Add(name);
    DeleteId3v2(file.Tag(), names);
    return file.Saved(version);
}

std::string Popm(const std::string& email, int rating, uint32_t counter) {
    return email + std::string(1, '\0') + static_cast<char>(rating) + BigEndian(counter, PlainBits);
}

const std::string WindowsEmail = "Windows Media Player 9 Series";

struct Row {
    const wchar_t* Element;
    const wchar_t* Value;
    const char* Frame;
    std::string Fields;    // of the frame in ID3v2.4
    std::string OldFields; // in ID3v2.3
    const char* OldFrame = nullptr;
};

Row TextRow(const wchar_t* element, const char* frame) {
    return {element, L"\u00c4 \u7532", frame, Utf8Text("\xc3\x84 \xe7\x94\xb2"),
            Utf16Text(L"\u00c4 \u7532")};
}

Row UserTextRow(const wchar_t* element, const std::string& description) {
    const std::wstring wide(description.begin(), description.end());
    return {element, L"V", "TXXX", Utf8Text(description + std::string(1, '\0') + "V"),
            Utf16Text(wide) + std::string(2, '\0') + Utf16(L"V")};
}

std::vector<Row> AllRows() {
    const std::string noDescription = "XXX" + std::string("\xff\xfe\0\0", 4);
    Row mood = UserTextRow(L"mood", "MOOD");
    mood.Frame = "TMOO";
    mood.Fields = Utf8Text("V");
    mood.OldFrame = "TXXX";
    return {
        TextRow(L"artist", "TPE1"),
        TextRow(L"title", "TIT2"),
        TextRow(L"album", "TALB"),
        {L"track", L"3/12", "TRCK", Utf8Text("3/12"), Utf16Text(L"3/12")},
        {L"disc", L"1/2", "TPOS", Utf8Text("1/2"), Utf16Text(L"1/2")},
        {L"genre", L"Rock", "TCON", Utf8Text("Rock"), Latin1Text("Rock")},
        {L"year", L"2004", "TDRC", Utf8Text("2004"), Latin1Text("2004"), "TYER"},
        {L"comment", L"C", "COMM", std::string("\3XXX") + std::string(1, '\0') + "C",
         std::string("\1") + noDescription + Utf16(L"C")},
        TextRow(L"album artist", "TPE2"),
        UserTextRow(L"band", "BAND"),
        TextRow(L"composer", "TCOM"),
        TextRow(L"conductor", "TPE3"),
        TextRow(L"label", "TPUB"),
        TextRow(L"isrc", "TSRC"),
        UserTextRow(L"upc", "BARCODE"),
        mood,
        UserTextRow(L"style", "STYLE"),
        TextRow(L"copyright", "TCOP"),
        TextRow(L"tempo", "TBPM"),
        {L"rating", L"8", "POPM", Popm(WindowsEmail, 196, 0), Popm(WindowsEmail, 196, 0)},
        TextRow(L"encoder", "TSSE"),
    };
}

TEST(Id3v2Tags, EveryElementOfTheTableStandsInItsOwnFrame) {
    const std::vector<Row> rows = AllRows();
    ASSERT_EQ(rows.size(), MappingRows().size());
    for (size_t index = 0; index < rows.size(); ++index) {
        const Row& row = rows[index];
        EXPECT_STREQ(row.Element, MappingRows()[index].Element);
        const std::string newTag = SetInNew(row.Element, row.Value, 4);
        EXPECT_EQ(FrameIdsIn(newTag), row.Frame);
        EXPECT_EQ(FramesIn(newTag, row.Frame), row.Fields) << row.Frame;
        EXPECT_EQ(ReadBytes(newTag, row.Element), row.Value) << row.Element;
        EXPECT_EQ(Names(newTag), row.Element);
    }
}

TEST(Id3v2Tags, AnOldTagHasTheFramesAndTheEncodingOfItsVersion) {
    for (const Row& row : AllRows()) {
        const char* frame = row.OldFrame ? row.OldFrame : row.Frame;
        const std::string oldTag = SetInNew(row.Element, row.Value, 3);
        EXPECT_EQ(FrameIdsIn(oldTag), frame);
        EXPECT_EQ(FramesIn(oldTag, frame), row.OldFields) << frame;
        EXPECT_EQ(ReadBytes(oldTag, row.Element), row.Value) << row.Element;
        EXPECT_EQ(Names(oldTag), row.Element);
    }
}

TEST(Id3v2Tags, AnEmptyElementRemovesItsFrame) {
    for (const int version : {3, 4}) {
        for (const Row& row : AllRows()) {
            TagInFile file(SetInNew(row.Element, row.Value, version));
            EXPECT_EQ(FrameIdsIn(Set(file, row.Element, L"", version)), "") << row.Element;
        }
    }
}

TEST(Id3v2Tags, ADeletedElementIsGoneAndTheOthersStay) {
    for (const Row& row : AllRows()) {
        TagInFile file(SetInNew(row.Element, row.Value, 4));
        Set(file, L"my field", L"stays", 4);
        EXPECT_EQ(Names(Delete(file, row.Element, 4)), L"my field") << row.Element;
    }
}

TEST(Id3v2Tags, NamesAreMatchedInAnyCase) {
    EXPECT_EQ(FramesIn(SetInNew(L"Album ARTIST", L"x", 4), "TPE2"), Utf8Text("x"));
}

TEST(Id3v2Tags, SeveralValuesAreFieldsOfOneFrame) {
    const std::string tag = SetInNew(L"artist", L"A\rB", 4);
    EXPECT_EQ(FramesIn(tag, "TPE1"), Utf8Text(std::string("A\0B", 3)));
    EXPECT_EQ(ReadBytes(tag, L"artist"), L"A\rB");
    const std::string user = SetInNew(L"style", L"A\rB", 4);
    EXPECT_EQ(FramesIn(user, "TXXX"), Utf8Text(std::string("STYLE\0A\0B", 9)));
    EXPECT_EQ(ReadBytes(user, L"style"), L"A\rB");
}

TEST(Id3v2Tags, SeveralValuesAreOneTextInAnOldTag) {
    for (const wchar_t* element :
         {L"artist", L"style", L"comment", L"genre", L"mood", L"my field", L"lyrics"})
        EXPECT_EQ(ReadBytes(SetInNew(element, L"A\rB", 3), element), L"A; B") << element;
    EXPECT_EQ(FramesIn(SetInNew(L"artist", L"A\rB", 3), "TPE1"), Utf16Text(L"A; B"));
}

TEST(Id3v2Tags, SeveralValuesOfAnOldTagAreReadWhereTheyStand) {
    TagInFile file(3, {{"TPE1", Latin1Text(std::string("A\0B", 3))}});
    EXPECT_EQ(Read(file, L"artist"), L"A\rB");
}

TEST(Id3v2Tags, AFramesPlaceIsKeptWhenItsTextChanges) {
    TagInFile file(4, {{"TPE1", Utf8Text("a")}, {"TIT2", Utf8Text("t")}, {"TALB", Utf8Text("l")}});
    EXPECT_EQ(FrameIdsIn(Set(file, L"artist", L"b", 4)), "TPE1|TIT2|TALB");
    TagInFile date(4, {{"TDRC", Utf8Text("2004")}, {"TIT2", Utf8Text("t")}});
    EXPECT_EQ(FrameIdsIn(Set(date, L"year", L"2005", 4)), "TDRC|TIT2");
}

TEST(Id3v2Tags, SeveralFramesOfOneTextBecomeOne) {
    TagInFile file(4, {{"TPE1", Utf8Text("a")}, {"TPE1", Utf8Text("b")}});
    EXPECT_EQ(Read(file, L"artist"), L"a\rb");
    EXPECT_EQ(FramesIn(Set(file, L"artist", L"c", 4), "TPE1"), Utf8Text("c"));
}

// Versions.

TEST(Id3v2Tags, ATagKeepsItsVersionAndANewOneIsOld) {
    TagInFile two(2, {{"TT2", Latin1Text("t")}});
    TagInFile three(3, {{"TIT2", Latin1Text("t")}});
    TagInFile four(4, {{"TIT2", Latin1Text("t")}});
    EXPECT_EQ(Id3v2VersionToWrite(&two.Tag()), 3);
    EXPECT_EQ(Id3v2VersionToWrite(&three.Tag()), 3);
    EXPECT_EQ(Id3v2VersionToWrite(&four.Tag()), 4);
    EXPECT_EQ(Id3v2VersionToWrite(nullptr), 3);
}

TEST(Id3v2Tags, TheOldestVersionIsReadAndSavedAsTheNext) {
    TagInFile file(2, {{"TT2", Latin1Text("t")},
                       {"TYE", Latin1Text("1999")},
                       {"TP1", Latin1Text("a")},
                       {"RVA", "volume"},
                       {"TSI", Latin1Text("77")}});
    EXPECT_EQ(Read(file, L"title"), L"t");
    EXPECT_EQ(Read(file, L"year"), L"1999");
    const std::string saved = Set(file, L"artist", L"b", 3);
    EXPECT_EQ(saved[3], 3);
    EXPECT_EQ(FramesIn(saved, "TIT2"), Latin1Text("t"));
    EXPECT_EQ(FramesIn(saved, "TYER"), Latin1Text("1999"));
    EXPECT_EQ(FramesIn(saved, "TPE1"), Utf16Text(L"b"));
    EXPECT_EQ(FramesIn(saved, "RVAD"), "volume");
    EXPECT_EQ(FramesIn(saved, "TSIZ"), Latin1Text("77"));
}

TEST(Id3v2Tags, ADateOfAnOldTagIsYearDayAndTime) {
    const std::string date = SetInNew(L"year", L"2004-05-06", 3);
    EXPECT_EQ(FramesIn(date, "TYER"), Latin1Text("2004"));
    EXPECT_EQ(FramesIn(date, "TDAT"), Latin1Text("0605"));
    EXPECT_EQ(ReadBytes(date, L"year"), L"2004-05-06");
    const std::string time = SetInNew(L"year", L"2004-05-06T12:34", 3);
    EXPECT_EQ(FramesIn(time, "TIME"), Latin1Text("1234"));
    EXPECT_EQ(ReadBytes(time, L"year"), L"2004-05-06T12:34");
}

TEST(Id3v2Tags, ADateThatAnOldTagHasNoFormForStaysWholeInItsYear) {
    for (const wchar_t* date : {L"2004-05", L"99", L"2004-05-06T12:34:56", L"2004-05-06 12:34",
                                L"spring 2004", L"20040506", L"2004/05/06", L"2oo4"})
        EXPECT_EQ(ReadBytes(SetInNew(L"year", date, 3), L"year"), date);
    EXPECT_EQ(FramesIn(SetInNew(L"year", L"2004-05", 3), "TYER"), Utf16Text(L"2004-05"));
    EXPECT_EQ(ReadBytes(SetInNew(L"year", L"2004\r2005", 3), L"year"), L"2004; 2005");
}

TEST(Id3v2Tags, AnOldDateLastsThroughAWriteOfSomethingElse) {
    TagInFile file(3, {{"TYER", Latin1Text("2004")},
                       {"TDAT", Latin1Text("0605")},
                       {"TIME", Latin1Text("1234")},
                       {"TORY", Latin1Text("1988-89")}});
    const std::string saved = Set(file, L"title", L"t", 3);
    EXPECT_EQ(FramesIn(saved, "TYER"), Latin1Text("2004"));
    EXPECT_EQ(FramesIn(saved, "TDAT"), Latin1Text("0605"));
    EXPECT_EQ(FramesIn(saved, "TIME"), Latin1Text("1234"));
    EXPECT_EQ(FramesIn(saved, "TORY"), Latin1Text("1988-89"));
}

TEST(Id3v2Tags, ADayAndTimeWithoutAYearStay) {
    TagInFile file(3, {{"TDAT", Latin1Text("0605")}, {"TIME", Latin1Text("1234")}});
    const std::string saved = Set(file, L"title", L"t", 3);
    EXPECT_EQ(FramesIn(saved, "TDAT"), Latin1Text("0605"));
    EXPECT_EQ(FramesIn(saved, "TIME"), Latin1Text("1234"));
}

TEST(Id3v2Tags, ANewYearReplacesDayAndTimeToo) {
    TagInFile file(
        3,
        {{"TYER", Latin1Text("2004")}, {"TDAT", Latin1Text("0605")}, {"TIME", Latin1Text("1234")}});
    EXPECT_EQ(FrameIdsIn(Set(file, L"year", L"1999", 3)), "TYER");
    TagInFile other(3, {{"TYER", Latin1Text("2004")}, {"TDAT", Latin1Text("0605")}});
    EXPECT_EQ(FrameIdsIn(Delete(other, L"year", 3)), "");
}

TEST(Id3v2Tags, AMoodOfTheNewFormLastsInAnOldTag) {
    TagInFile file(3, {{"TMOO", Latin1Text("calm")}});
    const std::string saved = Set(file, L"title", L"t", 3);
    EXPECT_EQ(FrameIdsIn(saved), "TIT2|TXXX");
    EXPECT_EQ(ReadBytes(saved, L"mood"), L"calm");
}

TEST(Id3v2Tags, AMoodMovesToTheFrameOfItsVersion) {
    TagInFile file(4, {{"TXXX", Utf8Text(std::string("Mood\0calm", 9))}});
    EXPECT_EQ(Read(file, L"mood"), L"calm");
    EXPECT_EQ(FrameIdsIn(Set(file, L"mood", L"wild", 4)), "TMOO");
}

TEST(Id3v2Tags, FramesOfTheOtherVersionLastInAnOldTag) {
    const RawFrames frames = {{"TSST", Latin1Text("set")}, {"TDRL", Latin1Text("2004-05-06")},
                              {"TPRO", Latin1Text("pro")}, {"TDTG", Latin1Text("2005")},
                              {"SEEK", "\1\2\3\4"},        {"ASPI", "index"},
                              {"SIGN", "signed"},          {"EQU2", "equal"}};
    TagInFile file(3, frames);
    const std::string saved = Set(file, L"title", L"t", 3);
    for (const auto& [id, fields] : frames)
        EXPECT_EQ(FramesIn(saved, id), fields) << id;
    EXPECT_EQ(FramesIn(saved, "TIT2"), Utf16Text(L"t"));
}

TEST(Id3v2Tags, ReplayGainLastsInAnOldTag) {
    const std::string gain = std::string("track\0\1\2\0\0", 10);
    TagInFile file(3, {{"RVA2", gain}, {"RVAD", "old gain"}, {"EQUA", "old equal"}});
    const std::string saved = Set(file, L"title", L"t", 3);
    EXPECT_EQ(FramesIn(saved, "RVA2"), gain);
    EXPECT_EQ(FramesIn(saved, "RVAD"), "old gain");
    EXPECT_EQ(FramesIn(saved, "EQUA"), "old equal");
}

TEST(Id3v2Tags, FramesThatAskToBeDroppedStay) {
    for (const int version : {3, 4}) {
        const std::string flags =
            version == 3 ? std::string("\x80\0", 2) : std::string("\x40\0", 2);
        TagInFile file(TagBytes(version, {{"XABC", "unknown"}}, flags));
        EXPECT_EQ(FramesIn(Set(file, L"title", L"t", version), "XABC"), "unknown");
        TagInFile other(TagBytes(version, {{"XABC", "unknown"}, {"TPE1", Latin1Text("a")}}, flags));
        EXPECT_EQ(FrameIdsIn(Delete(other, L"artist", version)), "XABC");
    }
}

TEST(Id3v2Tags, ATagWithEncryptedOrGroupedFramesDoesNotSurviveASave) {
    struct FlaggedTag {
        int Version;
        std::string Flags;
        bool Survives;
    };
    const FlaggedTag tags[] = {
        {3, std::string("\0\0", 2), true},    {3, std::string("\xe0\0", 2), true},
        {3, std::string("\0\x40", 2), false}, {3, std::string("\0\x20", 2), false},
        {4, std::string("\0\0", 2), true},    {4, std::string("\x70\0", 2), true},
        {4, std::string("\0\x04", 2), false}, {4, std::string("\0\x40", 2), false}};
    for (const FlaggedTag& flagged : tags) {
        TagInFile file(TagBytes(flagged.Version, {{"XABC", "1unknown"}}, flagged.Flags));
        ASSERT_EQ(file.Tag().frameList().size(), 1u);
        EXPECT_EQ(Id3v2SurvivesSave(file.Tag()), flagged.Survives);
    }
}

TEST(Id3v2Tags, WhatIsNotNamedStaysByteForByte) {
    const std::string chapter =
        std::string("ch1\0\0\0\0\1\0\0\0\2\xff\xff\xff\xff\xff\xff\xff\xff", 20);
    const RawFrames frames = {
        {"PRIV", std::string("owner\0data", 10)},
        {"UFID", std::string("http://x\0id", 11)},
        {"USLT", Latin1Text("eng") + std::string("words\0la", 8)},
        {"XYZW", std::string("\0\1\2\xff unknown", 12)},
        {"GEOB", std::string("\0text/plain\0n\0d\0object", 22)},
        {"CHAP", chapter},
        {"PCNT", std::string("\0\0\0\7", 4)},
        {"COMM", Latin1Text("eng") + std::string("iTunNORM\0 0001", 14)},
        {"TXXX", Latin1Text(std::string("replaygain_track_gain\0-3 dB", 27))},
        {"WOAR", "http://artist"},
        {"POPM", Popm("a@b", 128, 7)},
        {"TLAN", Latin1Text("eng")},
        {"ZZZZ", std::string(300, 'z')},
    };
    for (const int version : {3, 4}) {
        TagInFile file(version, frames);
        const std::string saved = Set(file, L"title", L"t", version);
        RawFrames expected = frames;
        expected.emplace_back("TIT2", version == 3 ? Utf16Text(L"t") : Utf8Text("t"));
        EXPECT_EQ(FramesIn(saved), expected);
    }
}

TEST(Id3v2Tags, DeletingEverythingLeavesWhatIsNoElement) {
    TagInFile file(4, {{"TIT2", Utf8Text("t")},
                       {"PRIV", std::string("owner\0data", 10)},
                       {"TXXX", Utf8Text(std::string("free\0text", 9))},
                       {"COMM", Latin1Text("eng") + std::string("iTunNORM\0 0001", 14)},
                       {"USLT", Latin1Text("eng") + std::string("\0la", 3)},
                       {"MCDI", "toc"},
                       {"TIPL", Utf8Text(std::string("mix\0A", 5))},
                       {"POPM", Popm("a@b", 128, 0)},
                       {"APIC", std::string("\0image/png\0\3\0\x89PNG", 17)},
                       {"WOAR", "http://artist"},
                       {"XYZW", "unknown"}});
    const std::string saved = Delete(file, nullptr, 4);
    EXPECT_EQ(FrameIdsIn(saved), "PRIV|XYZW");
    EXPECT_EQ(Names(saved), L"");
}

// Single elements.

TEST(Id3v2Tags, AGenreNumberReadsAsItsName) {
    EXPECT_EQ(ReadBytes(TagBytes(4, {{"TCON", Utf8Text(std::string("17\0Own", 6))}}), L"genre"),
              L"Rock\rOwn");
    EXPECT_EQ(ReadBytes(TagBytes(3, {{"TCON", Latin1Text("(17)(RX)Own")}}), L"genre"),
              L"Rock\rRemix\rOwn");
    EXPECT_EQ(ReadBytes(TagBytes(4, {{"TCON", Utf8Text("CR")}}), L"genre"), L"Cover");
    EXPECT_EQ(ReadBytes(TagBytes(4, {{"TCON", Utf8Text("254")}}), L"genre"), L"254");
}

TEST(Id3v2Tags, GenresOfAnOldTagAreNotLostByAWriteOfSomethingElse) {
    TagInFile own(3, {{"TCON", Latin1Text(std::string("Own\0Mine\0Rock", 13))}});
    EXPECT_EQ(ReadBytes(Set(own, L"title", L"t", 3), L"genre"), L"Own; Mine; Rock");
    TagInFile frames(3, {{"TCON", Latin1Text("Own")}, {"TCON", Latin1Text("Rock")}});
    EXPECT_EQ(ReadBytes(Set(frames, L"title", L"t", 3), L"genre"), L"Own; Rock");
    TagInFile listed(3, {{"TCON", Latin1Text("(17)Own")}});
    EXPECT_EQ(FramesIn(Set(listed, L"title", L"t", 3), "TCON"), Latin1Text("(17)Own"));
}

TEST(Id3v2Tags, AGenreThatWouldReadAsAnotherIsRefused) {
    for (const wchar_t* genre : {L"17", L"RX", L"(17)", L"(Live) Rock", L"Rock\r8"}) {
        TagInFile file(4, {{"TCON", Utf8Text("Own")}});
        EXPECT_EQ(RefusedIn(file, L"genre", genre, 4), L"genre") << genre;
        EXPECT_EQ(Read(file, L"genre"), L"Own");
    }
    EXPECT_EQ(ReadBytes(SetInNew(L"genre", L"(half", 3), L"genre"), L"(half");
}

TEST(Id3v2Tags, TheCommentWithoutADescriptionCountsInAnyLanguage) {
    TagInFile file(3, {{"COMM", Latin1Text("eng") + std::string("iTunNORM\0 0001", 14)},
                       {"COMM", Latin1Text("deu") + std::string("\0plain", 6)}});
    EXPECT_EQ(Read(file, L"comment"), L"plain");
    EXPECT_EQ(Read(file, L"comment:iTunNORM"), L" 0001");
    const std::string saved = Set(file, L"comment", L"new", 3);
    EXPECT_EQ(FramesIn(saved, "COMM"), Latin1Text("eng") + std::string("iTunNORM\0 0001", 14) +
                                           "|\1deu" + std::string("\xff\xfe\0\0", 4) +
                                           Utf16(L"new"));
}

TEST(Id3v2Tags, CommentsInTwoLanguagesComeBackAsTheyWereRead) {
    TagInFile file(4, {{"COMM", Latin1Text("eng") + std::string("\0one", 4)},
                       {"COMM", Latin1Text("deu") + std::string("\0eins", 5)}});
    EXPECT_EQ(Read(file, L"comment"), L"one\reins");
    EXPECT_EQ(FramesIn(Set(file, L"comment", L"two\rzwei", 4), "COMM"),
              std::string("\3eng") + std::string("\0two", 4) + "|\3deu" + std::string("\0zwei", 5));
    EXPECT_EQ(FramesIn(Set(file, L"comment", L"x\ry\rz", 4), "COMM"),
              std::string("\3eng") + std::string("\0x; y; z", 8));
}

TEST(Id3v2Tags, ABarcodeIsReadUnderBothNamesAndWrittenUnderOne) {
    const std::string bytes = TagBytes(3, {{"TXXX", Latin1Text(std::string("UPC\0", 4)) + "456"}});
    EXPECT_EQ(Names(bytes), L"upc");
    EXPECT_EQ(ReadBytes(bytes, L"upc"), L"456");
    TagInFile file(bytes);
    EXPECT_EQ(FramesIn(Set(file, L"upc", L"9", 4), "TXXX"),
              Utf8Text(std::string("BARCODE\0", 8) + "9"));
}

TEST(Id3v2Tags, AFrameOfTheElementsOwnNameIsReadAndReplaced) {
    TagInFile file(4, {{"TXXX", Utf8Text(std::string("ALBUM ARTIST\0x", 14))}});
    EXPECT_EQ(Read(file, L"album artist"), L"x");
    EXPECT_EQ(FrameIdsIn(Set(file, L"album artist", L"y", 4)), "TPE2");
}

TEST(Id3v2Tags, AFreeNameKeepsItsSpellingAndItsFrame) {
    const std::string saved = SetInNew(L"My Field", L"v", 4);
    EXPECT_EQ(FramesIn(saved, "TXXX"), Utf8Text(std::string("My Field\0v", 10)));
    EXPECT_EQ(Names(saved), L"My Field");
    TagInFile file(saved);
    EXPECT_EQ(FramesIn(Set(file, L"MY FIELD", L"w", 4), "TXXX"),
              Utf8Text(std::string("My Field\0w", 10)));
    EXPECT_EQ(FrameIdsIn(Delete(file, L"my field", 4)), "");
}

struct KnownName {
    const wchar_t* Element;
    const char* Frame;
    std::string Fields;
};

TEST(Id3v2Tags, NamesThatTheLibraryKnowsHaveFramesOfTheirOwn) {
    const KnownName names[] = {
        {L"lyricist", "TEXT", Utf8Text("v")},
        {L"remixer", "TPE4", Utf8Text("v")},
        {L"originaldate", "TDOR", Utf8Text("v")},
        {L"grouping", "GRP1", Utf8Text("v")},
        {L"lyrics", "USLT", std::string("\3XXX") + std::string("\0v", 2)},
        {L"lyrics:Part Two", "USLT", std::string("\3XXX") + std::string("Part Two\0v", 10)},
        {L"comment:Mine", "COMM", std::string("\3XXX") + std::string("Mine\0v", 6)},
        {L"url", "WXXX", Utf8Text(std::string("\0v", 2))},
        {L"url:Shop", "WXXX", Utf8Text(std::string("Shop\0v", 6))},
        {L"artistwebpage", "WOAR", "v"},
        {L"podcasturl", "WFED", Utf8Text("v")},
        {L"musicbrainz_trackid", "UFID", std::string("http://musicbrainz.org\0v", 24)},
        {L"musicbrainz_albumid", "TXXX", Utf8Text(std::string("MUSICBRAINZ ALBUM ID\0v", 22))},
        {L"producer", "TIPL", Utf8Text(std::string("PRODUCER\0v", 10))},
        {L"performer:guitar", "TMCL", Utf8Text(std::string("guitar\0v", 8))},
        {L"podcast", "TXXX", Utf8Text(std::string("podcast\0v", 9))},
        {L"albumartist", "TXXX", Utf8Text(std::string("albumartist\0v", 13))},
    };
    for (const KnownName& name : names) {
        TagInFile file(SetInNew(name.Element, L"v", 4));
        EXPECT_EQ(FramesIn(file.Saved(4), name.Frame), name.Fields) << name.Element;
        EXPECT_EQ(Names(file.Saved(4)), name.Element);
        EXPECT_EQ(ReadBytes(SetInNew(name.Element, L"v", 3), name.Element), L"v");
        EXPECT_EQ(FrameIdsIn(Delete(file, name.Element, 4)), "") << name.Element;
    }
}

TEST(Id3v2Tags, AChangedTextStaysInTheFrameThatHasIt) {
    TagInFile file(4, {{"USLT", Latin1Text("eng") + std::string("\0la", 3)},
                       {"TXXX", Utf8Text(std::string("MusicBrainz Album Id\0old", 24))}});
    Set(file, L"lyrics", L"lo", 4);
    const std::string saved = Set(file, L"musicbrainz_albumid", L"new", 4);
    EXPECT_EQ(FramesIn(saved, "USLT"), std::string("\3eng") + std::string("\0lo", 3));
    EXPECT_EQ(FramesIn(saved, "TXXX"), Utf8Text(std::string("MusicBrainz Album Id\0new", 24)));
}

TEST(Id3v2Tags, LyricsInTwoLanguagesComeBackAsTheyWereRead) {
    TagInFile file(4, {{"USLT", Latin1Text("eng") + std::string("\0one", 4)},
                       {"USLT", Latin1Text("deu") + std::string("\0eins", 5)}});
    EXPECT_EQ(Read(file, L"lyrics"), L"one\reins");
    EXPECT_EQ(FramesIn(Set(file, L"lyrics", L"two\rzwei", 4), "USLT"),
              std::string("\3eng") + std::string("\0two", 4) + "|\3deu" + std::string("\0zwei", 5));
    EXPECT_EQ(FramesIn(Set(file, L"lyrics", L"all", 4), "USLT"),
              std::string("\3eng") + std::string("\0all", 4));
}

TEST(Id3v2Tags, ALinkThatItsFrameCantHoldBecomesAText) {
    EXPECT_EQ(FrameIdsIn(SetInNew(L"artistwebpage", L"a\rb", 4)), "TXXX");
    EXPECT_EQ(ReadBytes(SetInNew(L"artistwebpage", L"\u7532", 4), L"artistwebpage"), L"\u7532");
    TagInFile file(4, {{"WOAR", "http://artist"}});
    EXPECT_EQ(FrameIdsIn(Set(file, L"artistwebpage", L"a\rb", 4)), "TXXX");
}

TEST(Id3v2Tags, ARoleIsReplacedAmongTheOthers) {
    TagInFile file(4, {{"TIPL", Utf8Text(std::string("mix\0M, N\0producer\0P", 20))},
                       {"TMCL", Utf8Text(std::string("drums\0D", 7))}});
    EXPECT_EQ(Read(file, L"mixer"), L"M, N");
    Set(file, L"producer", L"Q\rR", 4);
    EXPECT_EQ(Read(file, L"producer"), L"Q\rR");
    EXPECT_EQ(Read(file, L"mixer"), L"M, N");
    EXPECT_EQ(Read(file, L"performer:drums"), L"D");
    const std::string saved = Set(file, L"performer:drums", L"", 4);
    EXPECT_EQ(FrameIdsIn(saved), "TIPL");
    EXPECT_EQ(FramesIn(saved, "TIPL"),
              Utf8Text(std::string("PRODUCER\0Q\0PRODUCER\0R\0mix\0M, N", 30)));
}

TEST(Id3v2Tags, RolesAndInstrumentsOfAnOldTagComeBack) {
    TagInFile file;
    Set(file, L"producer", L"P", 3);
    const std::string saved = Set(file, L"performer:drums", L"D", 3);
    EXPECT_EQ(FrameIdsIn(saved), "IPLS");
    EXPECT_EQ(ReadBytes(saved, L"producer"), L"P");
    EXPECT_EQ(ReadBytes(saved, L"performer:drums"), L"D");
}

TEST(Id3v2Tags, NamesThatStandForNoTextAreRefused) {
    for (const wchar_t* name :
         {L"_riff_ISBJ", L"_albumart_x", L"MusicBrainz Album Id", L"_cdtoc"}) {
        TagInFile file;
        EXPECT_EQ(RefusedIn(file, name, L"v", 4), name);
        EXPECT_EQ(FrameIdsIn(file.Saved(4)), "");
    }
    clTagRecord changes;
    AddBytes(changes, L"title", "bytes");
    std::wstring refused;
    TagInFile file;
    SetAll(file, changes, 4, refused);
    EXPECT_EQ(refused, L"title");
}

TEST(Id3v2Tags, WhatIsRefusedKeepsTheRestFromNothing) {
    clTagRecord changes;
    changes.Add(L"rating", L"11");
    changes.Add(L"title", L"t");
    std::wstring refused;
    TagInFile file(4, {{"POPM", Popm("a@b", 128, 7)}});
    const std::string saved = SetAll(file, changes, 4, refused);
    EXPECT_EQ(refused, L"rating");
    EXPECT_EQ(FramesIn(saved, "TIT2"), Utf8Text("t"));
    EXPECT_EQ(FramesIn(saved, "POPM"), Popm("a@b", 128, 7));
}

TEST(Id3v2Tags, TheTableOfContentsIsTheBytesOfItsFrame) {
    const std::string toc("\0\1 toc \xff", 8);
    clTagRecord changes;
    AddBytes(changes, L"_cdtoc", toc + std::string(300, 'x'));
    std::wstring refused;
    TagInFile file(4, {{"MCDI", "old"}});
    TagInFile saved(SetAll(file, changes, 4, refused));
    EXPECT_EQ(refused, L"");
    EXPECT_EQ(FramesIn(saved.Saved(4), "MCDI"), toc + std::string(300, 'x'));
    clTagRecord record;
    ReadId3v2(saved.Tag(), record);
    EXPECT_EQ(DataOf(record, L"_cdtoc"), toc + std::string(300, 'x'));
    EXPECT_EQ(FrameIdsIn(Delete(saved, L"_cdtoc", 4)), "");
}

// Ratings.

struct Popularity {
    int Rating;
    const wchar_t* Element;
};

TEST(Id3v2Tags, RatingsAreReadByTheirBounds) {
    const Popularity bounds[] = {
        {0, L"0"},   {1, L"2"},   {2, L"1"},   {22, L"1"},  {23, L"2"},  {31, L"2"},  {32, L"3"},
        {63, L"3"},  {64, L"4"},  {95, L"4"},  {96, L"5"},  {127, L"5"}, {128, L"6"}, {159, L"6"},
        {160, L"7"}, {195, L"7"}, {196, L"8"}, {223, L"8"}, {224, L"9"}, {254, L"9"}, {255, L"10"}};
    for (const Popularity& bound : bounds)
        EXPECT_EQ(ReadBytes(TagBytes(3, {{"POPM", Popm("x", bound.Rating, 0)}}), L"rating"),
                  bound.Element)
            << bound.Rating;
}

TEST(Id3v2Tags, RatingsAreWrittenAsWindowsDoes) {
    const int bytes[] = {0, 13, 1, 54, 64, 118, 128, 186, 196, 242, 255};
    for (int halfSteps = 0; halfSteps <= RatingMost; ++halfSteps) {
        const NString text = RatingText(halfSteps);
        const std::string saved = SetInNew(L"rating", text.c_str(), 3);
        EXPECT_EQ(FramesIn(saved, "POPM"), Popm(WindowsEmail, bytes[halfSteps], 0));
        EXPECT_EQ(ReadBytes(saved, L"rating"), text.c_str());
    }
}

TEST(Id3v2Tags, ARatingKeepsTheEmailAndThePlayCounter) {
    TagInFile file(4, {{"POPM", Popm("a@b", 10, 77)}});
    EXPECT_EQ(FramesIn(Set(file, L"rating", L"10", 4), "POPM"), Popm("a@b", 255, 77));
}

TEST(Id3v2Tags, AllProgramsSeeOneRating) {
    TagInFile file(4, {{"POPM", Popm("a@b", 10, 7)}, {"POPM", Popm(WindowsEmail, 128, 0)}});
    EXPECT_EQ(Read(file, L"rating"), L"6");
    EXPECT_EQ(FramesIn(Set(file, L"rating", L"8", 4), "POPM"),
              Popm("a@b", 196, 7) + "|" + Popm(WindowsEmail, 196, 0));
}

TEST(Id3v2Tags, OfTwoOtherRatingsTheOneThatRatesCounts) {
    EXPECT_EQ(
        ReadBytes(TagBytes(4, {{"POPM", Popm("a", 0, 7)}, {"POPM", Popm("b", 128, 0)}}), L"rating"),
        L"6");
}

TEST(Id3v2Tags, ARemovedRatingLeavesThePlayCounter) {
    TagInFile file(4, {{"POPM", Popm("a@b", 10, 0x102)}});
    const std::string saved = Set(file, L"rating", L"", 4);
    EXPECT_EQ(FrameIdsIn(saved), "PCNT");
    EXPECT_EQ(FramesIn(saved, "PCNT"), std::string("\0\0\1\2", 4));
    TagInFile counted(4, {{"POPM", Popm("a@b", 10, 5)}, {"PCNT", std::string("\0\0\0\7", 4)}});
    EXPECT_EQ(FramesIn(Delete(counted, L"rating", 4), "PCNT"), std::string("\0\0\0\7", 4));
}

TEST(Id3v2Tags, ARatingAsTextIsReadAndReplaced) {
    TagInFile file(4, {{"TXXX", Utf8Text(std::string("RATING\0", 7) + "70")}});
    EXPECT_EQ(Read(file, L"rating"), L"7");
    EXPECT_EQ(FrameIdsIn(Set(file, L"rating", L"4", 4)), "POPM");
}

// Damaged tags.

TEST(Id3v2Tags, TruncatedFramesGiveNoElementAndNoFault) {
    const RawFrames frames = {{"COMM", "\1"}, {"APIC", "\1i"}, {"POPM", "x"},  {"TXXX", "\1"},
                              {"USLT", "\3"}, {"UFID", "x"},   {"TIPL", "\1"}, {"WXXX", "\1"},
                              {"TCON", "\3"}, {"CHAP", "x"}};
    for (const int version : {3, 4}) {
        TagInFile file(version, frames);
        clTagRecord record;
        ReadId3v2(file.Tag(), record);
        EXPECT_EQ(ReadBytes(Set(file, L"title", L"t", version), L"title"), L"t");
    }
}

} // namespace
} // namespace tagmap
