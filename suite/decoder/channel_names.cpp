#include "suite/decoder/channel_names.h"

#include <bit>
#include <iterator>

namespace decoder {

namespace {
constexpr const wchar_t* Speakers[] = {
    L"Left",          L"Right",          L"Center",          L"LFE",         L"Back Left",
    L"Back Right",    L"Left of Center", L"Right of Center", L"Back Center", L"Side Left",
    L"Side Right",    L"Top Center",     L"Top Left",        L"Top Front",   L"Top Right",
    L"Top Back Left", L"Top Back",       L"Top Back Right",
};

constexpr const wchar_t* Plain[] = {L"Mono", L"Left, Right"};

constexpr const wchar_t* Vorbis[] = {
    L"Mono",
    L"Left, Right",
    L"Left, Center, Right",
    L"Left, Right, Back Left, Back Right",
    L"Left, Center, Right, Back Left, Back Right",
    L"Left, Center, Right, Back Left, Back Right, LFE",
    L"Left, Center, Right, Side Left, Side Right, Back Center, LFE",
    L"Left, Center, Right, Side Left, Side Right, Back Left, Back Right, LFE",
};

constexpr const wchar_t* Flac[] = {
    L"Mono",
    L"Left, Right",
    L"Left, Right, Center",
    L"Left, Right, Back Left, Back Right",
    L"Left, Right, Center, Back Left, Back Right",
    L"Left, Right, Center, LFE, Back Left, Back Right",
    L"Left, Right, Center, LFE, Back Center, Side Left, Side Right",
    L"Left, Right, Center, LFE, Back Left, Back Right, Side Left, Side Right",
};

constexpr const wchar_t* Aac[] = {
    L"Mono",
    L"Left, Right",
    L"Center, Left, Right",
    L"Center, Left, Right, Back Center",
    L"Center, Left, Right, Back Left, Back Right",
    L"Center, Left, Right, Back Left, Back Right, LFE",
    L"Center, Left of Center, Right of Center, Left, Right, Back Left, Back Right, LFE",
};

constexpr const wchar_t* Alac[] = {
    L"Mono",
    L"Left, Right",
    L"Center, Left, Right",
    L"Center, Left, Right, Back Center",
    L"Center, Left, Right, Back Left, Back Right",
    L"Center, Left, Right, Back Left, Back Right, LFE",
    L"Center, Left, Right, Back Left, Back Right, Back Center, LFE",
    L"Center, Left of Center, Right of Center, Left, Right, Back Left, Back Right, LFE",
};

template <size_t Count>
NString Numbered(const wchar_t* const (&orders)[Count], uint32_t number) {
    return number >= 1 && number <= Count ? NString(orders[number - 1]) : NString();
}
} // namespace

NString PlainChannels(uint32_t channels) {
    return Numbered(Plain, channels);
}

NString ChannelsOfMask(uint32_t mask, uint32_t channels) {
    if (channels <= 1 || mask >= 1U << std::size(Speakers) ||
        static_cast<uint32_t>(std::popcount(mask)) != channels)
        return PlainChannels(channels);
    NString names;
    for (uint32_t bit = 0; bit < std::size(Speakers); ++bit) {
        if (!(mask >> bit & 1))
            continue;
        if (!names.IsEmpty())
            names.Append(L", ");
        names.Append(Speakers[bit]);
    }
    return names;
}

NString VorbisChannels(uint32_t channels) {
    return Numbered(Vorbis, channels);
}

NString FlacChannels(uint32_t channels) {
    return Numbered(Flac, channels);
}

NString AacChannels(uint32_t configuration) {
    return Numbered(Aac, configuration);
}

NString AlacChannels(uint32_t channels) {
    return Numbered(Alac, channels);
}

} // namespace decoder
