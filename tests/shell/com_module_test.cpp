#include "shell/com_module.h"
#include "shell/shell_ids.h"

#include <gtest/gtest.h>

#include <latch>
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
    constexpr int Apartments = 4;
    constexpr int Turns = 500000;
    ComModule module;
    std::latch start(Apartments);
    std::vector<std::thread> apartments;
    for (int apartment = 0; apartment < Apartments; ++apartment)
        apartments.emplace_back([&] {
            start.arrive_and_wait();
            for (int turn = 0; turn < Turns; ++turn) {
                module.Lock();
                module.Lock();
                module.Unlock();
            }
        });
    for (std::thread& apartment : apartments)
        apartment.join();

    EXPECT_EQ(module.LockCount(), Apartments * Turns);
}
