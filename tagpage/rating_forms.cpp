#include "tagpage/rating_forms.h"

#include <cmath>

namespace {
constexpr double StepsInHalfStep = 0.5;
constexpr double HalfStepsInStep = 2.0;
// The least double above all 64-bit numbers.
constexpr double NumberLimit = 9223372036854775808.0;

using TurnValue = NString (*)(const NString& value);

void TurnRatings(clTagRecord& tags, TurnValue turn) {
    for (int index = 0; index < tags.Count(); ++index) {
        clTagElement& element = *tags[index];
        if (element.Name.Compare(L"rating", 0, true) == 0)
            element.Value = turn(element.Value);
    }
}
} // namespace

NString RatingToDisplay(const NString& halfSteps) {
    return NString::FormatDouble(static_cast<double>(halfSteps.ToInt()) * StepsInHalfStep, 1,
                                 false);
}

NString RatingToFile(const NString& steps) {
    const double halfSteps = NString::ParseDouble(steps.Text) * HalfStepsInStep;
    // A number that has no room in the file's is no rating.
    if (!(std::abs(halfSteps) < NumberLimit))
        return NString::FromInt(0);
    return NString::FromInt(static_cast<int64_t>(halfSteps));
}

void RatingsToDisplay(clTagRecord& tags) {
    TurnRatings(tags, RatingToDisplay);
}

void RatingsToFile(clTagRecord& tags) {
    TurnRatings(tags, RatingToFile);
}
