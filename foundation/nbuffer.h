#pragma once

#include <cstdint>

// A byte buffer that owns one block. `Size` is what callers count as the
// content's length unless they keep `Used` themselves.
//
// No operation reports an error: after a failed allocation `Size` is 0 and
// `Data` is null. Belongs to one thread at a time.
class NBuffer {
public:
    NBuffer() = default;
    NBuffer(const NBuffer& other) { CopyFrom(other); }
    NBuffer& operator=(const NBuffer& other);
    ~NBuffer() { Free(); }

    // With a block of at least `size` bytes at hand: `Size` becomes `size`,
    // and the block stays; `zero` wipes these bytes. Otherwise a new block of
    // `size` + `extra` bytes (at least 1) is taken; `keep` copies the old
    // bytes into it, and `zero` then wipes all of it, kept bytes included.
    // `Used` is cut back to `Size`.
    void Resize(uint32_t size, bool keep = false, bool zero = false, uint32_t extra = 0);
    // Room for `size` + `extra` bytes, the first `size` copied from `data`
    // (which may lie in this buffer; null gives zeros), the others zeroed if
    // asked. `Used` becomes `size`.
    void Set(const void* data, uint32_t size, uint32_t extra = 0, bool zeroExtra = false);
    void CopyFrom(const NBuffer& buffer);
    // Same `Size`, and all bytes equal. Two empty buffers are equal.
    bool Equals(const NBuffer& buffer) const;
    void Free();

    uint8_t* Data = nullptr; // null when empty
    uint32_t Size = 0;       // allocated bytes
    uint32_t Used = 0;       // bytes that count as content, never above Size

private:
    void TakeNewBlock(uint32_t size, bool keep, bool zero, uint32_t extra);
};
