#include "codec/tag_record.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <vector>

namespace {
using Bytes = std::vector<uint8_t>;

void PutNumber(Bytes& bytes, uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<uint8_t>(number >> shift));
}

void PutText(Bytes& bytes, const wchar_t* text, bool terminated = true) {
    for (; *text; ++text) {
        bytes.push_back(static_cast<uint8_t>(*text & 0xFF));
        bytes.push_back(static_cast<uint8_t>(*text >> 8));
    }
    if (terminated)
        bytes.insert(bytes.end(), 2, 0);
}

// A block with a BlockSize of its contents' size plus `sizeChange`.
Bytes Block(const wchar_t* name, const wchar_t* value, const char* data = "", int sizeChange = 0) {
    Bytes contents;
    PutText(contents, name);
    PutText(contents, value);
    contents.insert(contents.end(), data, data + strlen(data));
    Bytes block;
    PutNumber(block, static_cast<uint32_t>(static_cast<int>(contents.size()) + 4 + sizeChange));
    block.insert(block.end(), contents.begin(), contents.end());
    return block;
}

Bytes Record(uint32_t count, std::initializer_list<Bytes> blocks) {
    Bytes bytes;
    PutNumber(bytes, count);
    for (const Bytes& block : blocks)
        bytes.insert(bytes.end(), block.begin(), block.end());
    return bytes;
}

// Parses a copy that lies in a heap block of exactly this size, so that the
// address sanitizer sees each byte read outside.
void Parse(clTagRecord& record, const Bytes& bytes) {
    std::unique_ptr<uint8_t[]> exact(new uint8_t[bytes.size()]);
    std::copy(bytes.begin(), bytes.end(), exact.get());
    record.Deserialise(exact.get(), static_cast<int>(bytes.size()));
}

Bytes Serialised(clTagRecord& record) {
    NBuffer buffer;
    record.Serialise(buffer);
    return Bytes(buffer.Data, buffer.Data + buffer.Size);
}

NString DataOf(const clTagElement& element) {
    NString text;
    for (uint32_t index = 0; index < element.Data.Size; ++index)
        text.InsertChar(element.Data.Data[index]);
    return text;
}

NString Names(clTagRecord& record) {
    NStringList names;
    for (int index = 0; index < record.Count(); ++index)
        names.Add(record[index]->Name);
    return names.Join(L"|");
}
} // namespace

TEST(TagRecord, ElementAndRecordLieInMemoryInTheirOrderOfFields) {
    EXPECT_EQ(offsetof(clTagElement, Name), 0u);
    EXPECT_EQ(offsetof(clTagElement, Value), sizeof(NString));
    EXPECT_EQ(offsetof(clTagElement, Data), 2 * sizeof(NString));
    EXPECT_EQ(offsetof(clTagRecord, Elements), 0u);
    EXPECT_LT(offsetof(NKeyedList<clTagElement>, Items), offsetof(NKeyedList<clTagElement>, Keys));
    EXPECT_LT(offsetof(NKeyedList<clTagElement>, Keys),
              offsetof(NKeyedList<clTagElement>, Current));
}

TEST(TagRecord, WithoutElementsSerialisesToFourBytes) {
    clTagRecord record;
    EXPECT_EQ(Serialised(record), Bytes({0, 0, 0, 0}));
    clTagRecord back;
    back.Add(L"gone", L"x");
    Parse(back, {0, 0, 0, 0});
    EXPECT_EQ(back.Count(), 0);
}

TEST(TagRecord, ASizeOfFourStopsWhateverTheCountSays) {
    clTagRecord record;
    Parse(record, {1, 0, 0, 0});
    EXPECT_EQ(record.Count(), 0);
}

