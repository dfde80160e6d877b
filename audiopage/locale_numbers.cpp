#include "audiopage/locale_numbers.h"

#include "foundation/nreg.h"
#include "foundation/windows_lean.h"

namespace {
constexpr const wchar_t* InternationalKey = L"Control Panel\\International";

// What `NegativeStyle` means: where the sign stands.
enum NegativeStyles {
    InBrackets = 0,
    SignFirst = 1,
    SignAndBlankFirst = 2,
    SignLast = 3,
    BlankAndSignLast = 4
};

constexpr int FirstGroup = 3;
constexpr int LaterIndianGroup = 2;

LocaleNumbers processNumbers;

NString ReadInternational(const wchar_t* name) {
    return NRegReadString(name, HKEY_CURRENT_USER, InternationalKey);
}

// Takes the value of a name, cut to the field's room; `whenEmpty` stands in for
// one that is empty or missing.
void ReadField(wchar_t (&field)[LocaleNumbers::TextRoom], const wchar_t* name,
               const wchar_t* whenEmpty) {
    NString value = ReadInternational(name);
    if (value.IsEmpty())
        value = whenEmpty;
    value.Left(LocaleNumbers::TextRoom - 1).CopyToWide(field);
}

// Walks from the decimal point, or the end, to the start.
void InsertThousandSeparators(NString& text, const LocaleNumbers& numbers) {
    int point = text.FindChar(L'.');
    int groupSize = FirstGroup;
    int counted = 0;
    for (int position = (point ? point : text.Length) - 1; position >= 1; --position) {
        if (counted == groupSize && text.At(position) != L'-') {
            text.Insert(numbers.ThousandSep, position + 1);
            counted = 0;
            if (numbers.IndianGrouping)
                groupSize = LaterIndianGroup;
        }
        ++counted;
    }
}

// Only the first "." becomes the decimal separator, and that may be one that
// stands between thousands: "1.234.567" reads "1,234.567". Wanted.
void ReplaceFirstPoint(NString& text, const LocaleNumbers& numbers) {
    int point = text.FindChar(L'.');
    if (!point)
        return;
    text.RemoveAt(point);
    text.Insert(numbers.DecimalSep, point);
}

void ApplyNegativeSign(NString& text, const LocaleNumbers& numbers) {
    switch (numbers.NegativeStyle) {
    case InBrackets:
        text.InsertChar(L'(', 1);
        text.InsertChar(L')');
        break;
    case SignLast:
        text.Append(numbers.NegativeSign);
        break;
    case BlankAndSignLast:
        text.InsertChar(L' ');
        text.Append(numbers.NegativeSign);
        break;
    case SignAndBlankFirst:
        text.InsertChar(L' ', 1);
        text.Insert(numbers.NegativeSign, 1);
        break;
    case SignFirst:
    default:
        text.Insert(numbers.NegativeSign, 1);
        break;
    }
}
} // namespace

const LocaleNumbers& LocaleNumbers::Get() {
    if (!processNumbers.Loaded)
        processNumbers.Load();
    return processNumbers;
}

void LocaleNumbers::Forget() {
    processNumbers = LocaleNumbers();
}

void LocaleNumbers::Load() {
    Loaded = true;
    LeadingZero = ReadInternational(L"iLZero").At(1) != L'0';
    NString style = ReadInternational(L"iNegNumber");
    NegativeStyle = style.IsEmpty() ? SignFirst : static_cast<int32_t>(style.ToInt());
    IndianGrouping = ReadInternational(L"sGrouping") == L"3;2;0";
    ReadField(NegativeSign, L"sNegativeSign", L"-");
    ReadField(PositiveSign, L"sPositiveSign", L"");
    ReadField(ThousandSep, L"sThousand", L"");
    ReadField(DecimalSep, L"sDecimal", L".");
    ReadField(TimeSep, L"sTime", L":");
}

void ApplyLocaleNumber(NString& text) {
    const LocaleNumbers& numbers = LocaleNumbers::Get();
    // 1. and 2.
    InsertThousandSeparators(text, numbers);
    ReplaceFirstPoint(text, numbers);
    if (text.IsEmpty())
        return;
    // 3. and 4.
    if (text.At(1) == L'-') {
        text.RemoveAt(1);
        ApplyNegativeSign(text, numbers);
    } else {
        text.Insert(numbers.PositiveSign, 1);
    }
}

NString FormatGroupedInt(int64_t value) {
    NString text = NString::FromInt(value);
    ApplyLocaleNumber(text);
    return text;
}

NString FormatGroupedDecimal(double value, int decimals) {
    NString text = NString::FormatDouble(value, decimals, false);
    ApplyLocaleNumber(text);
    return text;
}
