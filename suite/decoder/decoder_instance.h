#pragma once

#include "codec/audio_info.h"
#include "foundation/nbuffer.h"

namespace decoder {

// The bits of clAudioInfo's Request. The numbers are filled in whatever is
// asked; all other bits mean nothing here.
inline constexpr uint32_t RequestTags = 8;
inline constexpr uint32_t RequestTechInfo = 16;
static_assert((AudioInfoRequest & (RequestTags | RequestTechInfo)) ==
              (RequestTags | RequestTechInfo));

// What "Create" makes. Belongs to one thread at a time; instances share nothing
// that changes. Nothing stays open between two calls.
class DecoderInstance {
public:
    // Answers "Decodes". False for what is not known, and behind the last
    // extension, which is null then.
    bool Get(const wchar_t* what, void* record);
    // Fills in `info`, whose Path and Request the caller has set. Its blobs are
    // good until the next call. False, with all else of `info` as it was, if
    // the file can't be read as audio.
    bool Open(clAudioInfo& info);
    // Frees what Open has left.
    void Close();

private:
    NBuffer tags_;
    NBuffer techInfo_;
};

} // namespace decoder
