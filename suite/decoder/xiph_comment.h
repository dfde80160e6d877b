#pragma once

#include "suite/decoder/audio_facts.h"

#include <xiphcomment.h>

// What a Vorbis comment tells of the audio: who made it, how it was made, and
// which speakers it is for.
namespace decoder {

// The comment ENCODER, or the vendor string; the comments ENCODER_OPTIONS and
// ENCODERSETTINGS, of opusenc and others.
void TakeXiphEncoder(const TagLib::Ogg::XiphComment& comment, AudioFacts& facts);
// WAVEFORMATEXTENSIBLE_CHANNEL_MASK (RFC 9639, section 8.6.2) too.
void TakeFlacComment(const TagLib::Ogg::XiphComment& comment, AudioFacts& facts);

} // namespace decoder
