#include "foundation/nreg.h"
#include "foundation/unique_handle.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/test_registry_key.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {
class Registry : public testing::Test {
protected:
    void TearDown() override { NRegSetDefault(nullptr, nullptr); }

    // Writes a value of any type as it stands.
    void Put(const wchar_t* name, DWORD type, const void* data, DWORD size) {
        RegSetKeyValueW(HKEY_CURRENT_USER, key_.Path(), name, type, data, size);
    }

    TestRegistryKey key_;
    HKEY root_ = HKEY_CURRENT_USER;
};

// A key that grants everybody the access it is told to, and no other. Of that
// the standard rights can't be relied on: an owner or an administrator has them
// in any case.
class RegistryAccess : public Registry {
protected:
    static constexpr REGSAM Query = 1;
    static constexpr REGSAM Write = 0x20006;
    static constexpr REGSAM All = 0xF003F;

    void SetUp() override {
        ASSERT_TRUE(NRegWriteDword(7, L"Number", root_, key_.Path()));
        ASSERT_EQ(RegOpenKeyExW(root_, key_.Path(), 0, All, opened_.Put()), ERROR_SUCCESS);
    }
    void TearDown() override {
        Grant(All);
        Registry::TearDown();
    }

    void Grant(REGSAM access) {
        DWORD everybody[SECURITY_MAX_SID_SIZE / sizeof(DWORD)];
        DWORD size = sizeof(everybody);
        ASSERT_TRUE(CreateWellKnownSid(WinWorldSid, nullptr, everybody, &size));
        DWORD list[64];
        auto* acl = reinterpret_cast<ACL*>(list);
        ASSERT_TRUE(InitializeAcl(acl, sizeof(list), ACL_REVISION));
        ASSERT_TRUE(AddAccessAllowedAce(acl, ACL_REVISION, access, everybody));
        SECURITY_DESCRIPTOR descriptor;
        ASSERT_TRUE(InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION));
        ASSERT_TRUE(SetSecurityDescriptorDacl(&descriptor, TRUE, acl, FALSE));
        ASSERT_EQ(RegSetKeySecurity(opened_.Get(), DACL_SECURITY_INFORMATION, &descriptor),
                  ERROR_SUCCESS);
    }
    // Calls `check` with each of the registry's own rights in `access` taken
    // away in turn.
    template <typename Check>
    void WithoutEachOf(REGSAM access, Check check) {
        for (REGSAM right = 1; right <= SPECIFIC_RIGHTS_ALL; right <<= 1) {
            if (!(access & right))
                continue;
            SCOPED_TRACE(right);
            Grant(All & ~right);
            check();
        }
    }
    // Past all functions under test.
    bool IsThere(const wchar_t* name) {
        return RegQueryValueExW(opened_.Get(), name, nullptr, nullptr, nullptr, nullptr) ==
               ERROR_SUCCESS;
    }

    UniqueRegKey opened_;
};
} // namespace

TEST_F(Registry, ANumberComesBack) {
    EXPECT_TRUE(NRegWriteDword(0xFEDCBA98, L"Number", root_, key_.Path()));
    bool failed = true;
    EXPECT_EQ(NRegReadDword(L"Number", root_, key_.Path(), &failed), 0xFEDCBA98u);
    EXPECT_FALSE(failed);
    EXPECT_EQ(NRegValueType(L"Number", root_, key_.Path()), DWORD{REG_DWORD});
    EXPECT_EQ(NRegValueSize(L"Number", root_, key_.Path()), 4u);
}

TEST_F(Registry, AMissingNumberIsZeroAndTheFlagSaysSo) {
    bool failed = false;
    EXPECT_EQ(NRegReadDword(L"Number", root_, key_.Path(), &failed), 0u);
    EXPECT_TRUE(failed);
    NRegWriteDword(0, L"Number", root_, key_.Path());
    EXPECT_EQ(NRegReadDword(L"Number", root_, key_.Path(), &failed), 0u);
    EXPECT_FALSE(failed);
}

TEST_F(Registry, ATextComesBackWithItsTerminatorCounted) {
    EXPECT_TRUE(NRegWriteString(L"Bj\u00F6rk \u4E2D", L"Text", root_, key_.Path()));
    bool failed = true;
    EXPECT_EQ(NRegReadString(L"Text", root_, key_.Path(), &failed), L"Bj\u00F6rk \u4E2D");
    EXPECT_FALSE(failed);
    EXPECT_EQ(NRegValueType(L"Text", root_, key_.Path()), DWORD{REG_SZ});
    EXPECT_EQ(NRegValueSize(L"Text", root_, key_.Path()), 16u);
}

TEST_F(Registry, ATextToExpandIsReadAsItStands) {
    EXPECT_TRUE(NRegWriteString(L"%TEMP%\\x", L"Text", root_, key_.Path(), true));
    EXPECT_EQ(NRegReadString(L"Text", root_, key_.Path()), L"%TEMP%\\x");
    EXPECT_EQ(NRegValueType(L"Text", root_, key_.Path()), DWORD{REG_EXPAND_SZ});
}

