#include "tests/support/message_box_driver.h"

#include <algorithm>
#include <utility>

namespace {
struct BoxParts {
    std::vector<int> buttons;
    NString text;
    HICON icon = nullptr;
};

NString WindowText(HWND window) {
    std::vector<wchar_t> text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1);
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    return NString(text.data());
}

BOOL CALLBACK TakePart(HWND child, LPARAM lParam) {
    auto& parts = *reinterpret_cast<BoxParts*>(lParam);
    LONG style = GetWindowLongW(child, GWL_STYLE);
    // The box may have hidden buttons that its type doesn't call for.
    if (!(style & WS_VISIBLE))
        return TRUE;
    wchar_t className[16] = {};
    GetClassNameW(child, className, 16);
    NString name(className);
    if (name.Compare(L"Button", 0, true) == 0)
        parts.buttons.push_back(GetDlgCtrlID(child));
    else if (name.Compare(L"Static", 0, true) == 0 && (style & SS_TYPEMASK) == SS_ICON)
        parts.icon = reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0));
    else
        parts.text = WindowText(child);
    return TRUE;
}

UINT TypeOf(const BoxParts& parts) {
    std::vector<int> buttons = parts.buttons;
    std::sort(buttons.begin(), buttons.end());
    UINT icon = parts.icon == LoadIconW(nullptr, IDI_INFORMATION) ? MB_ICONINFORMATION
                : parts.icon == LoadIconW(nullptr, IDI_ERROR)     ? MB_ICONERROR
                                                                  : SeenBox::NotKnown;
    if (icon == SeenBox::NotKnown)
        return SeenBox::NotKnown;
    if (buttons == std::vector<int>{IDCANCEL, IDRETRY})
        return MB_RETRYCANCEL | icon;
    if (buttons == std::vector<int>{IDOK})
        return MB_OK | icon;
    return SeenBox::NotKnown;
}
} // namespace

MessageBoxDriver::MessageBoxDriver(std::vector<int> answers)
    : answers_(std::move(answers)), hook_([this](HWND box) { Answer(box); }) {}

void MessageBoxDriver::Answer(HWND box) {
    BoxParts parts;
    EnumChildWindows(box, TakePart, reinterpret_cast<LPARAM>(&parts));
    size_t number = boxes_.size();
    boxes_.push_back(
        {parts.text, WindowText(box), TypeOf(parts), GetWindow(box, GW_OWNER) != nullptr});
    if (beforeAnswer)
        beforeAnswer(number);
    bool hasCancel = std::count(parts.buttons.begin(), parts.buttons.end(), IDCANCEL) != 0;
    int answer = number < answers_.size() ? answers_[number] : hasCancel ? IDCANCEL : IDOK;
    PostMessageW(box, WM_COMMAND, MAKEWPARAM(answer, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(box, answer)));
}
