#include "foundation/com_owners.h"
#include "shell/shell_object.h"
#include "tests/shell/counted_allocations.h"
#include "tests/shell/fake_data_object.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace {

using Paths = std::vector<std::wstring>;

class ShellObject : public testing::Test {
protected:
    ShellObject() {
        shell.Reset(new ComObject<CtNWIShell>());
        shell->AddRef();
    }

    HRESULT Initialize(IDataObject* data) { return shell->Initialize(nullptr, data, nullptr); }

    Paths Selection() const {
        Paths paths;
        for (int index = 0; index < shell->m_Selection.Count; ++index)
            paths.push_back(shell->m_Selection[index]->c_str());
        return paths;
    }

    // A selection that a failing call must not leave behind.
    void SelectSomething() {
        FakeDataObject data(Paths{L"C:\\former.mp3"});
        ASSERT_EQ(Initialize(&data), S_OK);
        ASSERT_EQ(Selection().size(), 1u);
    }

    ComPtr<ComObject<CtNWIShell>> shell;
};

} // namespace

TEST_F(ShellObject, TakesTheSelectionInTheOrderOfItsDelivery) {
    Paths paths = {L"C:\\z.flac", L"C:\\a.mp3", L"C:\\M.ogg", L"C:\\a.mp3"};
    FakeDataObject data(paths);

    EXPECT_EQ(Initialize(&data), S_OK);
    EXPECT_EQ(Selection(), paths);
}

TEST_F(ShellObject, KeepsFoldersAndUnknownFileTypes) {
    Paths paths = {L"C:\\Windows", L"C:\\song.not-audio", L"\\\\server\\share\\x", L"C:\\"};
    FakeDataObject data(paths);

    EXPECT_EQ(Initialize(&data), S_OK);
    EXPECT_EQ(Selection(), paths);
}

TEST_F(ShellObject, KeepsAPathBeyondMaxPathWhole) {
    std::wstring longPath = L"\\\\?\\C:\\";
    for (int folder = 0; folder < 40; ++folder)
        longPath += std::wstring(100, L'x') + L"\\";
    longPath += L"end.mp3";
    ASSERT_GT(longPath.size(), size_t{MAX_PATH});
    FakeDataObject data(Paths{longPath, L"C:\\next.mp3"});

    EXPECT_EQ(Initialize(&data), S_OK);
    EXPECT_EQ(Selection(), (Paths{longPath, L"C:\\next.mp3"}));
}

TEST_F(ShellObject, KeepsLettersOfAllScripts) {
    Paths paths = {L"C:\\\u00e4\u00f6 \u97f3\u697d\\\U0001F3B5.mp3"};
    FakeDataObject data(paths);

    EXPECT_EQ(Initialize(&data), S_OK);
    EXPECT_EQ(Selection(), paths);
}

TEST_F(ShellObject, TakesMoreFilesThanTheListHoldsInline) {
    Paths paths;
    for (int index = 0; index < 1000; ++index)
        paths.push_back(L"C:\\" + std::to_wstring(index) + L".mp3");
    FakeDataObject data(paths);

    EXPECT_EQ(Initialize(&data), S_OK);
    EXPECT_EQ(Selection(), paths);
}

TEST_F(ShellObject, TakesAnEightBitDropList) {
    FakeDataObject data(MakeNarrowDropList({"C:\\b.mp3", "C:\\a.mp3"}));

    EXPECT_EQ(Initialize(&data), S_OK);
    EXPECT_EQ(Selection(), (Paths{L"C:\\b.mp3", L"C:\\a.mp3"}));
}

TEST_F(ShellObject, ASecondInitializeReplacesTheSelection) {
    SelectSomething();
    FakeDataObject data(Paths{L"C:\\new.mp3"});

    EXPECT_EQ(Initialize(&data), S_OK);
    EXPECT_EQ(Selection(), Paths{L"C:\\new.mp3"});
}

