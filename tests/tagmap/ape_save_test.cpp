#include "suite/tagmap/ape_save.h"
#include "tests/tagmap/file_to_save.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace tagmap {
namespace {

enum ItemFlags : unsigned {
    TextItem = 0,
    ReadOnlyTextItem = 1,
    BinaryItem = 2,
    LocatorItem = 4,
    ReservedItem = 6,
    UnknownFlags = 0x100
};
enum TagFlags : unsigned { HasHeader = 0x80000000, HasFooter = 0x40000000, IsHeader = 0x20000000 };
constexpr unsigned OldVersion = 1000;
constexpr unsigned NewVersion = 2000;
constexpr size_t FooterSize = 32;

std::string Item(const std::string& key, const std::string& value, unsigned flags = TextItem) {
    return LittleEndian(value.size()) + LittleEndian(flags) + key + std::string(1, '\0') + value;
}

// A header or footer for items of that size.
std::string Frame(size_t size, size_t count, unsigned flags, unsigned version = NewVersion) {
    return "APETAGEX" + LittleEndian(version) + LittleEndian(size + FooterSize) +
           LittleEndian(count) + LittleEndian(flags) + std::string(8, '\0');
}

std::string Tag(const std::vector<std::string>& items) {
    std::string bytes;
    for (const std::string& item : items)
        bytes += item;
    return Frame(bytes.size(), items.size(), HasHeader | IsHeader) + bytes +
           Frame(bytes.size(), items.size(), HasHeader);
}

std::string TagOfVersion1(const std::vector<std::string>& items) {
    std::string bytes;
    for (const std::string& item : items)
        bytes += item;
    return bytes + Frame(bytes.size(), items.size(), 0, OldVersion);
}

class ApeSave : public testing::TestWithParam<const char*> {
protected:
    // The sample with this tag in place of its own.
    static std::string With(const std::string& tag) {
        const std::string sample = SampleContent(GetParam());
        return sample.substr(0, sample.find("APETAGEX")) + tag;
    }
    static bool IsRefused(const std::string& tag) { return FileToSave(With(tag)).IsRefused(); }
};

INSTANTIATE_TEST_SUITE_P(Kinds, ApeSave,
                         testing::Values("sample.ape", "sample.wv", "sample.mpc", "sample.mp3"),
                         [](const auto& test) {
                             const std::string name = test.param;
                             return name.substr(name.find('.') + 1);
                         });

const std::string Title = Item("Title", "T");
const std::string Id3v1 = "TAG" + std::string(125, '\0');

} // namespace

TEST_P(ApeSave, KeepsEveryItemByteForByte) {
    const std::vector<std::string> items = {
        Title,
        Item("Artist", std::string("A\0\0B\xC3\xB6", 6)),
        Item("locked", "x", ReadOnlyTextItem),
        Item("Bytes", std::string("\0\xFF\0", 3), BinaryItem),
        Item("Link", "http://example.org", LocatorItem),
        Item("What", "reserved", ReservedItem),
        Item(std::string(255, 'k'), "long"),
    };
    for (const std::string& behind : {std::string(), Id3v1}) {
        FileToSave file(With(Tag(items) + behind));
        ASSERT_EQ(file.Set(L"mood", L"another"), Outcome::Done);
        for (const std::string& item : items)
            EXPECT_TRUE(file.Contains(item)) << item;
        EXPECT_EQ(file.Value(L"mood"), L"another");
    }
}

TEST_P(ApeSave, ATagOfTheOldVersionIsKeptInTheNew) {
    FileToSave file(With(TagOfVersion1({Title, Item("Year", "1999")})));
    ASSERT_EQ(file.Set(L"mood", L"another"), Outcome::Done);
    EXPECT_TRUE(file.Contains(Title));
    EXPECT_TRUE(file.Contains(Item("Year", "1999")));
    EXPECT_TRUE(IsRefused(TagOfVersion1({Item("Title", "T\xF6ne")})));
}

