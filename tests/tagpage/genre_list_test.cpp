#include "foundation/ndisk.h"
#include "foundation/nfile.h"
#include "foundation/nfolders.h"
#include "tagpage/genre_list.h"
#include "tagpage/tag_choices.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/private_app_data.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>
#include <string>
#include <vector>

namespace {
// Index 0 to 125 of the published list, ID3v1's 80 and Winamp's up to "Dance
// Hall" (https://id3.org/id3v2.3.0, appendix A).
const char* const PublishedGenres[] = {
    "Blues",
    "Classic Rock",
    "Country",
    "Dance",
    "Disco",
    "Funk",
    "Grunge",
    "Hip-Hop",
    "Jazz",
    "Metal",
    "New Age",
    "Oldies",
    "Other",
    "Pop",
    "R&B",
    "Rap",
    "Reggae",
    "Rock",
    "Techno",
    "Industrial",
    "Alternative",
    "Ska",
    "Death Metal",
    "Pranks",
    "Soundtrack",
    "Euro-Techno",
    "Ambient",
    "Trip-Hop",
    "Vocal",
    "Jazz+Funk",
    "Fusion",
    "Trance",
    "Classical",
    "Instrumental",
    "Acid",
    "House",
    "Game",
    "Sound Clip",
    "Gospel",
    "Noise",
    "AlternRock",
    "Bass",
    "Soul",
    "Punk",
    "Space",
    "Meditative",
    "Instrumental Pop",
    "Instrumental Rock",
    "Ethnic",
    "Gothic",
    "Darkwave",
    "Techno-Industrial",
    "Electronic",
    "Pop-Folk",
    "Eurodance",
    "Dream",
    "Southern Rock",
    "Comedy",
    "Cult",
    "Gangsta",
    "Top 40",
    "Christian Rap",
    "Pop/Funk",
    "Jungle",
    "Native American",
    "Cabaret",
    "New Wave",
    "Psychadelic",
    "Rave",
    "Showtunes",
    "Trailer",
    "Lo-Fi",
    "Tribal",
    "Acid Punk",
    "Acid Jazz",
    "Polka",
    "Retro",
    "Musical",
    "Rock & Roll",
    "Hard Rock",
    "Folk",
    "Folk-Rock",
    "National Folk",
    "Swing",
    "Fast Fusion",
    "Bebob",
    "Latin",
    "Revival",
    "Celtic",
    "Bluegrass",
    "Avantgarde",
    "Gothic Rock",
    "Progressive Rock",
    "Psychedelic Rock",
    "Symphonic Rock",
    "Slow Rock",
    "Big Band",
    "Chorus",
    "Easy Listening",
    "Acoustic",
    "Humour",
    "Speech",
    "Chanson",
    "Opera",
    "Chamber Music",
    "Sonata",
    "Symphony",
    "Booty Bass",
    "Primus",
    "Porn Groove",
    "Satire",
    "Slow Jam",
    "Club",
    "Tango",
    "Samba",
    "Folklore",
    "Ballad",
    "Power Ballad",
    "Rhythmic Soul",
    "Freestyle",
    "Duet",
    "Punk Rock",
    "Drum Solo",
    "Acapella",
    "Euro-House",
    "Dance Hall",
};
constexpr int GenreCount = 126;

class GenreList : public testing::Test {
protected:
    void SetUp() override { path_ = folder_.File(L"new\\folders\\genres.txt"); }

    void WriteUnits(const wchar_t* units) {
        NFile file(path_, GENERIC_WRITE, CREATE_ALWAYS, false, true);
        ASSERT_TRUE(file.IsOpen());
        file.WriteString(units, false);
    }
    void WriteAfterChoices(const wchar_t* units) {
        Choices(); // makes the folders
        WriteUnits(units);
    }
    std::wstring Content() const {
        bool failed = false;
        std::wstring units(static_cast<size_t>(NGetFileSize(path_, failed)) / sizeof(wchar_t), 0);
        NReadFile(path_, units.data(), static_cast<uint32_t>(units.size() * sizeof(wchar_t)), 0,
                  NFile::FromStart, failed);
        EXPECT_FALSE(failed);
        return units;
    }
    // What a row offers.
    std::vector<std::wstring> Choices() const {
        NStringList choices;
        AddGenreChoicesOf(path_, choices);
        std::vector<std::wstring> texts;
        for (int index = 0; index < choices.Count; ++index)
            texts.push_back(choices[index]->Text);
        return texts;
    }
    static std::wstring TableAsLines() {
        std::wstring lines;
        for (const char* genre : PublishedGenres)
            lines += std::wstring(genre, genre + strlen(genre)) + L"\r\n";
        return lines;
    }

    TempFolder folder_;
    NString path_;
};
using Texts = std::vector<std::wstring>;
} // namespace

