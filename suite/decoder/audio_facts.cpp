#include "suite/decoder/audio_facts.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace decoder {

int64_t LengthMsOf(uint64_t samples, uint32_t sampleRate) {
    // The most that a number of milliseconds is computed of without overflow.
    constexpr uint64_t most = INT64_MAX / 1000;
    if (sampleRate == 0 || samples > most)
        return 0;
    return static_cast<int64_t>((samples * 1000 + sampleRate / 2) / sampleRate);
}

uint32_t BitRateOf(int64_t bytes, int64_t lengthMs) {
    constexpr int64_t bitsAndMs = 8 * 1000;
    if (lengthMs <= 0 || bytes <= 0 || bytes > INT64_MAX / bitsAndMs)
        return 0;
    return static_cast<uint32_t>(std::min<int64_t>(bytes * bitsAndMs / lengthMs, UINT32_MAX));
}

NString Text(const char* format, ...) {
    char text[256];
    va_list arguments;
    va_start(arguments, format);
    const int length = vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    return length > 0 ? AsciiText(text) : NString();
}

NString AsciiText(const std::string& text) {
    return NString(std::wstring(text.begin(), text.end()).c_str());
}

} // namespace decoder
