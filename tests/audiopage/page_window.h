#pragma once

#include "audiopage/audio_prop_page.h"
#include "tests/support/picture_compare.h"

#include <memory>

// The page in its dialog, on a window of the test's own in place of a property
// sheet. No message loop runs: time goes on by Tick alone.
class PageWindow {
public:
    PageWindow();
    ~PageWindow();
    PageWindow(const PageWindow&) = delete;
    PageWindow& operator=(const PageWindow&) = delete;

    // The page, to be filled with paths before Open.
    clAudioPropPage& Page() { return *page_; }
    HWND Dialog() const { return dialog_; }

    void Open();
    // Destroys the dialog; the page object stays.
    void Close();
    // As the sheet does at its end: there is no page after it.
    void Release() {
        Close();
        page_.release()->Release();
    }
    // One of the page's own timer.
    void Tick();
    // Waits until all files are read, and ticks.
    void FinishReading();
    void OpenAndRead() {
        Open();
        FinishReading();
    }

    // Dialog units in pixels.
    int X(int units) const;
    int Y(int units) const;
    // In the dialog's client area.
    RECT PlaceOf(HWND child) const;
    bool IsEnabled(const NButton& button) const { return IsWindowEnabled(button.window) != FALSE; }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    // Whether the window waits to be painted anew, all of it.
    bool WaitsForPaint() const;
    // How often the dialog was asked to erase its ground so far.
    int TimesErased() const { return timesErased_; }
    // What the window shows when all of it is painted.
    Picture Seen();

private:
    void OnInitDialog(HWND dialog);
    static INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

    std::unique_ptr<clAudioPropPage> page_ = std::make_unique<clAudioPropPage>();
    HWND sheet_ = nullptr;
    HWND dialog_ = nullptr;
    int timesErased_ = 0;
};
