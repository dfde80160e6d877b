#include "foundation/module_instance.h"
#include "foundation/npath.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/module_host.h"
#include "suite/shellhost/session.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

namespace {
constexpr char ModulePath[] = TONEWRIGHT_SUITE_DIR "/tNWShell.DLL";
}

TEST(ModuleHost, LoadsTheModuleFromAPathAndHandsItASelection) {
    OleSession ole;
    ModuleHost module;
    ASSERT_TRUE(module.LoadFrom(NString(ModulePath).Text));
    EXPECT_EQ(module.Path(), FullPath(NString(ModulePath).Text));
    NStringList paths;
    paths.Add(L"C:\\one.mp3");
    EXPECT_TRUE(module.Select(paths));
    EXPECT_TRUE(module.Select(paths));
}

TEST(ModuleHost, TheExchangesSiblingIsTheOneBesideTheModule) {
    OleSession ole;
    {
        ModuleHost module;
        ASSERT_TRUE(module.LoadFrom(NString(ModulePath).Text));
        EXPECT_EQ(NModuleInstance(), GetModuleHandleW(L"tNWShell.DLL"));
    }
    EXPECT_EQ(NModuleInstance(), GetModuleHandleW(nullptr));
}

TEST(ModuleHost, SaysWhyAModuleThatIsNotThereIsNotLoaded) {
    OleSession ole;
    ModuleHost module;
    EXPECT_FALSE(module.LoadFrom(L"C:\\none\\tNWShell.DLL"));
    EXPECT_EQ(module.Problem().Left(43), L"shellhost: the module can't be loaded (0x80");
}

TEST(ModuleHost, ALibraryWithoutTheEntryIsNoModule) {
    OleSession ole;
    ModuleHost module;
    EXPECT_FALSE(module.LoadFrom(L"C:\\windows\\system32\\version.dll"));
    EXPECT_EQ(module.Problem(), L"shellhost: the module has no DllGetClassObject (0x80004002)");
}

TEST(ModuleHost, ALibraryWithOtherClassesIsRefused) {
    OleSession ole;
    ModuleHost module;
    EXPECT_FALSE(module.LoadFrom(L"C:\\windows\\system32\\shell32.dll"));
    EXPECT_EQ(module.Problem().Left(40), L"shellhost: the module has no such class ");
}
