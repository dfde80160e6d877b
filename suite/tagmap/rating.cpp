#include "suite/tagmap/rating.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace tagmap {

namespace {

using RatingTable = std::array<int, RatingMost + 1>;

// What Windows itself writes for whole stars, and steps in between. The pair
// 13, 1 is wanted: one star is 1, and half a star has to stand aside.
constexpr RatingTable PopmTable = {0, 13, 1, 54, 64, 118, 128, 186, 196, 242, 255};

// The first POPM values that no longer count as 2, 1, 2, 3 ... half steps.
struct PopmBound {
    int Below;
    int HalfSteps;
};
constexpr PopmBound PopmBounds[] = {{1, 0},   {2, 2},   {23, 1},  {32, 2},  {64, 3}, {96, 4},
                                    {128, 5}, {160, 6}, {196, 7}, {224, 8}, {255, 9}};

// Whole stars as Windows writes them; half steps are 10 * n, cut to stay below
// the next star. Half a star keeps its 10 although one star is 1: a value
// below 1 would be no rating at all.
constexpr RatingTable AsfTable = {0, 10, 1, 24, 25, 49, 50, 70, 75, 90, 99};

int Clamped(int halfSteps) {
    return std::clamp(halfSteps, 0, RatingMost);
}

constexpr bool IsDigit(wchar_t unit) {
    return unit >= L'0' && unit <= L'9';
}

// Parses digits with at most one "." among them. No sign, no blank, no
// exponent: false for all else.
bool ParsePlainNumber(const NString& text, double& number) {
    double value = 0;
    double place = 0.1; // of the next fraction digit
    bool behindPoint = false;
    bool hasDigit = false;
    for (int position = 1; position <= text.CharCount(); ++position) {
        const wchar_t unit = text.At(position);
        if (unit == L'.' && !behindPoint) {
            behindPoint = true;
        } else if (!IsDigit(unit)) {
            return false;
        } else if (!behindPoint) {
            value = value * 10 + (unit - L'0');
            hasDigit = true;
        } else {
            value += (unit - L'0') * place;
            place /= 10;
            hasDigit = true;
        }
    }
    if (!hasDigit)
        return false;
    number = value;
    return true;
}

bool RatingFromScaled(const NString& text, double halfStepsPerUnit, int& halfSteps) {
    double number = 0;
    if (!ParsePlainNumber(text, number))
        return false;
    // The small addition makes up for tenths that have no exact binary form.
    const double steps = number * halfStepsPerUnit + 0.5 + 1e-9;
    halfSteps = steps >= RatingMost ? RatingMost : static_cast<int>(steps);
    return true;
}

} // namespace

bool ParseRating(const NString& text, int& halfSteps) {
    for (int candidate = 0; candidate <= RatingMost; ++candidate) {
        if (text == RatingText(candidate)) {
            halfSteps = candidate;
            return true;
        }
    }
    return false;
}

NString RatingText(int halfSteps) {
    return NString::FromInt(Clamped(halfSteps));
}

int PopmFromRating(int halfSteps) {
    return PopmTable[Clamped(halfSteps)];
}

int RatingFromPopm(int rating) {
    for (const PopmBound& bound : PopmBounds)
        if (rating < bound.Below)
            return bound.HalfSteps;
    return RatingMost;
}

int AsfFromRating(int halfSteps) {
    return AsfTable[Clamped(halfSteps)];
}

int RatingFromAsf(int rating) {
    int nearest = 0;
    for (int halfSteps = 1; halfSteps <= RatingMost; ++halfSteps) {
        const int distance = std::abs(AsfTable[halfSteps] - rating);
        const int least = std::abs(AsfTable[nearest] - rating);
        // Of two at one distance the lower native value is taken.
        if (distance < least || (distance == least && AsfTable[halfSteps] < AsfTable[nearest]))
            nearest = halfSteps;
    }
    return nearest;
}

NString PercentFromRating(int halfSteps) {
    return NString::FromInt(10 * Clamped(halfSteps));
}

bool RatingFromPercent(const NString& text, int& halfSteps) {
    return RatingFromScaled(text, 0.1, halfSteps);
}

NString FractionFromRating(int halfSteps) {
    return NString::FormatDouble(Clamped(halfSteps) / 10.0, 1, false);
}

bool RatingFromFraction(const NString& text, int& halfSteps) {
    return RatingFromScaled(text, 10, halfSteps);
}

} // namespace tagmap
