#pragma once

#include "foundation/nlists.h"
#include "foundation/windows_lean.h"
#include "tagpage/tag_set.h"
#include "toolkit/nbutton.h"
#include "toolkit/nbuttonbar.h"
#include "toolkit/ncall_count.h"
#include "toolkit/nthread.h"
#include "toolkit/nvaluelist.h"

#include <array>
#include <cstdint>

// What a row of the page is, in its `tag`.
enum RowTag : int64_t {
    RowTagNone = 0,   // the title, a heading, a spacer, the button that adds a picture
    RowTagText = 1,   // a text element; StoreEdits takes it back
    RowTagNoTags = 2, // says that there is no tag
    RowTagArt = 3     // a picture
};

// The page "ID-Tag": the tags of the selected files, all in one or each alone,
// to be edited. It serves in a property sheet, and inside a frame of its own.
//
//     made, `Files` filled       by the host, sorted; no window yet
//     CreateControls             WM_INITDIALOG, with `PageWindow` set: buttons,
//                                thread, timer
//     OnPageMessage              each message from then on
//     first WM_TIMER after the   the rows are there, and the page can be used
//     thread's end
//     WM_DESTROY                 stops the thread, and waits for the one file
//                                that it is at; all lists are empty after it
//     Release                    by the host, after the window, or without
//                                there ever having been one: destroys the page
//
// A file's tag is read and written by the program beside the module; nothing is
// written before Commit, and nothing is asked of the user. What is on the page
// of the elements stands in the rows alone until StoreEdits.
//
// All of it belongs to the thread of the window. `ReadThread` alone touches
// `TagSets` until its handle is signalled: there is no lock. Whatever would
// touch the sets before the rows are there, or after WM_DESTROY, does nothing.
class clIDTagPage {
public:
    clIDTagPage();
    clIDTagPage(const clIDTagPage&) = delete;
    clIDTagPage& operator=(const clIDTagPage&) = delete;
    ~clIDTagPage();

    // Destroys the page, made by new: at once, or when the outermost call that
    // is under way on it or on one of its controls returns.
    void Release() { calls_.Release(); }

    // Makes the buttons, and starts the reading and the timer that looks for
    // its end. `standAlone` for a page that is in no property sheet.
    void CreateControls(bool standAlone);
    // The message's result; `*handled` says whether the message is done with.
    LRESULT OnPageMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                          int32_t* handled);

    // On the reading thread: fills `TagSets`. `stop` is looked at before each
    // file.
    void ReadFiles(NEvent& stop);

    // The rows of the present view, in place of those that are there.
    void BuildRows();
    // The same, and the states of the buttons that choose the view.
    void RefreshView();
    void AddTextRow(const NString& name, const NString& value);

    // One file is shown, not all in one.
    bool SingleView() const { return cmdViewSingle.latched || Files.Count == 1; }
    // The set of the present view, and its tag. Made if it isn't there.
    clTagSet& CurrentSet();
    clTagRecord& CurrentTags();
    clTagSet& CombinedSet();

    // Ends the edit in the list, and takes what the rows say into the sets.
    void StoreEdits();
    // Writes what was edited. Blocks; failures are shown in one message box.
    // Before the rows are there it has nothing to store.
    void Commit();

    void LayoutControls();
    // Tells the sheet that there is something to apply.
    void NotifyChanged();
    // `index` may be out of range: the view stays at its file then.
    void ShowFile(int32_t index);
    void ToggleView();
    // Puts in a row whose name the user is to choose or type.
    void AddElementRow();
    void RemoveSelected();
    void ClearTags();
    // The row stays, without its words.
    void BlankNoTagsRow();

    // The list's events.
    void OnSelChange();
    void OnRowEdited(int row);
    // The onChange of each text row.
    static void OnRowValueChanged(NValueList& list);

    class _ValueList : public NValueList {
    public:
        ~_ValueList() override = default;

        void OnSelChange() override { Owner->OnSelChange(); }
        void OnRowEdited(int row) override { Owner->OnRowEdited(row); }

        clIDTagPage* Owner = nullptr;
    };
    // A button that tells its page of clicks; `Owner` is set before it is added.
    class PageButton : public NButton {
    public:
        clIDTagPage* Owner = nullptr;
    };
    class _cmdSkipFirst : public PageButton {
    public:
        void OnClick(bool isRight) override;
    };
    class _cmdSkipPrev : public PageButton {
    public:
        void OnClick(bool isRight) override;
    };
    class _cmdViewSingle : public PageButton {
    public:
        void OnClick(bool isRight) override;
    };
    class _cmdSkipNext : public PageButton {
    public:
        void OnClick(bool isRight) override;
    };
    class _cmdSkipLast : public PageButton {
    public:
        void OnClick(bool isRight) override;
    };
    class _cmdAdd : public PageButton {
    public:
        void OnClick(bool isRight) override;
    };
    class _cmdRemove : public PageButton {
    public:
        void OnClick(bool isRight) override;
    };
    class _cmdClear : public PageButton {
    public:
        void OnClick(bool isRight) override;
    };
    // No window is ever made for it.
    class _cmdOptMenu : public PageButton {
    public:
        void OnClick(bool) override {}
    };

    NStringList Files; // paths, sorted by text without regard to case
    NThread ReadThread;
    NKeyedList<clTagSet> TagSets; // one for each path, and the combined one
    uint8_t ControlsReady = 0;    // the rows are there; never goes back
    int32_t CurrentFile = 0;      // of `Files`: the one that is shown alone
    HWND PageWindow = nullptr;    // not owned
    int32_t BackColour = COLOR_WINDOW;
    NButtonBar ButtonGroup;
    _ValueList ValueList;
    _cmdSkipFirst cmdSkipFirst;
    _cmdSkipPrev cmdSkipPrev;
    _cmdViewSingle cmdViewSingle;
    _cmdSkipNext cmdSkipNext;
    _cmdSkipLast cmdSkipLast;
    _cmdAdd cmdAdd;
    _cmdRemove cmdRemove;
    _cmdClear cmdClear;
    _cmdOptMenu cmdOptMenu;

private:
    // The rows are there, and the window is not yet going.
    bool IsInUse() const { return ControlsReady && !isClosed_; }
    bool IsReading() const;
    void StartReading();
    LRESULT OnNotify(UINT code, int32_t* handled);
    void OnCommand(WPARAM wParam, LPARAM lParam);
    void OnPaint();
    void OnTimer();
    void CreateList();
    void OnDestroy();

    clTagSet& SetNamed(const wchar_t* name);

    void MakeButtons();
    std::array<NButton*, 9> Buttons();

    void AddTitleRow();
    void AddNoTagsRow();
    void AddFixedRow(clTagRecord& tags, const wchar_t* name);
    void AddOtherRows(clTagRecord& tags);
    void AddArtRows(clTagRecord& tags);
    void TellOfValue();
    static void FillTextRow(NValueRowInit& row, const NString& name, const NString& value);

    void StoreRow(const NValueRow& row, clTagRecord& view);
    void StoreInFiles(const NString& name, const NString& value);
    void StoreInCombined(const NString& name, const NString& value);

    static bool CommitFile(clTagSet& set);
    void ForgetDeletions();
    void LearnGenres();

    void RemoveFromFile(const NString& name);
    void RemoveFromAll(const NString& name);
    void ClearFile();
    void ClearAll();

    bool hasStarted_ = false; // CreateControls has come to its end
    bool isClosed_ = false;   // from WM_DESTROY on
    NCallCount calls_;
};
