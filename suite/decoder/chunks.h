#pragma once

#include <tiostream.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace decoder {

enum class ByteOrder { Little, Big };

// A chunk of a RIFF file (little-endian) or an AIFF file (big-endian): where
// its content lies, as far as the file reaches.
struct Chunk {
    int64_t Begin = 0;
    int64_t Size = 0;
};

// The first chunk of that name behind the form's header of 12 bytes.
std::optional<Chunk> FindChunk(TagLib::IOStream& stream, std::string_view name, ByteOrder order);

} // namespace decoder
