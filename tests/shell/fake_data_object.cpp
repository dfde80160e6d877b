#include "tests/shell/fake_data_object.h"

#include <ole2.h>
#include <shlobj.h>

#include <cstring>

namespace {

template <typename Char>
HGLOBAL MakeList(const std::vector<std::basic_string<Char>>& paths, BOOL wide) {
    std::basic_string<Char> texts;
    for (const auto& path : paths)
        texts.append(path).push_back(0);
    texts.push_back(0);

    // An empty list still has a first terminator.
    size_t bytes = (texts.size() + 1) * sizeof(Char);
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + bytes);
    DROPFILES* header = static_cast<DROPFILES*>(GlobalLock(block));
    header->pFiles = sizeof(DROPFILES);
    header->fWide = wide;
    std::memcpy(header + 1, texts.c_str(), bytes);
    GlobalUnlock(block);
    return block;
}

HRESULT HandOut(IUnknown* object, bool known, void** out) {
    *out = known ? object : nullptr;
    if (!known)
        return E_NOINTERFACE;
    object->AddRef();
    return S_OK;
}

} // namespace

HGLOBAL MakeDropList(const std::vector<std::wstring>& paths) {
    return MakeList(paths, TRUE);
}

HGLOBAL MakeNarrowDropList(const std::vector<std::string>& paths) {
    return MakeList(paths, FALSE);
}

STDMETHODIMP CountedUnknown::QueryInterface(REFIID iid, void** object) {
    return HandOut(this, iid == IID_IUnknown, object);
}

FakeDataObject::FakeDataObject(HGLOBAL block) : block_(block) {
    Answer.tymed = TYMED_HGLOBAL;
    Answer.hGlobal = block;
    Answer.pUnkForRelease = &owner_;
}

FakeDataObject::FakeDataObject(const std::vector<std::wstring>& paths)
    : FakeDataObject(MakeDropList(paths)) {}

FakeDataObject::~FakeDataObject() {
    GlobalFree(block_);
}

STDMETHODIMP FakeDataObject::GetData(FORMATETC* format, STGMEDIUM* medium) {
    if (OnGetData)
        OnGetData();
    Asked = *format;
    MediumAsked = *medium;
    *medium = Answer;
    return Result;
}

STDMETHODIMP FakeDataObject::QueryInterface(REFIID iid, void** object) {
    return HandOut(this, iid == IID_IUnknown || iid == IID_IDataObject, object);
}
