#include "foundation/ndll.h"

#include <utility>

namespace {
// A file that isn't a library must not make the platform show a box for it.
class NoErrorBoxes {
public:
    NoErrorBoxes() {
        SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &former_);
    }
    ~NoErrorBoxes() { SetThreadErrorMode(former_, nullptr); }
    NoErrorBoxes(const NoErrorBoxes&) = delete;
    NoErrorBoxes& operator=(const NoErrorBoxes&) = delete;

private:
    DWORD former_ = 0;
};
} // namespace

NDLL::~NDLL() {
    UnloadModule();
}

bool NDLL::LoadModule(const wchar_t* path) {
    NoErrorBoxes quiet;
    Module = LoadLibraryW(path);
    return Module != nullptr;
}

void NDLL::UnloadModule() {
    if (HMODULE module = std::exchange(Module, nullptr))
        FreeLibrary(module);
}