TEST_F(ShellObject, AnEmptyDropListIsASelectionWithoutFiles) {
    SelectSomething();
    FakeDataObject data(Paths{});

    EXPECT_EQ(Initialize(&data), S_OK);
    EXPECT_EQ(Selection(), Paths{});
    EXPECT_EQ(data.MediumReleases(), 1);
}

TEST_F(ShellObject, WithoutADataObjectTheSelectionIsEmptied) {
    SelectSomething();

    EXPECT_EQ(Initialize(nullptr), E_INVALIDARG);
    EXPECT_EQ(Selection(), Paths{});
}

TEST_F(ShellObject, HasDroppedTheFormerSelectionWhenItAsksForTheNextOne) {
    SelectSomething();
    FakeDataObject data(Paths{L"C:\\new.mp3"});
    int seen = -1;
    data.OnGetData = [&] { seen = shell->m_Selection.Count; };

    Initialize(&data);
    EXPECT_EQ(seen, 0);
}

TEST_F(ShellObject, AnExceptionOfTheDataObjectDoesNotLeaveTheCall) {
    SelectSomething();
    FakeDataObject data(Paths{L"C:\\new.mp3"});
    data.OnGetData = [] { throw 1; };

    EXPECT_EQ(Initialize(&data), E_UNEXPECTED);
    EXPECT_EQ(Selection(), Paths{});
}

TEST_F(ShellObject, AsksForTheDropListWithAnEmptyMedium) {
    FakeDataObject data(Paths{L"C:\\a.mp3"});
    Initialize(&data);

    EXPECT_EQ(data.Asked.cfFormat, 15); // CF_HDROP
    EXPECT_EQ(data.Asked.ptd, nullptr);
    EXPECT_EQ(data.Asked.dwAspect, 1u); // DVASPECT_CONTENT
    EXPECT_EQ(data.Asked.lindex, -1);
    EXPECT_EQ(data.Asked.tymed, 1u); // TYMED_HGLOBAL
    EXPECT_EQ(data.MediumAsked.tymed, 1u);
    EXPECT_EQ(data.MediumAsked.hGlobal, nullptr);
    EXPECT_EQ(data.MediumAsked.pUnkForRelease, nullptr);
}

TEST_F(ShellObject, ReleasesTheMediumAndKeepsNothingOfTheDataObject) {
    HGLOBAL block = MakeDropList({L"C:\\a.mp3"});
    FakeDataObject data(block);

    EXPECT_EQ(Initialize(&data), S_OK);
    EXPECT_EQ(data.MediumReleases(), 1);
    EXPECT_EQ(GlobalFlags(block) & GMEM_LOCKCOUNT, 0u) << "the block is still locked";
    EXPECT_EQ(data.References(), 1u);
}

TEST_F(ShellObject, FreesABlockThatHasNoOtherOwner) {
    HGLOBAL block = MakeDropList({L"C:\\a.mp3"});
    FakeDataObject data;
    data.Answer.hGlobal = block;
    data.Answer.pUnkForRelease = nullptr;

    EXPECT_EQ(Initialize(&data), S_OK);
    EXPECT_EQ(Selection(), Paths{L"C:\\a.mp3"});
    EXPECT_EQ(GlobalFlags(block), UINT{GMEM_INVALID_HANDLE});
}

TEST_F(ShellObject, AFailingGetDataIsAnInvalidArgumentWhateverItsCode) {
    for (HRESULT code : {DV_E_FORMATETC, DV_E_TYMED, E_OUTOFMEMORY, E_FAIL, E_UNEXPECTED,
                         E_ACCESSDENIED, RPC_E_DISCONNECTED}) {
        SelectSomething();
        FakeDataObject data(Paths{L"C:\\a.mp3"});
        data.Result = code;

        EXPECT_EQ(Initialize(&data), E_INVALIDARG);
        EXPECT_EQ(Selection(), Paths{});
        EXPECT_EQ(data.MediumReleases(), 0) << "a medium that wasn't handed over was released";
    }
}

TEST_F(ShellObject, ANullBlockIsAnInvalidArgumentAndTheMediumIsReleased) {
    SelectSomething();
    FakeDataObject data;

    EXPECT_EQ(Initialize(&data), E_INVALIDARG);
    EXPECT_EQ(Selection(), Paths{});
    EXPECT_EQ(data.MediumReleases(), 1);
}

