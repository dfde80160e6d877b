#include "foundation/module_instance.h"
#include "shell/shell_ids.h"
#include "shell/type_info.h"
#include "tests/shell/loaded_module.h"

#include <gtest/gtest.h>

#include <oleauto.h>

#include <string>

namespace {

// The texts of a library (MEMBERID_NIL) or of one description in it.
struct Texts {
    std::wstring Name;
    std::wstring Help;
    bool operator==(const Texts&) const = default;
};

std::wstring Taken(BSTR text) {
    std::wstring taken(text ? text : L"");
    SysFreeString(text);
    return taken;
}

Texts TextsOf(ITypeLib* library, int index) {
    BSTR name = nullptr;
    BSTR help = nullptr;
    EXPECT_EQ(library->GetDocumentation(index, &name, &help, nullptr, nullptr), S_OK);
    return {Taken(name), Taken(help)};
}

// What a description derives from; empty on failure.
ComPtr<ITypeInfo> Inherited(ITypeInfo* info, UINT index) {
    ComPtr<ITypeInfo> inherited;
    HREFTYPE reference = 0;
    EXPECT_EQ(info->GetRefTypeOfImplType(index, &reference), S_OK);
    EXPECT_EQ(info->GetRefTypeInfo(reference, inherited.Put()), S_OK);
    return inherited;
}

// The module's own code works on the module's own resources: the tests lend
// it the built module's instance.
class TypeInformation : public testing::Test {
protected:
    TypeInformation() { NSetModuleInstance(module.Handle()); }
    ~TypeInformation() override { NSetModuleInstance(nullptr); }

    Apartment apartment;
    LoadedModule module;
};

} // namespace

TEST_F(TypeInformation, TheLibraryHasItsIdsAndTexts) {
    ComPtr<ITypeLib> library;
    ASSERT_EQ(NLoadModuleTypeLibrary(library), S_OK);

    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->guid, LIBID_TNWSHELLLib);
    EXPECT_EQ(attributes->wMajorVerNum, 1);
    EXPECT_EQ(attributes->wMinorVerNum, 0);
    EXPECT_EQ(attributes->lcid, 0u);
    EXPECT_EQ(attributes->syskind, SYS_WIN64);
    library->ReleaseTLibAttr(attributes);
    EXPECT_EQ(TextsOf(library.Get(), -1), (Texts{L"TNWSHELLLib", L"tNWShell 1.0 Type Library"}));
}

TEST_F(TypeInformation, TheLibraryDescribesTheInterfaceAndTheClassAlone) {
    ComPtr<ITypeLib> library;
    ASSERT_EQ(NLoadModuleTypeLibrary(library), S_OK);
    ASSERT_EQ(library->GetTypeInfoCount(), 2u)
        << "a definition of IDispatch of its own would be registered in place of the system's";

    bool interfaceSeen = false;
    bool classSeen = false;
    for (int index = 0; index < 2; ++index) {
        ComPtr<ITypeInfo> info;
        ASSERT_EQ(library->GetTypeInfo(static_cast<UINT>(index), info.Put()), S_OK);
        TYPEATTR* attributes = nullptr;
        ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
        Texts texts = TextsOf(library.Get(), index);
        if (attributes->guid == IID_ItNWIShell) {
            interfaceSeen = true;
            EXPECT_EQ(attributes->typekind, TKIND_DISPATCH);
            EXPECT_TRUE(attributes->wTypeFlags & TYPEFLAG_FDUAL);
            EXPECT_EQ(texts, (Texts{L"ItNWIShell", L"ItNWIShell Interface"}));
        } else {
            classSeen = attributes->guid == CLSID_tNWIShell;
            EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
            EXPECT_EQ(texts, (Texts{L"tNWIShell", L"tNWIShell Class"}));
        }
        info->ReleaseTypeAttr(attributes);
    }
    EXPECT_TRUE(interfaceSeen);
    EXPECT_TRUE(classSeen);
}

TEST_F(TypeInformation, TheInterfaceIsFoundByItsId) {
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(NLoadModuleTypeInfo(IID_ItNWIShell, info), S_OK);

    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->guid, IID_ItNWIShell);
    info->ReleaseTypeAttr(attributes);
}

TEST_F(TypeInformation, TheInterfaceHasTheOperationsOfIDispatchAndNoOthers) {
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(NLoadModuleTypeInfo(IID_ItNWIShell, info), S_OK);
    constexpr size_t Operations = 7; // those of IUnknown among them
    // -1 asks a dual interface for its other half, the one with a table.
    ComPtr<ITypeInfo> table = Inherited(info.Get(), static_cast<UINT>(-1));
    ASSERT_TRUE(table);
    ComPtr<ITypeInfo> base = Inherited(table.Get(), 0);
    ASSERT_TRUE(base);

    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(table->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_INTERFACE);
    EXPECT_EQ(attributes->cFuncs, 0);
    EXPECT_EQ(attributes->cbSizeVft, Operations * sizeof(void*));
    table->ReleaseTypeAttr(attributes);
    ASSERT_EQ(base->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->guid, IID_IDispatch);
    base->ReleaseTypeAttr(attributes);
}

TEST_F(TypeInformation, AnInterfaceThatTheLibraryHasNotIsAFailure) {
    ComPtr<ITypeInfo> info;

    EXPECT_EQ(NLoadModuleTypeInfo(IID_IStream, info), TYPE_E_ELEMENTNOTFOUND);
    EXPECT_FALSE(info);
}

TEST_F(TypeInformation, AModuleWithoutALibraryIsAFailure) {
    NSetModuleInstance(nullptr);
    ComPtr<ITypeLib> library;
    ComPtr<ITypeInfo> info;

    EXPECT_TRUE(FAILED(NLoadModuleTypeLibrary(library)));
    EXPECT_FALSE(library);
    EXPECT_TRUE(FAILED(NLoadModuleTypeInfo(IID_ItNWIShell, info)));
    EXPECT_FALSE(info);
}
