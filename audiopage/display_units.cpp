#include "audiopage/display_units.h"

#include "audiopage/locale_numbers.h"
#include "audiopage/wrapped_math.h"
#include "foundation/nreg.h"
#include "foundation/windows_lean.h"

namespace {
constexpr const wchar_t* UnitsKey = L"Software\\Quillmarsh\\Tonewright\\Ref";

uint32_t ReadUnit(const wchar_t* name) {
    return NRegReadDword(name, HKEY_CURRENT_USER, UnitsKey);
}

NString Joined(NString text, const wchar_t* more) {
    text.Append(more);
    return text;
}

struct ChannelName {
    uint32_t channels;
    const wchar_t* behindNumber;
    const wchar_t* alone;
};

constexpr ChannelName ChannelNames[] = {
    {1, L"  (mono)", L"Mono"},
    {2, L"  (stereo)", L"Stereo"},
    {4, L"  (quadraphonic)", L"Quadraphonic"},
    {5, L"  (surround)", L"Surround"},
    {6, L"  (5.1 surround)", L"5.1 surround"},
    {8, L"  (7.1 theater)", L"7.1 theater"},
};

const ChannelName* FindChannelName(uint32_t channels) {
    for (const ChannelName& name : ChannelNames) {
        if (name.channels == channels)
            return &name;
    }
    return nullptr;
}

// The marks tell bit rates per channel that uncompressed sources have.
const wchar_t* BitRateMark(int64_t perChannel, uint32_t channels, uint32_t rate) {
    if (perChannel >= 705000 && perChannel <= 707000 && channels == 2 && rate == 44100)
        return L"  (CD)";
    if (perChannel >= 767000 && perChannel <= 769000 && channels == 2 && rate == 48000)
        return L"  (DAT)";
    return perChannel >= 1000000 ? L"  (DVD)" : L"";
}

// Hours, minutes, seconds and milliseconds of a length.
struct TimeParts {
    int64_t hours;
    int64_t minutes;
    int64_t seconds;
    int64_t milliseconds;
};

constexpr int32_t MsOfHour = 3600000;
constexpr int32_t MsOfMinute = 60000;
constexpr int32_t MsOfSecond = 1000;

// In signed 32 bits, which wrap around: wanted. Lengths above 596 hours are
// split in the way that gives.
int64_t ProductIn32Bits(int64_t count, int32_t factor) {
    return static_cast<int32_t>(static_cast<uint32_t>(count) * static_cast<uint32_t>(factor));
}

TimeParts SplitTime(int64_t ms) {
    TimeParts parts;
    parts.hours = ms / MsOfHour;
    int64_t rest = WrappedDifference(ms, ProductIn32Bits(parts.hours, MsOfHour));
    parts.minutes = rest / MsOfMinute;
    rest = WrappedDifference(rest, ProductIn32Bits(parts.minutes, MsOfMinute));
    parts.seconds = rest / MsOfSecond;
    parts.milliseconds = WrappedDifference(rest, ProductIn32Bits(parts.seconds, MsOfSecond));
    return parts;
}

NString Padded(int64_t number, int digits) {
    NString text = NString::FromInt(number);
    while (text.CharCount() < digits)
        text.InsertChar(L'0', 1);
    return text;
}

NString ClockMinutes(const TimeParts& time, const wchar_t* separator) {
    NString text;
    if (time.hours != 0) {
        text = NString::FromInt(time.hours);
        text.Append(separator);
    }
    text.Append(Padded(time.minutes, time.hours != 0 ? 2 : 1));
    text.Append(separator);
    text.Append(Padded(time.seconds, 2));
    return text;
}

NString ClockHours(const TimeParts& time, const wchar_t* separator) {
    NString text = Padded(time.hours, 2);
    text.Append(separator);
    text.Append(Padded(time.minutes, 2));
    text.Append(separator);
    text.Append(Padded(time.seconds, 2));
    return text;
}

// `unitName` is a blank and the singular.
NString CountOf(int64_t number, const wchar_t* unitName) {
    NString text = NString::FromInt(number);
    text.Append(unitName);
    if (number != 1)
        text.Append(L"s");
    return text;
}

NString TwoCounts(const NString& greater, int64_t lesser, const wchar_t* unitName) {
    NString text(greater);
    if (lesser != 0) {
        text.Append(L" ");
        text.Append(CountOf(lesser, unitName));
    }
    return text;
}

NString LengthInWords(const TimeParts& time, bool wholeSeconds) {
    bool fraction = time.milliseconds != 0 && !wholeSeconds;
    // 1. Seconds don't count beside hours.
    if (time.hours != 0)
        return TwoCounts(CountOf(time.hours, L" hour"), time.minutes, L" minute");
    // 2.
    if (time.minutes != 0)
        return TwoCounts(CountOf(time.minutes, L" minute"), time.seconds, L" second");
    // 3. A fraction is followed by the plural, also where it rounds to "1".
    if (time.seconds != 0 && fraction) {
        double seconds =
            static_cast<double>(time.milliseconds) / 1000.0 + static_cast<double>(time.seconds);
        return Joined(FormatGroupedDecimal(seconds, 1), L" seconds");
    }
    if (time.seconds != 0)
        return CountOf(time.seconds, L" second");
    // 4. One "l" is wanted.
    if (fraction)
        return CountOf(time.milliseconds, L" mili-second");
    // 5.
    return NString(L"0");
}
} // namespace

