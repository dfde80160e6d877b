#include "tests/support/nstring_printer.h"
#include "tests/support/test_cursor.h"
#include "tests/toolkit/list_dialog.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/watched_calls.h"
#include "toolkit/device_contexts.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {
constexpr int MarkX = 30;
constexpr int MarkSize = 16;

std::vector<std::wstring> platformCalls;
HWND shellWindow;

// No link opens anything while it stands.
class WatchedShell : public WatchedCalls {
public:
    WatchedShell() {
        platformCalls.clear();
        shellWindow = nullptr;
        __wrap___imp_ShellExecuteW = [](HWND window, const wchar_t* verb, const wchar_t* file,
                                        const wchar_t* arguments, const wchar_t* folder, int show) {
            shellWindow = window;
            const bool bare = !verb && !arguments && !folder && show == SW_SHOWNORMAL;
            platformCalls.push_back((bare ? L"open " : L"open otherwise ") + std::wstring(file));
            return reinterpret_cast<HINSTANCE>(33);
        };
        __wrap___imp_MessageBeep = [](UINT kind) -> BOOL {
            platformCalls.push_back(L"beep " + std::to_wstring(kind));
            return TRUE;
        };
    }
};

class ValueListMessages : public testing::Test {
protected:
    // Cursor on a row, in the list box's client area.
    void Point(int row, int x) {
        const RECT item = dialog.ItemRect(row);
        TestCursor::MoveTo(dialog.list.listBox, x, (item.top + item.bottom) / 2);
    }
    void PressAt(int row, int x) {
        Point(row, x);
        EXPECT_EQ(dialog.Filter(WM_PARENTNOTIFY, WM_LBUTTONDOWN), (Filtered{0, 0}));
    }
    int AddMark(int32_t kind, const wchar_t* value, const wchar_t* button = L"",
                bool readOnly = false) {
        NValueRowInit init;
        init.kind = kind;
        init.value = value;
        init.markX = MarkX;
        init.buttonText = button;
        init.readOnly = readOnly;
        init.onChange = [](NValueList& list) {
            ++*static_cast<int*>(list.owner); // how many changes
        };
        return dialog.Add(init);
    }
    std::vector<std::wstring> Values() {
        std::vector<std::wstring> values;
        for (int row = 0; row < dialog.list.rows.Count(); ++row)
            values.emplace_back(dialog.list.rows[row]->value.Text);
        return values;
    }
    using Texts = std::vector<std::wstring>;

    void SetUp() override { dialog.list.owner = &changes; }

    TestCursor cursor;
    ListDialog dialog;
    int changes = 0;
};

MEASUREITEMSTRUCT Measure(int32_t id, UINT type = ODT_LISTBOX) {
    MEASUREITEMSTRUCT item = {};
    item.CtlType = type;
    item.CtlID = static_cast<UINT>(id);
    item.itemHeight = 99;
    return item;
}

TEST_F(ValueListMessages, ItemsAreMeasuredByIdAndType) {
    const auto ask = [&](MEASUREITEMSTRUCT item) {
        const Filtered filtered = dialog.Filter(WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&item));
        return std::tuple(filtered.result, filtered.handled, item.itemHeight);
    };
    const int32_t id = dialog.list.controlId;
    EXPECT_EQ(ask(Measure(id)), std::tuple(1, 1, static_cast<UINT>(RowHeight)));
    EXPECT_EQ(ask(Measure(id + 1)), std::tuple(0, 0, 99u));
    EXPECT_EQ(ask(Measure(0)), std::tuple(0, 0, 99u));
    EXPECT_EQ(ask(Measure(id, ODT_COMBOBOX)), std::tuple(0, 0, 99u));
}

TEST_F(ValueListMessages, AListWithoutAListBoxMeasuresTheOneWithTheId0) {
    NValueList list;
    list.rowHeight = 33;
    MEASUREITEMSTRUCT item = Measure(0);
    int32_t handled = 5;
    EXPECT_EQ(list.OnParentMessage(dialog.window, WM_MEASUREITEM, 0,
                                   reinterpret_cast<LPARAM>(&item), &handled),
              1);
    EXPECT_EQ(handled, 1);
    EXPECT_EQ(item.itemHeight, 33u);
}

