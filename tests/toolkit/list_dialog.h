#pragma once

#include "tests/toolkit/button_dialog.h"
#include "toolkit/nvaluelist.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// A list that notes what it is told.
class RecordingList : public NValueList {
public:
    ~RecordingList() override { Destroy(); } // while the notes stand

    void OnSelChange() override {
        selections.push_back(GetSelection());
        if (onSelChange)
            onSelChange();
    }
    void OnRowEdited(int row) override {
        edited.push_back(row);
        if (onRowEdited)
            onRowEdited(row);
    }
    void OnRowRightClick(int x, int y) override {
        rightClicks.push_back({x, y});
        rightClicked.push_back(GetSelection());
    }

    std::vector<int> selections; // at each OnSelChange
    std::vector<int> edited;
    std::vector<POINT> rightClicks; // on the screen
    std::vector<int> rightClicked;  // the selection, at each
    std::function<void()> onSelChange;
    std::function<void(int)> onRowEdited;
};

// Where the list stands in the dialog, in pixels, and its rows' columns.
inline constexpr RECT ListPlace = {10, 10, 310, 230};
inline constexpr int NameX = 28;
inline constexpr int ValueX = 120;
inline constexpr int RowHeight = 21;
inline constexpr int FontSize = 13;

// A dialog of 400 by 300 pixels with a font of its own and a button, that passes
// its messages to a list, as pages do. It is visible, at (100, 100) of the
// screen; the list is in pixels.
class ListDialog {
public:
    ListDialog();
    ~ListDialog();
    ListDialog(const ListDialog&) = delete;
    ListDialog& operator=(const ListDialog&) = delete;

    void CreateList(bool inPixels = true);

    int Add(int32_t kind, const wchar_t* name, const wchar_t* value = L"");
    int Add(const NValueRowInit& init);
    int AddWithChoices(int32_t kind, const wchar_t* name, const wchar_t* value,
                       const std::vector<const wchar_t*>& choices);

    // As if the message came to the dialog.
    Filtered Filter(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    // As if the list box told it.
    Filtered Notify(UINT code);
    // The list box takes a press there, as if by the mouse; row in view.
    void Click(int row, int x = 5);
    RECT ItemRect(int row) const;
    int ItemCount() const;
    std::wstring ItemText(int row) const;
    HWND Button() const { return GetDlgItem(window, IDOK); }
    HFONT Font() const;

    HWND window = nullptr;
    RecordingList list;
    std::function<void(UINT, WPARAM, LPARAM)> beforeMessage; // of the dialog's
    int destroyed = 0;                                       // WM_DESTROY

private:
    static INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
};

std::wstring TextOf(HWND window);
std::wstring ClassOf(HWND window);
// A window's place in its parent's client area.
RECT PlaceOf(HWND window);
// An editor's choices.
std::vector<std::wstring> ChoicesOf(HWND combo);
// Types into a field without the rest of what a key does.
void TypeInto(HWND field, const wchar_t* text);
void PressKey(HWND window, WPARAM key);
