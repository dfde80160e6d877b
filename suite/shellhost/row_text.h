#pragma once

#include "audiopage/property_rows.h"
#include "foundation/nstring.h"

// A row of the Audio Properties page on one line: label, tab, value. As on the
// page, a value of several lines shows the first, and "..." behind it.
NString RowLine(const clPropRow& row);