TEST_F(ShellObject, ABlockThatCantBeLockedIsAnInvalidArgumentAndTheMediumIsReleased) {
    SelectSomething();
    HGLOBAL discarded = GlobalAlloc(GMEM_MOVEABLE, 0);
    ASSERT_NE(discarded, nullptr);
    ASSERT_EQ(GlobalLock(discarded), nullptr);
    FakeDataObject data(discarded);

    EXPECT_EQ(Initialize(&data), E_INVALIDARG);
    EXPECT_EQ(Selection(), Paths{});
    EXPECT_EQ(data.MediumReleases(), 1);
}

TEST_F(ShellObject, AMediumOfAnotherKindHasNoDropListAndIsReleased) {
    SelectSomething();
    CountedUnknown notAStream;
    FakeDataObject data;
    data.Answer.tymed = TYMED_ISTREAM;
    data.Answer.pstm = reinterpret_cast<IStream*>(&notAStream);

    EXPECT_EQ(Initialize(&data), E_INVALIDARG);
    EXPECT_EQ(Selection(), Paths{});
    EXPECT_EQ(data.MediumReleases(), 1);
    EXPECT_EQ(notAStream.Count, 0u);
}

TEST_F(ShellObject, ABlockThatIsNoDropListIsASelectionWithoutFiles) {
    SelectSomething();
    HGLOBAL block = MakeDropList({L"C:\\a.mp3"});
    static_cast<DROPFILES*>(GlobalLock(block))->pFiles = 0x7FFFFF00;
    GlobalUnlock(block);
    FakeDataObject data(block);

    EXPECT_EQ(Initialize(&data), S_OK);
    EXPECT_EQ(Selection(), Paths{});
    EXPECT_EQ(data.MediumReleases(), 1);
}

TEST_F(ShellObject, TheFolderAndTheKeyPlayNoPart) {
    FakeDataObject data(Paths{L"C:\\a.mp3"});
    ITEMIDLIST folder = {};
    HKEY noKey = reinterpret_cast<HKEY>(uintptr_t{0x7770});

    EXPECT_EQ(shell->Initialize(&folder, &data, noKey), S_OK);
    EXPECT_EQ(Selection(), Paths{L"C:\\a.mp3"});
    EXPECT_EQ(shell->Initialize(&folder, nullptr, noKey), E_INVALIDARG);
    EXPECT_EQ(Selection(), Paths{});
}

TEST_F(ShellObject, OutOfMemoryLeavesNoPartOfASelection) {
    Paths paths(40, L"C:\\" + std::wstring(300, L'x') + L".mp3");
    FakeDataObject data(paths);
    int successes = 0;
    HRESULT result = E_OUTOFMEMORY;
    for (; result == E_OUTOFMEMORY && successes < 1000; ++successes) {
        SelectSomething();
        {
            FailingAllocations failing(successes);
            result = Initialize(&data);
        }
        if (FAILED(result)) {
            EXPECT_EQ(Selection(), Paths{});
        }
    }

    EXPECT_EQ(result, S_OK);
    EXPECT_EQ(Selection(), paths);
    EXPECT_GT(successes, 40) << "no allocation has failed";
    EXPECT_EQ(data.MediumReleases(), successes) << "a medium was lost";
}

TEST_F(ShellObject, FreesItsSelectionWhenTheLastReferenceGoes) {
    std::ptrdiff_t before = LiveAllocations();
    Paths paths(40, L"C:\\" + std::wstring(300, L'x') + L".mp3");
    FakeDataObject data(paths);
    std::ptrdiff_t ours = LiveAllocations() - before;

    auto* other = new ComObject<CtNWIShell>();
    other->AddRef();
    EXPECT_EQ(other->Initialize(nullptr, &data, nullptr), S_OK);
    EXPECT_GT(LiveAllocations() - before, ours + 40);
    EXPECT_EQ(other->Release(), 0u);

    EXPECT_EQ(LiveAllocations() - before, ours);
}

