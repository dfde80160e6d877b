#include "suite/tagmap/id3v2_tags.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

#include <mpegfile.h>
#include <tbytevectorstream.h>

namespace tagmap {
namespace {

using TagLib::ID3v1::Tag;

std::string Padded(std::string text, size_t size) {
    text.resize(size, '\0');
    return text;
}

std::string Bytes(const std::string& title, const std::string& artist, const std::string& album,
                  const std::string& year, const std::string& comment, char track, char genre) {
    return "TAG" + Padded(title, 30) + Padded(artist, 30) + Padded(album, 30) + Padded(year, 4) +
           Padded(comment, 29) + track + genre;
}

std::string Rendered(const Tag& tag) {
    const TagLib::ByteVector bytes = tag.render();
    return std::string(bytes.data(), bytes.size());
}

void FillAll(Tag& tag) {
    clTagRecord changes;
    changes.Add(L"title", L"T\u00e4");
    changes.Add(L"ARTIST", L"A\rB");
    changes.Add(L"album", L"L");
    changes.Add(L"year", L"2004-05-06");
    changes.Add(L"comment", L"C");
    changes.Add(L"track", L"3/12");
    changes.Add(L"genre", L"No such\rRock");
    changes.Add(L"composer", L"has no field");
    SetId3v1(tag, changes);
}

TEST(Id3v1Tags, SevenElementsStandInTheirFields) {
    Tag tag;
    FillAll(tag);
    EXPECT_EQ(Rendered(tag), Bytes("T\xe4", "A; B", "L", "2004", "C", 3, 17));
}

TEST(Id3v1Tags, TheFieldsReadAsElements) {
    const std::string bytes = Bytes("T\xe4  ", "A", "L", "2004", "C", 3, 17);
    TagLib::ByteVectorStream stream(
        TagLib::ByteVector(bytes.data(), static_cast<unsigned>(bytes.size())));
    TagLib::MPEG::File file(&stream, TagLib::ID3v2::FrameFactory::instance(), false);
    ASSERT_TRUE(file.hasID3v1Tag());
    clTagRecord record;
    ReadId3v1(*file.ID3v1Tag(), record);
    EXPECT_EQ(NamesOf(record), L"artist|title|album|track|genre|year|comment");
    EXPECT_EQ(ValueOf(record, L"title"), L"T\u00e4");
    EXPECT_EQ(ValueOf(record, L"artist"), L"A");
    EXPECT_EQ(ValueOf(record, L"track"), L"3");
    EXPECT_EQ(ValueOf(record, L"year"), L"2004");
    EXPECT_EQ(ValueOf(record, L"genre"), L"Rock");
    EXPECT_EQ(ValueOf(record, L"comment"), L"C");
}

TEST(Id3v1Tags, AnEmptyTagHasNoElements) {
    Tag tag;
    clTagRecord record;
    ReadId3v1(tag, record);
    EXPECT_EQ(NamesOf(record), L"");
}

TEST(Id3v1Tags, WhatAFieldCantHoldIsCutOrLeftOut) {
    Tag tag;
    clTagRecord changes;
    changes.Add(L"title", L"\u7532 and a text of more than thirty characters");
    changes.Add(L"year", L"spring");
    changes.Add(L"track", L"256");
    changes.Add(L"genre", L"No such");
    SetId3v1(tag, changes);
    EXPECT_EQ(Rendered(tag), Bytes("? and a text of more than thir", "", "", "", "", 0, '\xff'));
}

TEST(Id3v1Tags, ElementsThatAreNotNamedStay) {
    Tag tag;
    FillAll(tag);
    clTagRecord changes;
    changes.Add(L"title", L"new");
    changes.Add(L"track", L"");
    changes.Add(L"genre", L"");
    changes.Add(L"year", L"");
    SetId3v1(tag, changes);
    EXPECT_EQ(Rendered(tag), Bytes("new", "A; B", "L", "", "C", 0, '\xff'));
}

TEST(Id3v1Tags, DeletedFieldsAreEmptyAndAnEmptyListStandsForAll) {
    Tag tag;
    FillAll(tag);
    NStringList names;
    names.Add(L"ALBUM");
    names.Add(L"genre");
    names.Add(L"year");
    DeleteId3v1(tag, names);
    EXPECT_EQ(Rendered(tag), Bytes("T\xe4", "A; B", "", "", "C", 3, '\xff'));
    DeleteId3v1(tag, NStringList());
    EXPECT_EQ(Rendered(tag), Bytes("", "", "", "", "", 0, '\xff'));
}

} // namespace
} // namespace tagmap
