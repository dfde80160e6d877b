#include "foundation/nfile.h"
#include "foundation/nopenfiledialog.h"
#include "foundation/npath.h"
#include "tests/support/dialog_hook.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <commdlg.h>
#include <dlgs.h>

#include <string>
#include <vector>

namespace {
std::wstring FilterBlock(const wchar_t* text, const NStringList* list) {
    NBuffer block;
    NMakeFilterBlock(block, text, list);
    return std::wstring(reinterpret_cast<wchar_t*>(block.Data), block.Size / sizeof(wchar_t));
}

// The literal's own terminator counts.
template <size_t N>
std::wstring Units(const wchar_t (&text)[N]) {
    return std::wstring(text, N);
}

template <size_t N>
void TakeNames(NStringList& list, const wchar_t (&names)[N], bool multiSelect) {
    NTakeDialogNames(list, names, N, multiSelect);
}

class OpenFileDialog : public testing::Test {
protected:
    void SetUp() override {
        NFile(folder_.File(L"a.mp3"), GENERIC_WRITE, CREATE_ALWAYS, false, true);
        NFile(folder_.File(L"b.mp3"), GENERIC_WRITE, CREATE_ALWAYS, false, true);
        list_.Add(L"old");
    }

    // Opens the dialog, types `typed` over what it offers, and presses a button.
    // A box that says what is wrong with the name ends both in a Cancel.
    bool Run(DWORD flags, const wchar_t* initialFile, const wchar_t* typed, WORD button) {
        HWND main = nullptr;
        DialogHook hook([&](HWND dialog) {
            if (main) {
                complaint_ = TextOf(dialog);
                Press(dialog, IDCANCEL);
                Press(dialog, IDOK);
                Press(main, IDCANCEL);
                return;
            }
            main = dialog;
            title_ = TextOf(dialog);
            owner_ = GetWindow(dialog, GW_OWNER);
            HWND name = NameControl(dialog);
            offered_ = TextOf(name);
            filter_ = TextOf(GetDlgItem(dialog, cmb1));
            filters_ = ItemsOf(GetDlgItem(dialog, cmb1));
            if (typed)
                SetWindowTextW(name, typed);
            Press(dialog, button);
        });
        bool chosen = NOpenFileDialog(list_, wantedTitle_, flags, wantedFilter_, wantedFilters_,
                                      wantedFolder_, initialFile, wantedOwner_);
        EXPECT_EQ(complaint_, L"");
        return chosen;
    }
    static void Press(HWND dialog, WORD button) {
        PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
    }
    static HWND NameControl(HWND dialog) {
        HWND combo = GetDlgItem(dialog, cmb13);
        return combo ? combo : GetDlgItem(dialog, edt1);
    }
    static NString TextOf(HWND window) {
        wchar_t text[2000] = {};
        GetWindowTextW(window, text, 2000);
        return NString(text);
    }
    static std::vector<std::wstring> ItemsOf(HWND combo) {
        std::vector<std::wstring> items;
        auto count = SendMessageW(combo, CB_GETCOUNT, 0, 0);
        for (WPARAM index = 0; static_cast<LRESULT>(index) < count; ++index) {
            wchar_t text[200] = {};
            SendMessageW(combo, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text));
            items.push_back(text);
        }
        return items;
    }

    TempFolder folder_;
    NStringList list_;
    const wchar_t* wantedTitle_ = L"Choose a picture";
    const wchar_t* wantedFilter_ = L"Music\r*.mp3";
    const NStringList* wantedFilters_ = nullptr;
    const wchar_t* wantedFolder_ = folder_.Path().Text;
    HWND wantedOwner_ = nullptr;
    HWND owner_ = nullptr;
    NString title_;
    NString offered_;
    NString filter_;
    std::vector<std::wstring> filters_;
    NString complaint_; // the caption of a box that came up instead
};
} // namespace

TEST(DialogFilter, WithoutAnyEntryAllFilesAreOffered) {
    EXPECT_EQ(FilterBlock(nullptr, nullptr), Units(L" \0*.*\0"));
    NStringList none;
    EXPECT_EQ(FilterBlock(L"", &none), Units(L" \0*.*\0"));
}

TEST(DialogFilter, TheListComesBeforeTheText) {
    NStringList list;
    list.Add(L"Pictures\r*.jpg;*.png");
    list.Add(L"Music\r*.mp3");
    EXPECT_EQ(FilterBlock(L"All\r*.*", &list),
              Units(L"Pictures\0*.jpg;*.png\0Music\0*.mp3\0All\0*.*\0"));
}

TEST(DialogFilter, TheTextAloneIsOneEntry) {
    EXPECT_EQ(FilterBlock(L"All\r*.*", nullptr), Units(L"All\0*.*\0"));
}

TEST(DialogNames, WithoutMultiSelectTheNameIsTheSingleItem) {
    NStringList list;
    list.Add(L"old");
    TakeNames(list, L"C:\\a.mp3\0b.mp3\0", false);
    ASSERT_EQ(list.Count, 1);
    EXPECT_EQ(*list[0], L"C:\\a.mp3");
}

TEST(DialogNames, SeveralNamesGetTheFolderInFront) {
    NStringList list;
    TakeNames(list, L"C:\\Music\0a.mp3\0b.mp3\0", true);
    ASSERT_EQ(list.Count, 2);
    EXPECT_EQ(*list[0], L"C:\\Music\\a.mp3");
    EXPECT_EQ(*list[1], L"C:\\Music\\b.mp3");
}

