#pragma once

#include "foundation/windows_lean.h"

#include <cstdint>
#include <cstring>
#include <stdexcept>

// Pages of memory with one behind them that can't be read.
class PageEnd {
public:
    explicit PageEnd(size_t pages = 1) : size_(pages * PageSize) {
        void* block = VirtualAlloc(nullptr, size_ + PageSize, MEM_RESERVE, PAGE_NOACCESS);
        pages_ = static_cast<uint8_t*>(block);
        if (!block || !VirtualAlloc(block, size_, MEM_COMMIT, PAGE_READWRITE))
            throw std::runtime_error("no pages");
    }
    ~PageEnd() { VirtualFree(pages_, 0, MEM_RELEASE); }
    PageEnd(const PageEnd&) = delete;
    PageEnd& operator=(const PageEnd&) = delete;

    size_t Size() const { return size_; } // bytes
    uint8_t* First() const { return pages_; }
    uint8_t* LastBytes(size_t count) const { return pages_ + size_ - count; }
    // A copy of the bytes, with the unreadable page right behind it.
    const void* Put(const void* bytes, size_t count) const {
        return memcpy(LastBytes(count), bytes, count);
    }
    void ProtectFirst(DWORD protection) const {
        DWORD former;
        VirtualProtect(pages_, PageSize, protection, &former);
    }

private:
    static constexpr size_t PageSize = 4096;

    uint8_t* pages_;
    size_t size_;
};
