#pragma once

#include "foundation/windows_lean.h"

// Handles messages of this thread, of all its windows; those for `dialog`,
// unless it is null or no window any more, as a dialog's keys. True to go on,
// false to stop.
//
// Blocking: waits for one message. One that says to quit sets *quit; with
// *quit set the message is dropped and the answer is false.
//
// Not blocking: handles messages until there are none. *quit is looked at
// before each, so a handler may set it: the next message is dropped and the
// answer is false. If no message is left then, the answer is true.
bool PumpMessages(bool* quit, bool blocking, HWND dialog);

// The same without blocking.
inline bool PumpPending(bool* quit, HWND dialog) {
    return PumpMessages(quit, false, dialog);
}
