#include "foundation/nmemory.h"

#include "foundation/windows_lean.h"

#include <algorithm>
#include <cstdint>

namespace {
bool IsReadable(const MEMORY_BASIC_INFORMATION& region) {
    constexpr DWORD readable = PAGE_READONLY | PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READ |
                               PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
    return region.State == MEM_COMMIT && region.Protect & readable &&
           !(region.Protect & PAGE_GUARD);
}
} // namespace

size_t NReadableBytes(const void* address, size_t wanted) {
    uintptr_t start = reinterpret_cast<uintptr_t>(address);
    size_t count = 0;
    while (address && count < wanted) {
        MEMORY_BASIC_INFORMATION region;
        const void* next = reinterpret_cast<const void*>(start + count);
        if (!VirtualQuery(next, &region, sizeof(region)) || !IsReadable(region))
            break;
        uintptr_t end = reinterpret_cast<uintptr_t>(region.BaseAddress) + region.RegionSize;
        count = end - start;
    }
    return std::min(count, wanted);
}
