#pragma once

#include "foundation/nstring.h"

#include <cstdint>
#include <string>

namespace decoder {

// The sample size that counts for a lossy format: what decoders give out.
inline constexpr uint16_t DecodedBits = 16;

inline constexpr wchar_t Lossless[] = L"Lossless";
inline constexpr wchar_t Lossy[] = L"Lossy"; // the file doesn't say how
inline constexpr wchar_t LossyConstant[] = L"Lossy, CBR";
inline constexpr wchar_t LossyVariable[] = L"Lossy, VBR";
inline constexpr wchar_t LossyAverage[] = L"Lossy, ABR";

// What the audio of a file is. 0 and empty texts stand for what the file
// doesn't tell.
struct AudioFacts {
    uint32_t Channels = 0;
    uint32_t SampleRate = 0; // samples per second
    uint32_t BitsPerSample = DecodedBits;
    bool IsFloat = false;
    int64_t LengthMs = 0;
    uint32_t BitRate = 0; // of the audio alone, average, in bits per second

    NString Encoder;
    NString EncoderSettings;
    NString Quality;        // one of the texts above
    NString ChannelMapping; // speakers in the order of the file's channels
};

// Of a count of samples per channel; rounded.
int64_t LengthMsOf(uint64_t samples, uint32_t sampleRate);
// Of so many bytes in that time; 0 if the time is 0, and the largest number for
// what is beyond it.
uint32_t BitRateOf(int64_t bytes, int64_t lengthMs);

// Formats as printf does; ASCII alone.
[[gnu::format(printf, 1, 2)]] NString Text(const char* format, ...);
NString AsciiText(const std::string& text);

} // namespace decoder
