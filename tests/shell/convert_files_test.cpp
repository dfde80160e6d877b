#include "foundation/ndisk.h"
#include "foundation/nfolders.h"
#include "shell/convert_files.h"
#include "shell/list_file.h"
#include "tests/shell/without_converter.h"
#include "tests/support/converter_stand_in.h"
#include "tests/support/message_box_driver.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/scoped_priority.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

// The linker's entries for the functions, through which all their callers go.
extern "C" decltype(&MessageBoxW) __imp_MessageBoxW;
extern "C" decltype(&CreateProcessW) __imp_CreateProcessW;

namespace {
using Paths = std::vector<std::wstring>;

constexpr UINT RetryBoxType = MB_RETRYCANCEL | MB_ICONINFORMATION;

class Conversion : public testing::Test {
protected:
    void Select(const Paths& paths) {
        selection.Clear();
        for (const std::wstring& path : paths)
            selection.Add(path.c_str());
    }

    // The one list file that there is.
    std::wstring ListPath() const {
        Paths files = converter.TemporaryFiles();
        EXPECT_EQ(files.size(), 1u);
        return files.empty() ? L"" : files[0];
    }

    static std::vector<char> Contents(const std::wstring& path) {
        std::vector<char> bytes;
        EXPECT_TRUE(ReadWhole(path, bytes));
        return bytes;
    }

    // A list file that is there, with something in it, but open for reading
    // alone, so that nothing can be written.
    void OpenUnwritable(std::optional<NFile>& file, bool showErrors) {
        NString path = NString(converter.Temp()).Concat(L"\\unwritable");
        WriteText(path.c_str(), L"a part of the list");
        file.emplace(path, GENERIC_READ, OPEN_EXISTING, showErrors, true);
        ASSERT_TRUE(file->IsOpen());
    }

    static void ExpectBox(const SeenBox& box, const wchar_t* text, const wchar_t* caption,
                          UINT type) {
        EXPECT_EQ(box.text, text);
        EXPECT_EQ(box.caption, caption);
        EXPECT_EQ(box.type, type);
        EXPECT_FALSE(box.hasOwner);
    }

    static std::wstring About(const wchar_t* failure, const std::wstring& path) {
        return failure + (L" '" + path + L"'");
    }

    ConverterStandIn converter;
    NStringList selection;
};

// Takes the calls of MessageBoxW of this program, with their very flags, from
// which Wine leaves the topmost one out.
class CaughtMessageBox {
public:
    CaughtMessageBox() { __imp_MessageBoxW = Answer; }
    ~CaughtMessageBox() { __imp_MessageBoxW = platform_; }
    CaughtMessageBox(const CaughtMessageBox&) = delete;
    CaughtMessageBox& operator=(const CaughtMessageBox&) = delete;

    static inline int calls;
    static inline HWND owner;
    static inline UINT type;

private:
    static int WINAPI Answer(HWND window, const wchar_t*, const wchar_t*, UINT flags) {
        ++calls;
        owner = window;
        type = flags;
        return IDOK;
    }

    decltype(&MessageBoxW) platform_ = __imp_MessageBoxW;
};

// Takes the starts of programs, with their very flags: Wine gives a program
// normal priority by itself. None of them succeeds.
class CaughtStart {
public:
    CaughtStart() { __imp_CreateProcessW = Answer; }
    ~CaughtStart() { __imp_CreateProcessW = platform_; }
    CaughtStart(const CaughtStart&) = delete;
    CaughtStart& operator=(const CaughtStart&) = delete;

    static inline int calls;
    static inline BOOL inherit;
    static inline DWORD flags;

private:
    static BOOL WINAPI Answer(const wchar_t*, wchar_t*, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*,
                              BOOL inherited, DWORD created, void*, const wchar_t*, STARTUPINFOW*,
                              PROCESS_INFORMATION*) {
        ++calls;
        inherit = inherited;
        flags = created;
        return FALSE;
    }

