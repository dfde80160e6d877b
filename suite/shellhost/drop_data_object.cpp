#include "suite/shellhost/drop_data_object.h"

#include "suite/shellhost/drop_list.h"
#include "suite/shellhost/format_enumerator.h"

namespace {
class DropDataObject final : public IDataObject {
public:
    explicit DropDataObject(const NStringList& paths) { paths_.CopyFrom(paths); }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (!object)
            return E_POINTER;
        bool known = iid == IID_IUnknown || iid == IID_IDataObject;
        *object = known ? static_cast<IDataObject*>(this) : nullptr;
        if (!known)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

    STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override {
        if (!medium)
            return E_INVALIDARG;
        HRESULT known = QueryGetData(format);
        if (known != S_OK)
            return known;
        UniqueGlobalMemory list = MakeDropList(paths_);
        if (!list)
            return E_OUTOFMEMORY;
        *medium = {};
        medium->tymed = TYMED_HGLOBAL;
        medium->hGlobal = list.Release();
        return S_OK;
    }
    STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    STDMETHODIMP QueryGetData(FORMATETC* format) override {
        if (!format)
            return E_INVALIDARG;
        if (format->cfFormat != CF_HDROP)
            return DV_E_FORMATETC;
        if (format->dwAspect != DVASPECT_CONTENT)
            return DV_E_DVASPECT;
        if (format->lindex != -1)
            return DV_E_LINDEX;
        return format->tymed & TYMED_HGLOBAL ? S_OK : DV_E_TYMED;
    }
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC*, FORMATETC* result) override {
        if (!result)
            return E_INVALIDARG;
        result->ptd = nullptr;
        return E_NOTIMPL;
    }
    STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override {
        if (!formats)
            return E_INVALIDARG;
        *formats = direction == DATADIR_GET ? MakeDropFormatEnumerator().Release() : nullptr;
        if (direction != DATADIR_GET)
            return E_NOTIMPL;
        return *formats ? S_OK : E_OUTOFMEMORY;
    }
    STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    STDMETHODIMP DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) override { return OLE_E_ADVISENOTSUPPORTED; }

private:
    ~DropDataObject() = default;

    NStringList paths_;
    ULONG references_ = 1;
};
} // namespace

ComPtr<IDataObject> MakeDropDataObject(const NStringList& paths) {
    return ComPtr<IDataObject>(new DropDataObject(paths));
}
