#include "foundation/com_owners.h"
#include "foundation/module_instance.h"
#include "shell/exports.h"
#include "shell/registration.h"
#include "tests/shell/loaded_module.h"
#include "tests/shell/private_classes_root.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using Entries = std::map<std::wstring, std::wstring>;

const std::wstring Clsid = L"{7A1E4C10-93D2-4F6B-8C21-5E0B7D3FA911}";
const std::wstring Libid = L"{B3D05E72-1C84-4A9E-A6F3-92C47E18D036}";
const std::wstring InterfaceId = L"{4D6F2A90-7B1C-4E35-9A08-C31E5F2B7D64}";
const std::wstring ClassKey = L"CLSID\\" + Clsid;
const std::wstring LibraryKey = L"TypeLib\\" + Libid;
const std::wstring InterfaceKey = L"Interface\\" + InterfaceId;

// Everything that the script writes.
Entries ClassEntries(const std::wstring& modulePath) {
    return {
        {L"TNWShell.tNWIShell.1", L"(key)"},
        {L"TNWShell.tNWIShell.1|", L"tNWIShell Class"},
        {L"TNWShell.tNWIShell.1\\CLSID", L"(key)"},
        {L"TNWShell.tNWIShell.1\\CLSID|", Clsid},
        {L"TNWShell.tNWIShell", L"(key)"},
        {L"TNWShell.tNWIShell|", L"tNWIShell Class"},
        {L"TNWShell.tNWIShell\\CLSID", L"(key)"},
        {L"TNWShell.tNWIShell\\CLSID|", Clsid},
        {L"TNWShell.tNWIShell\\CurVer", L"(key)"},
        {L"TNWShell.tNWIShell\\CurVer|", L"TNWShell.tNWIShell.1"},
        {L"CLSID", L"(key)"},
        {ClassKey, L"(key)"},
        {ClassKey + L"|", L"tNWIShell Class"},
        {ClassKey + L"\\ProgID", L"(key)"},
        {ClassKey + L"\\ProgID|", L"TNWShell.tNWIShell.1"},
        {ClassKey + L"\\VersionIndependentProgID", L"(key)"},
        {ClassKey + L"\\VersionIndependentProgID|", L"TNWShell.tNWIShell"},
        {ClassKey + L"\\Programmable", L"(key)"},
        {ClassKey + L"\\InprocServer32", L"(key)"},
        {ClassKey + L"\\InprocServer32|", modulePath},
        {ClassKey + L"\\InprocServer32|ThreadingModel", L"Apartment"},
        {ClassKey + L"\\TypeLib", L"(key)"},
        {ClassKey + L"\\TypeLib|", Libid},
    };
}

// What is missing, and what is there beyond it, one line each; empty if
// nothing is.
std::wstring Difference(const Entries& actual, const Entries& expected) {
    std::wstring lines;
    for (const auto& entry : expected)
        if (!actual.contains(entry.first) || actual.at(entry.first) != entry.second)
            lines += L"\n- " + entry.first + L" = " + entry.second;
    for (const auto& entry : actual)
        if (!expected.contains(entry.first) || expected.at(entry.first) != entry.second)
            lines += L"\n+ " + entry.first + L" = " + entry.second;
    return lines;
}

class Registration : public testing::Test {
protected:
    Apartment apartment;
    PrivateClassesRoot root;
};

} // namespace

TEST_F(Registration, WritesTheEntriesOfTheClassAndNoOthers) {
    LoadedModule module;

    EXPECT_EQ(module.RegisterServer(), S_OK);
    EXPECT_EQ(Difference(root.Content(), ClassEntries(BuiltModulePath())), L"");
}

TEST_F(Registration, WritesTheTypeLibraryAndItsOneInterface) {
    LoadedModule module;
    ASSERT_EQ(module.RegisterServer(), S_OK);

    EXPECT_EQ(root.Text(LibraryKey + L"\\1.0"), L"tNWShell 1.0 Type Library");
    EXPECT_EQ(root.Text(LibraryKey + L"\\1.0\\0\\win64"), BuiltModulePath());
    EXPECT_EQ(root.Text(InterfaceKey), L"ItNWIShell");
    EXPECT_EQ(root.Text(InterfaceKey + L"\\TypeLib"), Libid);
    // The entries of IDispatch and IUnknown are the system's.
    EXPECT_EQ(root.KeysBelow(L"Interface"), std::vector<std::wstring>{InterfaceId});
}

TEST_F(Registration, NamesTheFileOfTheRunningModule) {
    for (const wchar_t* name : {L"plain", L"with blanks in it", L"it's 'quoted' ''twice''",
                                L"\u00e4\u00f6\u00fc \u97f3\u697d \u041c\u0443\u0437", L"100%",
                                L"%MODULE%", L"{brace} = s", L"a;b,c&d"}) {
        TemporaryFolder folder(name);
        LoadedModule copy(folder.CopyModule());

        EXPECT_EQ(copy.RegisterServer(), S_OK);
        EXPECT_EQ(Difference(root.Content(), ClassEntries(folder.Path() + L"\\tNWShell.DLL")), L"");
        EXPECT_EQ(root.Text(LibraryKey + L"\\1.0\\0\\win64"), folder.Path() + L"\\tNWShell.DLL");
    }
}

TEST_F(Registration, WrittenTwiceIsAsWrittenOnce) {
    LoadedModule module;
    ASSERT_EQ(module.RegisterServer(), S_OK);
    Entries once = root.Content();

    EXPECT_EQ(module.RegisterServer(), S_OK);
    EXPECT_EQ(Difference(root.Content(), once), L"");
}

