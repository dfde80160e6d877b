#include "foundation/module_instance.h"
#include "shell/module_path.h"
#include "tests/shell/loaded_module.h"

#include <gtest/gtest.h>

namespace {

class ModulePath : public testing::Test {
protected:
    ~ModulePath() override { NSetModuleInstance(nullptr); }
};

} // namespace

TEST_F(ModulePath, IsThatOfTheStoredInstance) {
    EXPECT_TRUE(StdText(NRunningModulePath()).ends_with(L"\\shell_tests.exe"));

    LoadedModule module;
    NSetModuleInstance(module.Handle());
    EXPECT_EQ(StdText(NRunningModulePath()), BuiltModulePath());
}

TEST_F(ModulePath, IsWholeBeyondMaxPath) {
    TemporaryFolder folder(std::wstring(120, L'a') + L"\\" + std::wstring(120, L'b') + L"\\" +
                           std::wstring(120, L'c'));
    std::wstring copy = folder.CopyModule();
    ASSERT_GT(copy.size(), size_t{2} * 120 + MAX_PATH / 4);
    LoadedModule module(copy);
    NSetModuleInstance(module.Handle());

    EXPECT_EQ(StdText(NRunningModulePath()), copy);
}

TEST_F(ModulePath, IsEmptyForAnInstanceThatIsNone) {
    NSetModuleInstance(reinterpret_cast<HINSTANCE>(uintptr_t{0x7770000}));

    EXPECT_TRUE(NRunningModulePath().IsEmpty());
}