TEST(TagRecord, ASizeBelowOneOrNoDataEmptiesTheRecord) {
    clTagRecord record;
    record.Add(L"a", L"b");
    record.Deserialise("xxxxxxxx", 0);
    EXPECT_EQ(record.Count(), 0);
    record.Add(L"a", L"b");
    record.Deserialise("xxxxxxxx", -5);
    EXPECT_EQ(record.Count(), 0);
    record.Add(L"a", L"b");
    record.Deserialise(nullptr, 100);
    EXPECT_EQ(record.Count(), 0);
}

TEST(TagRecord, ACountOfZeroStops) {
    clTagRecord record;
    Parse(record, Record(0, {Block(L"a", L"b")}));
    EXPECT_EQ(record.Count(), 0);
}

TEST(TagRecord, SerialisesToThePublishedBytes) {
    clTagRecord record;
    record.Add(L"ab", L"c");
    record.AddData(L"d", "xyz", 3);
    EXPECT_EQ(Serialised(record), Bytes({2,  0, 0, 0, // Count
                                         14, 0, 0, 0, 'a', 0, 'b', 0, 0, 0, 'c', 0,   0,  0, // text
                                         13, 0, 0, 0, 'd', 0, 0,   0, 0, 0, 'x', 'y', 'z'}));
}

TEST(TagRecord, TooLargeForItsFormSerialisesToNothing) {
    clTagRecord record;
    record.AddData(L"a", "x", 1);
    record[0]->Data.Size = INT32_MAX;
    NBuffer output;
    output.Set("old", 3);
    record.Serialise(output);
    EXPECT_EQ(output.Size, 0u);
}

TEST(TagRecord, AnEmptyValueStillTakesOneUnit) {
    clTagRecord record;
    record.Add(L"abc", L"");
    EXPECT_EQ(record.GetElementSize(0), 4 + 2 * 4 + 2);
    EXPECT_EQ(record.GetElementSize(1), 0);
}

TEST(TagRecord, ComesBackAsItWas) {
    clTagRecord record;
    record.Add(L"artist", L"Bj\u00F6rk\r\u4E2D\u6587\u0100x");
    record.AddData(L"_albumart_1_front", "\0\1\2\377", 4);
    record.Add(L"", L"");
    record.Add(L"Artist", L"second");
    clTagRecord back;
    Parse(back, Serialised(record));
    ASSERT_EQ(back.Count(), 4);
    EXPECT_EQ(back[0]->Value, L"Bj\u00F6rk\r\u4E2D\u6587\u0100x");
    EXPECT_EQ(back[1]->Name, L"_albumart_1_front");
    EXPECT_TRUE(back[1]->Data.Equals(record[1]->Data));
    EXPECT_EQ(back[3]->Name, L"Artist");
    EXPECT_EQ(Serialised(back), Serialised(record));
}

TEST(TagRecord, TheAllocatedSizeIsThePayloadNotTheUsedOne) {
    clTagRecord record;
    record.AddData(L"x", "1234", 4);
    record[0]->Data.Used = 1;
    EXPECT_EQ(record.GetElementSize(0), 4 + 4 + 2 + 4);
}

TEST(TagRecord, ABlockJustLargeEnoughForItsNameEndsTheParse) {
    Bytes nameOnly;
    PutNumber(nameOnly, 4 + 2 * 5);
    PutText(nameOnly, L"name");
    clTagRecord record;
    Parse(record, Record(3, {nameOnly, Block(L"next", L"value")}));
    ASSERT_EQ(record.Count(), 1);
    EXPECT_EQ(record[0]->Name, L"name");
    EXPECT_EQ(record[0]->Value, L"");
}

TEST(TagRecord, ABlockThatEndsInsideItsValueKeepsNameAndValue) {
    clTagRecord record;
    Parse(record, Record(2, {Block(L"name", L"value", "", -2), Block(L"next", L"value")}));
    ASSERT_EQ(record.Count(), 1);
    EXPECT_EQ(record[0]->Name, L"name");
    EXPECT_EQ(record[0]->Value, L"value");
    EXPECT_EQ(record[0]->Data.Size, 0u);
}

