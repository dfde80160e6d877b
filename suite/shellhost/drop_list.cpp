#include "suite/shellhost/drop_list.h"

#include <shlobj.h>

#include <cstring>

namespace {
size_t DropListBytes(const NStringList& paths) {
    size_t units = 1;
    for (int index = 0; index < paths.Count; ++index)
        units += static_cast<size_t>(paths[index]->Length);
    // A list without paths ends with the terminator of an empty one as well.
    return sizeof(DROPFILES) + (units + (paths.Count == 0)) * sizeof(wchar_t);
}
} // namespace

UniqueGlobalMemory MakeDropList(const NStringList& paths) {
    UniqueGlobalMemory block(GlobalAlloc(GHND, DropListBytes(paths)));
    auto* bytes = block ? static_cast<uint8_t*>(GlobalLock(block.Get())) : nullptr;
    if (!bytes)
        return {};
    DROPFILES header = {};
    header.pFiles = sizeof(header);
    header.fWide = TRUE;
    memcpy(bytes, &header, sizeof(header));
    bytes += sizeof(header);
    for (int index = 0; index < paths.Count; ++index) {
        size_t size = static_cast<size_t>(paths[index]->Length) * sizeof(wchar_t);
        memcpy(bytes, paths[index]->Text, size);
        bytes += size;
    }
    GlobalUnlock(block.Get());
    return block;
}