    decltype(&CreateProcessW) platform_ = __imp_CreateProcessW;
};

// A file in the place of the temporary folder, so that no file can be made there.
class FolderInTheWay {
public:
    explicit FolderInTheWay(const NString& parent)
        : file_(NString(parent).Concat(L"\\in the way")), folder_(NString(file_).Concat(L"\\temp")),
          temp_(L"TMP", folder_.Text) {
        WriteText(file_.c_str(), L"no folder");
    }
    void MakeRoom() {
        NDeleteFile(file_);
        NCreateFolders(NString(folder_).Concat(L"\\"));
    }
    const NString& Folder() const { return folder_; }

private:
    NString file_;
    NString folder_;
    ScopedEnvironment temp_;
};
} // namespace

TEST_F(Conversion, StartsTheConverterOfTheModulesFolderWithTheListFile) {
    Select({L"C:\\a.mp3"});
    ConvertFiles(selection);
    ASSERT_TRUE(converter.HasStarted());

    std::wstring folder = NGetModuleFolder(NModuleInstance()).c_str();
    EXPECT_EQ(converter.CommandLine(),
              L"\"" + folder + L"WaveSmith.exe\" -list_to_conv=\"" + ListPath() + L"\"");
}

TEST_F(Conversion, ListsThePathsInTheShellsOrderWithALineEndBehindEach) {
    Paths paths = {L"C:\\z.flac", L"C:\\a.mp3", L"C:\\M.ogg", L"C:\\a.mp3"};
    Select(paths);
    ConvertFiles(selection);
    ASSERT_TRUE(converter.HasStarted());

    EXPECT_EQ(converter.List(), ListFileOf(paths));
}

TEST_F(Conversion, TheListIsUtf16WithoutAByteOrderMark) {
    Select({L"\u00e4\u97f3\U0001F3B5"});
    ConvertFiles(selection);
    ASSERT_TRUE(converter.HasStarted());

    EXPECT_EQ(converter.List(), (std::vector<char>{'\xE4', 0, '\xF3', '\x97', '\x3C', '\xD8',
                                                   '\xB5', '\xDF', 13, 0, 10, 0}));
}

TEST_F(Conversion, ListsLongPathsWhole) {
    Paths paths = {L"\\\\?\\C:\\" + std::wstring(3000, L'x') + L".mp3", L"C:\\b.mp3"};
    Select(paths);
    ConvertFiles(selection);
    ASSERT_TRUE(converter.HasStarted());

    EXPECT_EQ(converter.List(), ListFileOf(paths));
}

TEST_F(Conversion, ListsThousandsOfFiles) {
    Paths paths;
    for (int index = 0; index < 10000; ++index)
        paths.push_back(L"C:\\Music\\" + std::to_wstring(index) + L".mp3");
    Select(paths);
    ConvertFiles(selection);
    ASSERT_TRUE(converter.HasStarted());

    EXPECT_EQ(converter.List(), ListFileOf(paths));
}

TEST_F(Conversion, TheListFileHasItsPrefixAndLiesInTheTemporaryFolder) {
    Select({L"C:\\a.mp3"});
    ConvertFiles(selection);
    ASSERT_TRUE(converter.HasStarted());

    std::wstring start = std::wstring(converter.Temp().c_str()) + L"\\tNS";
    EXPECT_TRUE(ListPath().starts_with(start));
}

TEST_F(Conversion, ANewListFileNameIsOfNoFile) {
    NString name = NNewListFileName();

    EXPECT_FALSE(name.IsEmpty());
    EXPECT_EQ(converter.TemporaryFiles(), Paths());
}

TEST_F(Conversion, DoesNotWaitForTheConverterAndLeavesItTheListFile) {
    Select({L"C:\\a.mp3"});
    ConvertFiles(selection);
    ASSERT_TRUE(converter.HasStarted());

    EXPECT_FALSE(converter.HasEnded());
    EXPECT_EQ(Contents(ListPath()), ListFileOf({L"C:\\a.mp3"}));
    EXPECT_TRUE(CanOpenAlone(ListPath())) << "the list file is still open here";

    EXPECT_TRUE(converter.LetEnd());
    EXPECT_EQ(converter.EndedAs(), L"deleted=1");
    EXPECT_EQ(converter.TemporaryFiles(), Paths());
}

