#pragma once

#include "foundation/windows_lean.h"

// Counters that the platform moves for the two property pages (`pcRefParent`
// of PROPSHEETPAGEW), one for each. The module never reads them; above all
// they don't keep it loaded.
extern UINT audioPageReferences;
extern UINT idTagPageReferences;
