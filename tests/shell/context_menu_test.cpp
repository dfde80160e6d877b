#include "foundation/com_owners.h"
#include "foundation/module_instance.h"
#include "foundation/nreg.h"
#include "shell/context_menu.h"
#include "shell/shell_object.h"
#include "tests/shell/counted_allocations.h"
#include "tests/shell/fake_data_object.h"
#include "tests/shell/loaded_module.h"
#include "tests/shell/shown_menu.h"
#include "tests/shell/without_converter.h"
#include "tests/support/converter_stand_in.h"
#include "tests/support/message_box_driver.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/private_current_user.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

namespace {
using Paths = std::vector<std::wstring>;

constexpr wchar_t SettingsKey[] = L"Software\\Quillmarsh\\Tonewright";
constexpr wchar_t NoEditTag[] = L"tNWNoEditTag";
constexpr UINT FirstCommand = 700;

const char* IndexVerb(uintptr_t index) {
    return reinterpret_cast<const char*>(index);
}

// Memory at an address of the test's choice, with a text in it.
class TextAt {
public:
    TextAt(uintptr_t address, const char* text)
        : page_(VirtualAlloc(reinterpret_cast<void*>(address), Size, MEM_RESERVE | MEM_COMMIT,
                             PAGE_READWRITE)) {
        if (page_)
            strcpy(static_cast<char*>(page_), text);
    }
    ~TextAt() { VirtualFree(page_, 0, MEM_RELEASE); }
    TextAt(const TextAt&) = delete;
    TextAt& operator=(const TextAt&) = delete;

    const char* Text() const { return static_cast<const char*>(page_); }

private:
    static constexpr SIZE_T Size = 4096;
    void* page_;
};

class ContextMenu : public testing::Test {
protected:
    ContextMenu() {
        shell.Reset(new ComObject<CtNWIShell>());
        shell->AddRef();
    }
    ~ContextMenu() override { NSetModuleInstance(nullptr); }

    void Select(const Paths& paths) {
        FakeDataObject data(paths);
        ASSERT_EQ(shell->Initialize(nullptr, &data, nullptr), S_OK);
    }
    HRESULT Query(UINT index = 0, UINT flags = CMF_NORMAL) {
        return shell->QueryContextMenu(menu.Handle(), index, FirstCommand, 0x7FFF, flags);
    }
    HRESULT Invoke(const char* verb) {
        CMINVOKECOMMANDINFO command = {};
        command.cbSize = sizeof(command);
        command.lpVerb = verb;
        return shell->InvokeCommand(&command);
    }

    PrivateCurrentUser user;
    LoadedModule module; // its pictures
    ShownMenu menu;
    ComPtr<ComObject<CtNWIShell>> shell;
};

// What GetCommandString did to a buffer.
class CommandText : public ContextMenu {
protected:
    static constexpr size_t Room = 64; // characters
    static constexpr char Untouched = '\x7F';

    HRESULT Ask(UINT_PTR offset, UINT type, UINT capacity) {
        memset(buffer, Untouched, sizeof(buffer));
        return shell->GetCommandString(offset, type, nullptr, buffer, capacity);
    }
    // Everything behind the terminator of `text` is as it was.
    testing::AssertionResult HoldsNarrow(const std::string& text) const {
        return Holds(text.c_str(), text.size() + 1);
    }
    testing::AssertionResult HoldsWide(const std::string& text) const {
        std::wstring wide(text.begin(), text.end());
        return Holds(wide.c_str(), (wide.size() + 1) * sizeof(wchar_t));
    }
    testing::AssertionResult HoldsNothing() const { return Holds("", 0); }

    char buffer[Room * sizeof(wchar_t)];

private:
    testing::AssertionResult Holds(const void* bytes, size_t size) const {
        if (memcmp(buffer, bytes, size) != 0)
            return testing::AssertionFailure() << "it holds another text";
        bool rest = std::all_of(buffer + size, std::end(buffer),
                                [](char byte) { return byte == Untouched; });
        return rest ? testing::AssertionSuccess()
                    : testing::AssertionFailure() << "more was written than the text";
    }
};
} // namespace

TEST_F(ContextMenu, HasTwoCommandsWithTheirTextsAndIds) {
    EXPECT_EQ(Query(), 2);

    ASSERT_EQ(menu.Count(), 2);
    EXPECT_EQ(menu.Text(0), L"Convert To");
    EXPECT_EQ(menu.Id(0), FirstCommand);
    EXPECT_EQ(menu.Text(1), L"Edit ID-Tag");
    EXPECT_EQ(menu.Id(1), FirstCommand + 1);
}

