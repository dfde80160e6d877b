#pragma once

#include "foundation/windows_lean.h"

// The procedures of all NWindows. WM_CREATE and WM_INITDIALOG bind the object
// that they bring, which is listed once however often it is told. What comes before,
// or behind Destroy, gets default processing and reaches no object. No exception leaves
// them: the message of one gets default processing.
LRESULT CALLBACK NWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK NDialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
