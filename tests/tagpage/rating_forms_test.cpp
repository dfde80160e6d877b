#include "tagpage/rating_forms.h"
#include "tests/support/nstring_printer.h"
#include "tests/tagpage/tag_texts.h"

#include <gtest/gtest.h>

namespace {
struct Form {
    const wchar_t* from;
    const wchar_t* to;
};
} // namespace

TEST(RatingForms, AFileHoldsHalfSteps) {
    constexpr Form forms[] = {
        {L"7", L"3.5"},   {L"8", L"4"},  {L"0", L"0"},     {L"", L"0"},       {L"good", L"0"},
        {L"1", L"0.5"},   {L"10", L"5"}, {L"20", L"10"},   {L"7th", L"3.5"},  {L" 7", L"0"},
        {L"-3", L"-1.5"}, {L"-", L"0"},  {L"7.9", L"3.5"}, {L"7\r8", L"3.5"},
    };
    for (const Form& form : forms)
        EXPECT_EQ(RatingToDisplay(form.from), form.to) << NString(form.from).ToNarrow();
}

TEST(RatingForms, ThePageShowsSteps) {
    constexpr Form forms[] = {
        {L"3.5", L"7"},   {L"4", L"8"},   {L"3.7", L"7"}, {L"0", L"0"},  {L"", L"0"},
        {L"good", L"0"},  {L"0.5", L"1"}, {L"0.4", L"0"}, {L"5", L"10"}, {L"10", L"20"},
        {L"-1.5", L"-3"}, {L" 4", L"8"},  {L"4.", L"8"},  {L".5", L"1"},
    };
    for (const Form& form : forms)
        EXPECT_EQ(RatingToFile(form.from), form.to) << NString(form.from).ToNarrow();
}

TEST(RatingForms, ANumberWithoutRoomInTheFileIsNone) {
    EXPECT_EQ(RatingToFile(L"99999999999999999999"), L"0");
    EXPECT_EQ(RatingToFile(L"-99999999999999999999"), L"0");
    EXPECT_EQ(RatingToFile(NString(std::wstring(400, L'9').c_str())), L"0");
    EXPECT_EQ(RatingToFile(L"4000000000000000000"), L"8000000000000000000");
}

TEST(RatingForms, HalfStepsComeBackFromThePage) {
    for (int halfSteps = 0; halfSteps <= 20; ++halfSteps) {
        const NString inFile = NString::FromInt(halfSteps);
        EXPECT_EQ(RatingToFile(RatingToDisplay(inFile)), inFile);
    }
}

TEST(RatingForms, TurnEachElementOfThatName) {
    clTagRecord tags;
    FillTag(tags, {{L"rating", L"7"}, {L"title", L"7"}, {L"RaTiNg", L"8"}, {L"ratings", L"7"}});
    RatingsToDisplay(tags);
    EXPECT_EQ(TextsOf(tags), (Texts{L"rating=3.5", L"title=7", L"RaTiNg=4", L"ratings=7"}));
    RatingsToFile(tags);
    EXPECT_EQ(TextsOf(tags), (Texts{L"rating=7", L"title=7", L"RaTiNg=8", L"ratings=7"}));
}
