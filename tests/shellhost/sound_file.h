#pragma once

#include "foundation/nfile.h"

#include <cstdint>
#include <cstring>
#include <vector>

// A tenth of a second of silence as a WAV file without a tag.
inline void WriteSoundFile(const NString& path) {
    constexpr uint32_t Rate = 8000;
    constexpr uint32_t DataBytes = Rate / 10;
    constexpr uint32_t HeaderBytes = 44;
    constexpr uint8_t Silence = 0x80;
    struct {
        char riff[4] = {'R', 'I', 'F', 'F'};
        uint32_t riffBytes = HeaderBytes - 8 + DataBytes;
        char wave[8] = {'W', 'A', 'V', 'E', 'f', 'm', 't', ' '};
        uint32_t formatBytes = 16;
        uint16_t pcm = 1;
        uint16_t channels = 1;
        uint32_t rate = Rate;
        uint32_t bytesASecond = Rate;
        uint16_t bytesASample = 1;
        uint16_t bitsASample = 8;
        char data[4] = {'d', 'a', 't', 'a'};
        uint32_t dataBytes = DataBytes;
    } header;
    static_assert(sizeof(header) == HeaderBytes);
    std::vector<uint8_t> bytes(HeaderBytes + DataBytes, Silence);
    memcpy(bytes.data(), &header, sizeof(header));
    NFile(path, GENERIC_WRITE, CREATE_ALWAYS, false, false)
        .Write(bytes.data(), static_cast<uint32_t>(bytes.size()), NFile::NoSeek);
}
