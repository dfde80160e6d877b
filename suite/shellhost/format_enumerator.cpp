#include "suite/shellhost/format_enumerator.h"

#include <new>

namespace {
constexpr FORMATETC Formats[] = {{CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL}};
constexpr ULONG FormatCount = sizeof(Formats) / sizeof(Formats[0]);

class FormatEnumerator final : public IEnumFORMATETC {
public:
    explicit FormatEnumerator(ULONG next) : next_(next) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (!object)
            return E_POINTER;
        bool known = iid == IID_IUnknown || iid == IID_IEnumFORMATETC;
        *object = known ? static_cast<IEnumFORMATETC*>(this) : nullptr;
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

    STDMETHODIMP Next(ULONG count, FORMATETC* formats, ULONG* fetched) override {
        if (!formats || (!fetched && count != 1))
            return E_INVALIDARG;
        ULONG given = 0;
        while (given < count && next_ < FormatCount)
            formats[given++] = Formats[next_++];
        if (fetched)
            *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG count) override {
        ULONG left = FormatCount - next_;
        next_ += count < left ? count : left;
        return count <= left ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override {
        next_ = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(IEnumFORMATETC** copy) override {
        if (!copy)
            return E_INVALIDARG;
        *copy = new (std::nothrow) FormatEnumerator(next_);
        return *copy ? S_OK : E_OUTOFMEMORY;
    }

private:
    ~FormatEnumerator() = default;

    ULONG next_;
    ULONG references_ = 1;
};
} // namespace

ComPtr<IEnumFORMATETC> MakeDropFormatEnumerator() {
    return ComPtr<IEnumFORMATETC>(new (std::nothrow) FormatEnumerator(0));
}
