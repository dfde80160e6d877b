#pragma once

#include "toolkit/nvaluelist.h"

#include <cstdint>

// The windows that an edit of an NValueList lays over a row: children of the
// list box, in its client coordinates and in the font of its parent. The caller
// destroys them.

// What a row is edited in.
enum class ValueEditor {
    None,
    Field,       // an EDIT
    TypingCombo, // a COMBOBOX that takes typing
    ChoiceCombo  // one of choice only
};

// An edit that is to begin.
struct ValueEdit {
    const NValueList& list;
    HWND listBox;
    int row;                    // has to be one of the list's
    bool forName;               // else it is of the value
    uint32_t defaultX;          // packed; of values, in pixels
    const NStringList* choices; // for names; may be null
    bool typing;                // for names with choices
};

ValueEditor EditorOf(const ValueEdit& edit);
// Null for no editor, or if it can't be made.
HWND MakeValueEditor(const ValueEdit& edit);
// The row's button, null if it has none or shows none.
HWND MakeRowButton(const ValueEdit& edit);

// Where the editor of `row` has its top edge; its button, which comes with that
// of the value, has it there, too.
int32_t EditorTop(const NValueList& list, HWND listBox, int row, bool forName);
