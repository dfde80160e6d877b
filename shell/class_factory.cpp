#include "shell/class_factory.h"

#include "shell/com_object.h"

namespace {

class ClassFactory final : private ComModuleLock, public IClassFactory, private ComCounted {
public:
    explicit ClassFactory(const ComObjectEntry& entry) : entry_(entry) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        bool known = iid == IID_IUnknown || iid == IID_IClassFactory;
        return ComHandOut(known ? this : nullptr, object);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return CountUp(); }
    STDMETHODIMP_(ULONG) Release() override {
        ULONG left = CountDown();
        if (left == 0)
            delete this;
        return left;
    }

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        return entry_.Create(outer, iid, object);
    }
    STDMETHODIMP LockServer(BOOL lock) override {
        lock ? NComModule().Lock() : NComModule().Unlock();
        return S_OK;
    }

private:
    const ComObjectEntry& entry_;
};

} // namespace

HRESULT NMakeClassFactory(const ComObjectEntry& entry, REFIID iid, void** factory) {
    if (!factory)
        return E_POINTER;
    *factory = nullptr;
    return ComGuarded([&] { return ComHandOutNew(new ClassFactory(entry), iid, factory); });
}
