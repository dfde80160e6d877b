#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"

// Whether a tag that was read back holds what was asked for.
//
// The parts of a value may come back in another order, or, from a format
// without repeated fields, as one text with "; " between them. A picture may
// come back under another number or description, but with its bytes. An
// element that was asked for without value and data must be absent.
bool HoldsElement(clTagRecord& tag, const clTagElement& wanted);

// Appends to `left` each of `names` that did not go from `before` to `after`.
// A picture is named by its number, and the others close up when one goes: as
// many must have gone as were named and there, else all named ones are left.
void FindLeft(clTagRecord& before, clTagRecord& after, const NStringList& names, NStringList& left);
