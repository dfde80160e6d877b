#include "foundation/ndropfiles.h"

#include "foundation/com_owners.h"
#include "foundation/unique_handle.h"

#include <shlobj.h>

#include <cstring>
#include <memory>
#include <new>

namespace {
constexpr UINT CountQuery = 0xFFFFFFFF;
// More than the two terminators of a cut text, wherever its last unit begins.
constexpr size_t EndBytes = 4 * sizeof(wchar_t);

// Whether the block has a header, and the header leads into it.
bool IsDropList(const void* bytes, size_t size) {
    DROPFILES header;
    if (!bytes || size < sizeof(header))
        return false;
    memcpy(&header, bytes, sizeof(header));
    return header.pFiles <= size;
}

// DragQueryFileW believes the block of another program, and reads on behind it
// until it finds an end. It is given a copy that has one. Null if the block is
// no drop list.
UniqueGlobalMemory CopyWithAnEnd(HDROP drop) {
    size_t size = GlobalSize(drop);
    GlobalMemoryLock source(drop);
    if (!IsDropList(source.Bytes(), size))
        return {};
    UniqueGlobalMemory copy(GlobalAlloc(GHND, size + EndBytes));
    GlobalMemoryLock target(copy.Get());
    if (!target)
        throw std::bad_alloc();
    memcpy(target.Bytes(), source.Bytes(), size);
    return copy;
}
} // namespace

void NDropFilesRead(HDROP drop, NStringList& list) {
    list.Clear();
    if (!drop)
        return;
    UniqueGlobalMemory copy = CopyWithAnEnd(drop);
    if (!copy)
        return;
    HDROP whole = static_cast<HDROP>(copy.Get());
    UINT count = DragQueryFileW(whole, CountQuery, nullptr, 0);
    for (UINT index = 0; index < count; ++index) {
        UINT length = DragQueryFileW(whole, index, nullptr, 0);
        // An empty entry is the end of the block, which can't hold one: Wine
        // counts it when nothing stands before it.
        if (length == 0)
            break;
        auto path = std::make_unique<wchar_t[]>(length + 1);
        DragQueryFileW(whole, index, path.get(), length + 1);
        list.Add(path.get());
    }
}
