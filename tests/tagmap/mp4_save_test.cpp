#include "suite/tagmap/mp4_save.h"
#include "tests/tagmap/file_to_save.h"

#include <gtest/gtest.h>

#include <string>

// Files on the disk with an item list of the test's own.
namespace tagmap {
namespace {

enum { Implicit = 0, Utf8 = 1, Utf16 = 2, Jpeg = 13, Png = 14, Integer = 21 };

std::string Box(const std::string& name, const std::string& content) {
    constexpr size_t headSize = 8;
    return BigEndian(headSize + content.size()) + name + content;
}

std::string Data(size_t type, const std::string& bytes, size_t locale = 0) {
    return Box("data", BigEndian(type) + BigEndian(locale) + bytes);
}

std::string FreeForm(const std::string& owner, const std::string& name, const std::string& data) {
    const std::string flags(4, '\0');
    return Box("----", Box("mean", flags + owner) + Box("name", flags + name) + data);
}

std::string Handler(const std::string& type) {
    return Box("hdlr", std::string(8, '\0') + type + "appl" + std::string(9, '\0'));
}

std::string FileOf(const std::string& items, const std::string& handler = Handler("mdir")) {
    const std::string meta = Box("meta", std::string(4, '\0') + handler + Box("ilst", items));
    return Box("ftyp", "M4A ") + Box("moov", Box("udta", meta)) + Box("mdat", "audio");
}

// Written, and the item is still there as it was.
bool IsKept(const std::string& item) {
    FileToSave file(FileOf(item));
    return file.Set(L"album", L"another") == Outcome::Done && file.Contains(item) &&
           file.Value(L"album") == L"another";
}

// Written, and in the place of the item this one is there.
bool Becomes(const std::string& item, const std::string& other) {
    FileToSave file(FileOf(item));
    return file.Set(L"album", L"another") == Outcome::Done && file.Contains(other);
}

bool IsRefused(const std::string& items) {
    return FileToSave(FileOf(items)).IsRefused();
}

std::string Bytes(std::initializer_list<int> numbers) {
    std::string bytes;
    for (const int number : numbers)
        bytes += static_cast<char>(number);
    return bytes;
}

TEST(Mp4Save, WhatTheLibraryHoldsWholeIsKept) {
    EXPECT_TRUE(IsKept(Box("\251nam", Data(Utf8, "T") + Data(Utf8, "U"))));
    EXPECT_TRUE(IsKept(Box("covr", Data(Jpeg, "one") + Data(Png, "two"))));
    EXPECT_TRUE(IsKept(Box("purl", Data(Implicit, "http://x"))));
    EXPECT_TRUE(IsKept(Box("cpil", Data(Integer, Bytes({1})))));
    EXPECT_TRUE(IsKept(Box("tmpo", Data(Integer, Bytes({0, 120})))));
    EXPECT_TRUE(IsKept(Box("plID", Data(Integer, Bytes({0, 0, 0, 1, 2, 3, 4, 5})))));
    EXPECT_TRUE(IsKept(Box("trkn", Data(Implicit, Bytes({0, 0, 0, 3, 0, 12, 0, 0})))));
    EXPECT_TRUE(IsKept(FreeForm("com.example", "Thing", Data(Utf8, "a") + Data(Utf8, "b"))));
    EXPECT_TRUE(IsKept(FreeForm("com.example", "Thing", Data(Implicit, Bytes({0, 1, 2})))));
    EXPECT_TRUE(IsKept(FreeForm("", "Thing", Data(Utf8, "x"))));
}

TEST(Mp4Save, FillersAreNobodysLoss) {
    EXPECT_TRUE(Becomes(Box("free", "filler") + Box("skip", ""), "another"));
}

TEST(Mp4Save, NumbersMayComeBackInAnotherSize) {
    EXPECT_TRUE(Becomes(Box("tmpo", Data(Integer, Bytes({120}))),
                        Box("tmpo", Data(Integer, Bytes({0, 120})))));
    EXPECT_TRUE(Becomes(Box("tvsn", Data(Integer, Bytes({0, 7}))),
                        Box("tvsn", Data(Integer, Bytes({0, 0, 0, 7})))));
    EXPECT_TRUE(Becomes(Box("disk", Data(Implicit, Bytes({0, 0, 0, 1, 0, 2, 0, 0}))),
                        Box("disk", Data(Implicit, Bytes({0, 0, 0, 1, 0, 2})))));
}

TEST(Mp4Save, AGenreByNumberBecomesItsName) {
    EXPECT_TRUE(Becomes(Box("gnre", Data(Implicit, Bytes({0, 2}))),
                        Box("\251gen", Data(Utf8, "Classic Rock"))));
}

TEST(Mp4Save, AGenreByNumberWithoutANameIsRefused) {
    EXPECT_TRUE(IsRefused(Box("gnre", Data(Implicit, Bytes({0, 0})))));
    EXPECT_TRUE(IsRefused(Box("gnre", Data(Implicit, Bytes({1, 0})))));
    EXPECT_TRUE(IsRefused(Box("gnre", Data(Implicit, Bytes({255, 255})))));
    EXPECT_TRUE(IsRefused(Box("gnre", Data(Implicit, Bytes({0, 2}))) +
                          Box("\251gen", Data(Utf8, "Another"))));
}

TEST(Mp4Save, AnItemThatStandsTwiceIsRefused) {
    EXPECT_TRUE(IsRefused(Box("\251nam", Data(Utf8, "T")) + Box("\251nam", Data(Utf8, "U"))));
    EXPECT_TRUE(IsRefused(FreeForm("com.example", "Thing", Data(Utf8, "a")) +
                          FreeForm("com.example", "Thing", Data(Utf8, "b"))));
}

TEST(Mp4Save, ATextThatTheLibraryCannotHoldIsRefused) {
    EXPECT_TRUE(IsRefused(Box("\251nam", Data(Utf16, Bytes({0, 'T'})))));
    EXPECT_TRUE(IsRefused(Box("\251nam", Data(Utf8, "T") + Data(Utf16, Bytes({0, 'T'})))));
    EXPECT_TRUE(IsRefused(Box("\251nam", Data(Utf8, Bytes({'a', 0, 'b'})))));
    EXPECT_TRUE(IsRefused(Box("\251nam", Data(Utf8, "M\xFCller"))));
    EXPECT_TRUE(IsRefused(Box("\251nam", "")));
}

TEST(Mp4Save, ALanguageIsRefused) {
    constexpr size_t german = 0x15C7;
    EXPECT_TRUE(IsRefused(Box("\251nam", Data(Utf8, "T", german))));
}

TEST(Mp4Save, ANumberThatTheLibraryCannotHoldIsRefused) {
    EXPECT_TRUE(IsRefused(Box("hdvd", Data(Integer, Bytes({2})))));
    EXPECT_TRUE(IsRefused(Box("tmpo", Data(Integer, Bytes({0, 1, 0, 0})))));
    EXPECT_TRUE(IsRefused(Box("stik", Data(Integer, Bytes({1, 0})))));
    EXPECT_TRUE(IsRefused(Box("cpil", Data(Integer, ""))));
    EXPECT_TRUE(IsRefused(Box("tmpo", Data(Integer, Bytes({0, 1})) + Data(Integer, "\0\2"))));
    EXPECT_TRUE(IsRefused(Box("trkn", Data(Implicit, Bytes({1, 0, 0, 3, 0, 12, 0, 0})))));
    EXPECT_TRUE(IsRefused(Box("disk", Data(Implicit, Bytes({0, 0, 0, 1, 0, 2, 0, 5})))));
}

TEST(Mp4Save, ACoverOfAnUnknownKindIsRefused) {
    constexpr size_t unheard = 99;
    EXPECT_TRUE(IsRefused(Box("covr", Data(Jpeg, "one") + Data(unheard, "two"))));
}

TEST(Mp4Save, ABoxThatReachesOutOfItsItemIsRefused) {
    EXPECT_TRUE(IsRefused(Box("covr", BigEndian(0x7FFFFFFF) + "data" + std::string(20, '\0'))));
    EXPECT_TRUE(IsRefused(Box("\251nam", BigEndian(100) + "data" + std::string(9, '\0'))));
    EXPECT_TRUE(IsRefused(Box("\251nam", Data(Utf8, "T") + "rest")));
}

TEST(Mp4Save, ABoxBesideTheValuesIsRefused) {
    EXPECT_TRUE(IsRefused(Box("\251nam", Data(Utf8, "T") + Box("name", std::string(4, '\0')))));
    EXPECT_TRUE(IsRefused(Box("\251nam", Box("itif", std::string(8, '\0')) + Data(Utf8, "T"))));
}

TEST(Mp4Save, AFreeFormItemThatTheLibraryCannotHoldIsRefused) {
    EXPECT_TRUE(IsRefused(FreeForm("com.example", "a:b", Data(Utf8, "x"))));
    EXPECT_TRUE(IsRefused(FreeForm("com.example", "M\xFCller", Data(Utf8, "x"))));
    EXPECT_TRUE(IsRefused(FreeForm("com.example", "Thing", "")));
    EXPECT_TRUE(IsRefused(FreeForm("com.example", "Thing", Data(Utf8, "x") + Data(Implicit, "y"))));
    EXPECT_TRUE(IsRefused(Box("----", Data(Utf8, "x"))));
}

TEST(Mp4Save, ANameWithAZeroByteIsRefused) {
    EXPECT_TRUE(IsRefused(Box(Bytes({0, 0, 0, 1}), Data(Utf8, "x"))));
    EXPECT_TRUE(IsRefused(Box(Bytes({'a', 0, 'b', 'c'}), Data(Utf8, "x"))));
}

TEST(Mp4Save, MetadataOfAnotherHandlerIsRefused) {
    const std::string item = Box("\251nam", Data(Utf8, "T"));
    EXPECT_TRUE(FileToSave(FileOf(item, Handler("mdta"))).IsRefused());
    EXPECT_TRUE(FileToSave(FileOf("", Handler("ID32"))).IsRefused());
    EXPECT_FALSE(FileToSave(FileOf(item, "")).IsRefused());
}

} // namespace
} // namespace tagmap