TEST_F(Registry, ATextLongerThanAnInlineStringComesBack) {
    NString text;
    text.SetLength(5000, L'x');
    NRegWriteString(text.Text, L"Text", root_, key_.Path());
    EXPECT_EQ(NRegReadString(L"Text", root_, key_.Path()), text);
}

TEST_F(Registry, ATextWithoutATerminatorEndsWithItsData) {
    Put(L"Text", REG_SZ, L"abc", 4);
    EXPECT_EQ(NRegReadString(L"Text", root_, key_.Path()), L"ab");
    Put(L"Text", REG_SZ, L"abc", 3);
    EXPECT_EQ(NRegReadString(L"Text", root_, key_.Path()), L"ab");
}

TEST_F(Registry, ATextEndsAtItsFirstTerminator) {
    Put(L"Text", REG_SZ, L"ab\0cd", 12);
    EXPECT_EQ(NRegReadString(L"Text", root_, key_.Path()), L"ab");
}

TEST_F(Registry, ANumberReadAsATextIsEmpty) {
    NRegWriteDword(0x00410041, L"Value", root_, key_.Path());
    bool failed = false;
    EXPECT_EQ(NRegReadString(L"Value", root_, key_.Path(), &failed), L"");
    EXPECT_TRUE(failed);
}

TEST_F(Registry, ATextReadAsANumberIsZeroAndTheFlagSaysSo) {
    // One unit and its terminator have the size of a number.
    NRegWriteString(L"A", L"Value", root_, key_.Path());
    bool failed = false;
    EXPECT_EQ(NRegReadDword(L"Value", root_, key_.Path(), &failed), 0u);
    EXPECT_TRUE(failed);
}

TEST_F(Registry, AMissingTextIsEmpty) {
    bool failed = false;
    EXPECT_EQ(NRegReadString(L"Text", root_, key_.Path(), &failed), L"");
    EXPECT_TRUE(failed);
    Put(L"Text", REG_SZ, L"", 0);
    EXPECT_EQ(NRegReadString(L"Text", root_, key_.Path(), &failed), L"");
    EXPECT_FALSE(failed);
}

TEST_F(Registry, BytesComeBack) {
    uint8_t written[] = {1, 2, 0, 255};
    NRegWriteBinary(L"Bytes", written, sizeof(written), root_, key_.Path());
    uint8_t read[6] = {9, 9, 9, 9, 9, 9};
    EXPECT_TRUE(NRegGetBinary(L"Bytes", read, sizeof(read), root_, key_.Path()));
    EXPECT_EQ(memcmp(read, written, sizeof(written)), 0);
    EXPECT_EQ(read[4], 9);
    EXPECT_EQ(NRegValueType(L"Bytes", root_, key_.Path()), DWORD{REG_BINARY});
}

TEST_F(Registry, ABufferIsZeroedWheneverItsReadFails) {
    const std::vector<uint8_t> zeros(4);
    auto read = [&](const wchar_t* name, const wchar_t* subKey) {
        std::vector<uint8_t> buffer(4, 9);
        EXPECT_FALSE(NRegGetBinary(name, buffer.data(), 4, root_, subKey));
        return buffer;
    };
    EXPECT_EQ(read(L"Missing", key_.Path()), zeros);
    EXPECT_EQ(read(L"Missing", L""), zeros);
    NRegWriteDword(0x01010101, L"WrongType", root_, key_.Path());
    EXPECT_EQ(read(L"WrongType", key_.Path()), zeros);
    NRegWriteBinary(L"TooLong", "abcde", 5, root_, key_.Path());
    EXPECT_EQ(read(L"TooLong", key_.Path()), zeros);
}

TEST_F(Registry, ReadingFromAKeyThatDoesntExistMakesIt) {
    ASSERT_FALSE(key_.Exists());
    NRegReadDword(L"Number", root_, key_.Path());
    EXPECT_TRUE(key_.Exists());
    EXPECT_FALSE(NRegValueExists(L"Number", root_, key_.Path()));
}

