// The numeric conversions of NString.
#include "foundation/nstring.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr int MaxDecimals = 18;
constexpr double TwoTo64 = 18446744073709551616.0;
// Wanted: rounds up only from 0.51 of the last place.
constexpr double RoundingConstant = 0.49;

bool IsDigit(wchar_t unit) {
    return unit >= L'0' && unit <= L'9';
}

// What is too large counts as the largest.
uint64_t TruncateToUInt64(double scaled) {
    return scaled < TwoTo64 ? static_cast<uint64_t>(scaled) : UINT64_MAX;
}
} // namespace

NString::NString(int32_t number) : NString(FromInt(number)) {}

NString::NString(int64_t number) : NString(FromInt(number)) {}

int64_t NString::ToInt() const {
    bool negative = Text[0] == L'-';
    uint64_t number = 0;
    for (const wchar_t* digit = Text + (negative ? 1 : 0); IsDigit(*digit); ++digit)
        number = number * 10 + static_cast<uint64_t>(*digit - L'0');
    return static_cast<int64_t>(negative ? 0 - number : number);
}

NString NString::FromInt(int64_t number) {
    if (number >= 0)
        return FromUInt(static_cast<uint64_t>(number));
    // The lowest value has no positive counterpart in 64 bits signed; its
    // unsigned magnitude has.
    NString text = FromUInt(0 - static_cast<uint64_t>(number));
    text.InsertChar(L'-', 1);
    return text;
}

NString NString::FromUInt(uint64_t number) {
    wchar_t digits[21];
    wchar_t* first = digits + 20;
    *first = 0;
    do {
        *--first = static_cast<wchar_t>(L'0' + number % 10);
        number /= 10;
    } while (number != 0);
    return NString(first);
}

NString NString::FormatDouble(double value, int decimals, bool keepZeros) {
    decimals = std::clamp(decimals, 0, MaxDecimals);
    // 1. The absolute value, and the sign.
    bool negative = value < 0;
    value = std::fabs(value);
    // 2. Below 1 a leading 1 keeps the zeros of the fraction as digits.
    bool leadingOne = value < 1.0;
    if (leadingOne)
        value += 1.0;
    // 3. and 4. Scaled and truncated, in decimal.
    NString text = FromUInt(TruncateToUInt64(std::pow(10.0, decimals) * value + RoundingConstant));
    // 5. The point before the last `decimals` digits. With none it ends the
    // text, and shields the zeros of a whole number from step 8.
    text.InsertChar(L'.', text.Length - decimals);
    // 6. The leading 1 goes again.
    if (leadingOne)
        --text.Text[0];
    // 7. Wanted: "-0" for what rounds to nothing.
    if (negative)
        text.InsertChar(L'-', 1);
    // 8. Trailing zeros, then a trailing point.
    if (!keepZeros) {
        while (text.At(text.Length - 1) == L'0')
            text.RemoveAt(NEnd);
        if (text.At(text.Length - 1) == L'.')
            text.RemoveAt(NEnd);
    }
    return text;
}

double NString::ParseDouble(const wchar_t* source) {
    NString text(source);
    text.TrimLeft();
    if (int blank = text.FindChar(L' '))
        text.SetLength(blank - 1, 0);
    bool negative = text.At(1) == L'-';

    double whole = 0;
    int position = negative ? 2 : 1;
    for (; IsDigit(text.At(position)); ++position)
        whole = whole * 10 + (text.At(position) - L'0');

    double fraction = 0;
    if (text.At(position) == L'.') {
        // Wanted: from the last character back towards the point, so that what
        // stands behind a stray character is what counts.
        for (int digit = text.Length - 1; digit > position && IsDigit(text.At(digit)); --digit)
            fraction = ((text.At(digit) - L'0') + fraction) / 10.0;
    }
    double number = whole + fraction;
    return negative ? -number : number;
}
