#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/riff_info_tags.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

#include <tbytevectorstream.h>
#include <wavfile.h>

#include <utility>
#include <vector>

namespace tagmap {
namespace {

using TagLib::ByteVector;
using TagLib::RIFF::Info::Tag;
using Entries = std::vector<std::pair<std::string, std::string>>; // id and bytes

std::string LittleEndian(size_t number) {
    std::string bytes;
    for (int place = 0; place < 4; ++place)
        bytes += static_cast<char>((number >> (8 * place)) & 0xFF);
    return bytes;
}

std::string Chunk(const std::string& id, const std::string& data) {
    return id + LittleEndian(data.size()) + data + std::string(data.size() % 2, '\0');
}

// The entries' texts with their zero byte, as RIFF asks for.
std::string ListBytes(const Entries& entries) {
    std::string list = "INFO";
    for (const auto& [id, text] : entries)
        list += Chunk(id, text + std::string(1, '\0'));
    return list;
}

std::string Rendered(const Tag& tag) {
    const ByteVector bytes = tag.render();
    return std::string(bytes.data(), bytes.size());
}

// The list of a WAV file in memory, as the library reads it.
class ListInFile {
public:
    explicit ListInFile(const Entries& entries)
        : bytes_(Chunk("RIFF", "WAVE" + Chunk("LIST", ListBytes(entries)))),
          stream_(ByteVector(bytes_.data(), static_cast<unsigned>(bytes_.size()))),
          file_(&stream_, false) {}
    TagLib::RIFF::Info::Tag& Tag() { return *file_.InfoTag(); }

private:
    std::string bytes_;
    TagLib::ByteVectorStream stream_;
    TagLib::RIFF::WAV::File file_;
};

std::wstring Set(Tag& tag, const wchar_t* name, const wchar_t* value) {
    clTagRecord changes;
    changes.Add(name, value);
    Refusals refused;
    SetRiffInfo(tag, changes, refused);
    return RefusedNames(refused);
}

std::wstring Read(const Tag& tag, const wchar_t* name) {
    clTagRecord record;
    ReadRiffInfo(tag, record);
    return ValueOf(record, name);
}

std::wstring Names(const Tag& tag) {
    clTagRecord record;
    ReadRiffInfo(tag, record);
    return NamesOf(record);
}

void Delete(Tag& tag, const wchar_t* name) {
    NStringList names;
    names.Add(name);
    DeleteRiffInfo(tag, names);
}

struct Row {
    const wchar_t* Element;
    const wchar_t* Value;
    const char* Id;
    const char* Text;
};
constexpr Row Rows[] = {
    {L"artist", L"\u00c4", "IART", "\xc3\x84"},
    {L"title", L"T", "INAM", "T"},
    {L"album", L"L", "IPRD", "L"},
    {L"track", L"3/12", "ITRK", "3/12"},
    {L"genre", L"Rock", "IGNR", "Rock"},
    {L"year", L"2004", "ICRD", "2004"},
    {L"comment", L"C", "ICMT", "C"},
    {L"composer", L"Co", "IMUS", "Co"},
    {L"label", L"Lb", "IPUB", "Lb"},
    {L"copyright", L"Cp", "ICOP", "Cp"},
    {L"rating", L"7", "IRTD", "70"},
    {L"encoder", L"E", "ISFT", "E"},
};

TEST(RiffInfoTags, EveryElementThatHasAnEntryStandsInIt) {
    for (const Row& row : Rows) {
        Tag tag;
        EXPECT_EQ(Set(tag, row.Element, row.Value), L"") << row.Element;
        EXPECT_EQ(Rendered(tag), ListBytes({{row.Id, row.Text}})) << row.Element;
        ListInFile file(Entries{{row.Id, row.Text}});
        EXPECT_EQ(Read(file.Tag(), row.Element), row.Value);
        EXPECT_EQ(Names(file.Tag()), row.Element);
        EXPECT_EQ(Set(tag, row.Element, L""), L"");
        EXPECT_TRUE(tag.isEmpty()) << row.Element;
        Delete(file.Tag(), row.Element);
        EXPECT_TRUE(file.Tag().isEmpty()) << row.Element;
    }
}

TEST(RiffInfoTags, TheOtherElementsOfTheTableAreRefused) {
    size_t refused = 0;
    for (const clMappingRow& row : MappingRows()) {
        if (row.RiffInfo)
            continue;
        Tag tag;
        EXPECT_EQ(Set(tag, row.Element, L"x"), row.Element);
        EXPECT_TRUE(tag.isEmpty()) << row.Element;
        ++refused;
    }
    EXPECT_EQ(refused + std::size(Rows), MappingRows().size());
}

TEST(RiffInfoTags, TheRecordingCodeIsNeverWrittenIntoTheEntryOfThatName) {
    ListInFile file(Entries{{"ISRC", "the tape"}});
    EXPECT_EQ(Read(file.Tag(), L"isrc"), Absent);
    EXPECT_EQ(Set(file.Tag(), L"isrc", L"DEA"), L"isrc");
    Delete(file.Tag(), L"isrc");
    EXPECT_EQ(Rendered(file.Tag()), ListBytes({{"ISRC", "the tape"}}));
    EXPECT_EQ(Read(file.Tag(), L"_riff_ISRC"), L"the tape");
}

TEST(RiffInfoTags, WhatCantBeThereCanBeRemoved) {
    Tag tag;
    EXPECT_EQ(Set(tag, L"disc", L""), L"");
    EXPECT_EQ(Set(tag, L"my field", L""), L"");
}

TEST(RiffInfoTags, SeveralValuesAreOneText) {
    Tag tag;
    EXPECT_EQ(Set(tag, L"artist", L"A\rB"), L"");
    EXPECT_EQ(Rendered(tag), ListBytes({{"IART", "A; B"}}));
}

TEST(RiffInfoTags, EntriesThatTheTableLacksHaveTheirIds) {
    ListInFile file(Entries{{"ISBJ", "subject"}, {"ieng", "engineer"}, {"INAM", "t"}});
    EXPECT_EQ(Names(file.Tag()), L"title|_riff_ISBJ|_riff_ieng");
    EXPECT_EQ(Set(file.Tag(), L"_riff_IENG", L"new"), L"");
    EXPECT_EQ(Set(file.Tag(), L"_riff_IKEY", L"key\rword"), L"");
    EXPECT_EQ(
        Rendered(file.Tag()),
        ListBytes({{"IKEY", "key; word"}, {"INAM", "t"}, {"ISBJ", "subject"}, {"ieng", "new"}}));
    Delete(file.Tag(), L"_RIFF_ikey");
    EXPECT_EQ(Set(file.Tag(), L"_riff_isbj", L""), L"");
    EXPECT_EQ(Names(file.Tag()), L"title|_riff_ieng");
}

TEST(RiffInfoTags, NamesThatAreNoEntriesAreRefused) {
    for (const wchar_t* name :
         {L"_riff_ABC", L"_riff_ABCDE", L"_riff_", L"_riff_AB\u00c4D", L"_riff_A\nBC",
          L"_riff_INAM", L"_riff_inam", L"my field", L"_cdtoc"}) {
        Tag tag;
        EXPECT_EQ(Set(tag, name, L"x"), name);
        EXPECT_TRUE(tag.isEmpty()) << name;
    }
}

TEST(RiffInfoTags, PicturesAndOtherBytesAreRefused) {
    Tag tag;
    clTagRecord changes;
    AddBytes(changes, L"_albumart_1", "\x89PNG");
    AddBytes(changes, L"_riff_IKEY", "bytes");
    AddBytes(changes, L"title", "bytes");
    Refusals refused;
    SetRiffInfo(tag, changes, refused);
    EXPECT_EQ(RefusedNames(refused), L"_albumart_1|_riff_IKEY|title");
    EXPECT_TRUE(tag.isEmpty());
}

TEST(RiffInfoTags, TextsThatTheListCannotHoldAreRefusedAndTheOldOneStays) {
    Tag tag;
    EXPECT_EQ(Set(tag, L"title", L"T"), L"");
    for (const wchar_t* value : {L"half \xD83C pair", L"\r", L"\r\r", L"\xFFFF mark"})
        EXPECT_EQ(Set(tag, L"title", value), L"title");
    EXPECT_EQ(Set(tag, L"_riff_ISBJ", L"half \xDFB5"), L"_riff_ISBJ");
    EXPECT_EQ(Rendered(tag), ListBytes({{"INAM", "T"}}));
}

TEST(RiffInfoTags, ARatingIsAPercentage) {
    for (int halfSteps = 0; halfSteps <= 10; ++halfSteps) {
        Tag tag;
        const std::wstring text = std::to_wstring(halfSteps);
        EXPECT_EQ(Set(tag, L"rating", text.c_str()), L"");
        EXPECT_EQ(Rendered(tag), ListBytes({{"IRTD", std::to_string(10 * halfSteps)}}));
        EXPECT_EQ(Read(tag, L"rating"), text);
    }
    Tag tag;
    EXPECT_EQ(Set(tag, L"rating", L"11"), L"rating");
    EXPECT_EQ(Set(tag, L"rating", L"good"), L"rating");
    ListInFile unknown(Entries{{"IRTD", "good"}});
    EXPECT_EQ(Names(unknown.Tag()), L"");
}

TEST(RiffInfoTags, ATextOfAnotherEncodingIsReadAndStaysByteForByte) {
    const Entries entries = {{"IART", "M\xfcller"},    {"ICMT", "\xc3("},
                             {"IKEY", "\xed\xa0"},     {"ILNG", "\xed\xa0\x80"},
                             {"IMED", "\xe0\x80\x80"}, {"INAM", "T\xc3\xa4"},
                             {"ISBJ", "\xff!"}};
    ListInFile file(entries);
    EXPECT_EQ(Read(file.Tag(), L"artist"), L"M\u00fcller");
    EXPECT_EQ(Read(file.Tag(), L"_riff_ISBJ"), L"\u00ff!");
    EXPECT_EQ(Read(file.Tag(), L"title"), L"T\u00e4");
    EXPECT_EQ(Set(file.Tag(), L"album", L"L"), L"");
    Entries expected = entries;
    expected.insert(expected.begin() + 6, {"IPRD", "L"});
    EXPECT_EQ(Rendered(file.Tag()), ListBytes(expected));
    EXPECT_EQ(Set(file.Tag(), L"artist", L"M\u00fcller"), L"");
    expected[0].second = "M\xc3\xbcller";
    EXPECT_EQ(Rendered(file.Tag()), ListBytes(expected));
}

TEST(RiffInfoTags, AnEmptyListOfNamesDeletesEveryEntry) {
    ListInFile file(Entries{{"INAM", "t"}, {"ISBJ", "subject"}, {"ISRC", "tape"}});
    DeleteRiffInfo(file.Tag(), NStringList());
    EXPECT_TRUE(file.Tag().isEmpty());
}

} // namespace
} // namespace tagmap