TEST(TagRecord, ABlockOneByteLongerThanItsNameKeepsItsValueAndEndsTheParse) {
    Bytes block = Block(L"name", L"value");
    block[0] = 4 + 2 * 5 + 1;
    clTagRecord record;
    Parse(record, Record(2, {block, Block(L"next", L"value")}));
    ASSERT_EQ(record.Count(), 1);
    EXPECT_EQ(record[0]->Name, L"name");
    EXPECT_EQ(record[0]->Value, L"value");
}

TEST(TagRecord, NothingIsReadBehindABlockThatEndsInsideItsValue) {
    // The last byte of the value's terminator and the next three would be a
    // BlockSize of 256, and all that follows a whole block.
    Bytes behind = {1, 0, 0};
    PutText(behind, L"next");
    behind.resize(255);
    clTagRecord record;
    Parse(record, Record(2, {Block(L"name", L"value", "", -1), behind}));
    EXPECT_EQ(Names(record), L"name");
}

TEST(TagRecord, TheBlockSizeAloneTellsTheLengthOfTheData) {
    Bytes bytes = Record(1, {Block(L"n", L"v", "12345")});
    clTagRecord record;
    Parse(record, bytes);
    EXPECT_EQ(DataOf(*record[0]), L"12345");
    --bytes[4];
    Parse(record, bytes);
    EXPECT_EQ(DataOf(*record[0]), L"1234");
    bytes[4] = static_cast<uint8_t>(bytes[4] + 2);
    bytes.push_back('6');
    Parse(record, bytes);
    EXPECT_EQ(DataOf(*record[0]), L"123456");
}

TEST(TagRecord, ANegativeBlockSizeEndsTheParse) {
    Bytes negative;
    PutNumber(negative, 0x80000000u);
    PutText(negative, L"name");
    clTagRecord record;
    Parse(record, Record(3, {Block(L"a", L"b"), negative, Block(L"c", L"d")}));
    EXPECT_EQ(Names(record), L"a");
}

TEST(TagRecord, ABlockThatRunsPastTheDataEndsTheParse) {
    clTagRecord record;
    Parse(record, Record(2, {Block(L"a", L"b"), Block(L"c", L"d", "", 1)}));
    EXPECT_EQ(Names(record), L"a");
    Bytes huge;
    PutNumber(huge, 0x7FFFFFFF);
    PutText(huge, L"c");
    Parse(record, Record(2, {Block(L"a", L"b"), huge}));
    EXPECT_EQ(Names(record), L"a");
}

TEST(TagRecord, ABlockSizeThatTheDataCutsOffEndsTheParse) {
    for (size_t kept = 0; kept < 4; ++kept) {
        Bytes bytes = Record(2, {Block(L"a", L"b")});
        bytes.insert(bytes.end(), kept, 8);
        clTagRecord record;
        Parse(record, bytes);
        EXPECT_EQ(Names(record), L"a");
    }
}

TEST(TagRecord, ABlockOfItsSizeAloneYieldsAnElementWithoutAName) {
    clTagRecord record;
    Parse(record, Record(2, {Block(L"a", L"b"), {4, 0, 0, 0}}));
    EXPECT_EQ(Names(record), L"a|");
    EXPECT_EQ(record.Count(), 2);
}

TEST(TagRecord, ABlockOfNoSizeStillYieldsItsName) {
    Bytes bytes = Record(2, {Block(L"name", L"value"), Block(L"c", L"d")});
    bytes[4] = 0;
    clTagRecord record;
    Parse(record, bytes);
    ASSERT_EQ(record.Count(), 1);
    EXPECT_EQ(record[0]->Name, L"name");
    EXPECT_EQ(record[0]->Value, L"");
}

TEST(TagRecord, ANameWithoutATerminatorReadsOnPastItsBlock) {
    Bytes block;
    PutNumber(block, 4 + 4);
    PutText(block, L"ab", false);
    clTagRecord record;
    Bytes bytes = Record(2, {block});
    PutText(bytes, L"cd");
    bytes.push_back('x');
    Parse(record, bytes);
    ASSERT_EQ(record.Count(), 1);
    EXPECT_EQ(record[0]->Name, L"abcd");
}

