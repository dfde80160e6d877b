#pragma once

#include "foundation/windows_lean.h"

#include <prsht.h>

// What the host of a clIDTagPage gives to the platform; neither lets an
// exception out.
//
//     PageDlgProc    the page's window, from WM_INITDIALOG on, which brings a
//                    PROPSHEETPAGEW whose `lParam` is the page. A page in no
//                    property sheet is told by one without `pszTitle`.
//     PageRelease    PSPCB_RELEASE, after the window or without one: frees the
//                    page, at the end of the call on it that is under way, if
//                    one is

INT_PTR CALLBACK PageDlgProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
UINT CALLBACK PageRelease(HWND window, UINT code, PROPSHEETPAGEW* description) noexcept;