uint32_t UnitsSettings::Channels() {
    return ReadUnit(L"UnitsChannels");
}

uint32_t UnitsSettings::BitRate() {
    return ReadUnit(L"UnitsBitRate");
}

uint32_t UnitsSettings::Frequency() {
    return ReadUnit(L"UnitsFreq");
}

uint32_t UnitsSettings::Time() {
    return ReadUnit(L"UnitsTime");
}

uint32_t UnitsSettings::FileSize() {
    return ReadUnit(L"UnitsFileSize");
}

NString FormatFileSize(int64_t size, bool kbOnly) {
    constexpr double OfKB = 1.0 / (1 << 10);
    constexpr double OfMB = 1.0 / (1 << 20);
    constexpr double OfGB = 1.0 / (1 << 30);
    // Kilobytes are rounded up, except from less than a hundredth.
    constexpr double NearlyOne = 0.99;

    auto bytes = static_cast<double>(size);
    auto reaches = [bytes](double unit) { return static_cast<int64_t>(bytes * unit) != 0; };
    // 1. and 2.
    if (reaches(OfGB) && !kbOnly)
        return Joined(FormatGroupedDecimal(bytes * OfGB, 2), L" GB");
    if (reaches(OfMB) && !kbOnly)
        return Joined(FormatGroupedDecimal(bytes * OfMB, 2), L" MB");
    // 3.
    if (!reaches(OfKB) && !kbOnly)
        return Joined(NString(static_cast<int32_t>(size)), size == 1 ? L" byte" : L" bytes");
    // 4.
    int64_t kilobytes = size == 0 ? 0 : static_cast<int64_t>(bytes * OfKB + NearlyOne);
    return Joined(FormatGroupedInt(kilobytes), L" KB");
}

NString FormatTimeLength(int64_t ms, uint32_t unit) {
    const LocaleNumbers& numbers = LocaleNumbers::Get();
    bool wholeSeconds = unit == UnitsTimeWholeWords;
    if (wholeSeconds)
        unit = UnitsTimeWords;
    TimeParts time = SplitTime(ms);
    switch (unit) {
    case UnitsTimeWords:
        return LengthInWords(time, wholeSeconds);
    case UnitsTimeMinutes:
        return ClockMinutes(time, numbers.TimeSep);
    case UnitsTimeHours:
        return ClockHours(time, numbers.TimeSep);
    case UnitsTimeMilliseconds:
        return Joined(Joined(ClockHours(time, numbers.TimeSep), numbers.DecimalSep),
                      Padded(time.milliseconds, 3).Text);
    default:
        return NString();
    }
}

NString FormatChannels(uint32_t channels) {
    NString number = NString::FromUInt(channels);
    const ChannelName* name = FindChannelName(channels);
    switch (UnitsSettings::Channels()) {
    case UnitsChannelsNamed:
        return name ? Joined(number, name->behindNumber) : number;
    case UnitsChannelsNameAlone:
        return name ? NString(name->alone) : Joined(number, L" channels");
    default:
        return number;
    }
}

NString FormatBitRate(int32_t bitRate, uint32_t channels, uint32_t rate) {
    uint32_t unit = UnitsSettings::BitRate();
    // 1.
    if (unit == UnitsBitRateBps)
        return Joined(FormatGroupedInt(bitRate), L" bps");
    // 2.
    NString text = Joined(FormatGroupedInt(bitRate / 1000), L" kbps");
    // 3. In 64 bits, since a signed 32-bit quotient by -1 may not fit its own.
    if (unit == UnitsBitRateMarked && channels != 0 && rate != 0) {
        int64_t perChannel = int64_t{bitRate} / static_cast<int32_t>(channels);
        text.Append(BitRateMark(perChannel, channels, rate));
    }
    return text;
}