TEST(TagRecord, ATextWithoutATerminatorEndsAtTheEndOfTheData) {
    Bytes name;
    PutNumber(name, 4 + 4);
    PutText(name, L"ab", false);
    clTagRecord record;
    Parse(record, Record(1, {name}));
    ASSERT_EQ(record.Count(), 1);
    EXPECT_EQ(record[0]->Name, L"ab");

    Bytes value;
    PutNumber(value, 4 + 4 + 5);
    PutText(value, L"n");
    PutText(value, L"va", false);
    value.push_back('l'); // half a unit
    Parse(record, Record(1, {value}));
    ASSERT_EQ(record.Count(), 1);
    EXPECT_EQ(record[0]->Value, L"va");
    EXPECT_EQ(record[0]->Data.Size, 0u);
}

TEST(TagRecord, WhatFollowsTheLastCountedBlockIsIgnored) {
    clTagRecord record;
    Parse(record, Record(1, {Block(L"a", L"b"), Block(L"c", L"d")}));
    EXPECT_EQ(Names(record), L"a");
}

TEST(TagRecord, ACountAboveTheBlocksKeepsWhatThereIs) {
    clTagRecord record;
    Parse(record, Record(0xFFFFFFFF, {Block(L"a", L"b"), Block(L"c", L"d")}));
    EXPECT_EQ(Names(record), L"a|c");
}

TEST(TagRecord, EveryTruncationOfARecordIsReadWithoutHarm) {
    Bytes whole = Record(
        3, {Block(L"artist", L"A"), Block(L"_albumart_1", L"", "picture"), Block(L"title", L"T")});
    for (size_t size = 0; size <= whole.size(); ++size) {
        clTagRecord record;
        Parse(record, Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size)));
        EXPECT_LE(record.Count(), 3);
    }
}

TEST(TagRecord, EveryChangedByteOfARecordIsReadWithoutHarm) {
    Bytes whole = Record(2, {Block(L"artist", L"A", "d"), Block(L"title", L"T", "abc")});
    for (size_t at = 0; at < whole.size(); ++at) {
        for (int value : {0, 1, 3, 7, 0x7F, 0x80, 0xFF}) {
            Bytes changed = whole;
            changed[at] = static_cast<uint8_t>(value);
            clTagRecord record;
            Parse(record, changed);
            EXPECT_LE(record.Count(), 2);
        }
    }
}

TEST(TagRecord, FindIgnoresAsciiCaseOnly) {
    clTagRecord record;
    record.Add(L"title", L"");
    record.Add(L"artist", L"1");
    record.Add(L"ARTIST", L"2");
    record.Add(L"\u00C4", L"3");
    EXPECT_EQ(record.Find(L"ARTIST")->Value, L"1");
    EXPECT_EQ(record.Find(L"\u00E4"), nullptr);
    EXPECT_EQ(record.Find(L"artis"), nullptr);
    EXPECT_EQ(record.Find(nullptr), nullptr);
}

TEST(TagRecord, FindLeavesCurrentOnTheMatchOrTheLastElementLookedAt) {
    clTagRecord record;
    record.Add(L"a", L"1");
    record.Add(L"b", L"2");
    record.Add(L"c", L"3");
    record.Find(L"a");
    EXPECT_EQ(record.Current()->Value, L"1");
    record.Find(L"none");
    EXPECT_EQ(record.Current()->Value, L"3");
    record.GetElementSize(1);
    EXPECT_EQ(record.Current()->Value, L"2");
}

TEST(TagRecord, EveryAddMakesItsElementCurrent) {
    clTagRecord record;
    record.Add(L"a", L"1");
    EXPECT_EQ(record.Current()->Name, L"a");
    record.AddData(L"b", "x", 1);
    EXPECT_EQ(record.Current()->Name, L"b");
    clTagElement element;
    element.Name = L"c";
    record.AddCopy(element);
    EXPECT_EQ(record.Current()->Name, L"c");
    EXPECT_NE(record.Current(), &element);
}

