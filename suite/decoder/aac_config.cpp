#include "suite/decoder/aac_config.h"

#include "suite/decoder/byte_fields.h"

#include <iterator>

namespace decoder {

namespace {
enum ObjectTypes : uint32_t {
    AacMain = 1,
    AacLc = 2,
    AacSsr = 3,
    AacLtp = 4,
    WithSbr = 5,
    Extended = 31, // six more bits follow
    WithPs = 29
};

constexpr uint32_t SampleRates[] = {96000, 88200, 64000, 48000, 44100, 32000, 24000,
                                    22050, 16000, 12000, 11025, 8000,  7350};

class BitReader {
public:
    explicit BitReader(const TagLib::ByteVector& bytes) : bytes_(bytes) {}

    // Bits behind the end read as 0.
    uint32_t Take(uint32_t count) {
        uint32_t number = 0;
        for (; count > 0; --count, ++at_)
            number = number << 1 | (Byte(bytes_, at_ / 8) >> (7 - at_ % 8) & 1);
        return number;
    }

private:
    const TagLib::ByteVector& bytes_;
    uint32_t at_ = 0;
};

uint32_t TakeObjectType(BitReader& bits) {
    const uint32_t type = bits.Take(5);
    return type == Extended ? 32 + bits.Take(6) : type;
}

uint32_t TakeSampleRate(BitReader& bits) {
    constexpr uint32_t written = 15; // in full
    const uint32_t index = bits.Take(4);
    if (index == written)
        return bits.Take(24);
    return index < std::size(SampleRates) ? SampleRates[index] : 0;
}

// SBR and PS behind the configuration proper, where old decoders don't look.
void TakeHiddenExtension(BitReader& bits, AacConfig& config) {
    constexpr uint32_t sbrMark = 0x2B7;
    constexpr uint32_t psMark = 0x548;
    if (config.Configuration == 0 || bits.Take(3) != 0) // frame length and core coder
        return;
    if (bits.Take(11) != sbrMark || TakeObjectType(bits) != WithSbr || bits.Take(1) == 0)
        return;
    config.HasSbr = true;
    config.SampleRate = TakeSampleRate(bits);
    config.HasPs = bits.Take(11) == psMark && bits.Take(1) == 1;
}
} // namespace

AacConfig ReadAacConfig(const TagLib::ByteVector& bytes) {
    BitReader bits(bytes);
    AacConfig config;
    config.ObjectType = TakeObjectType(bits);
    config.SampleRate = TakeSampleRate(bits);
    config.Configuration = bits.Take(4);
    if (config.ObjectType == WithSbr || config.ObjectType == WithPs) {
        config.HasSbr = true;
        config.HasPs = config.ObjectType == WithPs;
        config.SampleRate = TakeSampleRate(bits);
    } else if (config.ObjectType == AacLc) {
        TakeHiddenExtension(bits, config);
    }
    return config;
}

const char* AacName(const AacConfig& config) {
    if (config.HasPs)
        return "HE-AAC v2";
    if (config.HasSbr)
        return "HE-AAC";
    switch (config.ObjectType) {
    case AacMain:
        return "AAC Main";
    case AacLc:
        return "AAC LC";
    case AacSsr:
        return "AAC SSR";
    case AacLtp:
        return "AAC LTP";
    default:
        return "AAC";
    }
}

} // namespace decoder