TEST_F(ValueListMessages, AListWithoutAListBoxTakesNothingElse) {
    NValueList list;
    DRAWITEMSTRUCT item = {};
    for (UINT message : {WM_DRAWITEM, WM_COMMAND, WM_PARENTNOTIFY, WM_TIMER}) {
        int32_t handled = 5;
        const LPARAM lParam = message == WM_DRAWITEM ? reinterpret_cast<LPARAM>(&item) : 0;
        EXPECT_EQ(list.OnParentMessage(dialog.window, message, WM_LBUTTONDOWN, lParam, &handled),
                  0);
        EXPECT_EQ(handled, 0);
    }
}

TEST_F(ValueListMessages, AChangedSelectionStartsItsEditAndIsTold) {
    dialog.Add(Edit, L"a", L"1");
    SendMessageW(dialog.list.listBox, LB_SETCURSEL, 0, 0);
    EXPECT_EQ(dialog.Notify(LBN_SELCHANGE), (Filtered{0, 0}));
    EXPECT_EQ(dialog.list.selections, std::vector<int>({0}));
    EXPECT_EQ(dialog.list.control.editRow, 0);
    EXPECT_TRUE(dialog.list.control.editor);
}

TEST_F(ValueListMessages, TheOwnerHearsOfASelectionWhoseEditRuns) {
    dialog.Add(Edit, L"a", L"1");
    dialog.Add(Edit, L"b", L"2");
    std::vector<int> edits;
    dialog.list.onSelChange = [&] {
        edits.push_back(dialog.list.control.editor ? dialog.list.control.editRow : -1);
    };
    dialog.list.Select(1);
    EXPECT_EQ(edits, std::vector<int>({1}));
    SendMessageW(dialog.list.listBox, LB_SETCURSEL, 0, 0);
    dialog.Notify(LBN_SELCHANGE);
    EXPECT_EQ(edits, std::vector<int>({1, 0}));
}

TEST_F(ValueListMessages, OtherNotificationsAndOtherWindowsAreLeft) {
    dialog.Add(Edit, L"a", L"1");
    SendMessageW(dialog.list.listBox, LB_SETCURSEL, 0, 0);
    for (UINT code : {LBN_SELCANCEL, LBN_SETFOCUS, LBN_KILLFOCUS})
        EXPECT_EQ(dialog.Notify(code), (Filtered{0, 0}));
    EXPECT_EQ(dialog.Filter(WM_COMMAND, MAKEWPARAM(dialog.list.controlId, LBN_SELCHANGE),
                            reinterpret_cast<LPARAM>(dialog.Button())),
              (Filtered{0, 0}));
    EXPECT_EQ(dialog.Filter(WM_TIMER, 1), (Filtered{0, 0}));
    EXPECT_TRUE(dialog.list.selections.empty());
    EXPECT_FALSE(dialog.list.control.editor);
}

TEST_F(ValueListMessages, AClickOnARowSelectsIt) {
    dialog.Add(Edit, L"a", L"1");
    dialog.Add(Edit, L"b", L"2");
    dialog.Click(1);
    EXPECT_EQ(dialog.list.GetSelection(), 1);
    ASSERT_FALSE(dialog.list.selections.empty());
    EXPECT_EQ(dialog.list.selections.back(), 1);
    EXPECT_EQ(TextOf(dialog.list.control.editor), L"2");
}

TEST_F(ValueListMessages, ADoubleClickOpensALink) {
    const WatchedShell shell;
    dialog.list.Select(dialog.Add(Link, L"Home", L"http://example.com/a b"));
    EXPECT_EQ(dialog.Notify(LBN_DBLCLK), (Filtered{1, 0})); // wanted: not consumed
    EXPECT_EQ(platformCalls, Texts({L"open http://example.com/a b", L"beep 0"}));
    EXPECT_EQ(shellWindow, dialog.list.listBox);
}

