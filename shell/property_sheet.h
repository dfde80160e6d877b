#pragma once

#include "foundation/nlists.h"
#include "foundation/windows_lean.h"

#include <prsht.h>

// The hand-over of the pages "Audio Properties" and "ID-Tag" to a property
// sheet:
//
//     AddPropertyPages          makes the page objects, each with its own list
//                               of paths
//     AudioPageProc             the page's window, from WM_INITDIALOG on; a page
//                               that the user never opens gets none
//     AudioPageCallback         PSPCB_RELEASE, after the window or without one:
//                               frees the object, at the end of the call on it
//                               that is under way, if one is
//
// Those of the second page are its own (tagpage/page_procedures.h).
//
// All of these let no exception out but AddPropertyPages.

// Offers the two pages for `selection` (full paths), sorted by text, to
// `addPage` with `parameter`. Nothing is offered for no files. A page that is
// refused is freed, and the other one offered all the same. No failure is
// reported.
void AddPropertyPages(const NStringList& selection, LPFNADDPROPSHEETPAGE addPage, LPARAM parameter);

INT_PTR CALLBACK AudioPageProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
UINT CALLBACK AudioPageCallback(HWND hwnd, UINT message, PROPSHEETPAGEW* page) noexcept;
