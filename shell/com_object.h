#pragma once

#include "shell/com_guard.h"
#include "shell/com_module.h"

#include <unknwn.h>

#include <cstdint>

// The support that turns a class with interfaces into a COM object. A class
// `T` derives from ComCounted and ComCreatable<T>, leaves the three operations
// of IUnknown open, and has
//
//     IUnknown* FindInterface(REFIID iid);   // no reference added; null if none
//
// Its creatable forms are ComObject<T>, which stands alone, and
// ComAggregated<T>, which is part of another object. Both hold the module
// loaded. An object lives in one apartment: its count is plain.

// The standard reference count, which starts at 0.
class ComCounted {
public:
    ULONG CountUp() { return ++count_; }
    ULONG CountDown() { return --count_; }

protected:
    ~ComCounted() = default;

private:
    uint32_t count_ = 0;
};

// Hands out `found` as `*object`, with a reference added.
inline HRESULT ComHandOut(IUnknown* found, void** object) {
    if (!object)
        return E_POINTER;
    *object = found;
    if (!found)
        return E_NOINTERFACE;
    found->AddRef();
    return S_OK;
}

// The form that stands alone. The module's lock is the first base, and so the
// last thing to go.
template <typename T>
class ComObject final : private ComModuleLock, public T {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        return ComHandOut(this->FindInterface(iid), object);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return this->CountUp(); }
    STDMETHODIMP_(ULONG) Release() override {
        ULONG left = this->CountDown();
        if (left == 0)
            delete this;
        return left;
    }
};

// What an aggregated object's own interfaces show: the identity and the count
// of the outer object. No reference is held on that one, since it holds us.
template <typename T>
class ComContained final : public T {
public:
    explicit ComContained(IUnknown* outer) : outer_(outer) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        return outer_->QueryInterface(iid, object);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return outer_->AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return outer_->Release(); }

private:
    IUnknown* outer_;
};

// The form that is part of another object: the inner IUnknown, which the outer
// object alone knows and counts.
template <typename T>
class ComAggregated final : private ComModuleLock, public IUnknown, public ComCounted {
public:
    explicit ComAggregated(IUnknown* outer) : contained_(outer) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        IUnknown* self = this;
        return ComHandOut(iid == IID_IUnknown ? self : contained_.FindInterface(iid), object);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return CountUp(); }
    STDMETHODIMP_(ULONG) Release() override {
        ULONG left = CountDown();
        if (left == 0)
            delete this;
        return left;
    }

private:
    ComContained<T> contained_;
};

// Asks a new object for its first interface, and frees it if it has none such.
template <typename Object>
HRESULT ComHandOutNew(Object* created, REFIID iid, void** object) {
    created->AddRef();
    HRESULT result = created->QueryInterface(iid, object);
    created->Release();
    return result;
}

// Gives T the creating function of its entry in the object table.
template <typename T>
class ComCreatable {
public:
    // E_POINTER without `object`. With an outer object only IUnknown can be
    // asked for, since any other interface would already show the outer
    // identity: CLASS_E_NOAGGREGATION.
    static HRESULT CreateInstance(IUnknown* outer, REFIID iid, void** object) {
        if (!object)
            return E_POINTER;
        *object = nullptr;
        if (outer && iid != IID_IUnknown)
            return CLASS_E_NOAGGREGATION;
        return ComGuarded([&] {
            return outer ? ComHandOutNew(new ComAggregated<T>(outer), iid, object)
                         : ComHandOutNew(new ComObject<T>(), iid, object);
        });
    }

protected:
    ~ComCreatable() = default;
};
