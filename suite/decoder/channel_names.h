#pragma once

#include "foundation/nstring.h"

#include <cstdint>

// Names of speakers, in the order in which a file holds the channels, with ", "
// between them: "Left, Right, Center, LFE, Back Left, Back Right". One channel
// is "Mono". Empty where the order isn't known.
namespace decoder {

// Formats that say nothing beyond the number: "Mono" and "Left, Right".
NString PlainChannels(uint32_t channels);

// By the speaker mask of WAVEFORMATEXTENSIBLE (Microsoft's "Multiple Channel
// Audio Data and WAVE Files"): channels stand in the order of its bits. WMA,
// WavPack and FLAC's WAVEFORMATEXTENSIBLE_CHANNEL_MASK use it too. A mask that
// doesn't fit the number of channels counts as none.
NString ChannelsOfMask(uint32_t mask, uint32_t channels);

// Vorbis I specification, section 4.3.9; Opus with mapping family 1 too
// (RFC 7845, section 5.1.1.2).
NString VorbisChannels(uint32_t channels);
// RFC 9639, section 9.1.3.
NString FlacChannels(uint32_t channels);
// ISO/IEC 14496-3, table 1.19, by the channel configuration 1 to 7.
NString AacChannels(uint32_t configuration);
// "Apple Lossless Format Description", channel layouts by number.
NString AlacChannels(uint32_t channels);

} // namespace decoder