TEST_F(Registry, AKeyThatAReadMakesIsEmpty) {
    NRegReadString(L"Text", root_, key_.Path());
    UniqueRegKey made;
    ASSERT_EQ(RegOpenKeyExW(root_, key_.Path(), 0, KEY_QUERY_VALUE, made.Put()), ERROR_SUCCESS);
    wchar_t keyClass[16] = L"x";
    DWORD classUnits = 16, subKeys = 9, values = 9;
    ASSERT_EQ(RegQueryInfoKeyW(made.Get(), keyClass, &classUnits, nullptr, &subKeys, nullptr,
                               nullptr, &values, nullptr, nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(subKeys, 0u);
    EXPECT_EQ(values, 0u);
    EXPECT_EQ(NString(keyClass), L"");
}

TEST_F(Registry, AValueWithEmptyDataExists) {
    NRegWriteBinary(L"Empty", nullptr, 0, root_, key_.Path());
    EXPECT_TRUE(NRegValueExists(L"Empty", root_, key_.Path()));
    bool failed = true;
    EXPECT_EQ(NRegValueSize(L"Empty", root_, key_.Path(), &failed), 0u);
    EXPECT_FALSE(failed);
}

TEST_F(Registry, AMissingValueHasNeitherSizeNorType) {
    bool failed = false;
    EXPECT_EQ(NRegValueSize(L"Missing", root_, key_.Path(), &failed), 0u);
    EXPECT_TRUE(failed);
    failed = false;
    EXPECT_EQ(NRegValueType(L"Missing", root_, key_.Path(), &failed), 0u);
    EXPECT_TRUE(failed);
}

TEST_F(Registry, ADeletedValueIsGone) {
    NRegWriteDword(1, L"Number", root_, key_.Path());
    NRegDeleteValue(L"Number", root_, key_.Path());
    EXPECT_FALSE(NRegValueExists(L"Number", root_, key_.Path()));
    NRegDeleteValue(L"Number", root_, key_.Path());
}

TEST_F(Registry, TheDefaultsStandInForWhatIsLeftOut) {
    NRegSetDefault(HKEY_CURRENT_USER, key_.Path());
    EXPECT_TRUE(NRegWriteDword(7, L"Number"));
    EXPECT_EQ(NRegReadDword(L"Number", root_, key_.Path()), 7u);
    EXPECT_EQ(NRegReadDword(L"Number", root_), 7u);
    EXPECT_EQ(NRegReadDword(L"Number", nullptr, key_.Path()), 7u);
}

TEST_F(Registry, AGivenSubKeyGoesBeforeTheDefault) {
    TestRegistryKey other;
    NRegSetDefault(HKEY_CURRENT_USER, other.Path());
    NRegWriteDword(7, L"Number", nullptr, key_.Path());
    EXPECT_TRUE(key_.Exists());
    EXPECT_FALSE(other.Exists());
}

TEST_F(Registry, WithoutASubKeyNothingIsTouched) {
    bool failed = false;
    EXPECT_FALSE(NRegWriteDword(7, L"TonewrightTestNumber", root_));
    EXPECT_EQ(NRegReadDword(L"TonewrightTestNumber", root_, nullptr, &failed), 0u);
    EXPECT_TRUE(failed);
    EXPECT_FALSE(NRegWriteString(L"x", L"TonewrightTestNumber", root_, L""));
    EXPECT_FALSE(NRegValueExists(L"TonewrightTestNumber", root_, L""));
}

TEST_F(Registry, WithoutARootNothingIsWritten) {
    EXPECT_FALSE(NRegWriteDword(7, L"Number", nullptr, key_.Path()));
    EXPECT_FALSE(key_.Exists());
}

TEST_F(RegistryAccess, ReadingAsksForTheRightToQueryAlone) {
    NRegWriteString(L"text", L"Text", root_, key_.Path());
    NRegWriteBinary(L"Bytes", "ab", 2, root_, key_.Path());
    auto reads = [&](bool expected) {
        char bytes[2];
        EXPECT_EQ(NRegReadDword(L"Number", root_, key_.Path()) == 7, expected);
        EXPECT_EQ(NRegReadString(L"Text", root_, key_.Path()) == L"text", expected);
        EXPECT_EQ(NRegGetBinary(L"Bytes", bytes, 2, root_, key_.Path()), expected);
        EXPECT_EQ(NRegValueExists(L"Number", root_, key_.Path()), expected);
        EXPECT_EQ(NRegValueSize(L"Number", root_, key_.Path()) == 4, expected);
        EXPECT_EQ(NRegValueType(L"Number", root_, key_.Path()) == REG_DWORD, expected);
    };
    Grant(Query);
    reads(true);
    Grant(All & ~Query);
    reads(false);
}

TEST_F(RegistryAccess, WritingAsksForTheRightsToWriteAlone) {
    Grant(Write);
    EXPECT_TRUE(NRegWriteDword(8, L"Other", root_, key_.Path()));
    EXPECT_TRUE(NRegWriteString(L"text", L"Text", root_, key_.Path()));
    NRegWriteBinary(L"Bytes", "ab", 2, root_, key_.Path());
    EXPECT_TRUE(IsThere(L"Bytes"));
    WithoutEachOf(Write, [&] {
        EXPECT_FALSE(NRegWriteDword(8, L"Late", root_, key_.Path()));
        EXPECT_FALSE(NRegWriteString(L"text", L"Late", root_, key_.Path()));
        NRegWriteBinary(L"Late", "ab", 2, root_, key_.Path());
        EXPECT_FALSE(IsThere(L"Late"));
    });
}

TEST_F(RegistryAccess, DeletingAsksForAllRights) {
    WithoutEachOf(All, [&] {
        NRegDeleteValue(L"Number", root_, key_.Path());
        EXPECT_TRUE(IsThere(L"Number"));
    });
    Grant(All);
    NRegDeleteValue(L"Number", root_, key_.Path());
    EXPECT_FALSE(IsThere(L"Number"));
}