TEST_F(Registration, RemovesAnOldClassKeyWholeBeforeItWritesIt) {
    root.Write(ClassKey, L"Old", L"value");
    root.Write(ClassKey + L"\\LocalServer32", nullptr, L"C:\\old.exe");
    root.Write(ClassKey + L"\\Programmable\\Old", nullptr, L"value");
    root.Write(ClassKey + L"\\InprocServer32", L"Old", L"value");
    LoadedModule module;

    EXPECT_EQ(module.RegisterServer(), S_OK);
    EXPECT_EQ(Difference(root.Content(), ClassEntries(BuiltModulePath())), L"");
}

TEST_F(Registration, LeavesWhatOthersPutBesideItsKeys) {
    root.Write(L"CLSID\\{00000000-1111-2222-3333-444444444444}", nullptr, L"another class");
    root.Write(L"TNWShell.tNWIShell\\shellex", nullptr, L"another program's");
    LoadedModule module;

    EXPECT_EQ(module.RegisterServer(), S_OK);
    EXPECT_EQ(module.UnregisterServer(), S_OK);

    Entries left = root.Content();
    EXPECT_EQ(left[L"CLSID\\{00000000-1111-2222-3333-444444444444}|"], L"another class");
    EXPECT_EQ(left[L"TNWShell.tNWIShell\\shellex|"], L"another program's");
    EXPECT_FALSE(root.HasKey(L"TNWShell.tNWIShell\\CLSID"));
}

TEST_F(Registration, UnregisteringRemovesTheClassWithWhatOthersPutBelowIt) {
    LoadedModule module;
    ASSERT_EQ(module.RegisterServer(), S_OK);
    root.Write(ClassKey, L"Later", L"goes with the key");
    root.Write(ClassKey + L"\\Programmable\\Later", nullptr, L"goes with the key");

    EXPECT_EQ(module.UnregisterServer(), S_OK);
    EXPECT_FALSE(root.HasKey(ClassKey));
    EXPECT_TRUE(root.HasKey(L"CLSID"));
}

TEST_F(Registration, UnregisteringRemovesTheClassAndLeavesTheKeyOfAllClasses) {
    LoadedModule module;
    ASSERT_EQ(module.RegisterServer(), S_OK);

    EXPECT_EQ(module.UnregisterServer(), S_OK);

    EXPECT_EQ(Difference(root.Content(), {{L"CLSID", L"(key)"}}), L"");
    EXPECT_FALSE(root.HasKey(LibraryKey));
    EXPECT_FALSE(root.HasKey(InterfaceKey));
}

TEST_F(Registration, CanBeTakenBackAndWrittenAnew) {
    LoadedModule module;
    ASSERT_EQ(module.RegisterServer(), S_OK);
    Entries before = root.Content();
    ASSERT_EQ(module.UnregisterServer(), S_OK);

    EXPECT_EQ(module.RegisterServer(), S_OK);
    EXPECT_EQ(Difference(root.Content(), before), L"");
}

TEST_F(Registration, UnregisteringWhatIsNotThereReportsIt) {
    LoadedModule module;

    EXPECT_TRUE(FAILED(module.UnregisterServer()));
    EXPECT_FALSE(root.HasKey(ClassKey));
}

TEST_F(Registration, WithoutTheScriptWritesNothingAndReportsIt) {
    TemporaryFolder folder;
    std::wstring path = folder.CopyModule();
    HideResource(path, L"REGISTRY");
    LoadedModule module(path);

    EXPECT_TRUE(FAILED(module.RegisterServer()));
    EXPECT_EQ(Difference(root.Content(), {}), L"");
    EXPECT_TRUE(FAILED(module.UnregisterServer()));
}

TEST_F(Registration, WithoutTheTypeLibraryReportsItAndCanBeTakenBack) {
    TemporaryFolder folder;
    std::wstring path = folder.CopyModule();
    HideResource(path, L"TYPELIB");
    LoadedModule module(path);

    EXPECT_TRUE(FAILED(module.RegisterServer()));
    EXPECT_EQ(Difference(root.Content(), ClassEntries(path)), L"");

    EXPECT_TRUE(FAILED(module.UnregisterServer()));
    EXPECT_EQ(Difference(root.Content(), {{L"CLSID", L"(key)"}}), L"");
}

TEST(RegistrationFailure, AKeyThatCantBeWrittenIsReported) {
    Apartment apartment;
    PrivateClassesRoot root(PrivateClassesRoot::Kind::Unwritable);
    LoadedModule module;

    EXPECT_EQ(module.RegisterServer(), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
    EXPECT_EQ(Difference(root.Content(), {}), L"");
}

TEST(RegistrationFailure, WithoutComTheCodeOfThePlatformIsReturned) {
    PrivateClassesRoot root;
    LoadedModule module;

    EXPECT_EQ(module.RegisterServer(), CO_E_NOTINITIALIZED);
    EXPECT_EQ(module.UnregisterServer(), CO_E_NOTINITIALIZED);
    EXPECT_EQ(Difference(root.Content(), {}), L"");
}

TEST(RegistrationFailure, AModuleThatHasEndedHasNothingToUnregister) {
    Apartment apartment;
    PrivateClassesRoot root;
    NSetModuleInstance(nullptr);

    EXPECT_EQ(NUnregisterModule(), E_UNEXPECTED);
}
