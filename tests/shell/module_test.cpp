// The built module as others see it: its file, its exports, its object.

#include "foundation/com_owners.h"
#include "shell/shell_ids.h"
#include "tests/shell/fake_data_object.h"
#include "tests/shell/loaded_module.h"
#include "tests/shell/portable_executable.h"
#include "tests/support/converter_stand_in.h"

#include <gtest/gtest.h>

#include <oleauto.h>
#include <shlobj.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

class BuiltModule : public testing::Test {
protected:
    template <typename Interface>
    ComPtr<Interface> Create(REFIID iid) {
        ComPtr<IClassFactory> factory;
        EXPECT_EQ(module.GetClassObject(CLSID_tNWIShell, IID_IClassFactory, factory.PutVoid()),
                  S_OK);
        ComPtr<Interface> object;
        EXPECT_EQ(factory->CreateInstance(nullptr, iid, object.PutVoid()), S_OK);
        return object;
    }

    std::string_view Resource(const wchar_t* type, WORD id) const {
        HRSRC found = FindResourceW(module.Handle(), MAKEINTRESOURCEW(id), type);
        if (!found)
            return {};
        return {static_cast<const char*>(LockResource(LoadResource(module.Handle(), found))),
                SizeofResource(module.Handle(), found)};
    }

    Apartment apartment;
    LoadedModule module;
};

} // namespace

TEST_F(BuiltModule, ExportsFivePlainNamesAndNoMore) {
    EXPECT_EQ(ExportedNames(module.Handle()),
              (std::set<std::string>{"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer",
                                     "DllUnregisterServer", "EditIDTags"}));
}

TEST_F(BuiltModule, ImportsLibrariesOfTheSystemAlone) {
    const std::set<std::string> system = {
        "advapi32.dll", "comctl32.dll", "comdlg32.dll", "gdi32.dll",   "kernel32.dll",
        "msvcrt.dll",   "ole32.dll",    "oleaut32.dll", "shell32.dll", "user32.dll"};
    for (const std::string& library : ImportedLibraries(module.Handle()))
        EXPECT_TRUE(system.contains(library)) << library;
}

// What the call does can't be seen: for a module with static thread storage it
// does nothing.
TEST_F(BuiltModule, WantsNoCallsForThreads) {
    EXPECT_TRUE(ImportedNames(module.Handle()).contains("DisableThreadLibraryCalls"));
}

TEST_F(BuiltModule, IsHardened) {
    const IMAGE_NT_HEADERS64& headers = HeadersOf(module.Handle());

    EXPECT_TRUE(headers.OptionalHeader.DllCharacteristics & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
    EXPECT_TRUE(headers.OptionalHeader.DllCharacteristics & IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
    EXPECT_TRUE(headers.OptionalHeader.DllCharacteristics &
                IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA);
    EXPECT_FALSE(headers.FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED);
    EXPECT_TRUE(headers.FileHeader.Characteristics & IMAGE_FILE_DLL);
#ifdef NDEBUG
    EXPECT_EQ(headers.FileHeader.NumberOfSymbols, 0u);
#endif
}

TEST_F(BuiltModule, HoldsNoTimeOfItsBuild) {
    EXPECT_EQ(HeadersOf(module.Handle()).FileHeader.TimeDateStamp, 0u);
    EXPECT_NE(Resource(L"TYPELIB", 1).find(" at Wed Jan  1 00:00:00 2020\n"),
              std::string_view::npos);
}

TEST_F(BuiltModule, HasTheRegistrarScriptAndTheTypeLibraryUnderTheirIds) {
    std::string_view script = Resource(L"REGISTRY", 101);
    for (const char* line :
         {"NoRemove CLSID\n", "ForceRemove {7A1E4C10-93D2-4F6B-8C21-5E0B7D3FA911} = s",
          "ForceRemove Programmable\n", "InprocServer32 = s '%MODULE%'\n"}) {
        EXPECT_NE(script.find(line), std::string_view::npos) << line;
    }
    EXPECT_TRUE(Resource(L"TYPELIB", 1).starts_with("MSFT"));
}

TEST_F(BuiltModule, TellsItsNameAndVersion) {
    DWORD ignored = 0;
    std::wstring path = BuiltModulePath();
    std::vector<std::byte> block(GetFileVersionInfoSizeW(path.c_str(), &ignored));
    ASSERT_FALSE(block.empty());
    ASSERT_TRUE(
        GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
    wchar_t* text = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\StringFileInfo\\040904B0\\OriginalFilename",
                               reinterpret_cast<void**>(&text), &length));
    EXPECT_STREQ(text, L"tNWShell.DLL");
    VS_FIXEDFILEINFO* fixed = nullptr;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &length));
    EXPECT_EQ(fixed->dwFileVersionMS, 0x00010000u);
}

