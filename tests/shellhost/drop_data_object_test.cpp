#include "foundation/ndropfiles.h"
#include "suite/shellhost/drop_data_object.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

namespace {
class DropDataObjectTest : public testing::Test {
protected:
    DropDataObjectTest() {
        NStringList paths;
        paths.Add(L"C:\\one.mp3");
        paths.Add(L"C:\\two.flac");
        data_ = MakeDropDataObject(paths);
    }

    FORMATETC format_ = {CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    ComPtr<IDataObject> data_;
};
} // namespace

TEST_F(DropDataObjectTest, HasTheDropListAsContentInGlobalMemory) {
    EXPECT_EQ(data_->QueryGetData(&format_), S_OK);
    format_.tymed = TYMED_HGLOBAL | TYMED_ISTREAM;
    EXPECT_EQ(data_->QueryGetData(&format_), S_OK);
}

TEST_F(DropDataObjectTest, SaysWhatAboutAFormatItHasNot) {
    FORMATETC other = format_;
    other.cfFormat = CF_UNICODETEXT;
    EXPECT_EQ(data_->QueryGetData(&other), DV_E_FORMATETC);
    other = format_;
    other.dwAspect = DVASPECT_ICON;
    EXPECT_EQ(data_->QueryGetData(&other), DV_E_DVASPECT);
    other = format_;
    other.lindex = 0;
    EXPECT_EQ(data_->QueryGetData(&other), DV_E_LINDEX);
    other = format_;
    other.tymed = TYMED_FILE;
    EXPECT_EQ(data_->QueryGetData(&other), DV_E_TYMED);
    EXPECT_EQ(data_->QueryGetData(nullptr), E_INVALIDARG);
}

TEST_F(DropDataObjectTest, GivesEachCallerAListOfItsOwn) {
    STGMEDIUM first = {};
    STGMEDIUM second = {};
    ASSERT_EQ(data_->GetData(&format_, &first), S_OK);
    ASSERT_EQ(data_->GetData(&format_, &second), S_OK);
    StorageMedium firstOwner(first);
    StorageMedium secondOwner(second);
    EXPECT_EQ(first.tymed, static_cast<DWORD>(TYMED_HGLOBAL));
    EXPECT_EQ(first.pUnkForRelease, nullptr);
    EXPECT_NE(firstOwner.Global(), secondOwner.Global());
    NStringList paths;
    NDropFilesRead(static_cast<HDROP>(secondOwner.Global()), paths);
    EXPECT_EQ(paths.Join(L"|"), L"C:\\one.mp3|C:\\two.flac");
}

TEST_F(DropDataObjectTest, GivesNothingInAFormatItHasNot) {
    format_.cfFormat = CF_UNICODETEXT;
    STGMEDIUM medium = {};
    EXPECT_EQ(data_->GetData(&format_, &medium), DV_E_FORMATETC);
    EXPECT_EQ(data_->GetData(&format_, nullptr), E_INVALIDARG);
}

TEST_F(DropDataObjectTest, ListsItsOneFormat) {
    ComPtr<IEnumFORMATETC> formats;
    ASSERT_EQ(data_->EnumFormatEtc(DATADIR_GET, formats.Put()), S_OK);
    FORMATETC listed[2] = {};
    ULONG count = 0;
    EXPECT_EQ(formats->Next(2, listed, &count), S_FALSE);
    ASSERT_EQ(count, 1u);
    EXPECT_EQ(data_->QueryGetData(&listed[0]), S_OK);
    ComPtr<IEnumFORMATETC> settable;
    EXPECT_EQ(data_->EnumFormatEtc(DATADIR_SET, settable.Put()), E_NOTIMPL);
    EXPECT_FALSE(settable);
}

TEST_F(DropDataObjectTest, TakesNoDataAndNoAdvice) {
    STGMEDIUM medium = {};
    EXPECT_EQ(data_->SetData(&format_, &medium, FALSE), E_NOTIMPL);
    EXPECT_EQ(data_->GetDataHere(&format_, &medium), E_NOTIMPL);
    DWORD connection = 0;
    EXPECT_EQ(data_->DAdvise(&format_, 0, nullptr, &connection), OLE_E_ADVISENOTSUPPORTED);
    EXPECT_EQ(data_->DUnadvise(1), OLE_E_ADVISENOTSUPPORTED);
    ComPtr<IEnumSTATDATA> connections;
    EXPECT_EQ(data_->EnumDAdvise(connections.Put()), OLE_E_ADVISENOTSUPPORTED);
    EXPECT_FALSE(connections);
}

TEST_F(DropDataObjectTest, HasNoOtherFormOfItsFormatForADevice) {
    DVTARGETDEVICE device = {};
    FORMATETC canonical = {};
    canonical.ptd = &device;
    EXPECT_EQ(data_->GetCanonicalFormatEtc(&format_, &canonical), E_NOTIMPL);
    EXPECT_EQ(canonical.ptd, nullptr);
    EXPECT_EQ(data_->GetCanonicalFormatEtc(&format_, nullptr), E_INVALIDARG);
}

TEST_F(DropDataObjectTest, RefusesToAnswerIntoNothing) {
    EXPECT_EQ(data_->EnumFormatEtc(DATADIR_GET, nullptr), E_INVALIDARG);
    EXPECT_EQ(data_->QueryInterface(IID_IDataObject, nullptr), E_POINTER);
}

TEST_F(DropDataObjectTest, IsItselfUnderBothItsInterfacesAndCountsThem) {
    ComPtr<IUnknown> unknown;
    ASSERT_EQ(data_->QueryInterface(IID_IUnknown, unknown.PutVoid()), S_OK);
    EXPECT_EQ(unknown.Get(), data_.Get());
    ComPtr<IUnknown> stranger;
    EXPECT_EQ(data_->QueryInterface(IID_IMarshal, stranger.PutVoid()), E_NOINTERFACE);
    EXPECT_FALSE(stranger);
    EXPECT_EQ(data_->AddRef(), 3u);
    EXPECT_EQ(data_->Release(), 2u);
}
