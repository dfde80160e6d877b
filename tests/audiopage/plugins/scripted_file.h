#pragma once

#include <cstdint>

// What an "audio file" of the tests holds: the answers that the decoder of the
// tests gives about it, then `tagBytes` of its tag and `techBytes` of its
// technical facts.
struct ScriptedFile {
    uint32_t refuses = 0; // Open fails
    uint16_t formatTag = 0;
    uint16_t channels = 0;
    uint32_t sampleRate = 0;
    uint32_t avgBytesPerSec = 0;
    uint16_t bitsPerSample = 0;
    uint16_t unused = 0;
    uint32_t bitRate = 0;
    int64_t lengthMs = 0;
    int64_t fileSize = 0;
    uint32_t tagBytes = 0;
    uint32_t techBytes = 0;
    // What Open says about the two, whatever there is.
    uint32_t tagsSize = 0;
    uint32_t techInfoSize = 0;
    uint32_t tagsAreNull = 0;
    uint32_t techInfoIsNull = 0;
    wchar_t eventToSet[64] = {};   // by Open; empty for none
    wchar_t eventToAwait[64] = {}; // before Open answers; empty for none
};
