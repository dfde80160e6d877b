#include "suite/decoder/mp4_boxes.h"

#include "suite/decoder/byte_fields.h"

#include <cstring>

namespace decoder {

namespace {
constexpr uint32_t HeaderSize = 8;
constexpr uint32_t LongHeaderSize = 16;
constexpr int MostBoxes = 200'000; // a fragment each second of two days
} // namespace

std::optional<Mp4Box> Mp4Walk::Next() {
    if (++seen_ > MostBoxes || end_ - at_ < HeaderSize)
        return std::nullopt;
    const TagLib::ByteVector header = BytesAt(stream_, at_, LongHeaderSize);
    if (header.size() < HeaderSize)
        return std::nullopt;
    uint32_t headerSize = HeaderSize;
    uint64_t size = Big32(header, 0);
    if (size == 1) {
        headerSize = LongHeaderSize;
        size = Big64(header, HeaderSize);
    } else if (size == 0) {
        size = static_cast<uint64_t>(end_ - at_); // up to the end
    }
    if (size < headerSize || size > static_cast<uint64_t>(end_ - at_))
        return std::nullopt;
    Mp4Box box;
    memcpy(box.Type, header.data() + 4, sizeof(box.Type));
    box.Begin = at_ + headerSize;
    box.End = at_ + static_cast<int64_t>(size);
    at_ = box.End;
    return box;
}

std::optional<Mp4Box> Mp4Walk::Next(std::string_view type) {
    std::optional<Mp4Box> box = Next();
    while (box && !box->Is(type))
        box = Next();
    return box;
}

std::optional<Mp4Box> FindMp4Box(TagLib::IOStream& stream, const Mp4Box& parent,
                                 std::string_view path) {
    std::optional<Mp4Box> box = parent;
    for (; box && !path.empty(); path.remove_prefix(4))
        box = Mp4Walk(stream, *box).Next(path.substr(0, 4));
    return box;
}

} // namespace decoder
