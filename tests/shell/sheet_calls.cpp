#include "tests/shell/sheet_calls.h"

#include <cstring>

extern "C" {
extern decltype(&::CreatePropertySheetPageW) __real___imp_CreatePropertySheetPageW;
extern decltype(&::CreatePropertySheetPageW) __wrap___imp_CreatePropertySheetPageW;
extern decltype(&::DestroyPropertySheetPage) __real___imp_DestroyPropertySheetPage;
extern decltype(&::DestroyPropertySheetPage) __wrap___imp_DestroyPropertySheetPage;
}

namespace {
struct Calls {
    std::vector<PROPSHEETPAGEW> made;
    int destroyed = 0;
    bool fails = false;
};

Calls& Seen() {
    static Calls calls;
    return calls;
}

HPROPSHEETPAGE WINAPI Make(LPCPROPSHEETPAGEW page) {
    PROPSHEETPAGEW copy = {};
    memcpy(&copy, page, page->dwSize);
    Seen().made.push_back(copy);
    return Seen().fails ? nullptr : __real___imp_CreatePropertySheetPageW(page);
}

BOOL WINAPI Destroy(HPROPSHEETPAGE page) {
    ++Seen().destroyed;
    return __real___imp_DestroyPropertySheetPage(page);
}
} // namespace

decltype(&::CreatePropertySheetPageW) __wrap___imp_CreatePropertySheetPageW = Make;
decltype(&::DestroyPropertySheetPage) __wrap___imp_DestroyPropertySheetPage = Destroy;

const std::vector<PROPSHEETPAGEW>& SheetCalls::Made() {
    return Seen().made;
}

int SheetCalls::Destroyed() {
    return Seen().destroyed;
}

void SheetCalls::StartAnew() {
    Seen().made = {};
    Seen().destroyed = 0;
    Seen().fails = false;
}

void SheetCalls::MakeNoMore() {
    Seen().fails = true;
}
