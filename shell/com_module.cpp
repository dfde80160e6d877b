#include "shell/com_module.h"

namespace {
constinit ComModule module;
}

ComModule& NComModule() {
    return module;
}

void ComModule::Start(std::span<const ComObjectEntry> objects, const GUID& library) {
    objects_ = objects;
    library_ = &library;
    locks_ = 0;
}

void ComModule::End() {
    objects_ = {};
    library_ = nullptr;
}

const ComObjectEntry* ComModule::Find(REFCLSID clsid) const {
    for (const ComObjectEntry& entry : objects_)
        if (*entry.Clsid == clsid)
            return &entry;
    return nullptr;
}