TEST_F(ValueListMessages, ADoubleClickOpensNoOtherRow) {
    const WatchedShell shell;
    EXPECT_EQ(dialog.Notify(LBN_DBLCLK), (Filtered{0, 0}));
    for (int32_t kind : {Plain, Raw, Heading, Title, Edit, ComboEdit, DropList, Check, Radio}) {
        dialog.list.Select(dialog.Add(kind, L"n", L"http://example.com"));
        EXPECT_EQ(dialog.Notify(LBN_DBLCLK), (Filtered{0, 0}));
    }
    dialog.Add(Link, L"n", L"http://example.com");
    dialog.list.Select(-1);
    EXPECT_EQ(dialog.Notify(LBN_DBLCLK), (Filtered{0, 0}));
    EXPECT_EQ(platformCalls, Texts());
}

TEST_F(ValueListMessages, APressOnTheMarkTogglesACheck) {
    dialog.list.LoadMarks(IDI_MARKS, MarkSize);
    const int row = AddMark(Check, L"");
    PressAt(row, MarkX);
    EXPECT_EQ(Values(), Texts({L"1"}));
    EXPECT_EQ(changes, 1);
    PressAt(row, MarkX);
    EXPECT_EQ(Values(), Texts({L""}));
    EXPECT_EQ(changes, 2);
}

TEST_F(ValueListMessages, APressOnTheMarkTurnsARadioOn) {
    dialog.list.LoadMarks(IDI_MARKS, MarkSize);
    AddMark(Radio, L"1");
    AddMark(Radio, L"-1");
    PressAt(0, MarkX);
    EXPECT_EQ(Values(), Texts({L"-1", L"1"}));
    PressAt(0, MarkX);
    EXPECT_EQ(Values(), Texts({L"-1", L"1"}));
    EXPECT_EQ(changes, 2);
}

TEST_F(ValueListMessages, TheMarksEdgesCount) {
    dialog.list.LoadMarks(IDI_MARKS, MarkSize);
    const int row = AddMark(Check, L"");
    for (int x : {MarkX - 1, MarkX + MarkSize + 1, 0, 299}) {
        PressAt(row, x);
        EXPECT_EQ(changes, 0) << x;
    }
    for (int x : {MarkX, MarkX + 8, MarkX + MarkSize})
        PressAt(row, x);
    EXPECT_EQ(changes, 3);
}

TEST_F(ValueListMessages, TheMarkOfItsKindGivesTheWidth) {
    dialog.list.checkOn.Load(IDI_MARK, 32, 32);
    dialog.list.radioOn.Load(IDI_MARK, 16, 16);
    const int check = AddMark(Check, L"");
    const int radio = AddMark(Radio, L"1");
    PressAt(check, MarkX + 32);
    EXPECT_EQ(changes, 1);
    PressAt(check, MarkX + 33);
    PressAt(radio, MarkX + 17);
    EXPECT_EQ(changes, 1);
    PressAt(radio, MarkX + 16);
    EXPECT_EQ(changes, 2);
}

TEST_F(ValueListMessages, InTheSelectedRowAnyPlaceCountsUnlessItHasAButton) {
    const int row = AddMark(Check, L"");
    const int withButton = AddMark(Check, L"", L"View");
    PressAt(row, 200);
    EXPECT_EQ(changes, 0);
    dialog.list.Select(row);
    PressAt(row, 200);
    EXPECT_EQ(changes, 1);
    dialog.list.Select(withButton);
    PressAt(withButton, 200);
    EXPECT_EQ(changes, 1);
    PressAt(withButton, MarkX);
    EXPECT_EQ(changes, 2);
}

TEST_F(ValueListMessages, APressChangesNoOtherRow) {
    dialog.list.LoadMarks(IDI_MARKS, MarkSize);
    AddMark(Check, L"", L"", true);
    AddMark(Radio, L"1", L"", true);
    for (int32_t kind : {Plain, Raw, Link, Heading, Title, Edit, ComboEdit, DropList})
        AddMark(kind, L"1");
    const Texts before = Values();
    for (int row = 0; row < dialog.list.rows.Count(); ++row) {
        PressAt(row, MarkX);
        dialog.list.Select(row);
        PressAt(row, MarkX);
    }
    dialog.list.Select(-1);
    EXPECT_EQ(Values(), before);
    EXPECT_EQ(changes, 0);
}

