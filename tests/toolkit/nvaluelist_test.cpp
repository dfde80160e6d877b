#include "tests/toolkit/list_dialog.h"

#include <gtest/gtest.h>

namespace {
using List = NValueList;

TEST(ValueList, ASelectedEditRowCarriesAFieldWithItsValue) {
    ListDialog dialog;
    dialog.Add(Plain, L"One", L"1");
    dialog.Add(Edit, L"Two", L"2");
    dialog.list.Select(1);
    EXPECT_EQ(dialog.list.GetSelection(), 1);
    ASSERT_TRUE(dialog.list.control.editor);
    EXPECT_EQ(ClassOf(dialog.list.control.editor), L"Edit");
    EXPECT_EQ(TextOf(dialog.list.control.editor), L"2");
    EXPECT_EQ(GetFocus(), dialog.list.control.editor);
    TypeInto(dialog.list.control.editor, L"two");
    dialog.list.Select(0);
    EXPECT_EQ(dialog.list.rows[1]->value, L"two");
    EXPECT_FALSE(dialog.list.control.editor);
    EXPECT_EQ(GetFocus(), dialog.list.listBox);
}
} // namespace
