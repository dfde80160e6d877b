#pragma once

#include "audiopage/property_rows.h"
#include "foundation/nlists.h"
#include "foundation/windows_lean.h"
#include "toolkit/nbutton.h"
#include "toolkit/nbuttonbar.h"
#include "toolkit/ncall_count.h"
#include "toolkit/ncanvas.h"
#include "toolkit/nthread.h"
#include "toolkit/ntooltip.h"

#include <cstdint>

// The page "Audio Properties" of a property sheet: the technical facts and the
// tag of the selected files, read only. It is a list of their full paths, in
// the order in which the user steps through them.
//
//     made, filled with paths    by whoever offers the page; no window yet
//     OnInit                     WM_INITDIALOG, with `Hwnd` set: buttons, thread
//     OnMessage                  each message from then on
//     WM_DESTROY                 stops the thread; all lists are empty after it
//     Release                    by the sheet, after the window, or without
//                                there ever having been one: destroys the page
//
// Whatever waits for tips or shows a menu dispatches messages of the thread, by
// which the sheet may come to its end. A page that is released by one of them
// lives on, empty, until the call on it that is under way returns.
//
// All of it belongs to the thread of the window. `Reader` alone writes
// `PageRowsAll`, and the window's thread looks at the rows only once the
// reader's handle is signalled: there is no lock.
class clAudioPropPage : public NStringList {
public:
    clAudioPropPage();
    ~clAudioPropPage();

    // Destroys the page, made by new: at once, or when the outermost call that
    // is under way on it or on one of its buttons' windows returns.
    void Release() { calls_.Release(); }

    // Makes the buttons, and starts the reading and the timer that looks for
    // its end.
    void OnInit();
    // The message's result; `*handled` says whether the message is done with.
    LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, int32_t* handled);

    // Looks whether the reading has ended, and then shows what it found.
    void OnTick();
    // Reads the present file if it is shown alone, sets buttons and tips to
    // what is shown, and has the page painted. Called by a message that comes
    // in meanwhile, it has the running call do all of that once more; on a page
    // whose window goes it does nothing.
    void RefreshView();

    // A button that tells its page of clicks; `Page` is set before it is added.
    class PageButton : public NButton {
    public:
        clAudioPropPage* Page = nullptr;
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
    // Its menu is opened by NButton.
    class _cmdOptMenu : public PageButton {};

    NThread Reader; // reads all files once
    NKeyedList<clPropRow> PageRowsAll;
    NKeyedList<clPropRow> PageRowsOne;
    NKeyedList<NCanvas> AlbumArtList; // framed covers of the file shown alone
    int32_t ArtIndex = 0;
    uint8_t ReadingDone = 0; // the reader's rows have been taken over
    int32_t FileIndex = 0;   // of the file that is shown alone
    HWND Hwnd = nullptr;     // not owned
    NCanvas StarBitmap;
    NToolTip ClipTip;
    NKeyedList<NToolTip> RowTips; // one for each value that doesn't fit
    NButtonBar Buttons;
    _cmdSkipFirst cmdSkipFirst;
    _cmdSkipPrev cmdSkipPrev;
    _cmdViewSingle cmdViewSingle;
    _cmdSkipNext cmdSkipNext;
    _cmdSkipLast cmdSkipLast;
    _cmdOptMenu cmdOptMenu;

private:
    bool IsViewSingle() const { return cmdViewSingle.latched; }
    bool ShowsOneFile() const { return IsViewSingle() || Count == 1; }
    bool IsReading() const;
    void StartReading();
    void RefreshOnce();
    void ReadOneFile();

    // Ends early if the page is closed meanwhile.
    void MakeButtons();
    void SetButtonStates();
    void ShowFile(int32_t index);

    NKeyedList<clPropRow>& ChosenRows() { return IsViewSingle() ? PageRowsOne : PageRowsAll; }
    void SetRowTips();
    void AddRowTip(const clPropRow& row, int textHeight);
    void Redraw();

    void OnPaint();
    void PaintReading(HDC dc);
    void PaintView(HDC dc);
    void OnDestroy();
    void EmptyLists();

    // Tips that are set or go may dispatch any message of this thread, so that
    // a click or the window's end comes while the lists are in use. It then
    // only leaves a note here.
    class ListsTurn;
    bool listsInUse_ = false;
    bool refreshAgain_ = false;
    bool isClosed_ = false; // from WM_DESTROY on

    NCallCount calls_;
};