TEST(TagRecord, AddDataOfANegativeLengthAddsNoData) {
    clTagRecord record;
    record.AddData(L"a", "xyz", -3);
    record.AddData(L"b", "xyz", 0);
    EXPECT_EQ(record[0]->Data.Size, 0u);
    EXPECT_EQ(record[1]->Data.Size, 0u);
    EXPECT_EQ(record[0]->Value, L"");
    record.AddData(L"c", nullptr, 2);
    ASSERT_EQ(record[2]->Data.Size, 2u);
    EXPECT_EQ(memcmp(record[2]->Data.Data, "\0\0", 2), 0);
}

TEST(TagRecord, AddCopyIsDeep) {
    clTagRecord record;
    record.AddData(L"a", "xyz", 3);
    clTagRecord other;
    other.AddCopy(*record[0]);
    record[0]->Data.Data[0] = '-';
    EXPECT_EQ(DataOf(*other[0]), L"xyz");
}

TEST(TagRecord, MergeAddsWhatIsMissingAndLeavesTheRest) {
    clTagRecord mine;
    mine.Add(L"artist", L"mine");
    clTagRecord theirs;
    theirs.Add(L"ARTIST", L"theirs");
    theirs.Add(L"title", L"T");
    mine.Merge(theirs, false);
    EXPECT_EQ(Names(mine), L"artist|title");
    EXPECT_EQ(mine[0]->Value, L"mine");
}

TEST(TagRecord, MergeWithOverwriteReplacesAnElementInItsPlace) {
    clTagRecord mine;
    mine.AddData(L"artist", "old", 3);
    mine.Add(L"album", L"A");
    clTagRecord theirs;
    theirs.Add(L"ARTIST", L"theirs");
    mine.Merge(theirs, true);
    EXPECT_EQ(Names(mine), L"ARTIST|album");
    EXPECT_EQ(mine[0]->Value, L"theirs");
    EXPECT_EQ(mine[0]->Data.Size, 0u);
}

TEST(TagRecord, MergeOfTwoElementsOfOneNameYieldsOne) {
    clTagRecord theirs;
    theirs.Add(L"genre", L"first");
    theirs.Add(L"Genre", L"second");
    clTagRecord kept;
    kept.Merge(theirs, false);
    ASSERT_EQ(kept.Count(), 1);
    EXPECT_EQ(kept[0]->Value, L"first");
    clTagRecord overwritten;
    overwritten.Merge(theirs, true);
    ASSERT_EQ(overwritten.Count(), 1);
    EXPECT_EQ(overwritten[0]->Value, L"second");
}

TEST(TagRecord, CopyFromEmptiesFirst) {
    clTagRecord mine;
    mine.Add(L"old", L"");
    clTagRecord theirs;
    theirs.Add(L"a", L"1");
    theirs.Add(L"A", L"2");
    mine.CopyFrom(theirs);
    EXPECT_EQ(Names(mine), L"a");
    mine.CopyFrom(mine);
    EXPECT_EQ(Names(mine), L"a");
}

TEST(TagRecord, RemoveAtPastTheEndDoesNothing) {
    clTagRecord record;
    record.Add(L"a", L"");
    record.Add(L"b", L"");
    record.RemoveAt(2);
    EXPECT_EQ(record.Count(), 2);
    record.RemoveAt(0);
    EXPECT_EQ(Names(record), L"b");
}

TEST(TagRecord, RemovingTheCurrentElementClearsCurrent) {
    clTagRecord record;
    record.Add(L"a", L"");
    record.Add(L"b", L"");
    record.RemoveAt(1);
    EXPECT_EQ(record.Current(), nullptr);
}

