#pragma once

#include "foundation/nstring.h"

#include <cstdint>

// The five units that the user has chosen, below HKEY_CURRENT_USER. Each is
// read at each call, so that a new property sheet shows a changed one; a
// missing value is 0. The module only reads them.
struct UnitsSettings {
    static uint32_t Channels();
    static uint32_t BitRate();
    static uint32_t Frequency();
    static uint32_t Time();
    static uint32_t FileSize();
};

// Values of the settings that mean something of their own. Of `UnitsChannels`
// all others show the number alone, of `UnitsBitRate` kbps without a mark, of
// `UnitsFreq` Hz, and of `UnitsFileSize` the unit that fits the size.
inline constexpr uint32_t UnitsChannelsNamed = 0;
inline constexpr uint32_t UnitsChannelsNameAlone = 2;
inline constexpr uint32_t UnitsBitRateMarked = 0;
inline constexpr uint32_t UnitsBitRateBps = 2;
inline constexpr uint32_t UnitsFrequencyKHz = 0;
inline constexpr uint32_t UnitsFileSizeKB = 2;
inline constexpr uint32_t UnitsFileSizeBytes = 3;
inline constexpr uint32_t UnitsTimeWords = 0;
inline constexpr uint32_t UnitsTimeMinutes = 1;      // 2:05
inline constexpr uint32_t UnitsTimeHours = 2;        // 00:02:05
inline constexpr uint32_t UnitsTimeMilliseconds = 3; // 00:02:05.000
inline constexpr uint32_t UnitsTimeWholeWords = 4;   // words, no fractions

// A size in bytes as GB, MB, KB or bytes; always as KB with `kbOnly`.
NString FormatFileSize(int64_t size, bool kbOnly);
// A length by one of the UnitsTime values; empty for any other.
NString FormatTimeLength(int64_t ms, uint32_t unit);
NString FormatChannels(uint32_t channels);
// Bits per second. `channels` and `rate` (in Hz) choose the mark behind the
// text; a 0 in either, and there is none.
NString FormatBitRate(int32_t bitRate, uint32_t channels, uint32_t rate);
