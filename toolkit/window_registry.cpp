#include "toolkit/window_registry.h"

#include "toolkit/nwindow.h"

NPtrList windowRegistry;
NMutex registryLock;
uint32_t classCounter = 0;

void AddToRegistry(NWindow* object) {
    NMutexLock lock(registryLock);
    for (int i = 0; i < windowRegistry.Count; ++i) {
        if (windowRegistry.At(i) == object)
            return;
    }
    windowRegistry.Add(object);
}

void RemoveFromRegistry(const NWindow* object) {
    NMutexLock lock(registryLock);
    for (int i = 0; i < windowRegistry.Count; ++i) {
        if (windowRegistry.At(i) == object) {
            windowRegistry.RemoveAt(i);
            return;
        }
    }
}

NWindow* FindInRegistry(HWND window) {
    NMutexLock lock(registryLock);
    for (int i = 0; i < windowRegistry.Count; ++i) {
        auto* object = static_cast<NWindow*>(windowRegistry.At(i));
        if (object->hwnd == window)
            return object;
    }
    return nullptr;
}

uint32_t NextClassNumber() {
    NMutexLock lock(registryLock);
    return classCounter++;
}
