#pragma once

#include "tests/toolkit/button_resources.h"
#include "toolkit/nbuttonbar.h"

#include <cstdint>
#include <functional>
#include <vector>

// A button that notes what it is told.
class RecordingButton : public NButton {
public:
    void OnClick(bool isRight) override {
        clicks.push_back(isRight);
        if (onClick)
            onClick();
    }
    void OnRepeat(bool isRight) override {
        repeats.push_back(isRight);
        if (onRepeat)
            onRepeat();
    }

    std::vector<bool> clicks;
    std::vector<bool> repeats;
    std::function<void()> onClick;
    std::function<void()> onRepeat;
};

// What the filter made of a message.
struct Filtered {
    LRESULT result;
    int32_t handled;

    bool operator==(const Filtered&) const = default;
};

// A dialog of 300 by 200 pixels that passes its messages to a bar, as pages do.
// It is visible, at (100, 100) of the screen.
class ButtonDialog {
public:
    ButtonDialog();
    ~ButtonDialog();
    ButtonDialog(const ButtonDialog&) = delete;
    ButtonDialog& operator=(const ButtonDialog&) = delete;

    // With the test strip of these flags.
    void Add(NButton& button, int x, int y, int32_t flags = 0);
    void Add(NButton& button, NButtonSpec spec);

    // As if the message came to the dialog.
    Filtered Filter(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    void Tick() { Filter(WM_TIMER, bar.timerId); }
    Filtered Draw(const NButton& button, HDC dc);

    HWND window = nullptr;
    NButtonBar bar;
    std::vector<UINT> commands;                              // ids of WM_COMMAND
    std::function<void(UINT, WPARAM, LPARAM)> beforeMessage; // of the dialog's

private:
    static INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
};

// Test strips' frames are of this size.
constexpr int StripFrameWidth = 4;
constexpr int StripFrameHeight = 3;

constexpr int32_t AllButtonFlags =
    ButtonDefault | ButtonHover | ButtonFocus | ButtonDisabled | ButtonHotDown | ButtonMasked;

// Of the menus that the dialog's buttons show: the keys close each, or choose
// in it, once it is up.
class MenuKeys {
public:
    MenuKeys(ButtonDialog& dialog, std::vector<WPARAM> keys);

    int shown = 0;
    RECT place = {};                  // of the last one, on the screen
    std::function<void()> whileShown; // before the keys

private:
    void OnIdle(HWND menuWindow);

    ButtonDialog& dialog_;
    std::vector<WPARAM> keys_;
    HWND seen_ = nullptr;
};

// Handles all posted messages of this thread.
void HandlePosted();
