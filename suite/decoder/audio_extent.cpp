#include "suite/decoder/audio_extent.h"

#include "suite/decoder/byte_fields.h"

#include <algorithm>

namespace decoder {

using TagLib::ByteVector;

namespace {
constexpr uint32_t Id3v2HeaderSize = 10;
constexpr uint32_t Id3v2HasFooter = 0x10;
constexpr int64_t Id3v1Size = 128;
constexpr uint32_t ApeFooterSize = 32;
constexpr uint32_t ApeHasHeader = 0x80000000;

// 0 if no tag begins there.
int64_t SizeOfId3v2(TagLib::IOStream& stream, int64_t at) {
    const ByteVector header = BytesAt(stream, at, Id3v2HeaderSize);
    if (header.size() < Id3v2HeaderSize || !HasMark(header, "ID3"))
        return 0;
    int64_t size = 0;
    for (uint32_t index = 6; index < Id3v2HeaderSize; ++index)
        size = size << 7 | (Byte(header, index) & 0x7F);
    const bool hasFooter = (Byte(header, 5) & Id3v2HasFooter) != 0;
    return size + Id3v2HeaderSize * (hasFooter ? 2 : 1);
}

// 0 if no tag ends there.
int64_t SizeOfApeTag(TagLib::IOStream& stream, int64_t end) {
    const ByteVector footer = BytesAt(stream, end - ApeFooterSize, ApeFooterSize);
    if (!HasMark(footer, "APETAGEX"))
        return 0;
    const bool hasHeader = (Little32(footer, 20) & ApeHasHeader) != 0;
    return int64_t{Little32(footer, 12)} + (hasHeader ? ApeFooterSize : 0);
}
} // namespace

AudioExtent ExtentOfAudio(TagLib::IOStream& stream) {
    AudioExtent extent{0, stream.length()};
    for (int64_t size = 0; (size = SizeOfId3v2(stream, extent.Begin)) > 0;)
        extent.Begin = std::min(extent.Begin + size, extent.End);
    if (HasMark(BytesAt(stream, extent.End - Id3v1Size, 3), "TAG"))
        extent.End -= Id3v1Size;
    extent.End -= SizeOfApeTag(stream, extent.End);
    extent.End = std::max(extent.End, extent.Begin);
    return extent;
}

} // namespace decoder
