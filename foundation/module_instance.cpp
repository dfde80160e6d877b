#include "foundation/module_instance.h"

namespace {
HINSTANCE instanceOfModule = nullptr;
}

HINSTANCE NModuleInstance() {
    return instanceOfModule ? instanceOfModule : GetModuleHandleW(nullptr);
}

void NSetModuleInstance(HINSTANCE instance) {
    instanceOfModule = instance;
}
