#pragma once

#include "foundation/windows_lean.h"

#include <objidl.h>

#include <functional>
#include <string>
#include <vector>

// A global block with a drop list of these paths, in wide or in 8-bit form.
HGLOBAL MakeDropList(const std::vector<std::wstring>& paths);
HGLOBAL MakeNarrowDropList(const std::vector<std::string>& paths);

// An object that only counts its references; one to begin with.
class CountedUnknown final : public IUnknown {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++Count; }
    STDMETHODIMP_(ULONG) Release() override { return --Count; }

    ULONG Count = 1;
};

// A data object that hands out what the test has put into `Answer`. The
// block stays the test's: the medium's `pUnkForRelease` counts the releases.
class FakeDataObject final : public IDataObject {
public:
    explicit FakeDataObject(HGLOBAL block = nullptr);
    explicit FakeDataObject(const std::vector<std::wstring>& paths);
    ~FakeDataObject();
    FakeDataObject(const FakeDataObject&) = delete;
    FakeDataObject& operator=(const FakeDataObject&) = delete;

    int MediumReleases() const { return 1 - static_cast<int>(owner_.Count); }

    HRESULT Result = S_OK;
    STGMEDIUM Answer = {};

    // Called by each GetData, before it answers.
    std::function<void()> OnGetData;
    // What the last GetData was asked.
    FORMATETC Asked = {};
    STGMEDIUM MediumAsked = {};

    STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++count_; }
    STDMETHODIMP_(ULONG) Release() override { return --count_; }
    ULONG References() const { return count_; }
    STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    STDMETHODIMP QueryGetData(FORMATETC*) override { return E_NOTIMPL; }
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override { return E_NOTIMPL; }
    STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP DUnadvise(DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }

private:
    HGLOBAL block_;
    CountedUnknown owner_;
    ULONG count_ = 1;
};
