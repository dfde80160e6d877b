#include "tagpage/tag_choices.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

#include <iterator>

TEST(TagChoices, TheNamesOfTheRowsCountWhateverTheirCase) {
    const struct {
        const wchar_t* name;
        TagChoices choices;
    } cases[] = {
        {L"track", TagChoices::Track}, {L"Track", TagChoices::Track},
        {L"TRACK", TagChoices::Track}, {L"year", TagChoices::Year},
        {L"YEAR", TagChoices::Year},   {L"Year", TagChoices::Year},
        {L"yEaR", TagChoices::Year},   {L"Genre", TagChoices::Genre},
        {L"GENRE", TagChoices::Genre}, {L"genre", TagChoices::Genre},
        {L"Genres", TagChoices::None}, {L"Genre 2", TagChoices::None},
        {L"Genr", TagChoices::None},   {L"Track ", TagChoices::None},
        {L" Year", TagChoices::None},  {L"Years", TagChoices::None},
        {L"Artist", TagChoices::None}, {L"", TagChoices::None},
    };
    for (const auto& expected : cases)
        EXPECT_EQ(TagChoicesFor(expected.name), expected.choices)
            << NString(expected.name).ToNarrow();
}

TEST(TagChoices, TracksGoFrom1To99) {
    NStringList choices;
    AddChoices(TagChoices::Track, choices);
    ASSERT_EQ(choices.Count, 99);
    for (int track = 1; track <= 99; ++track)
        EXPECT_EQ(*choices[track - 1], NString::FromInt(track));
}

TEST(TagChoices, YearsGoFromThePresentOneDownTo1920) {
    SYSTEMTIME today = {};
    today.wYear = 2026;
    NStringList choices;
    AddYearChoices(choices, today);
    ASSERT_EQ(choices.Count, 107);
    for (int index = 0; index < choices.Count; ++index)
        EXPECT_EQ(*choices[index], NString::FromInt(2026 - index));
    EXPECT_EQ(*choices[106], L"1920");
}

TEST(TagChoices, AClockSetBefore1920OffersNoYears) {
    SYSTEMTIME today = {};
    today.wYear = 1919;
    NStringList choices;
    AddYearChoices(choices, today);
    EXPECT_EQ(choices.Count, 0);
    today.wYear = 1920;
    AddYearChoices(choices, today);
    EXPECT_EQ(choices.Count, 1);
}

TEST(TagChoices, ThePresentYearIsThatOfTheLocalDate) {
    SYSTEMTIME before;
    GetLocalTime(&before);
    NStringList choices;
    AddChoices(TagChoices::Year, choices);
    SYSTEMTIME after;
    GetLocalTime(&after);
    ASSERT_GT(choices.Count, 0);
    EXPECT_GE(choices[0]->ToInt(), before.wYear);
    EXPECT_LE(choices[0]->ToInt(), after.wYear);
    EXPECT_EQ(*choices[choices.Count - 1], L"1920");
}

TEST(TagChoices, OtherRowsOfferNothing) {
    NStringList choices;
    AddChoices(TagChoices::None, choices);
    EXPECT_EQ(choices.Count, 0);
}

TEST(TagChoices, TheFieldsToAddStandInTheirOrder) {
    const wchar_t* names[] = {
        L"Artist",       L"Album", L"Title", L"Track", L"Genre",     L"Year",      L"Comment",
        L"Album Artist", L"Band",  L"Disc",  L"Tempo", L"Composer",  L"Conductor", L"Label",
        L"ISRC",         L"UPC",   L"Mood",  L"Style", L"Copyright",
    };
    NStringList choices;
    AddTagFieldNames(choices);
    ASSERT_EQ(choices.Count, 19);
    for (int index = 0; index < choices.Count; ++index)
        EXPECT_EQ(*choices[index], names[index]);
}

TEST(TagChoices, TheTableOfFieldsHasRowsOf40UnitsAndEndsAtAnEmptyOne) {
    EXPECT_EQ(sizeof(TagFieldNames[0]), 40 * sizeof(wchar_t));
    EXPECT_STREQ(TagFieldNames[18], L"Copyright");
    EXPECT_EQ(TagFieldNames[19][0], 0);
}