TEST_F(ValueListMessages, OtherParentNotificationsAreLeft) {
    dialog.list.LoadMarks(IDI_MARKS, MarkSize);
    AddMark(Check, L"");
    Point(0, MarkX);
    for (UINT event : {WM_RBUTTONDOWN, WM_CREATE, WM_DESTROY, WM_MBUTTONDOWN})
        EXPECT_EQ(dialog.Filter(WM_PARENTNOTIFY, event), (Filtered{0, 0}));
    EXPECT_EQ(changes, 0);
    // The high word is the child's id.
    EXPECT_EQ(dialog.Filter(WM_PARENTNOTIFY, MAKEWPARAM(WM_LBUTTONDOWN, 7)), (Filtered{0, 0}));
    EXPECT_EQ(changes, 1);
}

TEST_F(ValueListMessages, APressElsewhereIsHeldToTheRows) {
    const int last = AddMark(Check, L"");
    dialog.list.Select(last);
    TestCursor::MoveTo(dialog.window, 350, 250); // on no row at all
    dialog.Filter(WM_PARENTNOTIFY, WM_LBUTTONDOWN);
    EXPECT_EQ(changes, 1); // wanted
}

TEST_F(ValueListMessages, TheRowAtTheCursorIsHeldToTheRowsThatThereAre) {
    EXPECT_EQ(dialog.list.GetRowAtCursor(), -1);
    for (int row = 0; row < 3; ++row)
        dialog.Add(Plain, L"n");
    const auto at = [&](int y) {
        TestCursor::MoveTo(dialog.list.listBox, 5, y);
        return dialog.list.GetRowAtCursor();
    };
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(at(RowHeight - 1), 0);
    EXPECT_EQ(at(RowHeight), 1);
    EXPECT_EQ(at(2 * RowHeight), 2);
    EXPECT_EQ(at(3 * RowHeight), 2);
    EXPECT_EQ(at(5000), 2);
    EXPECT_EQ(at(-1), 0);
    EXPECT_EQ(at(-5000), 0);
}

TEST_F(ValueListMessages, TheRowAtTheCursorCountsFromTheTopIndex) {
    for (int row = 0; row < 40; ++row)
        dialog.Add(Plain, L"n");
    SendMessageW(dialog.list.listBox, LB_SETTOPINDEX, 10, 0);
    TestCursor::MoveTo(dialog.list.listBox, 5, RowHeight + 1);
    EXPECT_EQ(dialog.list.GetRowAtCursor(), 11);
    TestCursor::MoveTo(dialog.list.listBox, 5, -2 * RowHeight);
    EXPECT_EQ(dialog.list.GetRowAtCursor(), 8);
}

TEST_F(ValueListMessages, TheRowAtTheCursorGoesByTheItemsHeight) {
    for (int row = 0; row < 3; ++row)
        dialog.Add(Plain, L"n");
    SendMessageW(dialog.list.listBox, LB_SETITEMHEIGHT, 0, 40);
    TestCursor::MoveTo(dialog.list.listBox, 5, 41);
    EXPECT_EQ(dialog.list.GetRowAtCursor(), 1);
}

// A list box that tells no height of its items while it stands.
class FlatItems {
public:
    explicit FlatItems(HWND listBox) : listBox_(listBox) {
        former_ = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(listBox, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Answer)));
    }
    ~FlatItems() { SetWindowLongPtrW(listBox_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(former_)); }
    FlatItems(const FlatItems&) = delete;
    FlatItems& operator=(const FlatItems&) = delete;

private:
    static LRESULT CALLBACK Answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        return message == LB_GETITEMHEIGHT
                   ? 0
                   : CallWindowProcW(former_, window, message, wParam, lParam);
    }

    HWND listBox_;
    inline static WNDPROC former_ = nullptr;
};

