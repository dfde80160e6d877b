#pragma once

#include "foundation/nbuffer.h"

#include <cstdint>

// Reads forward through bytes that somebody else wrote. A read past the end
// gives 0 or null and moves nothing, and from then on every read fails: a
// parser reads all it wants, and asks once.
class ByteReader {
public:
    ByteReader(const uint8_t* data, uint32_t size) : data_(data), size_(size) {}
    explicit ByteReader(const NBuffer& buffer) : ByteReader(buffer.Data, buffer.Size) {}

    bool HasFailed() const { return failed_; }
    uint32_t Remaining() const { return size_ - position_; }

    // The next `size` bytes, or null.
    const uint8_t* Take(uint32_t size) {
        if (failed_ || size > Remaining()) {
            failed_ = true;
            return nullptr;
        }
        const uint8_t* bytes = data_ + position_;
        position_ += size;
        return bytes;
    }

    uint16_t ReadUInt16() {
        const uint8_t* bytes = Take(2);
        return bytes ? static_cast<uint16_t>(bytes[0] | bytes[1] << 8) : uint16_t{0};
    }

    uint32_t ReadUInt32() {
        uint32_t low = ReadUInt16();
        uint32_t high = ReadUInt16();
        return low | high << 16;
    }

    // Moves behind the next zero unit; fails when there is none.
    void SkipText() {
        while (!failed_ && ReadUInt16() != 0) {
        }
    }

private:
    const uint8_t* data_;
    uint32_t size_;
    uint32_t position_ = 0;
    bool failed_ = false;
};
