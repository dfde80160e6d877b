#pragma once

#include "foundation/windows_lean.h"
#include "toolkit/nuserdllfade.h"

#include <cstdint>

// What the tips learn of the world around them. A test puts its own functions
// in while no tip is set.
struct TipPlatform {
    DWORD (*ticks)();        // milliseconds
    POINT (*cursor)();       // screen coordinates
    void (*sleep)(DWORD ms); // of the thread of the tips
    void (*wait)(DWORD ms);  // of an owner; may be shorter
    const NUserDLLFade& (*fade)();
};

extern TipPlatform tipPlatform;

// Waits, at most `ms`, and answers what other threads send to windows of this
// one. Posted messages stay. Returns early when it has answered.
void WaitServingSentMessages(DWORD ms);

// The class style of tips' windows on a system of this version: a shadow where
// the system has one.
constexpr UINT TipClassStyle(DWORD major, DWORD minor) {
    constexpr UINT Plain = CS_OWNDC | CS_DBLCLKS;
    // Wanted: of the systems before 6, 5.1 alone.
    const bool hasShadow = major >= 6 || (major == 5 && minor == 1);
    return hasShadow ? Plain | CS_DROPSHADOW : Plain;
}
UINT TipClassStyleHere();
