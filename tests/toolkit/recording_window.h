#pragma once

#include "toolkit/nwindow.h"

#include <initializer_list>
#include <string>
#include <type_traits>
#include <vector>

// A call as the recorder writes it: its name, and its arguments as numbers.
template <typename... Arguments>
std::string Call(const char* name, Arguments... arguments) {
    const auto number = [](auto value) {
        if constexpr (std::is_pointer_v<decltype(value)>)
            return std::to_string(reinterpret_cast<uintptr_t>(value));
        else
            return std::to_string(value);
    };
    std::string text = name;
    ((text += " " + number(arguments)), ...);
    return text;
}

// A window that writes down the calls of its operations. With `claims` they
// leave `handled` as it comes; otherwise they do what the base does.
class RecordingWindow : public NWindow {
public:
    RecordingWindow() = default;
    ~RecordingWindow() override { Destroy(); }

    // A hidden popup with a caption, 300 by 200.
    void Make(const wchar_t* title = L"", DWORD style = WS_OVERLAPPEDWINDOW) {
        Create(title, {100, 80, 400, 280}, style);
    }

    std::vector<std::string> calls;
    bool claims = true;

#define RECORD(operation, ...)                                                                     \
    calls.push_back(Call(#operation, __VA_ARGS__));                                                \
    if (!claims)                                                                                   \
    NWindow::operation(__VA_ARGS__)

    void OnActivate(HWND other, int32_t minimised, int32_t state) override {
        RECORD(OnActivate, other, minimised, state);
    }
    void OnClose(int32_t one) override {
        RECORD(OnClose, one);
    }
    void OnContextMenu(HWND window, int32_t x, int32_t y) override {
        RECORD(OnContextMenu, window, x, y);
    }
    void OnCommand(int32_t id, HWND control, int32_t code) override {
        RECORD(OnCommand, id, control, code);
    }
    void OnCreate(int32_t one) override {
        RECORD(OnCreate, one);
    }
    void OnDestroy(int32_t one) override {
        RECORD(OnDestroy, one);
    }
    void OnDeactivate(HWND other, int32_t minimised) override {
        RECORD(OnDeactivate, other, minimised);
    }
    void OnDrawItem(HWND item, uint32_t id, DRAWITEMSTRUCT* record) override {
        RECORD(OnDrawItem, item, id, record);
    }
    void OnEraseBackground(HDC dc) override {
        RECORD(OnEraseBackground, dc);
    }
    void OnHide(int32_t status) override {
        RECORD(OnHide, status);
    }
    void OnKeyDown(uint32_t key, uint32_t flags) override {
        RECORD(OnKeyDown, key, flags);
    }
    void OnKeyUp(uint32_t key, uint32_t flags) override {
        RECORD(OnKeyUp, key, flags);
    }
    void OnChar(wchar_t character) override {
        RECORD(OnChar, character);
    }
    void OnMouseDown(int32_t x, int32_t y, uint32_t message, uint32_t keys) override {
        RECORD(OnMouseDown, x, y, message, keys);
    }
    void OnMouseUp(int32_t x, int32_t y, uint32_t message, uint32_t keys) override {
        RECORD(OnMouseUp, x, y, message, keys);
    }
    void OnMouseMove(int32_t x, int32_t y, uint32_t keys) override {
        RECORD(OnMouseMove, x, y, keys);
    }
    void OnMouseWheel(int32_t x, int32_t y, int32_t delta, uint32_t keys) override {
        RECORD(OnMouseWheel, x, y, delta, keys);
    }
    void OnMove(int32_t x, int32_t y) override {
        RECORD(OnMove, x, y);
    }
    void OnNotify(uint64_t id, uint32_t code, HWND sender) override {
        RECORD(OnNotify, id, code, sender);
    }
    void OnPaint(int32_t one) override {
        RECORD(OnPaint, one);
    }
    void OnShow(int32_t status) override {
        RECORD(OnShow, status);
    }
    void OnSize(int32_t width, int32_t height, int32_t type) override {
        RECORD(OnSize, width, height, type);
    }
    void OnSysCommand(uint32_t command) override {
        RECORD(OnSysCommand, command);
    }
    void OnTimer(uint64_t id, int64_t value) override {
        RECORD(OnTimer, id, value);
    }
    void OnAbort(int32_t one) override {
        RECORD(OnAbort, one);
    }
    void OnCancel(int32_t one) override {
        RECORD(OnCancel, one);
    }
    void OnCloseButton(int32_t one) override {
        RECORD(OnCloseButton, one);
    }
    void OnHelp(int32_t one) override {
        RECORD(OnHelp, one);
    }
    void OnIgnore(int32_t one) override {
        RECORD(OnIgnore, one);
    }
    void OnNo(int32_t one) override {
        RECORD(OnNo, one);
    }
    void OnOK(int32_t one) override {
        RECORD(OnOK, one);
    }
    void OnRetry(int32_t one) override {
        RECORD(OnRetry, one);
    }
    void OnYes(int32_t one) override {
        RECORD(OnYes, one);
    }

#undef RECORD
};