TEST_F(ValueListMessages, TheRowAtTheCursorGoesByTheListsHeightIfTheItemsTellNone) {
    for (int row = 0; row < 3; ++row)
        dialog.Add(Plain, L"n");
    const FlatItems flat(dialog.list.listBox);
    dialog.list.rowHeight = 40;
    TestCursor::MoveTo(dialog.list.listBox, 5, 39);
    EXPECT_EQ(dialog.list.GetRowAtCursor(), 0);
    TestCursor::MoveTo(dialog.list.listBox, 5, 41);
    EXPECT_EQ(dialog.list.GetRowAtCursor(), 1);
    dialog.list.rowHeight = 0;
    TestCursor::MoveTo(dialog.list.listBox, 5, 1);
    EXPECT_EQ(dialog.list.GetRowAtCursor(), 1);
}

TEST_F(ValueListMessages, OnlyMarksAreChecked) {
    const auto isChecked = [&](int32_t kind, const wchar_t* value) {
        return dialog.list.IsChecked(dialog.Add(kind, L"n", value));
    };
    EXPECT_FALSE(isChecked(Check, L""));
    EXPECT_FALSE(isChecked(Check, L"0"));
    EXPECT_FALSE(isChecked(Check, L"x"));
    EXPECT_TRUE(isChecked(Check, L"1"));
    EXPECT_TRUE(isChecked(Check, L"-1"));
    EXPECT_TRUE(isChecked(Check, L"20"));
    EXPECT_FALSE(isChecked(Radio, L""));
    EXPECT_FALSE(isChecked(Radio, L"0"));
    EXPECT_FALSE(isChecked(Radio, L"1"));
    EXPECT_TRUE(isChecked(Radio, L"-1"));
    for (int32_t kind : {Plain, Raw, Link, Heading, Title, Edit, ComboEdit, DropList}) {
        EXPECT_FALSE(isChecked(kind, L"1"));
        EXPECT_FALSE(isChecked(kind, L"-1"));
    }
    EXPECT_FALSE(dialog.list.IsChecked(-1));
    EXPECT_FALSE(dialog.list.IsChecked(dialog.list.rows.Count()));
}

TEST_F(ValueListMessages, ACheckIs1OrEmpty) {
    const int row = AddMark(Check, L"7");
    dialog.list.SetChecked(row, true);
    EXPECT_EQ(Values(), Texts({L"1"}));
    dialog.list.SetChecked(row, false);
    EXPECT_EQ(Values(), Texts({L""}));
    EXPECT_EQ(changes, 0); // the owner's own doing isn't told to it
}

TEST_F(ValueListMessages, ARadioThatGoesOnTurnsItsGroupOff) {
    for (const wchar_t* value : {L"1", L"-1", L"1", L"-2", L"2", L"-12"})
        AddMark(Radio, value);
    AddMark(Check, L"-1");
    dialog.list.SetChecked(0, true);
    EXPECT_EQ(Values(), Texts({L"-1", L"1", L"1", L"-2", L"2", L"-12", L"-1"}));
    dialog.list.SetChecked(4, true);
    EXPECT_EQ(Values(), Texts({L"-1", L"1", L"1", L"2", L"-2", L"-12", L"-1"}));
}

TEST_F(ValueListMessages, ARadioThatIsOnStaysOn) {
    for (const wchar_t* value : {L"1", L"-1", L"-1"})
        AddMark(Radio, value);
    dialog.list.SetChecked(1, true);
    EXPECT_EQ(Values(), Texts({L"1", L"-1", L"1"}));
}

TEST_F(ValueListMessages, ARadioThatGoesOffLeavesTheOthers) {
    for (const wchar_t* value : {L"1", L"-1", L"-2"})
        AddMark(Radio, value);
    dialog.list.SetChecked(1, false);
    EXPECT_EQ(Values(), Texts({L"1", L"1", L"-2"}));
    dialog.list.SetChecked(1, false);
    EXPECT_EQ(Values(), Texts({L"1", L"1", L"-2"}));
}

TEST_F(ValueListMessages, AGroupOfNoNumberNeverGoesOn) {
    for (const wchar_t* value : {L"0", L"", L"x"})
        AddMark(Radio, value);
    for (int row = 0; row < 3; ++row) {
        dialog.list.SetChecked(row, true);
        EXPECT_FALSE(dialog.list.IsChecked(row));
    }
}

