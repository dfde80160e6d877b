#pragma once

#include "foundation/nstring.h"

#include <tbytevector.h>

#include <cstdint>

namespace decoder {

enum class BitRateMode { Unknown, Constant, Average, Variable };

// What an encoder wrote into the first frame of an MP3 file: the header "Xing"
// or "Info" (Xing's "VBR Header SDK") with the "Mp3 Info Tag" of LAME behind it
// (revision 1, gabriel.mp3-tech.org/mp3infotag.html), or Fraunhofer's "VBRI".
struct XingFacts {
    bool IsThere = false; // the frame holds such a header and no audio
    BitRateMode Mode = BitRateMode::Unknown;
    uint32_t Frames = 0;   // of audio; 0 if it doesn't say
    uint32_t Bytes = 0;    // of all frames, this one included; 0 if it doesn't say
    NString Encoder;       // "LAME 3.100"
    NString Preset;        // "V2 (preset standard)"
    uint32_t Kilobits = 0; // as asked of the encoder; 0 if it doesn't say
};

// `frame` begins with the header of an MPEG frame.
XingFacts ReadXingHeader(const TagLib::ByteVector& frame);

} // namespace decoder
