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