TEST(TagRecord, RemoveTakesTheFirstOfThatName) {
    clTagRecord record;
    record.Add(L"a", L"1");
    record.Add(L"A", L"2");
    EXPECT_TRUE(record.Remove(L"A"));
    EXPECT_EQ(record[0]->Value, L"2");
    EXPECT_FALSE(record.Remove(L"b"));
    EXPECT_EQ(record.Count(), 1);
}

TEST(TagRecord, TakeValueRemovesTheElement) {
    clTagRecord record;
    record.Add(L"a", L"1");
    record.Add(L"b", L"2");
    EXPECT_EQ(record.TakeValue(L"A"), L"1");
    EXPECT_EQ(Names(record), L"b");
}

TEST(TagRecord, TakeValueOfAnAbsentNameIsEmptyAndChangesNothing) {
    clTagRecord record;
    record.Add(L"a", L"1");
    EXPECT_EQ(record.TakeValue(L"x"), L"");
    EXPECT_EQ(Names(record), L"a");
}

TEST(TagRecord, FindAlbumArtGivesTheDescriptionWithItsUnderscores) {
    clTagRecord record;
    record.AddData(L"_AlbumArt_1_front_of_it", "x", 1);
    NString description(L"old");
    clTagElement* art = record.FindAlbumArt(1, description);
    ASSERT_NE(art, nullptr);
    EXPECT_EQ(art, record[0]);
    EXPECT_EQ(description, L"front_of_it");
}

TEST(TagRecord, FindAlbumArtWithoutADescriptionEmptiesIt) {
    clTagRecord record;
    record.AddData(L"_albumart_3", "x", 1);
    NString description(L"old");
    EXPECT_NE(record.FindAlbumArt(3, description), nullptr);
    EXPECT_EQ(description, L"");
    description = L"old";
    EXPECT_EQ(record.FindAlbumArt(1, description), nullptr);
    EXPECT_EQ(description, L"");
    clTagRecord empty;
    EXPECT_EQ(empty.FindAlbumArt(1, description), nullptr);
}

TEST(TagRecord, FindAlbumArtOfNumberOneFindsNumberTenIfThatStandsFirst) {
    clTagRecord record;
    record.AddData(L"_albumart_10_ten", "x", 1);
    record.AddData(L"_albumart_1_one", "y", 1);
    NString description;
    EXPECT_EQ(record.FindAlbumArt(1, description), record[0]);
    EXPECT_EQ(description, L"ten");
}

TEST(TagRecord, FindAlbumArtOfATwoDigitNumberFindsItsDescription) {
    clTagRecord record;
    record.AddData(L"_albumart_12_back", "x", 1);
    NString description;
    EXPECT_NE(record.FindAlbumArt(12, description), nullptr);
    EXPECT_EQ(description, L"back");
}

TEST(TagRecord, RemoveSpecialKeepsWhatTheFlagsName) {
    auto remaining = [](unsigned flags) {
        clTagRecord record;
        for (const wchar_t* name : {L"artist", L"_cdtoc", L"_RIFF_INAM", L"_albumart_2_front",
                                    L"_other", L"", L"_CDTOCX", L"_Cdtoc"})
            record.Add(name, L"");
        record.RemoveSpecial(flags);
        return Names(record);
    };
    EXPECT_EQ(remaining(0), L"artist|");
    EXPECT_EQ(remaining(2), L"artist|_RIFF_INAM|");
    EXPECT_EQ(remaining(4), L"artist|_cdtoc||_Cdtoc");
    EXPECT_EQ(remaining(8), L"artist|_albumart_2_front|");
    EXPECT_EQ(remaining(14), L"artist|_cdtoc|_RIFF_INAM|_albumart_2_front||_Cdtoc");
}

TEST(TagRecord, RemoveSpecialNeedsTheWholePrefix) {
    clTagRecord record;
    record.Add(L"_riff", L"");
    record.Add(L"_albumart", L"");
    record.RemoveSpecial(clTagRecord::KeepRiff | clTagRecord::KeepAlbumArt);
    EXPECT_EQ(record.Count(), 0);
}
