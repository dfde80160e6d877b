#pragma once

#include "codec/audio_info.h"

#include <cstdint>

// What the files that a decoder opened have in common, and their sums.
struct MergedFacts {
    static constexpr uint32_t NotKnown = 0;
    static constexpr uint32_t Differs = 0xFFFFFFFF;
    static constexpr uint32_t AllFloat = 1;

    void Add(const clAudioInfo& info);
    // Bits per second, truncated; 0 without a file.
    int32_t AverageBitRate() const;

    int32_t GoodFiles = 0;
    int64_t TotalSize = 0;     // bytes
    int64_t TotalOriginal = 0; // bytes of the audio uncompressed
    int64_t TotalLength = 0;   // milliseconds
    int32_t TotalBitRate = 0;  // wraps around
    // NotKnown, Differs, or the common value. A value of 0 leaves it open.
    uint32_t MergedChannels = NotKnown;
    uint32_t MergedRate = NotKnown;
    uint32_t MergedSampleSize = NotKnown;
    // NotKnown, AllFloat, or Differs for any other case.
    uint32_t MergedFloat = NotKnown;
};