TEST_F(GenreList, TheTableIsThePublishedList) {
    EXPECT_EQ(sizeof(GenreTable[0]), 20u);
    for (int index = 0; index < GenreCount; ++index)
        EXPECT_STREQ(GenreTable[index], PublishedGenres[index]) << index;
    EXPECT_EQ(GenreTable[GenreCount][0], 0);
}

TEST_F(GenreList, TheFirstRunMakesTheFileOfTheTableWithItsFolders) {
    Choices();
    EXPECT_EQ(Content(), TableAsLines());
    EXPECT_EQ(Content().substr(0, 7), L"Blues\r\n");
    EXPECT_EQ(Content().substr(Content().size() - 12), L"Dance Hall\r\n");
}

TEST_F(GenreList, TheChoicesAreTheLinesSorted) {
    Texts choices = Choices();
    ASSERT_EQ(choices.size(), static_cast<size_t>(GenreCount));
    EXPECT_EQ(choices.front(), L"Acapella");
    EXPECT_EQ(choices.back(), L"Vocal");
    for (size_t index = 1; index < choices.size(); ++index)
        EXPECT_LE(NString(choices[index - 1].c_str()).Compare(choices[index].c_str(), 0, true), 0);
}

TEST_F(GenreList, AFileThatIsThereIsReadAndNotRewritten) {
    Choices();
    WriteUnits(L"zydeco\r\nAfro\r\nzither\r\nbeat\r\n");
    EXPECT_EQ(Choices(), (Texts{L"Afro", L"beat", L"zither", L"zydeco"}));
    EXPECT_EQ(Content(), L"zydeco\r\nAfro\r\nzither\r\nbeat\r\n");
}

TEST_F(GenreList, ADeletedFileIsMadeAgainOfTheTableAlone) {
    Choices();
    WriteUnits(L"learned\r\n");
    ASSERT_EQ(Choices(), Texts{L"learned"});
    ASSERT_TRUE(NDeleteFile(path_));
    EXPECT_EQ(Choices().size(), static_cast<size_t>(GenreCount));
    EXPECT_EQ(Content(), TableAsLines());
}

TEST_F(GenreList, AGenreThatIsThereTwiceIsOfferedTwice) {
    Choices();
    WriteUnits(L"Rock\r\nBlues\r\nRock\r\n");
    EXPECT_EQ(Choices(), (Texts{L"Blues", L"Rock", L"Rock"}));
}

TEST_F(GenreList, LinesEndAtALineFeedToo) {
    Choices();
    WriteUnits(L"b\na\nc\n");
    EXPECT_EQ(Choices(), (Texts{L"a", L"b", L"c"}));
}

TEST_F(GenreList, ALineEndsAtACarriageReturnToo) {
    Choices();
    WriteUnits(L"a\nb\r");
    EXPECT_EQ(Choices(), (Texts{L"a", L"b"}));
}

// The reader gives back one byte of the unit behind a lone carriage return:
// wanted. What follows is read out of step.
TEST_F(GenreList, BehindALoneCarriageReturnLinesAreReadOutOfStep) {
    Choices();
    WriteUnits(L"a\rb\r\nc");
    EXPECT_EQ(Choices(), (Texts{L"a", L"\x0D00\x0A00\x6300"}));
}

TEST_F(GenreList, ALastLineWithoutItsEndCountsIfItHoldsText) {
    Choices();
    WriteUnits(L"b\r\na");
    EXPECT_EQ(Choices(), (Texts{L"a", L"b"}));
    WriteUnits(L"b\r\na\r\n");
    EXPECT_EQ(Choices(), (Texts{L"a", L"b"}));
}

TEST_F(GenreList, AnEmptyLineInTheMiddleIsAnEmptyChoice) {
    Choices();
    WriteUnits(L"b\r\n\r\na\r\n");
    EXPECT_EQ(Choices(), (Texts{L"", L"a", L"b"}));
}

TEST_F(GenreList, AnEmptyFileOffersNothingAndStaysEmpty) {
    Choices();
    WriteUnits(L"");
    EXPECT_EQ(Choices(), Texts());
    EXPECT_EQ(Content(), L"");
}

TEST_F(GenreList, LettersOfAllScriptsAreKept) {
    Choices();
    WriteUnits(L"\x97F3\x6A02\r\nChans\x00F3n\r\n");
    EXPECT_EQ(Choices(), (Texts{L"Chans\x00F3n", L"\x97F3\x6A02"}));
}

TEST_F(GenreList, AFolderThatCannotBeMadeOffersNothing) {
    NString inTheWay = folder_.File(L"new");
    NFile file(inTheWay, GENERIC_WRITE, CREATE_ALWAYS, false, true);
    file.Close();
    EXPECT_EQ(Choices(), Texts());
}

TEST_F(GenreList, AFileThatCannotBeReadOffersNothing) {
    Choices();
    NFile held(path_, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING, false, false);
    ASSERT_TRUE(held.IsOpen());
    EXPECT_EQ(Choices(), Texts());
}

