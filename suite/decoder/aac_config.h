#pragma once

#include <tbytevector.h>

#include <cstdint>

namespace decoder {

// The AudioSpecificConfig of AAC (ISO/IEC 14496-3, section 1.6.2.1).
struct AacConfig {
    uint32_t ObjectType = 0;    // 2: AAC LC; 5 with SBR, 29 with PS too
    uint32_t SampleRate = 0;    // as it is played; 0 if it isn't told
    uint32_t Configuration = 0; // of the channels; 0 if it stands elsewhere
    bool HasSbr = false;
    bool HasPs = false; // one coded channel is played as two
};

AacConfig ReadAacConfig(const TagLib::ByteVector& bytes);
// "AAC LC", "HE-AAC", "HE-AAC v2"; "AAC" for the types without a known name.
const char* AacName(const AacConfig& config);

} // namespace decoder