TEST_F(ValueListMessages, TheLeastNumberHasNoOpposite) {
    const wchar_t* least = L"-9223372036854775808";
    AddMark(Radio, least);
    dialog.list.SetChecked(0, true);
    EXPECT_EQ(Values(), Texts({least}));
    dialog.list.SetChecked(0, false);
    EXPECT_EQ(Values(), Texts({least}));
}

TEST_F(ValueListMessages, SetCheckedLeavesOtherKindsAndRowsOutOfRange) {
    AddMark(Edit, L"-1");
    for (int row : {-1, 0, 1, 100})
        for (bool on : {true, false})
            dialog.list.SetChecked(row, on);
    EXPECT_EQ(Values(), Texts({L"-1"}));
}

TEST_F(ValueListMessages, SetCheckedHasListAndEditorPaintedAnew) {
    AddMark(Check, L"");
    const int edit = dialog.Add(Edit, L"n", L"v");
    dialog.list.Select(edit);
    HandlePosted();
    ValidateRect(dialog.list.listBox, nullptr);
    ValidateRect(dialog.list.control.editor, nullptr);
    dialog.list.SetChecked(0, true);
    EXPECT_TRUE(GetUpdateRect(dialog.list.listBox, nullptr, FALSE));
    EXPECT_TRUE(GetUpdateRect(dialog.list.control.editor, nullptr, FALSE));
}

class NestedValueListMessages : public ValueListMessages {
protected:
    NestedValueListMessages() {
        dialog.Add(Edit, L"a", L"1");
        other.Add(Edit, L"b", L"2");
        SendMessageW(dialog.list.listBox, LB_SETCURSEL, 0, 0);
        SendMessageW(other.list.listBox, LB_SETCURSEL, 0, 0);
    }

    Filtered MeasureOther() {
        MEASUREITEMSTRUCT item = Measure(other.list.controlId);
        return other.Filter(WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&item));
    }
    Filtered DrawOther() {
        const NWindowDC dc(other.list.listBox);
        DRAWITEMSTRUCT item = {};
        item.hwndItem = other.list.listBox;
        item.hDC = dc.dc;
        item.rcItem = {0, 0, 10, 10};
        return other.Filter(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
    }

    ListDialog other;
};

TEST_F(NestedValueListMessages, InsideAMessageOfAnyListOthersPassByUnhandled) {
    int calls = 0;
    dialog.list.onSelChange = [&] {
        ++calls;
        EXPECT_EQ(other.Notify(LBN_SELCHANGE), (Filtered{0, 0}));
        EXPECT_EQ(MeasureOther(), (Filtered{0, 0}));
        EXPECT_EQ(dialog.Notify(LBN_SELCHANGE), (Filtered{0, 0}));
    };
    dialog.Notify(LBN_SELCHANGE);
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(other.list.selections.empty());
    // Later ones come through again.
    EXPECT_EQ(MeasureOther(), (Filtered{1, 1}));
    other.Notify(LBN_SELCHANGE);
    EXPECT_EQ(other.list.selections, std::vector<int>({0}));
}

TEST_F(NestedValueListMessages, RowsArePaintedInsideAMessageAndDoNotEndItsTurn) {
    int calls = 0;
    dialog.list.onSelChange = [&] {
        ++calls;
        EXPECT_EQ(DrawOther(), (Filtered{1, 1}));
        EXPECT_EQ(MeasureOther(), (Filtered{0, 0}));
    };
    dialog.Notify(LBN_SELCHANGE);
    EXPECT_EQ(calls, 1);
}

TEST_F(NestedValueListMessages, AnOwnerThatThrowsLeavesTheFilterFree) {
    dialog.list.onSelChange = [] { throw std::runtime_error("owner"); };
    EXPECT_THROW(dialog.Notify(LBN_SELCHANGE), std::runtime_error);
    dialog.list.onSelChange = nullptr;
    EXPECT_EQ(MeasureOther(), (Filtered{1, 1}));
}
} // namespace
