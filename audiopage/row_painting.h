#pragma once

#include "audiopage/property_rows.h"
#include "foundation/nlists.h"
#include "foundation/windows_lean.h"

class NCanvas;
class NFont;

// Paints labels and values on `dc`, the device context of the dialog `page`,
// by whose font the rows' dialog units are measured. What is cut of a value,
// and what stands on further lines of it, is marked by an icon. `stars` holds
// a lit and a dull star in halves (resource IDB_STARS), for a row labelled
// "Rating:".
void PaintPropRows(NKeyedList<clPropRow>& rows, HDC dc, HWND page, const NCanvas& stars);

// True if one line isn't all that there is to the value, or if that is cut at
// `width` pixels: what is painted of it then isn't the whole. The font measures
// on its `dc`.
bool IsValueCut(NFont& font, const NString& value, int width);
