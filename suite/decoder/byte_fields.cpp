#include "suite/decoder/byte_fields.h"

namespace decoder {

using TagLib::ByteVector;

namespace {
uint64_t Number(const ByteVector& bytes, uint32_t at, uint32_t size, bool bigFirst) {
    if (size > bytes.size() || at > bytes.size() - size)
        return 0;
    uint64_t number = 0;
    for (uint32_t index = 0; index < size; ++index) {
        const uint32_t place = at + (bigFirst ? index : size - 1 - index);
        number = number << 8 | static_cast<unsigned char>(bytes.data()[place]);
    }
    return number;
}

uint32_t Number32(const ByteVector& bytes, uint32_t at, uint32_t size, bool bigFirst) {
    return static_cast<uint32_t>(Number(bytes, at, size, bigFirst));
}
} // namespace

ByteVector BytesAt(TagLib::IOStream& stream, int64_t offset, uint32_t count) {
    if (offset < 0 || offset >= stream.length())
        return {};
    stream.seek(static_cast<long>(offset), TagLib::IOStream::Beginning);
    return stream.readBlock(count);
}

uint32_t Byte(const ByteVector& bytes, uint32_t at) {
    return Number32(bytes, at, 1, true);
}

uint32_t Little16(const ByteVector& bytes, uint32_t at) {
    return Number32(bytes, at, 2, false);
}

uint32_t Little32(const ByteVector& bytes, uint32_t at) {
    return Number32(bytes, at, 4, false);
}

uint64_t Little64(const ByteVector& bytes, uint32_t at) {
    return Number(bytes, at, 8, false);
}

uint32_t Big16(const ByteVector& bytes, uint32_t at) {
    return Number32(bytes, at, 2, true);
}

uint32_t Big24(const ByteVector& bytes, uint32_t at) {
    return Number32(bytes, at, 3, true);
}

uint32_t Big32(const ByteVector& bytes, uint32_t at) {
    return Number32(bytes, at, 4, true);
}

uint64_t Big64(const ByteVector& bytes, uint32_t at) {
    return Number(bytes, at, 8, true);
}

bool HasMark(const ByteVector& bytes, std::string_view mark, uint32_t at) {
    return bytes.size() >= mark.size() && at <= bytes.size() - mark.size() &&
           std::string_view(bytes.data() + at, mark.size()) == mark;
}

std::string TextField(const ByteVector& bytes, uint32_t at, uint32_t size) {
    std::string text;
    for (uint32_t index = 0; index < size; ++index) {
        const uint32_t unit = Byte(bytes, at + index);
        if (unit == 0)
            break;
        text += unit >= 0x20 && unit < 0x7F ? static_cast<char>(unit) : '?';
    }
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    return text;
}

} // namespace decoder
