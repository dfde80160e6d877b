#include "suite/decoder/xing_header.h"

#include "suite/decoder/audio_facts.h"
#include "suite/decoder/byte_fields.h"

namespace decoder {

using TagLib::ByteVector;

namespace {
enum XingFlags : uint32_t { HasFrames = 1, HasBytes = 2, HasToc = 4, HasQuality = 8 };
constexpr uint32_t TocSize = 100;

// Places within LAME's tag.
constexpr uint32_t VersionSize = 9;
constexpr uint32_t MethodAt = 9; // the low 4 bits
constexpr uint32_t KilobitsAt = 20;
constexpr uint32_t PresetAt = 26;      // the low 11 bits of 16
constexpr uint32_t MostKilobits = 255; // this or more

struct NamedPreset {
    uint32_t Number;
    const char* Name;
};
constexpr NamedPreset NamedPresets[] = {
    {1000, "r3mix"},         {1001, "standard"},     {1002, "extreme"}, {1003, "insane"},
    {1004, "fast standard"}, {1005, "fast extreme"}, {1006, "medium"},  {1007, "fast medium"},
};
// LAME's presets that are a quality, and the older names that its manual gives
// them.
constexpr NamedPreset QualityNames[] = {{4, "medium"}, {2, "standard"}, {0, "extreme"}};

BitRateMode ModeOfMethod(uint32_t method) {
    switch (method) {
    case 1:
    case 8: // in two passes
        return BitRateMode::Constant;
    case 2:
    case 9:
        return BitRateMode::Average;
    case 3:
    case 4:
    case 5:
        return BitRateMode::Variable;
    default:
        return BitRateMode::Unknown;
    }
}

const char* NameOf(uint32_t number, const NamedPreset* first, const NamedPreset* end) {
    for (; first != end; ++first) {
        if (first->Number == number)
            return first->Name;
    }
    return nullptr;
}

// "V2 (preset standard)". Qualities are the presets 410 (V9) to 500 (V0).
NString PresetText(uint32_t preset, uint32_t quality, bool hasQuality) {
    constexpr uint32_t worst = 410;
    constexpr uint32_t best = 500;
    if (const char* name = NameOf(preset, std::begin(NamedPresets), std::end(NamedPresets)))
        return Text("preset %s", name);
    if (preset >= worst && preset <= best)
        quality = (best - preset) / 10;
    else if (!hasQuality || quality > 9)
        return {};
    if (const char* name = NameOf(quality, std::begin(QualityNames), std::end(QualityNames)))
        return Text("V%u (preset %s)", quality, name);
    return Text("V%u", quality);
}

// "LAME3.100" and "Lavc60.31": the name and the version with a blank between.
NString EncoderText(const std::string& text) {
    const size_t digit = text.find_first_of("0123456789");
    if (digit == std::string::npos || digit == 0 || text[digit - 1] == ' ')
        return AsciiText(text);
    return AsciiText(text.substr(0, digit) + " " + text.substr(digit));
}

void ReadLameTag(const ByteVector& frame, uint32_t at, uint32_t quality, bool hasQuality,
                 XingFacts& facts) {
    const uint32_t first = Byte(frame, at);
    if (first < 'A' || first > 'z')
        return; // no encoder begins so; mostly zeros
    facts.Encoder = EncoderText(TextField(frame, at, VersionSize));
    const BitRateMode mode = ModeOfMethod(Byte(frame, at + MethodAt) & 0x0F);
    if (mode == BitRateMode::Unknown)
        return;
    facts.Mode = mode;
    const uint32_t preset = Big16(frame, at + PresetAt) & 0x7FF;
    if (mode == BitRateMode::Variable)
        // LAME writes 100 for V0 and best, and 10 less for each quality step.
        facts.Preset = PresetText(preset, (100 - quality) / 10, hasQuality && quality <= 100);
    else if (Byte(frame, at + KilobitsAt) < MostKilobits)
        facts.Kilobits = Byte(frame, at + KilobitsAt);
    else if (preset >= MostKilobits && preset <= 320)
        facts.Kilobits = preset;
}

XingFacts ReadXing(const ByteVector& frame, uint32_t at, bool isInfo) {
    XingFacts facts;
    facts.IsThere = true;
    facts.Mode = isInfo ? BitRateMode::Constant : BitRateMode::Variable;
    const uint32_t flags = Big32(frame, at + 4);
    at += 8;
    if (flags & HasFrames) {
        facts.Frames = Big32(frame, at);
        at += 4;
    }
    if (flags & HasBytes) {
        facts.Bytes = Big32(frame, at);
        at += 4;
    }
    if (flags & HasToc)
        at += TocSize;
    uint32_t quality = 0;
    if (flags & HasQuality) {
        quality = Big32(frame, at);
        at += 4;
    }
    ReadLameTag(frame, at, quality, (flags & HasQuality) != 0, facts);
    return facts;
}

XingFacts ReadVbri(const ByteVector& frame, uint32_t at) {
    XingFacts facts;
    facts.IsThere = true;
    facts.Mode = BitRateMode::Variable;
    facts.Bytes = Big32(frame, at + 10);
    facts.Frames = Big32(frame, at + 14);
    facts.Encoder = L"Fraunhofer";
    return facts;
}
} // namespace

XingFacts ReadXingHeader(const ByteVector& frame) {
    // Behind the frame's header, and side information whose size depends on it.
    constexpr uint32_t searched = 64;
    for (uint32_t at = 4; at < searched; ++at) {
        if (HasMark(frame, "Xing", at) || HasMark(frame, "Info", at))
            return ReadXing(frame, at, HasMark(frame, "Info", at));
        if (HasMark(frame, "VBRI", at))
            return ReadVbri(frame, at);
    }
    return {};
}

} // namespace decoder
