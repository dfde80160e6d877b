// The module as a user's machine has it: registered by the platform's own
// program, and created by the id of its class.

#include "foundation/com_owners.h"
#include "shell/shell_ids.h"
#include "tests/shell/fake_data_object.h"
#include "tests/shell/loaded_module.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <string>
#include <thread>
#include <vector>

namespace {

constexpr wchar_t ServerKey[] = L"CLSID\\{7A1E4C10-93D2-4F6B-8C21-5E0B7D3FA911}\\InprocServer32";

// The default value of a key below HKEY_CLASSES_ROOT; empty if there is none.
std::wstring ClassesRootText(const std::wstring& key) {
    wchar_t text[1024] = {};
    DWORD bytes = sizeof text;
    LSTATUS status =
        RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &bytes);
    return status == ERROR_SUCCESS ? text : L"";
}

// Runs the platform's registering program, and returns its exit code.
DWORD RunRegsvr32(const std::wstring& options, const std::wstring& module) {
    std::wstring commandLine = L"regsvr32.exe " + options + L" \"" + module + L"\"";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process))
        return ~0u;
    UniqueKernelHandle thread(process.hThread);
    UniqueKernelHandle handle(process.hProcess);
    WaitForSingleObject(handle.Get(), INFINITE);
    DWORD code = ~0u;
    GetExitCodeProcess(handle.Get(), &code);
    return code;
}

// Puts back, at the end, the registration that it found.
class InstalledModule : public testing::Test {
protected:
    InstalledModule() : former_(ClassesRootText(ServerKey)) {}
    ~InstalledModule() override {
        if (!former_.empty())
            RunRegsvr32(L"/s", former_);
        else if (!ClassesRootText(ServerKey).empty())
            RunRegsvr32(L"/u /s", BuiltModulePath());
    }

    Apartment apartment;

private:
    std::wstring former_;
};

} // namespace

TEST_F(InstalledModule, IsRegisteredAndUnregisteredByThePlatformsProgram) {
    EXPECT_EQ(RunRegsvr32(L"/s", BuiltModulePath()), 0u);
    EXPECT_EQ(ClassesRootText(ServerKey), BuiltModulePath());
    EXPECT_EQ(ClassesRootText(L"TNWShell.tNWIShell\\CurVer"), L"TNWShell.tNWIShell.1");

    EXPECT_EQ(RunRegsvr32(L"/u /s", BuiltModulePath()), 0u);
    EXPECT_EQ(ClassesRootText(ServerKey), L"");
    EXPECT_EQ(ClassesRootText(L"TNWShell.tNWIShell.1"), L"");
    EXPECT_EQ(ClassesRootText(L"TNWShell.tNWIShell"), L"");
}

TEST_F(InstalledModule, IsRegisteredFromAFolderWithBlanksQuotesAndAccents) {
    TemporaryFolder folder(L"it's \u00fcber the top");
    std::wstring copy = folder.CopyModule();

    EXPECT_EQ(RunRegsvr32(L"/s", copy), 0u);
    EXPECT_EQ(ClassesRootText(ServerKey), copy);
    EXPECT_EQ(RunRegsvr32(L"/u /s", copy), 0u);
    EXPECT_EQ(ClassesRootText(ServerKey), L"");
}

TEST_F(InstalledModule, IsCreatedByTheIdOfItsClass) {
    ASSERT_EQ(RunRegsvr32(L"/s", BuiltModulePath()), 0u);

    for (const IID* iid : {&IID_ItNWIShell, &IID_IDispatch, &IID_IShellExtInit, &IID_IContextMenu,
                           &IID_IShellPropSheetExt}) {
        ComPtr<IUnknown> object;
        EXPECT_EQ(CoCreateInstance(CLSID_tNWIShell, nullptr, CLSCTX_INPROC_SERVER, *iid,
                                   object.PutVoid()),
                  S_OK);
    }
}

// The object lives in an apartment that the platform makes for it, and is
// reached through proxies; that of its own interface is made from the
// registered type library.
TEST_F(InstalledModule, IsCreatedFromAThreadWithoutAnApartment) {
    ASSERT_EQ(RunRegsvr32(L"/s", BuiltModulePath()), 0u);

    std::thread([] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        for (const IID* iid : {&IID_IDispatch, &IID_ItNWIShell}) {
            ComPtr<IDispatch> object;
            EXPECT_EQ(CoCreateInstance(CLSID_tNWIShell, nullptr, CLSCTX_INPROC_SERVER, *iid,
                                       object.PutVoid()),
                      S_OK);
            UINT count = 0;
            EXPECT_TRUE(object && object->GetTypeInfoCount(&count) == S_OK);
            EXPECT_EQ(count, 1u);
        }
        CoUninitialize();
    }).join();
}

TEST_F(InstalledModule, IsCreatedByItsProgramName) {
    ASSERT_EQ(RunRegsvr32(L"/s", BuiltModulePath()), 0u);

    for (const wchar_t* name : {L"TNWShell.tNWIShell", L"TNWShell.tNWIShell.1"}) {
        CLSID clsid = {};
        EXPECT_EQ(CLSIDFromProgID(name, &clsid), S_OK);
        EXPECT_EQ(clsid, CLSID_tNWIShell);
    }
}

TEST_F(InstalledModule, ItsObjectTakesTheFilesOfADataObject) {
    ASSERT_EQ(RunRegsvr32(L"/s", BuiltModulePath()), 0u);
    ComPtr<IShellExtInit> object;
    ASSERT_EQ(CoCreateInstance(CLSID_tNWIShell, nullptr, CLSCTX_INPROC_SERVER, IID_IShellExtInit,
                               object.PutVoid()),
              S_OK);
    FakeDataObject data(std::vector<std::wstring>{L"C:\\a.mp3", L"C:\\b.mp3"});

    EXPECT_EQ(object->Initialize(nullptr, &data, nullptr), S_OK);
    EXPECT_EQ(data.MediumReleases(), 1);
}
