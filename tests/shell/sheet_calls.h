#pragma once

#include "foundation/windows_lean.h"

#include <prsht.h>

#include <vector>

// What this program's own code has asked of the platform about property sheet
// pages since the last StartAnew. It is linked with --wrap for both functions.
class SheetCalls {
public:
    // Copies of what pages were made from.
    static const std::vector<PROPSHEETPAGEW>& Made();
    static int Destroyed();
    static void StartAnew();
    // From the next one on no page can be made, until StartAnew.
    static void MakeNoMore();
};