TEST_F(ContextMenu, StandsWhereTheShellWantsIt) {
    menu.Append(L"Open", 1);
    menu.Append(L"Properties", 2);

    EXPECT_EQ(Query(1), 2);

    ASSERT_EQ(menu.Count(), 4);
    EXPECT_EQ(menu.Text(0), L"Open");
    EXPECT_EQ(menu.Text(1), L"Convert To");
    EXPECT_EQ(menu.Text(2), L"Edit ID-Tag");
    EXPECT_EQ(menu.Text(3), L"Properties");
    EXPECT_EQ(menu.Picture(0), nullptr);
    EXPECT_EQ(menu.Picture(3), nullptr);
}

TEST_F(ContextMenu, EachItemShowsItsPictureOfTheModule) {
    NSetModuleInstance(module.Handle());
    Query();

    for (int index : {0, 1}) {
        const int id = index == 0 ? 203 : 211;
        UniqueHandle<BitmapTraits> expected(LoadBitmapW(module.Handle(), MAKEINTRESOURCEW(id)));
        ASSERT_TRUE(expected);
        ASSERT_NE(menu.Picture(index), nullptr);
        EXPECT_EQ(PixelsOf(menu.Picture(index)), PixelsOf(expected.Get()));
        EXPECT_EQ(PixelsOf(expected.Get()).size(), size_t{16 * 16});
        EXPECT_EQ(menu.CheckedPicture(index), nullptr);
    }
    EXPECT_NE(PixelsOf(menu.Picture(0)), PixelsOf(menu.Picture(1)));
}

TEST_F(ContextMenu, ItemsWithoutAPictureAreItemsStill) {
    // This program has no pictures.
    EXPECT_EQ(Query(), 2);

    EXPECT_EQ(menu.Text(0), L"Convert To");
    EXPECT_EQ(menu.Text(1), L"Edit ID-Tag");
    EXPECT_EQ(menu.Picture(0), nullptr);
    EXPECT_EQ(menu.Picture(1), nullptr);
}

TEST_F(ContextMenu, LeavesThePicturesToTheMenu) {
    NSetModuleInstance(module.Handle());
    Query();
    UniqueHandle<BitmapTraits> first(menu.Picture(0));
    UniqueHandle<BitmapTraits> second(menu.Picture(1));
    shell.Reset();

    EXPECT_EQ(GetObjectType(first.Get()), UINT{OBJ_BITMAP});
    EXPECT_EQ(GetObjectType(second.Get()), UINT{OBJ_BITMAP});
}

TEST_F(ContextMenu, IsLeftUnchangedIfOnlyTheDefaultIsWanted) {
    menu.Append(L"Open", 1);

    EXPECT_EQ(Query(0, CMF_DEFAULTONLY), 0);
    EXPECT_EQ(Query(0, CMF_DEFAULTONLY | CMF_EXPLORE | CMF_CANRENAME), 0);

    EXPECT_EQ(menu.Count(), 1);
}

TEST_F(ContextMenu, OtherFlagsPlayNoPart) {
    for (UINT flags : {CMF_NORMAL, CMF_VERBSONLY, CMF_EXPLORE, CMF_NOVERBS, CMF_EXTENDEDVERBS})
        EXPECT_EQ(Query(0, flags), 2) << flags;
    EXPECT_EQ(Query(0, ~UINT{CMF_DEFAULTONLY}), 2);
}

TEST_F(ContextMenu, TheLastCommandIdPlaysNoPart) {
    EXPECT_EQ(shell->QueryContextMenu(menu.Handle(), 0, FirstCommand, FirstCommand, CMF_NORMAL), 2);
    EXPECT_EQ(shell->QueryContextMenu(menu.Handle(), 0, FirstCommand, 0, CMF_NORMAL), 2);
    EXPECT_EQ(menu.Count(), 4);
}

TEST_F(ContextMenu, TheResultIsThePlainCountEvenOfItemsThatNoMenuTook) {
    EXPECT_EQ(shell->QueryContextMenu(nullptr, 0, FirstCommand, 0x7FFF, CMF_NORMAL), 2);
}

TEST_F(ContextMenu, IsBuiltWhateverTheSelectionHolds) {
    for (const Paths& paths : {Paths{}, Paths{L"C:\\text.txt", L"C:\\Windows", L"none"}}) {
        Select(paths);
        EXPECT_EQ(Query(), 2);
    }
}