TEST_F(BuiltModule, MayBeUnloadedWhenItsObjectsAndFactoriesAreGone) {
    EXPECT_EQ(module.CanUnloadNow(), S_OK);

    ComPtr<IClassFactory> factory;
    ASSERT_EQ(module.GetClassObject(CLSID_tNWIShell, IID_IClassFactory, factory.PutVoid()), S_OK);
    EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
    ComPtr<IShellExtInit> object;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IShellExtInit, object.PutVoid()), S_OK);
    factory.Reset();
    EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
    object.Reset();
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST_F(BuiltModule, StaysLoadedForALockedServer) {
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(module.GetClassObject(CLSID_tNWIShell, IID_IClassFactory, factory.PutVoid()), S_OK);
    factory->LockServer(TRUE);
    factory.Reset();
    EXPECT_EQ(module.CanUnloadNow(), S_FALSE);

    ASSERT_EQ(module.GetClassObject(CLSID_tNWIShell, IID_IClassFactory, factory.PutVoid()), S_OK);
    factory->LockServer(FALSE);
    factory.Reset();
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST_F(BuiltModule, ServesOneClass) {
    void* factory = this;
    EXPECT_EQ(module.GetClassObject(IID_ItNWIShell, IID_IClassFactory, &factory),
              CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(factory, nullptr);
    EXPECT_EQ(module.GetClassObject(CLSID_tNWIShell, IID_IClassFactory, nullptr), E_POINTER);
}

TEST_F(BuiltModule, ItsObjectTakesADropList) {
    ComPtr<IShellExtInit> object = Create<IShellExtInit>(IID_IShellExtInit);
    FakeDataObject data(std::vector<std::wstring>{L"C:\\a.mp3"});

    EXPECT_EQ(object->Initialize(nullptr, &data, nullptr), S_OK);
    EXPECT_EQ(data.MediumReleases(), 1);
    EXPECT_EQ(object->Initialize(nullptr, nullptr, nullptr), E_INVALIDARG);
}

TEST_F(BuiltModule, HasThePicturesOfItsMenuUnderTheirIds) {
    for (int id : {203, 211}) {
        BITMAP size = {};
        HBITMAP picture = LoadBitmapW(module.Handle(), MAKEINTRESOURCEW(id));
        EXPECT_NE(GetObjectW(picture, sizeof(size), &size), 0) << id;
        EXPECT_EQ(size.bmWidth, 16) << id;
        EXPECT_EQ(size.bmHeight, 16) << id;
        DeleteObject(picture);
    }
}

TEST_F(BuiltModule, StartsTheConverterOfItsOwnFolder) {
    TemporaryFolder folder;
    LoadedModule copy(folder.CopyModule());
    CopyFileW(ConverterStandIn::ProgramPath().c_str(), (folder.Path() + L"\\WaveSmith.exe").c_str(),
              TRUE);
    ConverterStandIn converter;
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(copy.GetClassObject(CLSID_tNWIShell, IID_IClassFactory, factory.PutVoid()), S_OK);
    ComPtr<IShellExtInit> object;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IShellExtInit, object.PutVoid()), S_OK);
    ComPtr<IContextMenu> menu;
    ASSERT_EQ(object->QueryInterface(IID_IContextMenu, menu.PutVoid()), S_OK);
    FakeDataObject data(std::vector<std::wstring>{L"C:\\a.mp3"});
    ASSERT_EQ(object->Initialize(nullptr, &data, nullptr), S_OK);
    CMINVOKECOMMANDINFO command = {};
    command.lpVerb = "Convert_To";

    EXPECT_EQ(menu->InvokeCommand(&command), S_OK);

    ASSERT_TRUE(converter.HasStarted());
    EXPECT_TRUE(converter.CommandLine().starts_with(L"\"" + folder.Path() + L"\\WaveSmith.exe\" "))
        << NString(converter.CommandLine().c_str()).ToNarrow();
    EXPECT_EQ(converter.List(), ListFileOf({L"C:\\a.mp3"}));
    EXPECT_TRUE(converter.LetEnd());
}

TEST_F(BuiltModule, ItsObjectHasAllItsInterfaces) {
    ComPtr<IUnknown> object = Create<IUnknown>(IID_IUnknown);
    for (const IID* iid : {&IID_IDispatch, &IID_ItNWIShell, &IID_IShellExtInit, &IID_IContextMenu,
                           &IID_IShellPropSheetExt}) {
        ComPtr<IUnknown> other;
        EXPECT_EQ(object->QueryInterface(*iid, other.PutVoid()), S_OK);
    }
}

TEST_F(BuiltModule, ItsObjectDescribesItself) {
    ComPtr<IDispatch> object = Create<IDispatch>(IID_IDispatch);
    UINT count = 0;
    EXPECT_EQ(object->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1u);

    ComPtr<ITypeInfo> info;
    ASSERT_EQ(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Put()), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->guid, IID_ItNWIShell);
    info->ReleaseTypeAttr(attributes);
}

TEST_F(BuiltModule, ItsObjectHasNoMembersToCall) {
    ComPtr<IDispatch> object = Create<IDispatch>(IID_IDispatch);
    wchar_t text[] = L"Play";
    LPOLESTR name = text;
    DISPID id = 0;
    DISPPARAMS none = {};

    EXPECT_EQ(object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id),
              DISP_E_UNKNOWNNAME);
    EXPECT_EQ(object->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr,
                             nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
}

TEST_F(BuiltModule, ItsEditEntryLeavesTheListFileAsItIs) {
    TemporaryFolder folder;
    std::filesystem::path list = folder.Path() + L"\\list.txt";
    std::ofstream(list) << "kept";

    auto edit = reinterpret_cast<void (*)(const wchar_t*)>(module.Export("EditIDTags"));
    ASSERT_NE(edit, nullptr);
    edit(list.c_str());

    EXPECT_EQ(std::filesystem::file_size(list), 4u);
}
