#pragma once

#include "toolkit/nvaluelist.h"

#include <cstdint>

// The bits of value_row_scene.h for a row in the item state `itemState`
// (ODS_...), but for those of its mark.
uint32_t RowStateMask(const NValueList& list, int row, UINT itemState);

// Paints the row `item.itemID` at `item.rcItem`; for one that isn't there, the
// window colour.
void PaintValueRow(const NValueList& list, const DRAWITEMSTRUCT& item);

// The same by way of the list's back buffer, which grows to hold the item.
void PaintValueItem(NValueList& list, const DRAWITEMSTRUCT& item);
