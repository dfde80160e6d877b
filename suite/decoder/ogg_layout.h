#pragma once

#include <tiostream.h>

#include <cstdint>
#include <vector>

namespace decoder {

// How an Ogg stream (RFC 3533) begins: where its audio starts, and what the
// first pages of it are like. Pages of other streams in the file are passed
// over.
struct OggLayout {
    int64_t AudioBegin = 0;        // the page behind the header packets; 0 if there is none
    std::vector<uint32_t> Packets; // sizes of whole audio packets in the pages looked at
    uint64_t PageBytes = 0;        // of these pages, headers included
    uint64_t PayloadBytes = 0;     // of these pages, without them
};

// The number of packets in front of the audio; 0 for FLAC, whose last header
// packet is marked.
inline constexpr int UntilMarkedLast = 0;
OggLayout ReadOggLayout(TagLib::IOStream& stream, int headerPackets);

// What of the file behind its headers is audio, without the pages' headers, by
// the first pages.
int64_t OggAudioBytes(const OggLayout& layout, int64_t fileSize);

} // namespace decoder
