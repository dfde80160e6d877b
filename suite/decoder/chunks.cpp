#include "suite/decoder/chunks.h"

#include "suite/decoder/byte_fields.h"

#include <algorithm>

namespace decoder {

std::optional<Chunk> FindChunk(TagLib::IOStream& stream, std::string_view name, ByteOrder order) {
    constexpr int64_t formHeaderSize = 12;
    constexpr uint32_t headerSize = 8;
    constexpr int mostChunks = 100'000;
    int64_t at = formHeaderSize;
    for (int count = 0; count < mostChunks; ++count) {
        const TagLib::ByteVector header = BytesAt(stream, at, headerSize);
        if (header.size() < headerSize)
            break;
        const int64_t size = order == ByteOrder::Big ? Big32(header, 4) : Little32(header, 4);
        at += headerSize;
        if (HasMark(header, name))
            // Programs that write to a pipe leave a size that was never known.
            return Chunk{at, std::min(size, stream.length() - at)};
        at += size + size % 2;
    }
    return std::nullopt;
}

} // namespace decoder
