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
        UINT units = DragQueryFileW(drop, index, nullptr, 0) + 1;
        auto path = std::make_unique<wchar_t[]>(units);
        DragQueryFileW(drop, index, path.get(), units);
        list.Add(path.get());
    }
}