TEST_F(GenreList, OthersMayHaveTheFileOpenMeanwhile) {
    Choices();
    NFile appending(path_, GENERIC_WRITE, OPEN_EXISTING, false, true);
    EXPECT_EQ(Choices().size(), static_cast<size_t>(GenreCount));
}

// What users typed.

TEST_F(GenreList, ANewGenreIsAppendedAsALine) {
    WriteAfterChoices(L"Rock\r\nBlues\r\n");
    AddGenreToFileOf(path_, L"Zydeco");
    EXPECT_EQ(Content(), L"Rock\r\nBlues\r\nZydeco\r\n");
    EXPECT_EQ(Choices(), (Texts{L"Blues", L"Rock", L"Zydeco"}));
}

TEST_F(GenreList, AGenreThatIsThereInOtherCapitalsIsNotAppended) {
    WriteAfterChoices(L"Rock\r\nBlues\r\n");
    AddGenreToFileOf(path_, L"bLUES");
    AddGenreToFileOf(path_, L"Rock");
    EXPECT_EQ(Content(), L"Rock\r\nBlues\r\n");
}

TEST_F(GenreList, TheStartOfAGenreIsAnotherGenre) {
    WriteAfterChoices(L"Rock\r\n");
    AddGenreToFileOf(path_, L"Roc");
    AddGenreToFileOf(path_, L"Rocks");
    EXPECT_EQ(Content(), L"Rock\r\nRoc\r\nRocks\r\n");
}

TEST_F(GenreList, WhateverARowShowsIsLearned) {
    WriteAfterChoices(L"Rock\r\n");
    AddGenreToFileOf(path_, L"<different>");
    AddGenreToFileOf(path_, L"<different>");
    AddGenreToFileOf(path_, L"Rock; \x97F3\x6A02");
    EXPECT_EQ(Content(), L"Rock\r\n<different>\r\nRock; \x97F3\x6A02\r\n");
}

TEST_F(GenreList, AFileThatIsNotThereIsMadeOfTheGenreAlone) {
    AddGenreToFileOf(path_, L"Zydeco");
    EXPECT_EQ(Content(), L"Zydeco\r\n");
    EXPECT_EQ(Choices(), Texts{L"Zydeco"});
}

TEST_F(GenreList, ALastLineWithoutItsEndGrows) {
    WriteAfterChoices(L"Rock\r\nBlues");
    AddGenreToFileOf(path_, L"Zydeco");
    EXPECT_EQ(Content(), L"Rock\r\nBluesZydeco\r\n");
}

TEST_F(GenreList, OthersMayHaveTheFileOpenWhileItGrows) {
    WriteAfterChoices(L"Rock\r\n");
    NFile reading(path_, GENERIC_READ, OPEN_EXISTING, false, true);
    AddGenreToFileOf(path_, L"Zydeco");
    EXPECT_EQ(Content(), L"Rock\r\nZydeco\r\n");
}

TEST_F(GenreList, AFileThatCannotBeOpenedDoesNotGrow) {
    WriteAfterChoices(L"Rock\r\n");
    {
        NFile held(path_, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING, false, false);
        ASSERT_TRUE(held.IsOpen());
        AddGenreToFileOf(path_, L"Zydeco");
    }
    EXPECT_EQ(Content(), L"Rock\r\n");
}

TEST_F(GenreList, AFolderThatCannotBeMadeLearnsNothing) {
    NString inTheWay = folder_.File(L"new");
    NFile file(inTheWay, GENERIC_WRITE, CREATE_ALWAYS, false, true);
    file.Close();
    AddGenreToFileOf(path_, L"Zydeco");
    EXPECT_EQ(Choices(), Texts());
}

namespace {
// In the user's own folder for application data.
class UsersGenres : public GenreList {
protected:
    void SetUp() override {
        NString expected(appData_.Folder().Path());
        expected.Append(L"\\");
        ASSERT_EQ(NGetSpecialFolder(CSIDL_APPDATA), expected);
        path_ = appData_.Folder().File(L"Tonewright\\genres.txt");
    }

private:
    PrivateAppData appData_;
};
} // namespace

TEST_F(UsersGenres, StandInTheUsersOwnApplicationData) {
    EXPECT_EQ(GenreFilePath(), path_);
}

TEST_F(UsersGenres, AreMadeAndOfferedForAGenreRow) {
    NStringList choices;
    AddChoices(TagChoicesFor(L"GENRE"), choices);
    EXPECT_EQ(choices.Count, GenreCount);
    EXPECT_EQ(Content(), TableAsLines());
}

TEST_F(UsersGenres, LearnWhatIsTyped) {
    NStringList choices;
    AddChoices(TagChoices::Genre, choices);
    AddGenreToFile(L"Zydeco");
    EXPECT_EQ(Content(), TableAsLines() + L"Zydeco\r\n");
}
