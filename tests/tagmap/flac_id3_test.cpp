#include "tests/tagmap/flac_bytes.h"
#include "tests/tagmap/id3v2_bytes.h"

#include <gtest/gtest.h>

#include <string>

// FLAC files whose texts stand in ID3 tags alone. A save makes a comment, which
// counts first from then on.
namespace tagmap {
namespace {

std::string WithId3v2() {
    return TagBytes(4, {{"TIT2", Utf8Text("A Title")},
                        {"TPE1", Utf8Text(std::string("First\0Second", 12))},
                        {"TALB", Utf8Text("An Album")},
                        {"TCON", Utf8Text(std::string("Rock\0Pop", 8))},
                        {"TDRC", Utf8Text("2004-05-06")},
                        {"TRCK", Utf8Text("3/12")},
                        {"COMM", std::string("\3eng\0", 5) + "a comment"}}) +
           FlacWith({});
}

std::string Padded(std::string text, size_t size) {
    text.resize(size);
    return text;
}

std::string WithId3v1() {
    return FlacWith({}) + "TAG" + Padded("A Title", 30) + Padded("An Artist", 30) +
           Padded("An Album", 30) + "2004" + Padded("a comment", 29) + "\3\21";
}

const wchar_t* const Elements[] = {L"title", L"artist", L"album",  L"genre",
                                   L"year",  L"track",  L"comment"};

// All but `changed` show what the same file without the change shows.
void ExpectTheOthersAsBefore(const std::string& before, const FileToSave& file,
                             const std::wstring& changed) {
    const FileToSave old(before);
    for (const wchar_t* element : Elements) {
        if (element != changed) {
            EXPECT_NE(old.Value(element), Absent) << TagLib::String(element).to8Bit();
            EXPECT_EQ(file.Value(element), old.Value(element)) << TagLib::String(element).to8Bit();
        }
    }
}

// The file without its ID3 tags.
FileToSave CommentAlone(const FileToSave& file) {
    const std::string content = file.Content();
    const std::string flac = content.substr(content.find("fLaC"));
    const size_t id3v1 = flac.size() - 128;
    return FileToSave(flac.compare(id3v1, 3, "TAG") == 0 ? flac.substr(0, id3v1) : flac);
}

} // namespace

TEST(FlacId3, AnElementThatIsSetLeavesTheOthersOfId3v2Whole) {
    FileToSave file(WithId3v2());
    ASSERT_EQ(file.Value(L"track"), L"3/12");
    ASSERT_EQ(file.Value(L"artist"), L"First\rSecond");
    ASSERT_EQ(file.Set(L"title", L"another"), Outcome::Done);
    EXPECT_EQ(file.Value(L"title"), L"another");
    ExpectTheOthersAsBefore(WithId3v2(), file, L"title");
    ExpectTheOthersAsBefore(WithId3v2(), CommentAlone(file), L"title");
}

TEST(FlacId3, AnElementThatIsDeletedLeavesTheOthersOfId3v2Whole) {
    FileToSave file(WithId3v2());
    NStringList names;
    names.Add(L"album");
    ASSERT_EQ(DeleteTags(file.Path().c_str(), names), Outcome::Done);
    EXPECT_EQ(file.Value(L"album"), Absent);
    ExpectTheOthersAsBefore(WithId3v2(), file, L"album");
    ExpectTheOthersAsBefore(WithId3v2(), CommentAlone(file), L"album");
}

TEST(FlacId3, AnElementThatIsSetOrDeletedLeavesTheOthersOfId3v1Whole) {
    FileToSave file(WithId3v1());
    ASSERT_EQ(file.Set(L"title", L"another"), Outcome::Done);
    EXPECT_EQ(file.Value(L"title"), L"another");
    ExpectTheOthersAsBefore(WithId3v1(), file, L"title");
    ExpectTheOthersAsBefore(WithId3v1(), CommentAlone(file), L"title");
    FileToSave second(WithId3v1());
    NStringList names;
    names.Add(L"track");
    ASSERT_EQ(DeleteTags(second.Path().c_str(), names), Outcome::Done);
    EXPECT_EQ(second.Value(L"track"), Absent);
    ExpectTheOthersAsBefore(WithId3v1(), second, L"track");
    ExpectTheOthersAsBefore(WithId3v1(), CommentAlone(second), L"track");
}

TEST(FlacId3, ThePicturesOfId3v2StayWhereTheyAreWhenATextIsSet) {
    const std::string picture = std::string("\3image/png\0\3\0", 13) + "\x89PNG\r\n\x1A\n front";
    FileToSave file(TagBytes(4, {{"TRCK", Utf8Text("3/12")}, {"APIC", picture}}) + FlacWith({}));
    clTagRecord before;
    ASSERT_EQ(ReadTags(file.Path().c_str(), before), Outcome::Done);
    ASSERT_EQ(file.Set(L"title", L"another"), Outcome::Done);
    clTagRecord after;
    ASSERT_EQ(ReadTags(file.Path().c_str(), after), Outcome::Done);
    NString description;
    const clTagElement* shown = before.FindAlbumArt(1, description);
    const clTagElement* left = after.FindAlbumArt(1, description);
    ASSERT_TRUE(shown && left);
    EXPECT_TRUE(left->Data.Equals(shown->Data));
    EXPECT_EQ(after.FindAlbumArt(2, description), nullptr);
    EXPECT_EQ(ValueOf(after, L"track"), L"3/12");
}

TEST(FlacId3, DeletingAllLeavesNothingToFillInEither) {
    FileToSave file(WithId3v2());
    ASSERT_EQ(DeleteTags(file.Path().c_str(), NStringList()), Outcome::Done);
    EXPECT_TRUE(LacksAll(file.Path().c_str(), NStringList()));
    EXPECT_FALSE(file.Contains("A Title"));
}

} // namespace tagmap
