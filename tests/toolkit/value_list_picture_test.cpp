// A list with rows of each kind, as it stands in a window. The pictures are
// for looking at: "value-list-*.bmp" in the folder "pictures" of the build.

#include "tests/support/picture_compare.h"
#include "tests/toolkit/list_dialog.h"
#include "tests/toolkit/test_resources.h"
#include "toolkit/device_contexts.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {
const std::filesystem::path Pictures = std::filesystem::path(TONEWRIGHT_BUILD_DIR) / "pictures";

class ValueListPicture : public testing::Test {
protected:
    ValueListPicture() {
        SetWindowPos(dialog.window, nullptr, 20, 20, 400, 460, SWP_NOZORDER);
        dialog.list.LoadMarks(IDI_MARKS, 16);
        SetWindowPos(dialog.list.listBox, nullptr, 10, 10, 370, 400, SWP_NOZORDER);
        AddAll();
    }

    void Add(int32_t kind, const wchar_t* name, const wchar_t* value = L"",
             const wchar_t* button = L"") {
        NValueRowInit init;
        init.kind = kind;
        init.name = name;
        init.value = value;
        init.buttonText = button;
        init.nameX = kind == Title ? 0x160004 : kind == Heading ? 6 : NameX;
        init.nameBold = kind == Heading;
        init.nameFontSize = 0;
        init.markX = 6;
        init.readOnly = readOnly;
        init.editLines = editLines;
        for (const wchar_t* choice : {L"Pop", L"Rock"})
            init.choices.Add(choice);
        if (withIcon)
            init.icon.Load(IDI_MARK, 16, 16);
        init.iconX = 6;
        dialog.Add(init);
    }
    void AddAll() {
        Add(Title, L"A title at the right ");
        Add(Heading, L"A heading");
        Add(Plain, L"Plain", L"its value");
        Add(Plain, L"A name that is longer than its room", L"its value");
        Add(Raw, L"Raw", L"its value");
        Add(Link, L"Link", L"http://example.com");
        Add(Edit, L"Edit", L"one line\rand another");
        Add(ComboEdit, L"Combo", L"Rock");
        Add(DropList, L"Choice", L"Rock");
        Add(Check, L"Check on", L"1");
        Add(Radio, L"Radio off", L"1");
        Add(Plain, L"", L"");
        Add(Edit, L"Button", L"a value that is far too long for the row that it stands in",
            L"View");
        readOnly = true;
        Add(Edit, L"Read only", L"grey", L"View");
        Add(Check, L"Read only check", L"1");
        readOnly = false;
        withIcon = true;
        Add(Plain, L"With an icon", L"its value");
        withIcon = false;
        editLines = 2;
        Add(Edit, L"Two lines", L"first\r\nsecond");
    }
    // As the window shows it with this row selected.
    Picture Show(int row) {
        dialog.list.Select(row);
        HandlePosted();
        RedrawWindow(dialog.window, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        RECT client = {};
        GetClientRect(dialog.list.listBox, &client);
        const NWindowDC dc(dialog.list.listBox);
        return ReadPicture(dc.dc, client.right, client.bottom);
    }
    bool IsEdited(int row) {
        const NValueRow& record = *dialog.list.rows[row];
        return !record.readOnly && record.kind >= Edit && record.kind <= DropList;
    }
    // Whether the row differs between the pictures.
    bool Differs(const Picture& a, const Picture& b, int row) {
        const RECT item = dialog.ItemRect(row);
        for (int y = item.top; y < std::min<int>(item.bottom, a.height); ++y)
            for (int x = 0; x < a.width; ++x)
                if (a.At(x, y) != b.At(x, y))
                    return true;
        return false;
    }

    ListDialog dialog;
    bool readOnly = false;
    bool withIcon = false;
    int32_t editLines = 0;
};

TEST_F(ValueListPicture, ASelectionChangesItsRowAndNoOther) {
    std::filesystem::create_directories(Pictures);
    const Picture unselected = Show(-1);
    ASSERT_TRUE(SavePicture(Pictures / "value-list-none.bmp", unselected));
    const int last = dialog.list.rows.Count() - 1;
    for (int row = 0; row <= last; ++row) {
        const Picture selected = Show(row);
        EXPECT_EQ(dialog.list.control.editRow, IsEdited(row) ? row : -1);
        const std::string name = "value-list-" + std::to_string(row) + ".bmp";
        ASSERT_TRUE(SavePicture(Pictures / name, selected));
        for (int other = 0; other <= last; ++other)
            EXPECT_EQ(Differs(unselected, selected, other), other == row)
                << row << " selected, row " << other;
    }
}
} // namespace
