#pragma once

#include "foundation/nlists.h"
#include "foundation/nstring.h"
#include "foundation/windows_lean.h"
#include "toolkit/ncanvas.h"
#include "toolkit/ndrawlist.h"
#include "toolkit/nicon.h"
#include "toolkit/nsubclassctrl.h"

#include <cstdint>

class NValueList;

// The owner's; the row it is about is `list.GetSelection()`, but for a press on
// the mark of a row that isn't selected, which comes before the row is.
// `onButton` may change, add and delete rows and move the selection; `onChange`
// must do nothing that ends the edit, whose editor is telling of it. Neither may
// delete the list.
using NValueRowCallback = void (*)(NValueList& list);

enum NValueRowKind : int32_t {
    Plain = 0,     // name and value; with neither a spacer
    Raw = 1,       // painted as it was added: its texts aren't cut or renewed
    Link = 2,      // the value is blue and underlined; a double click opens it
    Heading = 3,   // a rule follows the name
    Title = 4,     // on a gradient
    Edit = 5,      // edited in an EDIT
    ComboEdit = 6, // in a COMBOBOX that takes typing and completes it
    DropList = 7,  // in a COMBOBOX of choice only
    Check = 8,     // `value` is a number in decimal; non-zero means on
    Radio = 9      // `value` is the number of a group; negative means on
};

// What an owner fills in to have a row added. Positions are packed coordinates
// (packed_coordinates.h). Positions, widths and font sizes are 96-dpi values
// unless the list is in `pixelMode`; 0 stands for the list's own.
struct NValueRowInit {
    int32_t kind = Plain; // an NValueRowKind
    NString name;
    uint32_t nameX = 0;
    int32_t nameFontSize = 0;
    COLORREF nameColour = 0;
    bool nameBold = false;
    bool nameUnderline = false;
    bool readOnly = false; // grey, and without an editor
    bool nameItalic = false;
    NString value;
    uint32_t valueX = 0;
    COLORREF valueColour = 0;
    // Of the value's editor; of a painted value only beside a button's caption.
    // 0: up to the right edge.
    int32_t valueWidth = 0;
    int32_t editLines = 0; // height of the editor in rows; above 1 it takes several lines
    NIcon icon;            // may be empty
    uint32_t iconX = 0;
    uint32_t markX = 0; // of the check or radio mark
    NStringList choices;
    NString buttonText; // empty for no button
    NValueRowCallback onButton = nullptr;
    NValueRowCallback onChange = nullptr;
    int64_t tag = 0; // the owner's
};

// A row as the list keeps it. Owners read `name`, `value`, `kind` and `tag`, and
// write `value`; all positions and sizes are final, in pixels.
struct NValueRow {
    int32_t kind = Plain;
    NString name;
    uint32_t nameX = 0;
    uint32_t valueX = 0;
    NString value;
    bool readOnly = false;
    NDrawList scene;
    NStringList choices;
    NString buttonText;
    NValueRowCallback onButton = nullptr;
    NValueRowCallback onChange = nullptr;
    int32_t valueWidth = 0;
    int32_t editLines = 0;
    uint32_t markX = 0;
    uint32_t iconX = 0;
    int64_t tag = 0;
    uint32_t number = 0; // no other row of the list has or had it
};

// The marks of `Check` and `Radio` rows, in the order of the list's members.
inline constexpr int ValueMarkCount = 8;

// A property grid: a list of rows, each with a name on the left and a value on
// the right, in a LISTBOX that the rows are drawn in. The selected row carries a
// live editor, which is made when a row is selected and goes when the selection
// does.
//
//     Create             makes the list box on a dialog
//     OnParentMessage    each message of the dialog's, before anything else
//     Destroy            at WM_DESTROY, while the dialog still stands
//
// All of it belongs to the dialog's thread. Without a list box the operations do
// nothing, and nothing is selected. A row out of range is passed over silently.
//
// The owner hears of the end of an edit, of a selection, a change and a press of
// a button by calls, and the platform's messages about the focus reach it on the
// way. In all of these but `onChange` it may change, add and delete rows, move
// the selection, begin another edit and call Destroy; only the list itself must
// not go.
class NValueList : public NSubClassCtrl {
public:
    // Lays the editor over the row it is told, and takes it away again. One
    // row is in edit at most.
    class clValueControl : public NSubClassCtrl {
    public:
        ~clValueControl() override;

        LRESULT OnSubclassMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                  int32_t* handled) override;

        // Ends an earlier edit; then makes the editor that the row's kind asks
        // for, if any, and the row's button, and gives the focus to the editor
        // or to the list box. With `forName` the row's name is edited, in a list
        // of `nameChoices` if there are some, with or without `typing` in it.
        // `defaultX` (a packed coordinate in pixels) is where the value stands in
        // a row that doesn't say.
        void StartEdit(int row, HWND listBox, uint32_t defaultX, bool forName, NValueList* owner,
                       const NStringList* nameChoices, bool typing);
        // Stores what was edited in the row, and takes editor and button away.
        // The owner of the list hears of it if a name was edited; with
        // `restart` the row's value is edited next.
        void EndEdit(bool restart);
        // Stores what the editor holds in the row. 1 if that was its name.
        int Commit();
        // Whether it is the editor or the button. Null counts as a button that
        // isn't there, so that the edit outlasts a switch to another program:
        // wanted.
        bool IsOwnWindow(HWND window) const;
        // Takes editor and button away without storing anything or calling
        // anybody.
        void Drop();
        // EndEdit, and takes away what the owner begins as it hears of the end.
        void EndForGood();
        // A combo box that takes typing tells of a choice before its text is
        // that: puts it there.
        void ShowChoice();
        // Whether the editor or the button is that of this row.
        bool StandsOn(const NValueRow& row) const;
        // Rows came or went: lays editor and button over their row again.
        void FollowRow();

