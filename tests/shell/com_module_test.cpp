#include "shell/com_module.h"
#include "shell/shell_ids.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

HRESULT CreateNothing(IUnknown*, REFIID, void**) {
    return E_NOTIMPL;
}

constexpr ComObjectEntry Table[] = {{&CLSID_tNWIShell, &CreateNothing, 101}};

} // namespace

TEST(ComModule, FindsTheClassesOfItsTableBetweenStartAndEnd) {
    ComModule module;
    EXPECT_EQ(module.Find(CLSID_tNWIShell), nullptr);

    module.Start(Table, LIBID_TNWSHELLLib);
    EXPECT_EQ(module.Find(CLSID_tNWIShell), &Table[0]);
    EXPECT_EQ(module.Find(LIBID_TNWSHELLLib), nullptr);
    EXPECT_EQ(module.Objects().size(), 1u);
    EXPECT_EQ(*module.Library(), LIBID_TNWSHELLLib);

    module.End();
    EXPECT_EQ(module.Find(CLSID_tNWIShell), nullptr);
    EXPECT_EQ(module.Library(), nullptr);
}

TEST(ComModule, CountsItsLocks) {
    ComModule module;
    EXPECT_EQ(module.LockCount(), 0);
    module.Lock();
    module.Lock();
    EXPECT_EQ(module.LockCount(), 2);
    module.Unlock();
    EXPECT_EQ(module.LockCount(), 1);
}

TEST(ComModule, LosesNoLockWhenSeveralApartmentsTakeThemAtOnce) {
    ComModule module;
    std::vector<std::thread> apartments;
    for (int apartment = 0; apartment < 4; ++apartment)
        apartments.emplace_back([&] {
            for (int turn = 0; turn < 20000; ++turn) {
                module.Lock();
                module.Lock();
                module.Unlock();
            }
        });
    for (std::thread& apartment : apartments)
        apartment.join();

    EXPECT_EQ(module.LockCount(), 4 * 20000);
}
