#include "foundation/ndropfiles.h"

#include <memory>

namespace {
constexpr UINT CountQuery = 0xFFFFFFFF;
}

void NDropFilesRead(HDROP drop, NStringList& list) {
    list.Clear();
    if (!drop)
        return;
    UINT count = DragQueryFileW(drop, CountQuery, nullptr, 0);
    for (UINT index = 0; index < count; ++index) {
        UINT length = DragQueryFileW(drop, index, nullptr, 0);
        // An empty entry is the end of the block, which can't hold one: Wine
        // counts it when nothing stands before it.
        if (length == 0)
            break;
        auto path = std::make_unique<wchar_t[]>(length + 1);
        DragQueryFileW(drop, index, path.get(), length + 1);
        list.Add(path.get());
    }
}
