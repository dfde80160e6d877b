#include "foundation/module_instance.h"

#include <atomic>

namespace {
// DllMain stores it again on each thread that starts or ends.
constinit std::atomic<HINSTANCE> instanceOfModule = nullptr;
} // namespace

HINSTANCE NModuleInstance() {
    HINSTANCE instance = instanceOfModule;
    return instance ? instance : GetModuleHandleW(nullptr);
}

void NSetModuleInstance(HINSTANCE instance) {
    instanceOfModule = instance;
}
