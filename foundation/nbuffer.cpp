#include "foundation/nbuffer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

NBuffer& NBuffer::operator=(const NBuffer& other) {
    if (this != &other)
        CopyFrom(other);
    return *this;
}

void NBuffer::Resize(uint32_t size, bool keep, bool zero, uint32_t extra) {
    if (Size != 0 && Size >= size) {
        Size = size;
        if (zero && size)
            memset(Data, 0, size);
    } else {
        TakeNewBlock(size, keep, zero, extra);
    }
    Used = std::min(Used, Size);
}

void NBuffer::TakeNewBlock(uint32_t size, bool keep, bool zero, uint32_t extra) {
    uint64_t bytes = std::max<uint64_t>(uint64_t{size} + extra, 1);
    void* block = bytes <= UINT32_MAX ? malloc(static_cast<size_t>(bytes)) : nullptr;
    if (block && keep && Size)
        memcpy(block, Data, Size);
    // Wanted: the kept bytes are wiped too.
    if (block && zero)
        memset(block, 0, static_cast<size_t>(bytes));
    free(Data);
    Data = static_cast<uint8_t*>(block);
    Size = block ? size + extra : 0;
}

void NBuffer::Set(const void* data, uint32_t size, uint32_t extra, bool zeroExtra) {
    if (uint64_t{size} + extra > UINT32_MAX) {
        Free();
        return;
    }
    NBuffer old; // keeps a block that is too small until its bytes are copied
    if (Size < size + extra) {
        std::swap(old.Data, Data);
        std::swap(old.Size, Size);
    }
    Resize(size + extra);
    if (!Data)
        return;
    if (size && data)
        memmove(Data, data, size);
    else if (size)
        memset(Data, 0, size);
    if (zeroExtra && extra)
        memset(Data + size, 0, extra);
    Used = size;
}

void NBuffer::CopyFrom(const NBuffer& buffer) {
    if (this != &buffer)
        Set(buffer.Data, buffer.Size);
}

bool NBuffer::Equals(const NBuffer& buffer) const {
    return Size == buffer.Size && (Size == 0 || memcmp(Data, buffer.Data, Size) == 0);
}

void NBuffer::Free() {
    free(Data);
    Data = nullptr;
    Size = 0;
    Used = 0;
}
