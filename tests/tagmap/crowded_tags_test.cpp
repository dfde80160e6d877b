// Tags with more names, values or frames than any real one: a step that went over
// all of them for each would take minutes or hours in each of these tests.
#include "suite/tagmap/asf_tags.h"
#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/lesser_tags.h"
#include "tests/tagmap/file_to_save.h"
#include "tests/tagmap/id3v2_bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace tagmap {
namespace {

constexpr int ManyNames = 30000;
constexpr int ManyValues = 200000;

// Names that differ far behind their beginning, so that a comparison takes its time.
std::string LongName(int number, size_t sameUnits = 400) {
    return std::string(sameUnits, 'n') + std::to_string(number);
}

std::wstring WideLongName(int number) {
    const std::string name = LongName(number);
    return std::wstring(name.begin(), name.end());
}

void AddLongNames(clTagRecord& record, const std::string& value) {
    const std::wstring text(value.begin(), value.end());
    for (int number = 0; number < ManyNames; ++number)
        record.Add(WideLongName(number).c_str(), text.c_str());
}

std::string Repeated(const std::string& bytes, int times) {
    std::string all;
    all.reserve(bytes.size() * static_cast<size_t>(times));
    for (int count = 0; count < times; ++count)
        all += bytes;
    return all;
}

// Parts of a value.
int CountOf(const std::wstring& value) {
    return static_cast<int>(std::count(value.begin(), value.end(), L'\r')) + 1;
}

clTagRecord& ReadInto(clTagRecord& record, TagInFile& file) {
    ReadId3v2(file.Tag(), record);
    return record;
}

} // namespace

TEST(CrowdedTags, AFrameOfManyPerformersIsRead) {
    TagInFile file(4, {{"TMCL", Latin1Text(Repeated(std::string("a\0b\0", 4), ManyValues))}});
    clTagRecord record;
    EXPECT_EQ(CountOf(ValueOf(ReadInto(record, file), L"performer:a")), ManyValues);
}

TEST(CrowdedTags, OneOfManyPerformersIsTakenOut) {
    const std::string others = Repeated(std::string("a\0b\0", 4), ManyValues);
    TagInFile file(4, {{"TMCL", Latin1Text(others + std::string("drums\0D\0", 8))}});
    NStringList names;
    names.Add(L"performer:drums");
    DeleteId3v2(file.Tag(), names);
    clTagRecord record;
    EXPECT_EQ(NamesOf(ReadInto(record, file)), L"performer:a");
    EXPECT_EQ(CountOf(ValueOf(record, L"performer:a")), ManyValues);
}

TEST(CrowdedTags, FramesOfManyNamesAreRead) {
    RawFrames frames;
    for (int number = 0; number < ManyNames; ++number)
        frames.emplace_back("TXXX", Latin1Text(LongName(number) + std::string("\0x", 2)));
    TagInFile file(4, frames);
    clTagRecord record;
    EXPECT_EQ(ReadInto(record, file).Count(), ManyNames);
}

TEST(CrowdedTags, FramesOfOneNameInAnyCaseAreOneElement) {
    TagInFile file(4, {{"TXXX", Latin1Text(std::string("Key\0a", 5))},
                       {"TXXX", Latin1Text(std::string("other\0b", 7))},
                       {"TXXX", Latin1Text(std::string("kEY\0c", 5))}});
    clTagRecord record;
    EXPECT_EQ(NamesOf(ReadInto(record, file)), L"Key|other");
    EXPECT_EQ(ValueOf(record, L"key"), L"a\rc");
}

TEST(CrowdedTags, ManyElementsOfALesserTagAreAdded) {
    clTagRecord record;
    clTagRecord lesser;
    record.Add(WideLongName(0).c_str(), L"first");
    AddLongNames(lesser, "lesser");
    lesser.Add(WideLongName(1).c_str(), L"second");
    AddMissing(record, lesser);
    ASSERT_EQ(record.Count(), ManyNames);
    EXPECT_EQ(record[0]->Value, L"first");
    EXPECT_EQ(record[1]->Value, L"lesser");
}

TEST(CrowdedTags, ManyValuesThatAListLacksAreAppendedOnceEach) {
    TagLib::StringList list("0");
    TagLib::StringList values;
    for (int number = 0; number < ManyValues; ++number)
        values.append(TagLib::String::number(number));
    values.append("1");
    AppendMissing(list, values);
    EXPECT_EQ(list.size(), static_cast<unsigned>(ManyValues));
    EXPECT_EQ(list.back(), TagLib::String::number(ManyValues - 1));
}

// With parts of two letters a text that grows by a few dozen at a time would be
// moved at every eleventh of them.
TEST(CrowdedTags, ManyShortValuesAreJoined) {
    constexpr int parts = 2000000;
    const TagLib::String part("ab");
    TagLib::StringList values;
    for (int count = 0; count < parts; ++count)
        values.append(part);
    EXPECT_EQ(JoinValues(values).CharCount(), 3 * parts - 1);
}

TEST(CrowdedTags, ManyNamesAreRefused) {
    Refusals refused;
    for (int number = 0; number < ManyNames; ++number)
        refused.Add(WideLongName(number).c_str());
    EXPECT_EQ(refused.Names().Count, ManyNames);
    for (int number = 0; number < ManyNames; ++number)
        EXPECT_TRUE(refused.Contains(WideLongName(number).c_str())) << number;
}

TEST(CrowdedTags, ManyAttributesAreRead) {
    constexpr int many = 15000;
    constexpr size_t sameUnits = 800;
    TagLib::ASF::Tag tag;
    for (int number = 0; number < many; ++number)
        tag.setAttribute(LongName(number, sameUnits), TagLib::ASF::Attribute(TagLib::String("x")));
    clTagRecord record;
    ReadAsf(tag, record);
    EXPECT_EQ(record.Count(), many);
}

// The bytes of each are looked into for brackets, but not those of the whole chunk.
TEST(CrowdedTags, ManyGenresInALargeChunkAreRead) {
    constexpr int many = 20000;
    constexpr uint32_t large = 20000000;
    const std::string frame = "TCON" + BigEndian(2, SynchSafeBits) + std::string(3, '\0') + "x";
    const std::string frames = Repeated(frame, many) + "PRIV" + BigEndian(large, SynchSafeBits) +
                               std::string(2, '\0') + std::string(large, 'x');
    const std::string tag = std::string("ID3\4\0\0", 6) +
                            BigEndian(static_cast<uint32_t>(frames.size()), SynchSafeBits) + frames;
    const std::string format("\1\0\1\0\104\254\0\0\210\130\1\0\2\0\20\0", 16);
    const std::string body = "WAVEfmt " + LittleEndian(format.size()) + format + "data" +
                             LittleEndian(4) + "abcd" + "id3 " + LittleEndian(tag.size()) + tag;
    const FileToSave file("RIFF" + LittleEndian(body.size()) + body);
    EXPECT_EQ(CountOf(file.Value(L"genre")), many);
}

} // namespace tagmap
