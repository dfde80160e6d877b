#include "toolkit/message_pump.h"

namespace {
void Handle(MSG& message, HWND dialog) {
    if (dialog && IsWindow(dialog) && IsDialogMessageW(dialog, &message))
        return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

bool PumpOne(bool* quit, HWND dialog) {
    MSG message = {};
    if (GetMessageW(&message, nullptr, 0, 0) <= 0) // to quit, or an error
        *quit = true;
    if (*quit)
        return false;
    Handle(message, dialog);
    return true;
}

bool PumpAll(bool* quit, HWND dialog) {
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT)
            *quit = true;
        if (*quit)
            return false;
        Handle(message, dialog);
    }
    return true;
}
} // namespace

bool PumpMessages(bool* quit, bool blocking, HWND dialog) {
    return blocking ? PumpOne(quit, dialog) : PumpAll(quit, dialog);
}