TEST(DialogNames, AFolderThatIsARootGetsNoSecondBackslash) {
    NStringList list;
    TakeNames(list, L"C:\\\0a.mp3\0b.mp3\0", true);
    ASSERT_EQ(list.Count, 2);
    EXPECT_EQ(*list[0], L"C:\\a.mp3");
}

TEST(DialogNames, OneFileInAMultiSelectGivesItsPathOnce) {
    NStringList list;
    TakeNames(list, L"C:\\Music\\a.mp3\0", true);
    ASSERT_EQ(list.Count, 1);
    EXPECT_EQ(*list[0], L"C:\\Music\\a.mp3");
}

TEST_F(OpenFileDialog, GivesTheFileThatIsTyped) {
    EXPECT_TRUE(Run(OFN_FILEMUSTEXIST, nullptr, folder_.File(L"b.mp3").Text, IDOK));
    ASSERT_EQ(list_.Count, 1);
    EXPECT_EQ(*list_[0], folder_.File(L"b.mp3"));
    EXPECT_EQ(title_, L"Choose a picture");
}

TEST_F(OpenFileDialog, OffersTheInitialFile) {
    EXPECT_TRUE(Run(OFN_FILEMUSTEXIST, L"a.mp3", nullptr, IDOK));
    EXPECT_EQ(offered_, L"a.mp3");
    ASSERT_EQ(list_.Count, 1);
    EXPECT_EQ(*list_[0], folder_.File(L"a.mp3"));
}

TEST_F(OpenFileDialog, ACancelledDialogLeavesAnEmptyList) {
    EXPECT_FALSE(Run(0, nullptr, L"b.mp3", IDCANCEL));
    EXPECT_EQ(list_.Count, 0);
}

TEST_F(OpenFileDialog, MultiSelectGivesEveryFileWithItsFolder) {
    EXPECT_TRUE(Run(OFN_ALLOWMULTISELECT, nullptr, L"\"a.mp3\" \"b.mp3\"", IDOK));
    ASSERT_EQ(list_.Count, 2);
    EXPECT_EQ(*list_[0], folder_.File(L"a.mp3"));
    EXPECT_EQ(*list_[1], folder_.File(L"b.mp3"));
}

TEST_F(OpenFileDialog, MultiSelectWithOneFileGivesItsFullPathOnce) {
    EXPECT_TRUE(Run(OFN_ALLOWMULTISELECT, nullptr, L"a.mp3", IDOK));
    ASSERT_EQ(list_.Count, 1);
    EXPECT_EQ(*list_[0], folder_.File(L"a.mp3"));
}

TEST_F(OpenFileDialog, MultiSelectHasRoomForManyNames) {
    constexpr int count = 40;
    NString typed;
    for (int number = 0; number < count; ++number) {
        NString name = NString::FromInt(1000 + number).Concat(L" with a longish name, mine.mp3");
        NFile(folder_.File(name.Text), GENERIC_WRITE, CREATE_ALWAYS, false, true);
        typed.Append(NQuote(name).Concat(L" "));
    }
    ASSERT_GT(typed.CharCount(), 1000);
    EXPECT_TRUE(Run(OFN_ALLOWMULTISELECT, nullptr, typed.Text, IDOK));
    ASSERT_EQ(list_.Count, count);
    EXPECT_EQ(*list_[count - 1], folder_.File(L"1039 with a longish name, mine.mp3"));
}

TEST_F(OpenFileDialog, StandsBeforeItsOwner) {
    HWND owner = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                                 nullptr);
    wantedOwner_ = owner;
    EXPECT_FALSE(Run(0, nullptr, nullptr, IDCANCEL));
    EXPECT_EQ(owner_, owner);
    DestroyWindow(owner);
}

TEST_F(OpenFileDialog, OffersItsFilter) {
    EXPECT_FALSE(Run(0, nullptr, nullptr, IDCANCEL));
    EXPECT_EQ(filter_, L"Music");
}

TEST_F(OpenFileDialog, AllButTheListMayBeLeftOut) {
    wantedTitle_ = wantedFilter_ = wantedFolder_ = nullptr;
    EXPECT_TRUE(Run(0, nullptr, folder_.File(L"a.mp3").Text, IDOK));
    ASSERT_EQ(list_.Count, 1);
    EXPECT_EQ(*list_[0], folder_.File(L"a.mp3"));
    EXPECT_NE(title_, L""); // of the platform's choice
    EXPECT_EQ(offered_, L"");
    EXPECT_EQ(filters_, std::vector<std::wstring>{L" "});
    EXPECT_EQ(owner_, nullptr);
}

TEST_F(OpenFileDialog, OffersTheFilterListBeforeTheText) {
    NStringList filters;
    filters.Add(L"Pictures\r*.jpg;*.png");
    filters.Add(L"Sheets\r*.pdf");
    wantedFilters_ = &filters;
    EXPECT_FALSE(Run(0, nullptr, nullptr, IDCANCEL));
    EXPECT_EQ(filters_, (std::vector<std::wstring>{L"Pictures", L"Sheets", L"Music"}));
    EXPECT_EQ(filter_, L"Pictures");
}

TEST_F(OpenFileDialog, AnInitialFileThatIsTooLongIsCut) {
    NString name;
    name.SetLength(3000, L'x');
    EXPECT_FALSE(Run(0, name.Text, nullptr, IDCANCEL));
    EXPECT_EQ(list_.Count, 0);
    EXPECT_EQ(offered_, name.Left(999));
}