        int32_t editRow = -1; // -1 for none
        int32_t nameMode = 0; // non-zero while a name is edited
        HWND button = nullptr;
        HWND editor = nullptr;
        HWND listWindow = nullptr;
        NValueList* list = nullptr; // while an edit runs, as `listWindow`

    private:
        NValueRow* RowInEdit() const;
        bool IsMultiLineRow() const;
        void OnFocusLost(HWND window, HWND newFocus);
        bool OnKeyDown(HWND window, WPARAM key, LPARAM lParam);
        bool OnUpOrDown(HWND window, WPARAM key);
        bool OnKeyUp(WPARAM key, LPARAM lParam);
        void OnReturn();

        uint32_t rowNumber_ = 0; // of the row that editor or button are laid over
    };

    NValueList() = default;
    ~NValueList() override;

    LRESULT OnSubclassMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                              int32_t* handled) override;
    // The selection changed, by the user or by Select.
    virtual void OnSelChange();
    // The name of `row` was edited.
    virtual void OnRowEdited(int row);
    // The right mouse button was let go over the list; screen coordinates.
    virtual void OnRowRightClick(int x, int y);

    // Makes the list box. Place and size are dialog units of `dialog`, the
    // others 96-dpi values, unless `inPixels` says pixels. `rowHeightGiven`,
    // `nameX` and `valueX` are packed coordinates.
    void Create(int x, int y, int width, int height, HWND dialog, uint32_t nameX, uint32_t valueX,
                uint32_t rowHeightGiven, int32_t nameFont, int32_t valueFont, bool inPixels);
    // Ends the edit, and takes the list box and all rows down. May be called
    // again.
    void Destroy();

    // Ends the edit, and puts a row at `insertAt`, -1 for the end. `key` is the
    // row's in the keyed list, or null.
    void AddRow(const NValueRowInit& init, const wchar_t* key = nullptr, int insertAt = -1);
    // If the row was selected, the one that takes its place is selected. Nothing
    // more is done if the end of its edit made the owner delete it.
    void DeleteRow(int row);
    // Ends the edit, and deletes all rows.
    void Clear();

    // -1 if nothing is selected.
    int GetSelection() const;
    // -1 selects nothing. The row's edit starts.
    void Select(int row);
    // Edits the value of the selected row, or ends the edit if none is.
    void EditSelection();
    // Edits its name, as clValueControl::StartEdit says.
    void EditSelectionName(const NStringList* choices, bool typing);
    // Ends the edit that runs, as clValueControl::EndEdit.
    void EndEdit(bool restart) { control.EndEdit(restart); }

    // Whether a `Check` or `Radio` row is on.
    bool IsChecked(int row) const;
    // A `Radio` row that goes on turns the others of its group off.
    void SetChecked(int row, bool on);
    // The row under the cursor, held to the rows that there are.
    int GetRowAtCursor() const;

    // Loads the marks from the icons `firstId` and the following of `module`
    // (null for the host process's), in the order of the members, `size` pixels
    // wide and high. One that isn't there leaves its mark empty. Rows that were
    // added before keep the marks they have.
    void LoadMarks(int firstId, int size, HINSTANCE module = nullptr);

    // Null when out of range. Unlike `rows[row]` it leaves `rows.Current`.
    NValueRow* RowAt(int row) const { return static_cast<NValueRow*>(rows.Items.At(row)); }
    // What is given to the list in pixels, or as it stands in `pixelMode`: the
    // offset of a packed coordinate, a width, or the height of a font.
    uint32_t InPixels(uint32_t packed) const;
    int32_t SizeInPixels(int32_t size) const;

    // To be run for each message of the dialog's before anything else is; when
    // `*handled` comes back set, the result is the message's, and nothing else
    // is to follow. While it runs, for whatever list and thread of the process,
    // all messages but WM_DRAWITEM pass by unhandled: wanted.
    LRESULT OnParentMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                            int32_t* handled);

    HWND parent = nullptr;
    HWND listBox = nullptr;
    int32_t controlId = 0;
    bool pixelMode = false;
    int32_t rowHeight = 0; // pixels
    uint32_t defaultNameX = 0;
    uint32_t defaultValueX = 0;
    int32_t nameFontSize = 0;
    int32_t valueFontSize = 0;
    void* owner = nullptr; // the owner's context
    NCanvas backBuffer;    // one row; grows, and never shrinks
    NIcon checkOn;
    NIcon checkOff;
    NIcon checkOnGrey;
    NIcon checkOffGrey;
    NIcon radioOn;
    NIcon radioOff;
    NIcon radioOnGrey;
    NIcon radioOffGrey;
    NKeyedList<NValueRow> rows; // as many as the list box has items
    clValueControl control;

private:
    void EditSelected(bool forName, const NStringList* nameChoices, bool typing);
    // The list box and the editor, without erasing.
    void Invalidate() const;
    void TurnRadioOn(NValueRow& row);

    LRESULT Filter(UINT message, WPARAM wParam, LPARAM lParam, int32_t* handled);
    LRESULT OnListNotification(UINT code);
    void OnClickBeforeFocus();
    bool IsOnMark(const NValueRow& row) const;

    bool OnListKeyDown(WPARAM key, LPARAM lParam);
    bool OnListKeyUp(WPARAM key, LPARAM lParam);
    void OnSpaceKey();
    int PageStep() const;
    void OnEditorNotification(UINT code, HWND sender);

    // -1 if the row is gone.
    int IndexOf(uint32_t rowNumber) const;
    template <typename Action>
    void ForEachMark(Action action);

    uint32_t lastRowNumber_ = 0;
};
