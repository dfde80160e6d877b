// Editors come and go with each selection; none of them may leave anything
// behind.

#include "tests/support/leak_counters.h"
#include "tests/toolkit/list_dialog.h"
#include "tests/toolkit/test_resources.h"

#include <gtest/gtest.h>

namespace {
TEST(ValueListLeaks, AnEditorThatIsLeftBehindIsSeen) {
    ListDialog dialog;
    dialog.Add(Edit, L"n", L"v");
    const PlatformObjects before = CountPlatformObjects();
    dialog.list.Select(0);
    EXPECT_GT(CountPlatformObjects().user, before.user);
}

TEST(ValueListLeaks, HoldsNoPlatformObjectsOfThousandsOfSelections) {
    ListDialog dialog;
    dialog.list.LoadMarks(IDI_MARKS, 16);
    for (int32_t kind : {Edit, ComboEdit, DropList, Check, Plain})
        dialog.AddWithChoices(kind, L"n", L"v", {L"v", L"w"});
    NValueRowInit init;
    init.kind = Edit;
    init.buttonText = L"View";
    dialog.Add(init);
    const int steps = dialog.list.rows.Count() + 1;
    const auto walk = [&] {
        for (int row = -1; row < dialog.list.rows.Count(); ++row)
            dialog.list.Select(row);
        UpdateWindow(dialog.list.listBox);
        dialog.list.Select(-1);
        HandlePosted();
    };
    for (int warmUp = 0; warmUp < 3; ++warmUp)
        walk();
    const PlatformObjects before = CountPlatformObjects();
    for (int selections = 0; selections < 5000; selections += steps)
        walk();
    EXPECT_EQ(CountPlatformObjects(), before);
}
} // namespace
