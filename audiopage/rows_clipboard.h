#pragma once

#include "audiopage/property_rows.h"
#include "foundation/nlists.h"
#include "foundation/nstring.h"

class NToolTip;

// A line for each row: its label, a blank and its value, in which "; " stands
// for each carriage return. No line break behind the last.
NString RowsAsText(NKeyedList<clPropRow>& rows);

// Puts that text on the clipboard, in narrow and in wide form, and shows `tip`
// near the cursor, whether or not the clipboard could be had. Returns when the
// tip is up.
void CopyRowsToClipboard(NKeyedList<clPropRow>& rows, NToolTip& tip);