// The list file's handle is lent, so that it is open for as long as the
// converter runs.
TEST_F(Conversion, TheConverterCanReadTheListWhileTheModuleHasItOpen) {
    Select({L"C:\\a.mp3"});
    NString path = NNewListFileName();
    NFile owner(path, GENERIC_WRITE, CREATE_ALWAYS, false, true);
    NFile lent;
    lent.Path = path;
    lent.Handle = owner.Handle;
    NHandToConverter(lent, selection);
    ASSERT_TRUE(converter.HasStarted());

    EXPECT_FALSE(lent.IsOpen());
    EXPECT_EQ(converter.List(), ListFileOf({L"C:\\a.mp3"}));
    EXPECT_EQ(converter.StartedAs(), L"priority=32 alone=0");
}

TEST_F(Conversion, TheConverterGetsNormalPriorityAndNoHandles) {
    SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), nullptr, TRUE};
    UniqueKernelHandle event(CreateEventW(&inheritable, TRUE, FALSE, nullptr));
    std::wstring number = std::to_wstring(reinterpret_cast<uintptr_t>(event.Get()));
    ScopedEnvironment handle(L"TONEWRIGHT_STAND_IN_HANDLE", number.c_str());
    ScopedPriority priority(BELOW_NORMAL_PRIORITY_CLASS);
    Select({L"C:\\a.mp3"});
    ConvertFiles(selection);
    ASSERT_TRUE(converter.HasStarted());

    EXPECT_TRUE(converter.StartedAs().starts_with(L"priority=32 ")); // NORMAL_PRIORITY_CLASS
    EXPECT_NE(WaitForSingleObject(event.Get(), 0), WAIT_OBJECT_0);
}

TEST_F(Conversion, AsksForNormalPriorityAndNothingElse) {
    Select({L"C:\\a.mp3"});
    CaughtMessageBox box;
    CaughtStart start;
    start.calls = 0;
    ConvertFiles(selection);

    EXPECT_EQ(start.calls, 1);
    EXPECT_EQ(start.flags, 32u); // NORMAL_PRIORITY_CLASS
    EXPECT_FALSE(start.inherit);
}

TEST_F(Conversion, AnEmptySelectionDoesNothing) {
    MessageBoxDriver driver;
    WithoutConverter nothingToStart;
    ConvertFiles(selection);

    EXPECT_EQ(converter.TemporaryFiles(), Paths());
    EXPECT_TRUE(driver.Boxes().empty());
}

TEST_F(Conversion, AConverterThatCantBeStartedIsToldAndTheListFileDeleted) {
    Select({L"C:\\a.mp3", L"C:\\b.mp3"});
    WithoutConverter nothingToStart;
    MessageBoxDriver driver;
    bool wasWritten = false;
    bool wasOpen = false;
    driver.beforeAnswer = [&](size_t) {
        wasWritten = Contents(ListPath()) == ListFileOf({L"C:\\a.mp3", L"C:\\b.mp3"});
        wasOpen = !CanOpenAlone(ListPath());
    };
    ConvertFiles(selection);

    ASSERT_EQ(driver.Boxes().size(), 1u);
    ExpectBox(driver.Boxes()[0], L"Error running Wave Smith", L"Tonewright", MB_OK | MB_ICONERROR);
    EXPECT_TRUE(wasWritten) << "the list wasn't whole when the start was tried";
    EXPECT_TRUE(wasOpen) << "the list file was closed when the start was tried";
    EXPECT_EQ(converter.TemporaryFiles(), Paths());
}

TEST_F(Conversion, TheBoxAboutTheConverterIsTopmostAndHasNoOwner) {
    Select({L"C:\\a.mp3"});
    WithoutConverter nothingToStart;
    CaughtMessageBox box;
    box.calls = 0;
    ConvertFiles(selection);

    EXPECT_EQ(box.calls, 1);
    EXPECT_EQ(box.owner, nullptr);
    EXPECT_EQ(box.type, 0x40010u); // MB_ICONERROR, MB_TOPMOST
    EXPECT_EQ(converter.TemporaryFiles(), Paths());
}