TEST_P(ApeSave, AnItemWithAKeyThatTheLibraryDropsIsRefused) {
    for (const char* key : {"", "K", "ID3", "tag", "OggS", "MP+", "B\xC3\xB6se", "A\nB", "A\x7F"})
        EXPECT_TRUE(IsRefused(Tag({Title, Item(key, "a value that is long enough")}))) << key;
    EXPECT_TRUE(IsRefused(Tag({Title, Item(std::string(256, 'k'), "x")})));
}

TEST_P(ApeSave, AKeyThatStandsTwiceIsRefused) {
    EXPECT_TRUE(IsRefused(Tag({Title, Item("Artist", "A"), Item("ARTIST", "B")})));
    EXPECT_TRUE(IsRefused(Tag({Title, Title})));
    EXPECT_TRUE(IsRefused(Tag({Title, Title}) + Id3v1));
}

TEST_P(ApeSave, AnItemThatTheLibraryChangesIsRefused) {
    EXPECT_TRUE(IsRefused(Tag({Title, Item("Artist", "M\xFCller")})));
    EXPECT_TRUE(IsRefused(Tag({Title, Item("Artist", "")})));
    EXPECT_TRUE(IsRefused(Tag({Title, Item("Bytes", "", BinaryItem)})));
    EXPECT_TRUE(IsRefused(Tag({Title, Item("Artist", "A", UnknownFlags)})));
}

TEST_P(ApeSave, ACountThatIsNotThatOfTheItemsIsRefused) {
    const std::string items = Title + Item("Artist", "A");
    for (const size_t count : {size_t{0}, size_t{1}, size_t{3}, size_t{0xFFFFFFFF}})
        EXPECT_TRUE(IsRefused(items + Frame(items.size(), count, 0))) << count;
    EXPECT_FALSE(IsRefused(items + std::string(20, '\0') + Frame(items.size() + 20, 2, 0)));
}

TEST_P(ApeSave, ASizeThatDoesNotFitIsRefused) {
    for (const size_t size : {size_t{0}, size_t{0xFF000000}, size_t{0x7FFFFFFF}, size_t{0x1000000},
                              size_t{0} - FooterSize, Title.size() - 1}) {
        EXPECT_TRUE(IsRefused(Title + Frame(size, 1, 0))) << size;
        EXPECT_TRUE(IsRefused(Title + Frame(size, 1, HasHeader))) << size;
    }
    EXPECT_TRUE(IsRefused(Tag(
        {Title + LittleEndian(0xFFFFFFF0) + LittleEndian(0) + "Artist" + std::string(20, '\0')})));
    for (const size_t size : {size_t{0x1000000}, size_t{0} - FooterSize})
        EXPECT_TRUE(IsRefused(Frame(size, 0, 0))) << size;
}

TEST_P(ApeSave, MoreItemsThanAnyTagHasAreRefused) {
    constexpr int most = 1000;
    std::vector<std::string> items;
    for (int number = 0; number < most; ++number)
        items.push_back(Item("Key" + std::to_string(number), "x"));
    EXPECT_FALSE(IsRefused(Tag(items)));
    items.push_back(Title);
    EXPECT_TRUE(IsRefused(Tag(items)));
}

TEST_P(ApeSave, AHeaderThatIsNotThereIsRefused) {
    EXPECT_TRUE(IsRefused(Title + Frame(Title.size(), 1, HasHeader)));
    EXPECT_FALSE(IsRefused(Title + Frame(Title.size(), 1, 0)));
}

TEST_P(ApeSave, FlagsOfTheTagThatTheLibraryDropsAreRefused) {
    EXPECT_TRUE(IsRefused(Title + Frame(Title.size(), 1, 1)));
    EXPECT_TRUE(IsRefused(Title + Frame(Title.size(), 1, 0, 3000)));
    EXPECT_FALSE(IsRefused(Title + Frame(Title.size(), 1, HasFooter)));
}

} // namespace tagmap
