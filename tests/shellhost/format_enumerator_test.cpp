#include "suite/shellhost/format_enumerator.h"

#include <gtest/gtest.h>

TEST(FormatEnumerator, EndsBehindItsOneFormatUntilItIsReset) {
    ComPtr<IEnumFORMATETC> formats = MakeDropFormatEnumerator();
    FORMATETC format = {};
    EXPECT_EQ(formats->Next(1, &format, nullptr), S_OK);
    EXPECT_EQ(format.cfFormat, CF_HDROP);
    EXPECT_EQ(formats->Next(1, &format, nullptr), S_FALSE);
    EXPECT_EQ(formats->Reset(), S_OK);
    EXPECT_EQ(formats->Next(1, &format, nullptr), S_OK);
}

TEST(FormatEnumerator, AsksForACountOfSeveral) {
    ComPtr<IEnumFORMATETC> formats = MakeDropFormatEnumerator();
    FORMATETC two[2] = {};
    EXPECT_EQ(formats->Next(2, two, nullptr), E_INVALIDARG);
    ULONG count = 9;
    EXPECT_EQ(formats->Next(0, two, &count), S_OK);
    EXPECT_EQ(count, 0u);
}

TEST(FormatEnumerator, SkipsNoFurtherThanItsEnd) {
    ComPtr<IEnumFORMATETC> formats = MakeDropFormatEnumerator();
    EXPECT_EQ(formats->Skip(2), S_FALSE);
    FORMATETC format = {};
    EXPECT_EQ(formats->Next(1, &format, nullptr), S_FALSE);
    EXPECT_EQ(formats->Reset(), S_OK);
    EXPECT_EQ(formats->Skip(1), S_OK);
}

TEST(FormatEnumerator, ACloneGoesOnFromTheSamePlace) {
    ComPtr<IEnumFORMATETC> formats = MakeDropFormatEnumerator();
    ASSERT_EQ(formats->Skip(1), S_OK);
    ComPtr<IEnumFORMATETC> clone;
    ASSERT_EQ(formats->Clone(clone.Put()), S_OK);
    ASSERT_EQ(formats->Reset(), S_OK);
    FORMATETC format = {};
    EXPECT_EQ(clone->Next(1, &format, nullptr), S_FALSE);
    EXPECT_EQ(formats->Next(1, &format, nullptr), S_OK);
}

TEST(FormatEnumerator, RefusesToAnswerIntoNothing) {
    ComPtr<IEnumFORMATETC> formats = MakeDropFormatEnumerator();
    ULONG count = 0;
    EXPECT_EQ(formats->Next(1, nullptr, &count), E_INVALIDARG);
    EXPECT_EQ(formats->Clone(nullptr), E_INVALIDARG);
    EXPECT_EQ(formats->QueryInterface(IID_IEnumFORMATETC, nullptr), E_POINTER);
}

TEST(FormatEnumerator, IsItselfUnderBothItsInterfacesAndCountsThem) {
    ComPtr<IEnumFORMATETC> formats = MakeDropFormatEnumerator();
    ComPtr<IUnknown> unknown;
    ASSERT_EQ(formats->QueryInterface(IID_IUnknown, unknown.PutVoid()), S_OK);
    EXPECT_EQ(unknown.Get(), formats.Get());
    ComPtr<IUnknown> stranger;
    EXPECT_EQ(formats->QueryInterface(IID_IDataObject, stranger.PutVoid()), E_NOINTERFACE);
    EXPECT_FALSE(stranger);
    EXPECT_EQ(formats->AddRef(), 3u);
    EXPECT_EQ(formats->Release(), 2u);
}
