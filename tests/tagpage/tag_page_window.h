#pragma once

#include "tagpage/id_tag_page.h"
#include "tests/support/picture_compare.h"
#include "toolkit/nsubclassctrl.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

// The ID-Tag page in its dialog, on a window of the test's own in place of a
// property sheet. No message loop runs: time goes on by Tick alone.
class TagPageWindow {
public:
    TagPageWindow();
    ~TagPageWindow();
    TagPageWindow(const TagPageWindow&) = delete;
    TagPageWindow& operator=(const TagPageWindow&) = delete;

    // The page, to be filled with paths before Open.
    clIDTagPage& Page() { return *page_; }
    HWND Dialog() const { return dialog_; }
    HWND Sheet() const { return sheet_.boundWindow; }

    void Open(bool standAlone = false);
    // Destroys the dialog; the page object stays.
    void Close();
    // As the host does at its end: there is no page after it.
    void Release();
    // One of the page's own timer.
    void Tick();
    // Waits until the reading thread has ended.
    void WaitForReading();
    void OpenAndRead(bool standAlone = false);

    // Called once, at the next change that the page tells the sheet of.
    std::function<void()> atChange;
    // How often the page told the sheet of a change since it was last asked.
    int TakeChanges();

    // Dialog units in pixels.
    int X(int units) const;
    int Y(int units) const;
    // In the dialog's client area.
    RECT PlaceOf(HWND child) const;
    // What the window shows when all of it is painted.
    Picture Seen();
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    LRESULT Notify(UINT code);
    void Apply();

    // Rows, as "name=value", from the top; their indexes, -1 for none.
    std::vector<std::wstring> Rows();
    int RowOf(const wchar_t* name);
    NValueRow& Row(const wchar_t* name);
    // Types all of the selected row's editor anew. What an EDIT reports is
    // reported.
    void TypeInEditor(const wchar_t* text);
    // Selects the row and types its value. The edit goes on.
    void Type(const wchar_t* name, const wchar_t* value);

private:
    class SheetStandIn : public NSubClassCtrl {
    public:
        explicit SheetStandIn(TagPageWindow& window) : window_(window) {}

        LRESULT OnSubclassMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                  int32_t* handled) override;

        std::vector<HWND> changedPages;

    private:
        TagPageWindow& window_;
    };

    std::unique_ptr<clIDTagPage> page_ = std::make_unique<clIDTagPage>();
    SheetStandIn sheet_{*this};
    HWND dialog_ = nullptr;
};
