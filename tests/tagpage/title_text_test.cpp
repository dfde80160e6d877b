#include "tagpage/title_text.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

#include <string>

namespace {
NString TitleOfName(const std::wstring& name) {
    return TitleOfFile((L"C:\\Music.old\\" + name).c_str(), 0, 1);
}
std::wstring TitleWith(const std::wstring& shortName) {
    return L"Tonewright: '" + shortName + L"' ID-Tag ";
}
} // namespace

TEST(TitleText, OfOneFileHasItsShortName) {
    EXPECT_EQ(TitleOfName(L"song.mp3"), L"Tonewright: 'song' ID-Tag ");
}

TEST(TitleText, OfOneOfSeveralFilesHasItsNumber) {
    EXPECT_EQ(TitleOfFile(L"C:\\song.mp3", 0, 2), L"Tonewright: 'song' ID-Tag [1/2] ");
    EXPECT_EQ(TitleOfFile(L"C:\\song.mp3", 11, 120), L"Tonewright: 'song' ID-Tag [12/120] ");
}

TEST(TitleText, OfAllFilesHasTheirNumberAndABlankBehind) {
    EXPECT_EQ(TitleOfFiles(2), L"Tonewright: ID-Tags From 2 Files ");
    EXPECT_EQ(TitleOfFiles(120), L"Tonewright: ID-Tags From 120 Files ");
}

TEST(TitleText, ANameLosesItsLastPointAndWhatFollows) {
    EXPECT_EQ(TitleOfName(L"a.b.mp3"), TitleWith(L"a.b").c_str());
    EXPECT_EQ(TitleOfName(L".mp3"), TitleWith(L"").c_str());
}

TEST(TitleText, ANameWithoutAPointKeepsAllItsCharacters) {
    EXPECT_EQ(TitleOfName(L"song"), TitleWith(L"song").c_str());
}

TEST(TitleText, ANameOf33CharactersStandsInFull) {
    const std::wstring name(33, L'n');
    EXPECT_EQ(TitleOfName(name + L".mp3"), TitleWith(name).c_str());
}

TEST(TitleText, ANameOf34CharactersIsCutTo33) {
    const std::wstring name(33, L'n');
    EXPECT_EQ(TitleOfName(name + L"x.mp3"), TitleWith(name + L"...").c_str());
}
