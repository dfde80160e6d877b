#include "suite/tagmap/asf_save.h"
#include "tests/tagmap/file_to_save.h"

#include <gtest/gtest.h>

#include <string>

// Files on the disk, made of the sample's objects and others.
namespace tagmap {
namespace {

const std::string
    DescriptionGuid("\x33\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C", 16);
const std::string
    ExtendedDescriptionGuid("\x40\xA4\xD0\xD2\x07\xE3\xD2\x11\x97\xF0\x00\xA0\xC9\x5E\xA8\x50", 16);
const std::string ExtensionGuid("\xB5\x03\xBF\x5F\x2E\xA9\xCF\x11\x8E\xE3\x00\xC0\x0C\x20\x53\x65",
                                16);
const std::string MetadataGuid("\xEA\xCB\xF8\xC5\xAF\x5B\x77\x48\x84\x67\xAA\x8C\x44\xFA\x4C\xCA",
                               16);
const std::string LibraryGuid("\x94\x1C\x23\x44\x98\x94\xD1\x49\xA1\x41\x1D\x13\x4E\x45\x70\x54",
                              16);
const std::string PaddingGuid("\x74\xD4\x06\x18\xDF\xCA\x09\x45\xA4\xBA\x9A\xAB\xCB\x96\xAA\xE8",
                              16);
constexpr size_t ObjectHeaderSize = 24;
constexpr size_t FileHeaderSize = 30;

// The types of attributes.
enum { Text, Binary, Flag, Long, LongLong, Short, Guid, Unheard };

std::string Short16(size_t number) {
    return LittleEndian(number).substr(0, 2);
}

std::string Long64(size_t number) {
    return LittleEndian(number) + std::string(4, '\0');
}

size_t NumberAt(const std::string& bytes, size_t at) {
    size_t number = 0;
    for (size_t index = 4; index > 0; --index)
        number = number << 8 | static_cast<unsigned char>(bytes[at + index - 1]);
    return number;
}

std::string Object(const std::string& guid, const std::string& content) {
    return guid + Long64(ObjectHeaderSize + content.size()) + content;
}

std::string Utf16(const std::string& text) {
    std::string wide;
    for (const char character : text)
        wide += {character, '\0'};
    return wide + std::string(2, '\0');
}

std::string Description(const std::string& title) {
    return Object(DescriptionGuid, Short16(title.size()) + std::string(8, '\0') + title);
}

std::string Attribute(int type, const std::string& value,
                      const std::string& name = Utf16("Custom")) {
    return Short16(name.size()) + name + Short16(static_cast<size_t>(type)) +
           Short16(value.size()) + value;
}

std::string ExtendedDescription(const std::string& attribute, size_t count = 1) {
    return Object(ExtendedDescriptionGuid, Short16(count) + attribute);
}

// Of an object in the header extension.
std::string Metadata(int type, const std::string& value, size_t language = 0) {
    const std::string name = Utf16("Custom");
    return Short16(1) + Short16(language) + Short16(0) + Short16(name.size()) +
           Short16(static_cast<size_t>(type)) + LittleEndian(value.size()) + name + value;
}

std::string Extension(const std::string& objects) {
    const std::string reserved("\x11\xD2\xD3\xAB\xBA\xA9\xCF\x11\x8E\xE6\x00\xC0\x0C\x20\x53\x65"
                               "\6\0",
                               18);
    return Object(ExtensionGuid, reserved + LittleEndian(objects.size()) + objects);
}

std::string Sample() {
    return SampleContent("sample.wma");
}

// The two objects without which no file is read.
std::string NeededObjects() {
    const std::string sample = Sample();
    std::string objects;
    for (const char* guid :
         {"\xA1\xDC\xAB\x8C\x47\xA9\xCF\x11\x8E\xE4", "\x91\x07\xDC\xB7\xB7\xA9\xCF\x11\x8E\xE6"}) {
        const size_t at = sample.find(guid);
        objects += sample.substr(at, NumberAt(sample, at + 16));
    }
    return objects;
}

// All that follows the header.
std::string Audio() {
    const std::string sample = Sample();
    return sample.substr(NumberAt(sample, 16));
}

// With `more` objects behind the needed ones; `size` and `count` are added to
// what the header should say.
std::string AsfFile(const std::string& objects, size_t more, long size = 0, long count = 0) {
    const std::string all = NeededObjects() + objects;
    return Sample().substr(0, 16) +
           Long64(FileHeaderSize + all.size() + static_cast<size_t>(size)) +
           LittleEndian(2 + more + static_cast<size_t>(count)) + "\1\2" + all + Audio();
}

bool IsWritten(const std::string& content) {
    FileToSave file(content);
    const bool isDone = file.Set(L"album", L"another") == Outcome::Done;
    const std::string after = file.Content();
    const std::string audio = Audio();
    return isDone && after.size() >= audio.size() &&
           after.substr(after.size() - audio.size()) == audio && file.Value(L"album") == L"another";
}

bool IsRefused(const std::string& content) {
    return FileToSave(content).IsRefused();
}

// The library itself may see that it can't read the file.
bool IsLeftAlone(const std::string& content) {
    FileToSave file(content);
    const Outcome outcome = file.Set(L"album", L"another");
    return (outcome == Outcome::Refused || outcome == Outcome::NotAudio) &&
           file.Content() == content;
}

TEST(AsfSave, SoundFilesAreWrittenAndKeepTheirAudio) {
    EXPECT_TRUE(IsWritten(Sample()));
    EXPECT_TRUE(IsWritten(AsfFile("", 0)));
    EXPECT_TRUE(IsWritten(AsfFile(Description(Utf16("a title")), 1)));
    EXPECT_TRUE(IsWritten(AsfFile(ExtendedDescription(Attribute(Text, Utf16("a value"))), 1)));
    EXPECT_TRUE(IsWritten(AsfFile(Extension(Object(LibraryGuid, Metadata(Text, Utf16("a value"))) +
                                            Object(PaddingGuid, std::string(100, '\0'))),
                                  1)));
}

TEST(AsfSave, AHeaderWithoutASizeIsRefused) {
    std::string file = Sample();
    EXPECT_TRUE(IsRefused(file.replace(16, 8, Long64(0))));
    EXPECT_TRUE(IsRefused(file.replace(16, 8, Long64(FileHeaderSize - 1))));
    EXPECT_TRUE(IsRefused(file.replace(16, 8, std::string(8, '\xFF'))));
}

TEST(AsfSave, AHeaderThatReachesIntoTheAudioIsRefused) {
    EXPECT_TRUE(IsRefused(AsfFile("", 0, 1)));
    EXPECT_TRUE(IsRefused(AsfFile("", 0, 1000)));
    EXPECT_TRUE(IsRefused(AsfFile("", 0, static_cast<long>(Audio().size()))));
    EXPECT_TRUE(IsRefused(AsfFile("", 0, 1000000)));
}

TEST(AsfSave, AHeaderThatEndsBeforeItsObjectsIsRefused) {
    EXPECT_TRUE(IsRefused(AsfFile(Description(Utf16("a title")), 1, -1)));
    EXPECT_TRUE(IsRefused(AsfFile(Description(Utf16("a title")), 1, -30)));
}

TEST(AsfSave, AWrongNumberOfObjectsIsRefused) {
    EXPECT_TRUE(IsRefused(AsfFile(Description(Utf16("a title")), 1, 0, -1)));
    EXPECT_TRUE(IsRefused(AsfFile(Description(Utf16("a title")), 1, 0, 1)));
}

TEST(AsfSave, AnObjectSmallerThanItsHeadIsRefused) {
    std::string padding = Object(PaddingGuid, "");
    padding[16] = static_cast<char>(ObjectHeaderSize - 1);
    EXPECT_TRUE(IsRefused(AsfFile(padding, 1)));
    EXPECT_TRUE(IsLeftAlone(AsfFile(Extension(padding), 1)));
}

TEST(AsfSave, AHeaderExtensionOfAnotherSizeThanItsObjectsIsRefused) {
    std::string extension = Extension(Object(PaddingGuid, std::string(100, '\0')));
    constexpr size_t sizeAt = ObjectHeaderSize + 18;
    extension[sizeAt] = static_cast<char>(extension[sizeAt] - 30);
    EXPECT_TRUE(IsLeftAlone(AsfFile(extension, 1)));
}

TEST(AsfSave, AnObjectOfTextsThatStandsTwiceIsRefused) {
    const std::string title = Description(Utf16("a title"));
    EXPECT_TRUE(IsRefused(AsfFile(title + title, 2)));
    EXPECT_TRUE(IsRefused(AsfFile(Extension("") + Extension(""), 2)));
    EXPECT_TRUE(IsRefused(AsfFile(Description("") + Description(Utf16("b")), 2)));
}

TEST(AsfSave, ATextThatASaveWouldCutIsRefused) {
    EXPECT_TRUE(IsWritten(AsfFile(Description(std::string(65532, 'x')), 1)));
    EXPECT_TRUE(IsRefused(AsfFile(Description(std::string(65534, 'x')), 1)));
    EXPECT_TRUE(IsRefused(AsfFile(Description(std::string("a\0b", 3)), 1)));
    EXPECT_TRUE(IsRefused(AsfFile(Description(Utf16("a") + Utf16("b")), 1)));
    EXPECT_TRUE(
        IsRefused(AsfFile(ExtendedDescription(Attribute(Text, Utf16("a") + Utf16("b"))), 1)));
    EXPECT_TRUE(IsRefused(
        AsfFile(ExtendedDescription(Attribute(Text, Utf16("a"), std::string(65534, 'x'))), 1)));
}

TEST(AsfSave, WhatStandsBehindTheTextsOfAnObjectIsRefused) {
    EXPECT_TRUE(IsRefused(AsfFile(Object(DescriptionGuid, std::string(10, '\0') + "more"), 1)));
    EXPECT_TRUE(IsRefused(AsfFile(ExtendedDescription(Attribute(Text, Utf16("a")) + "more"), 1)));
}

TEST(AsfSave, MoreAttributesThanThereAreAreRefused) {
    EXPECT_TRUE(IsRefused(AsfFile(ExtendedDescription(Attribute(Text, Utf16("a")), 2), 1)));
    EXPECT_TRUE(IsRefused(AsfFile(Object(ExtendedDescriptionGuid, ""), 1)));
}

struct Value {
    int Type;
    size_t Size;
    bool InDescription;
    bool InLibrary;
};

constexpr Value Values[] = {
    {Text, 4, true, true},     {Text, 5, false, false},     {Binary, 0, true, true},
    {Binary, 5, true, true},   {Flag, 4, true, false},      {Flag, 2, false, true},
    {Long, 4, true, true},     {Long, 2, false, false},     {Long, 5, false, false},
    {LongLong, 8, true, true}, {LongLong, 4, false, false}, {Short, 2, true, true},
    {Short, 4, false, false},  {Guid, 16, true, true},      {Guid, 8, false, false},
    {Unheard, 4, false, false}};

TEST(AsfSave, AValueHasTheSizeOfItsType) {
    for (const Value& value : Values) {
        const std::string bytes(value.Size, '\0');
        const std::string inDescription =
            AsfFile(ExtendedDescription(Attribute(value.Type, bytes)), 1);
        const std::string inLibrary =
            AsfFile(Extension(Object(LibraryGuid, Metadata(value.Type, bytes))), 1);
        const std::string inMetadata =
            AsfFile(Extension(Object(MetadataGuid, Metadata(value.Type, bytes))), 1);
        EXPECT_EQ(IsWritten(inDescription), value.InDescription) << value.Type << value.Size;
        EXPECT_EQ(IsRefused(inDescription), !value.InDescription) << value.Type << value.Size;
        EXPECT_EQ(IsWritten(inLibrary), value.InLibrary) << value.Type << value.Size;
        EXPECT_EQ(IsRefused(inLibrary), !value.InLibrary) << value.Type << value.Size;
        EXPECT_EQ(IsRefused(inMetadata), !value.InLibrary) << value.Type << value.Size;
    }
}

TEST(AsfSave, WhatTheLibraryDoesNotReadOfAnAttributeIsRefused) {
    const std::string attribute = Metadata(Text, Utf16("a"), 1);
    EXPECT_TRUE(IsWritten(AsfFile(Extension(Object(LibraryGuid, attribute)), 1)));
    EXPECT_TRUE(IsRefused(AsfFile(Extension(Object(MetadataGuid, attribute)), 1)));
}

TEST(AsfSave, MoreAttributesThanASaveCanCountAreRefused) {
    constexpr size_t many = 60001;
    std::string attributes;
    for (size_t index = 0; index < many; ++index)
        attributes += Attribute(Long, "1234");
    EXPECT_TRUE(IsRefused(AsfFile(ExtendedDescription(attributes, many), 1)));
}

} // namespace
} // namespace tagmap
