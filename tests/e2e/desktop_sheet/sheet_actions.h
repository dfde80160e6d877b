#pragma once

#include "foundation/windows_lean.h"

#include <string>
#include <vector>

// What a user does on a property sheet of another thread of this process: keys
// by the system's own queue, the mouse by the messages that it would bring. Each
// action waits for what it needs to be there, a minute at most; then, and if
// something is not as it has to be, it throws std::runtime_error.
class SheetActions {
public:
    using Word = std::vector<std::wstring>::const_iterator;

    // Waits for the thread's sheet.
    explicit SheetActions(DWORD thread);

    // Does the action whose name and arguments begin at `action`, before `end`.
    // What stands behind them.
    Word Do(Word action, Word end);

private:
    void PrintTabs();
    void TurnTo(const std::wstring& title);
    void PrintRows();
    void SelectRow(int row);
    void Type(const std::wstring& text);
    void Pick(const std::wstring& choice);
    void StrikeKey(const std::wstring& name);
    void Press(const std::wstring& text);
    void Apply();
    void ExpectUnchanged();
    void CloseBy(int button);

    HWND Page() const;
    HWND Tabs() const;
    HWND FocusedEditor() const;
    // Of the page's buttons, by its title, once it is enabled.
    HWND EnabledButton(const std::wstring& text) const;
    std::wstring TitleOf(int tab) const;

    HWND sheet_ = nullptr;
};