TEST_F(ContextMenu, TheUsersSettingLeavesOutTheSecondCommand) {
    for (uint32_t setting : {1u, 2u, 0xFFFFFFFFu}) {
        NRegWriteDword(setting, NoEditTag, HKEY_CURRENT_USER, SettingsKey);
        ShownMenu fresh;
        EXPECT_EQ(shell->QueryContextMenu(fresh.Handle(), 0, FirstCommand, 0x7FFF, CMF_NORMAL), 1);
        ASSERT_EQ(fresh.Count(), 1);
        EXPECT_EQ(fresh.Text(0), L"Convert To");
    }
}

TEST_F(ContextMenu, TheUsersSettingIsReadForEachMenu) {
    EXPECT_EQ(Query(), 2) << "without the setting";
    NRegWriteDword(1, NoEditTag, HKEY_CURRENT_USER, SettingsKey);
    EXPECT_EQ(Query(), 1);
    NRegWriteDword(0, NoEditTag, HKEY_CURRENT_USER, SettingsKey);
    EXPECT_EQ(Query(), 2);
    NRegWriteString(L"1", NoEditTag, HKEY_CURRENT_USER, SettingsKey);
    EXPECT_EQ(Query(), 2) << "a text is no number";
}

TEST_F(ContextMenu, WritesNothingIntoTheUsersSettings) {
    Query();
    EXPECT_FALSE(NRegValueExists(NoEditTag, HKEY_CURRENT_USER, SettingsKey));
}

