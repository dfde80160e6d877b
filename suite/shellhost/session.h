#pragma once

#include "foundation/windows_lean.h"

#include <ole2.h>

// OLE on this thread, as an apartment of its own, for the time of the scope.
// Everything made with it must be gone before it is.
class OleSession {
public:
    OleSession() : started_(SUCCEEDED(OleInitialize(nullptr))) {}
    ~OleSession() {
        if (started_)
            OleUninitialize();
    }
    OleSession(const OleSession&) = delete;
    OleSession& operator=(const OleSession&) = delete;

private:
    bool started_;
};