TEST_F(Conversion, AListFileThatCantBeMadeIsToldOnceAndEndsTheCommand) {
    Select({L"C:\\a.mp3", L"C:\\b.mp3"});
    FolderInTheWay noTemp(converter.Temp());
    MessageBoxDriver driver({IDCANCEL});
    ConvertFiles(selection);

    ASSERT_EQ(driver.Boxes().size(), 1u);
    const SeenBox& box = driver.Boxes()[0];
    std::wstring text = box.text.c_str();
    std::wstring start = About(L"Unable to open", std::wstring(noTemp.Folder().c_str()) + L"\\tNS");
    start.pop_back();
    EXPECT_TRUE(text.starts_with(start) && text.ends_with(L".tmp'")) << box.text.Text;
    ExpectBox(box, box.text.Text, L"File Write Error", RetryBoxType);
    EXPECT_FALSE(converter.WasRun());
    EXPECT_EQ(converter.TemporaryFiles().size(), 1u) << "more is left than was in the way";
}

TEST_F(Conversion, RetryMakesTheListFileOnceItCanBeMade) {
    Select({L"C:\\a.mp3"});
    FolderInTheWay noTemp(converter.Temp());
    MessageBoxDriver driver({IDRETRY, IDRETRY});
    driver.beforeAnswer = [&](size_t number) {
        if (number == 1)
            noTemp.MakeRoom();
    };
    ConvertFiles(selection);

    EXPECT_EQ(driver.Boxes().size(), 2u);
    ASSERT_TRUE(converter.HasStarted());
    EXPECT_EQ(converter.List(), ListFileOf({L"C:\\a.mp3"}));
}

TEST_F(Conversion, AWriteThatFailsIsToldOnceAndEndsTheCommand) {
    Select({L"C:\\a.mp3", L"C:\\b.mp3"});
    std::optional<NFile> list;
    ASSERT_NO_FATAL_FAILURE(OpenUnwritable(list, true));
    NString path = list->Path;
    MessageBoxDriver driver({IDCANCEL});
    NHandToConverter(*list, selection);

    ASSERT_EQ(driver.Boxes().size(), 1u);
    ExpectBox(driver.Boxes()[0], About(L"Unable to write to", path.c_str()).c_str(),
              L"File Write Error", RetryBoxType);
    EXPECT_FALSE(converter.WasRun());
    EXPECT_EQ(converter.TemporaryFiles(), Paths()) << "the partial file is left";
}

TEST_F(Conversion, RetryWritesTheListOnceItCanBeWritten) {
    Select({L"C:\\a.mp3", L"C:\\b.mp3"});
    std::optional<NFile> list;
    ASSERT_NO_FATAL_FAILURE(OpenUnwritable(list, true));
    MessageBoxDriver driver({IDRETRY});
    driver.beforeAnswer = [&](size_t) {
        list->Close();
        list->Open(GENERIC_WRITE, CREATE_ALWAYS, true, true);
    };
    NHandToConverter(*list, selection);

    EXPECT_EQ(driver.Boxes().size(), 1u);
    ASSERT_TRUE(converter.HasStarted());
    EXPECT_EQ(converter.List(), ListFileOf({L"C:\\a.mp3", L"C:\\b.mp3"}));
}

TEST_F(Conversion, AListThatIsNotWholeIsNotHandedOver) {
    Select({L"C:\\a.mp3"});
    std::optional<NFile> list;
    ASSERT_NO_FATAL_FAILURE(OpenUnwritable(list, false));
    NHandToConverter(*list, selection);

    EXPECT_FALSE(converter.WasRun());
    EXPECT_EQ(converter.TemporaryFiles(), Paths());
}

// A full disk takes the text of a line and refuses its end, or so it may be.
TEST_F(Conversion, ALineThatIsNotWrittenToItsEndIsAFailedWrite) {
    Select({L"C:\\a.mp3"});
    NFile fullDisk(L"Z:\\dev\\full", GENERIC_WRITE, OPEN_EXISTING, false, true);
    ASSERT_TRUE(fullDisk.IsOpen());
    EXPECT_FALSE(NWriteFileList(fullDisk, selection));

    // Nothing of the text fails here: it is the line end that does.
    Select({L""});
    EXPECT_FALSE(NWriteFileList(fullDisk, selection));
}
