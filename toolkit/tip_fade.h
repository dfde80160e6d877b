#pragma once

#include <cstdint>

inline constexpr int32_t OpaqueTip = 255;
inline constexpr int32_t NoTipAlpha = -1; // none was set yet

// How long the fade at the end of a tip's time takes. All times are in
// milliseconds.
constexpr uint32_t TipFadeTime(uint32_t duration) {
    constexpr uint32_t LongestFade = 2500;
    constexpr uint32_t PartOfDuration = 3;
    return duration / PartOfDuration < LongestFade ? duration / PartOfDuration : LongestFade;
}

// The opacity, 0 to 255, of a tip that has been up for `elapsed`, which isn't
// above `duration`.
constexpr int32_t TipAlpha(uint32_t elapsed, uint32_t duration) {
    const uint32_t fade = TipFadeTime(duration);
    const uint32_t solid = duration - fade;
    // A tip of less than 3 milliseconds has no time to fade.
    if (elapsed < solid || fade == 0)
        return OpaqueTip;
    return static_cast<int32_t>(OpaqueTip - (elapsed - solid) * OpaqueTip / fade);
}