TEST_F(ShellObject, ItsInterfacesLieInTheirFixedOrder) {
    auto place = [&](auto* base) {
        return reinterpret_cast<std::byte*>(base) - reinterpret_cast<std::byte*>(shell.Get());
    };
    constexpr std::ptrdiff_t Pointer = sizeof(void*);

    EXPECT_EQ(place(static_cast<ItNWIShell*>(shell.Get())), 0 * Pointer);
    EXPECT_EQ(place(static_cast<IShellExtInit*>(shell.Get())), 1 * Pointer);
    EXPECT_EQ(place(static_cast<IContextMenu*>(shell.Get())), 2 * Pointer);
    EXPECT_EQ(place(static_cast<IShellPropSheetExt*>(shell.Get())), 3 * Pointer);
    EXPECT_EQ(place(static_cast<ComCounted*>(shell.Get())), 4 * Pointer);
    EXPECT_GT(place(&shell->m_Selection), 4 * Pointer);
}

TEST_F(ShellObject, EachInterfaceLeadsToEachOtherAndToOneIdentity) {
    const IID* interfaces[] = {&IID_IUnknown,      &IID_IDispatch,    &IID_ItNWIShell,
                               &IID_IShellExtInit, &IID_IContextMenu, &IID_IShellPropSheetExt};
    ComPtr<IUnknown> identity;
    ASSERT_EQ(shell->QueryInterface(IID_IUnknown, identity.PutVoid()), S_OK);

    for (const IID* first : interfaces) {
        ComPtr<IUnknown> from;
        ASSERT_EQ(shell->QueryInterface(*first, from.PutVoid()), S_OK);
        for (const IID* second : interfaces) {
            ComPtr<IUnknown> to;
            ASSERT_EQ(from->QueryInterface(*second, to.PutVoid()), S_OK);
            ComPtr<IUnknown> again;
            ASSERT_EQ(to->QueryInterface(IID_IUnknown, again.PutVoid()), S_OK);
            EXPECT_EQ(again.Get(), identity.Get());
        }
    }
}

TEST_F(ShellObject, AnUnknownInterfaceIsRefusedWithANullPointer) {
    void* object = this;

    EXPECT_EQ(shell->QueryInterface(IID_IStream, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(shell->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ShellObject, NeverReplacesAPage) {
    static int calls;
    calls = 0;
    auto addPage = [](HPROPSHEETPAGE, LPARAM) -> BOOL { return ++calls; };

    EXPECT_EQ(shell->ReplacePage(0, addPage, 0), E_NOTIMPL);
    EXPECT_EQ(calls, 0);
}

TEST_F(ShellObject, ReportsOneTypeInformation) {
    UINT count = 0;

    EXPECT_EQ(shell->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(shell->GetTypeInfoCount(nullptr), E_POINTER);
}

TEST_F(ShellObject, ATypeInformationOfAnotherIndexIsRefused) {
    ITypeInfo* info = reinterpret_cast<ITypeInfo*>(this);

    EXPECT_EQ(shell->GetTypeInfo(1, 0, &info), DISP_E_BADINDEX);
    EXPECT_EQ(info, nullptr);
    EXPECT_EQ(shell->GetTypeInfo(0, 0, nullptr), E_POINTER);
}

// This test program has no type library in its resources.
TEST_F(ShellObject, WithoutATypeLibraryDispatchReturnsTheFailingCode) {
    ITypeInfo* info = reinterpret_cast<ITypeInfo*>(this);
    wchar_t text[] = L"Play";
    LPOLESTR name = text;
    DISPID id = 0;
    DISPPARAMS none = {};

    HRESULT failure = shell->GetTypeInfo(0, 0, &info);
    EXPECT_TRUE(FAILED(failure));
    EXPECT_EQ(info, nullptr);
    EXPECT_EQ(shell->GetIDsOfNames(IID_NULL, &name, 1, 0, &id), failure);
    EXPECT_EQ(shell->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              failure);
}
