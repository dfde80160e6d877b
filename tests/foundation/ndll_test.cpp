#include "foundation/ndll.h"
#include "tests/support/message_box_driver.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {
// Counts the ticks of the system's clock, or doesn't.
class ClockDll : public NDLL {
public:
    explicit ClockDll(const char* name = "GetTickCount") : name_(name) {}
    bool Load(const wchar_t* path) override {
        if (path)
            LoadModule(path);
        Loaded = Bind(name_, function);
        return Loaded;
    }
    void Drop() { UnloadModule(); }

    DWORD WINAPI (*function)() = nullptr;

private:
    const char* name_;
};

// A library that nothing else in this process has loaded.
constexpr wchar_t UnusedLibrary[] = L"cabinet.dll";

bool IsInProcess(const wchar_t* library) {
    return GetModuleHandleW(library) != nullptr;
}

// Where a virtual operation stands in the table, with the destructor's two
// entries in front.
template <typename Operation>
size_t SlotOf(Operation operation) {
    uintptr_t offsetPlusOne;
    memcpy(&offsetPlusOne, &operation, sizeof(offsetPlusOne));
    return (offsetPlusOne - 1) / sizeof(void*);
}
} // namespace

TEST(RunTimeLibrary, HoldsNothingAtFirst) {
    ClockDll dll;
    EXPECT_EQ(dll.Module, nullptr);
    EXPECT_FALSE(dll.Loaded);
}

TEST(RunTimeLibrary, HasItsFieldsAndOperationsInOrder) {
    ClockDll dll;
    const char* start = reinterpret_cast<const char*>(static_cast<NDLL*>(&dll));
    EXPECT_EQ(reinterpret_cast<const char*>(&dll.Module) - start, 8);
    EXPECT_EQ(reinterpret_cast<const char*>(&dll.Loaded) - start, 16);
    EXPECT_EQ(SlotOf(&NDLL::Load), 2u);
}

TEST(RunTimeLibrary, BindsAFunctionByItsName) {
    ClockDll dll;
    EXPECT_TRUE(dll.Load(L"kernel32.dll"));
    EXPECT_NE(dll.Module, nullptr);
    ASSERT_NE(dll.function, nullptr);
    EXPECT_NE(dll.function(), 0u);
}

TEST(RunTimeLibrary, WithoutTheFunctionHasANullPointer) {
    ClockDll dll("NoSuchFunction");
    EXPECT_FALSE(dll.Load(L"kernel32.dll"));
    EXPECT_NE(dll.Module, nullptr);
    EXPECT_EQ(dll.function, nullptr);
}

TEST(RunTimeLibrary, WithoutALibraryHasNullPointers) {
    ClockDll dll;
    dll.Load(L"kernel32.dll");
    dll.Drop();
    EXPECT_EQ(dll.Module, nullptr);
    EXPECT_FALSE(dll.Load(nullptr));
    EXPECT_EQ(dll.function, nullptr);
}

TEST(RunTimeLibrary, IsFreedByTheDestructor) {
    ASSERT_FALSE(IsInProcess(UnusedLibrary));
    {
        ClockDll dll;
        dll.Load(UnusedLibrary);
        EXPECT_TRUE(IsInProcess(UnusedLibrary));
    }
    EXPECT_FALSE(IsInProcess(UnusedLibrary));
}

TEST(RunTimeLibrary, IsDestroyedThroughItsBase) {
    static bool destroyed;
    class Derived : public ClockDll {
    public:
        ~Derived() override { destroyed = true; }
    };
    destroyed = false;
    NDLL* dll = new Derived;
    delete dll;
    EXPECT_TRUE(destroyed);
}

TEST(RunTimeLibrary, ThatIsMissingOrIsNoneFailsAndKeepsTheThreadsErrorMode) {
    TempFolder folder;
    SetThreadErrorMode(SEM_NOGPFAULTERRORBOX, nullptr);
    ClockDll dll;
    EXPECT_FALSE(dll.Load(folder.File(L"missing.dll").Text));
    EXPECT_EQ(dll.Module, nullptr);
    EXPECT_EQ(GetThreadErrorMode(), static_cast<DWORD>(SEM_NOGPFAULTERRORBOX));
}