// Each selected path is that of a pipe, which would know if it were opened.
TEST_F(ContextMenu, OpensNoneOfTenThousandFiles) {
    std::wstring path = L"\\\\.\\pipe\\tonewright-menu-" + std::to_wstring(GetCurrentProcessId());
    UniqueFileHandle pipe(CreateNamedPipeW(path.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED,
                                           PIPE_TYPE_BYTE, 1, 512, 512, 0, nullptr));
    ASSERT_TRUE(pipe);
    UniqueKernelHandle opened(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    OVERLAPPED waiting = {};
    waiting.hEvent = opened.Get();
    ASSERT_FALSE(ConnectNamedPipe(pipe.Get(), &waiting));
    ASSERT_EQ(GetLastError(), DWORD{ERROR_IO_PENDING});
    Select(Paths(10000, path));

    EXPECT_EQ(Query(), 2);
    EXPECT_EQ(WaitForSingleObject(opened.Get(), 0), DWORD{WAIT_TIMEOUT});

    OpenShared(path, GENERIC_READ, OPEN_EXISTING);
    EXPECT_EQ(WaitForSingleObject(opened.Get(), 60000), WAIT_OBJECT_0) << "the pipe knows nothing";
}

TEST_F(CommandText, IsTheVerbOrTheHelpTextInTheFormThatIsAsked) {
    const struct {
        UINT_PTR offset;
        UINT type;
        const char* text;
    } cases[] = {
        {0, 0 /* GCS_VERBA */, "Convert_To"},
        {0, 1 /* GCS_HELPTEXTA */, "Tonewright: Convert Selected File(s) to..."},
        {0, 4 /* GCS_VERBW */, "Convert_To"},
        {0, 5 /* GCS_HELPTEXTW */, "Tonewright: Convert Selected File(s) to..."},
        {1, 0, "Edit_IDTag"},
        {1, 1, "Tonewright: Edit Audio ID Tag(s)"},
        {1, 4, "Edit_IDTag"},
        {1, 5, "Tonewright: Edit Audio ID Tag(s)"},
    };
    for (const auto& [offset, type, text] : cases) {
        EXPECT_EQ(Ask(offset, type, Room), S_OK);
        EXPECT_TRUE(type < 4 ? HoldsNarrow(text) : HoldsWide(text)) << text;
    }
}

TEST_F(CommandText, IsCutToTheCapacity) {
    const struct {
        UINT capacity;
        const char* text;
    } cases[] = {
        {1, ""},
        {2, "C"},
        {5, "Conv"},
        {10, "Convert_T"},
        {11, "Convert_To"},
        {12, "Convert_To"},
        {60, "Convert_To"},
        {UINT_MAX, "Convert_To"},
    };
    for (const auto& [capacity, text] : cases) {
        EXPECT_EQ(Ask(0, GCS_VERBA, capacity), S_OK) << capacity;
        EXPECT_TRUE(HoldsNarrow(text)) << capacity;
        EXPECT_EQ(Ask(0, GCS_VERBW, capacity), S_OK) << capacity;
        EXPECT_TRUE(HoldsWide(text)) << capacity;
    }
}

TEST_F(CommandText, ACapacityOfZeroCutsNothing) {
    EXPECT_EQ(Ask(0, GCS_VERBA, 0), S_OK);
    EXPECT_TRUE(HoldsNarrow("Convert_To"));
    EXPECT_EQ(Ask(1, GCS_HELPTEXTW, 0), S_OK);
    EXPECT_TRUE(HoldsWide("Tonewright: Edit Audio ID Tag(s)"));
}

TEST_F(CommandText, AskingWhetherThereIsSuchACommandWritesNothing) {
    for (UINT_PTR offset : {UINT_PTR{0}, UINT_PTR{1}}) {
        for (UINT type : {2u /* GCS_VALIDATEA */, 6u /* GCS_VALIDATEW */}) {
            EXPECT_EQ(Ask(offset, type, Room), S_OK);
            EXPECT_TRUE(HoldsNothing());
            EXPECT_EQ(shell->GetCommandString(offset, type, nullptr, nullptr, 0), S_OK);
        }
    }
}

TEST_F(CommandText, AnyOtherTypeWritesNothing) {
    for (UINT type : {3u, 7u, 8u, 0x14u /* GCS_VERBICONW */, UINT_MAX}) {
        EXPECT_EQ(Ask(0, type, Room), S_OK) << type;
        EXPECT_TRUE(HoldsNothing()) << type;
    }
}

TEST_F(CommandText, AnyOtherOffsetIsAnInvalidArgument) {
    for (UINT_PTR offset :
         {UINT_PTR{2}, UINT_PTR{0xFFFF}, UINT_PTR{0x10000}, ~UINT_PTR{0}, UINT_PTR{1} << 32}) {
        for (UINT type : {0u, 1u, 2u, 4u, 5u, 6u}) {
            EXPECT_EQ(Ask(offset, type, Room), E_INVALIDARG) << offset;
            EXPECT_TRUE(HoldsNothing()) << offset;
        }
    }
}

TEST_F(CommandText, ATextWithoutAPlaceForItIsAnInvalidArgument) {
    for (UINT type : {0u, 1u, 4u, 5u})
        EXPECT_EQ(shell->GetCommandString(0, type, nullptr, nullptr, Room), E_INVALIDARG) << type;
}

TEST_F(CommandText, OfACommandThatIsLeftOutIsStillAnswered) {
    NRegWriteDword(1, NoEditTag, HKEY_CURRENT_USER, SettingsKey);
    EXPECT_EQ(Query(), 1);

    EXPECT_EQ(Ask(1, GCS_VERBA, Room), S_OK);
    EXPECT_TRUE(HoldsNarrow("Edit_IDTag"));
}

TEST_F(CommandText, OutOfMemoryIsNoException) {
    HRESULT result = E_OUTOFMEMORY;
    int successes = 0;
    for (; result == E_OUTOFMEMORY && successes < 100; ++successes) {
        FailingAllocations failing(successes);
        result = Ask(0, GCS_HELPTEXTA, Room);
    }
    EXPECT_EQ(result, S_OK);
    EXPECT_GT(successes, 1) << "no allocation has failed";
}

TEST(CommandName, IsAVerbInItsExactCase) {
    EXPECT_EQ(NCommandOf("Convert_To"), 0);
    EXPECT_EQ(NCommandOf("Edit_IDTag"), 1);
    for (const char* verb :
         {"convert_to", "CONVERT_TO", "Convert_to", "Convert To", "Convert_To ", " Convert_To",
          "Convert_T", "edit_idtag", "EDIT_IDTAG", "Edit ID-Tag", "", "0", "1", "open", "\xE4"}) {
        EXPECT_EQ(NCommandOf(verb), NoCommand) << verb;
    }
}

TEST(CommandName, IsAnIndexInSixteenBits) {
    const struct {
        uintptr_t bits;
        int command;
    } cases[] = {
        {0, 0}, {1, 1}, {2, NoCommand}, {0x7FFF, NoCommand}, {0xFFFF, NoCommand},
    };
    for (const auto& [bits, command] : cases)
        EXPECT_EQ(NCommandOf(IndexVerb(bits)), command) << bits;
}

TEST(CommandName, IsAnIndexWhateverStandsAboveTheLow32Bits) {
    for (uintptr_t high : {uintptr_t{1} << 32, uintptr_t{0xABCD} << 32, uintptr_t{0xFFFF} << 48}) {
        EXPECT_EQ(NCommandOf(IndexVerb(high)), 0);
        EXPECT_EQ(NCommandOf(IndexVerb(high | 1)), 1);
        EXPECT_EQ(NCommandOf(IndexVerb(high | 2)), NoCommand);
    }
}

TEST(CommandName, IsReadAtAnAddressThatHasAnyOfBits16To31) {
    TextAt low(0x20000000, "Edit_IDTag");
    ASSERT_NE(low.Text(), nullptr);
    EXPECT_EQ(NCommandOf(low.Text()), 1);
    TextAt high(0x280010000, "Edit_IDTag");
    ASSERT_NE(high.Text(), nullptr);
    EXPECT_EQ(NCommandOf(high.Text()), 1);
}

TEST(CommandName, IsNotReadAtAnAddressThatHasNoneOfBits16To31) {
    TextAt page(0x300000000, "Edit_IDTag");
    ASSERT_NE(page.Text(), nullptr);
    EXPECT_EQ(NCommandOf(page.Text()), 0);
}

TEST_F(ContextMenu, ConvertToStartsTheConverterByVerbAndByIndex) {
    ConverterStandIn converter;
    Select({L"C:\\b.mp3", L"C:\\\u97f3.mp3"});
    for (const char* verb : {"Convert_To", IndexVerb(0)}) {
        EXPECT_EQ(Invoke(verb), S_OK);
        ASSERT_TRUE(converter.HasStarted());
        EXPECT_EQ(converter.List(), ListFileOf({L"C:\\b.mp3", L"C:\\\u97f3.mp3"}));
        ASSERT_TRUE(converter.LetEnd());
        converter.StartAnew();
    }
    EXPECT_EQ(shell->m_Selection.Count, 2);
}

TEST_F(ContextMenu, ACommandSucceedsWhateverHappensInIt) {
    ConverterStandIn converter;
    Select({L"C:\\a.mp3"});
    WithoutConverter nothingToStart;
    MessageBoxDriver driver;

    EXPECT_EQ(Invoke("Convert_To"), S_OK);

    ASSERT_EQ(driver.Boxes().size(), 1u);
    EXPECT_EQ(driver.Boxes()[0].text, L"Error running Wave Smith");
}

TEST_F(ContextMenu, ACommandThatRunsOutOfMemorySucceedsToo) {
    ConverterStandIn converter;
    Select({L"C:\\" + std::wstring(300, L'x')});
    HRESULT result;
    {
        FailingAllocations failing(0);
        result = Invoke(IndexVerb(0));
    }
    EXPECT_EQ(result, S_OK);
    EXPECT_FALSE(converter.WasRun());
}

TEST_F(ContextMenu, EditIdTagSucceedsAndDoesNothingYet) {
    ConverterStandIn converter;
    Select({L"C:\\a.mp3"});
    MessageBoxDriver driver;
    for (const char* verb : {"Edit_IDTag", IndexVerb(1)})
        EXPECT_EQ(Invoke(verb), S_OK);

    EXPECT_FALSE(converter.WasRun());
    EXPECT_EQ(converter.TemporaryFiles(), Paths());
    EXPECT_TRUE(driver.Boxes().empty());
}

TEST_F(ContextMenu, WithoutASelectionACommandDoesNothing) {
    ConverterStandIn converter;
    Select({});
    MessageBoxDriver driver;
    for (const char* verb : {"Convert_To", "Edit_IDTag"})
        EXPECT_EQ(Invoke(verb), S_OK);

    EXPECT_FALSE(converter.WasRun());
    EXPECT_EQ(converter.TemporaryFiles(), Paths());
    EXPECT_TRUE(driver.Boxes().empty());
}

TEST_F(ContextMenu, AnUnknownCommandIsAnInvalidArgumentAndShowsNothing) {
    ConverterStandIn converter;
    Select({L"C:\\a.mp3"});
    MessageBoxDriver driver;
    for (const char* verb : {"convert_to", "edit_idtag", "open", "", IndexVerb(2)})
        EXPECT_EQ(Invoke(verb), E_INVALIDARG);
    EXPECT_EQ(shell->InvokeCommand(nullptr), E_INVALIDARG);

    EXPECT_FALSE(converter.WasRun());
    EXPECT_EQ(converter.TemporaryFiles(), Paths());
    EXPECT_TRUE(driver.Boxes().empty());
}

TEST_F(ContextMenu, NothingOfACommandButItsVerbIsUsed) {
    ConverterStandIn converter;
    Select({L"C:\\a.mp3"});
    CMINVOKECOMMANDINFO command;
    memset(&command, 0xEE, sizeof(command));
    command.lpVerb = "Convert_To";

    EXPECT_EQ(shell->InvokeCommand(&command), S_OK);
    ASSERT_TRUE(converter.HasStarted());
}
