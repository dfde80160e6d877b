#include "suite/tagmap/mapping_table.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {
using namespace tagmap;
}

TEST(MappingTable, HasEachElementOnceInLowerCase) {
    std::set<std::wstring> names;
    for (const clMappingRow& row : MappingRows()) {
        EXPECT_TRUE(names.insert(row.Element).second);
        EXPECT_EQ(NString(row.Element).ToLower(), row.Element);
    }
    EXPECT_EQ(names.size(), 21u);
}

TEST(MappingTable, NoTwoElementsShareAField) {
    std::set<std::wstring> fields;
    for (const clMappingRow& row : MappingRows()) {
        for (const wchar_t* field : {row.Id3v2, row.Vorbis, row.Mp4, row.Asf, row.Ape}) {
            ASSERT_NE(field, nullptr);
            EXPECT_NE(std::wstring(field), L"");
        }
        EXPECT_TRUE(fields.insert(std::wstring(L"ID3v2 ") + row.Id3v2).second);
        EXPECT_TRUE(fields.insert(std::wstring(L"Vorbis ") + row.Vorbis).second);
        EXPECT_TRUE(fields.insert(std::wstring(L"MP4 ") + row.Mp4).second);
        EXPECT_TRUE(fields.insert(std::wstring(L"ASF ") + row.Asf).second);
        EXPECT_TRUE(fields.insert(std::wstring(L"APE ") + row.Ape).second);
        if (row.RiffInfo) {
            EXPECT_TRUE(fields.insert(std::wstring(L"RIFF ") + row.RiffInfo).second);
        }
    }
}

TEST(MappingTable, ARecordingCodeIsNeverTheSourceOfARiffFile) {
    EXPECT_EQ(FindMappingRow(L"isrc")->RiffInfo, nullptr);
    for (const clMappingRow& row : MappingRows())
        EXPECT_FALSE(row.RiffInfo && NString(row.RiffInfo) == L"ISRC");
}

TEST(MappingTable, IsFoundWithoutRegardToCase) {
    ASSERT_NE(FindMappingRow(L"Album ARTIST"), nullptr);
    EXPECT_EQ(NString(FindMappingRow(L"Album ARTIST")->Vorbis), L"ALBUMARTIST");
    EXPECT_EQ(FindMappingRow(L"album"), &MappingRows()[2]);
    EXPECT_EQ(FindMappingRow(L"albums"), nullptr);
    EXPECT_EQ(FindMappingRow(L""), nullptr);
}
