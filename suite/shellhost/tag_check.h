#pragma once

#include "codec/tag_record.h"

// Whether a tag that was read back holds what was asked for.
//
// The parts of a value may come back in another order, or, from a format
// without repeated fields, as one text with "; " between them. A picture may
// come back under another number or description, but with its bytes. An
// element that was asked for without value and data must be absent.
bool HoldsElement(clTagRecord& tag, const clTagElement& wanted);

// Whether the element `name` went from `before` to `after`. Pictures close
// up when one goes: for these the number of pictures tells.
bool IsGone(clTagRecord& before, clTagRecord& after, const NString& name);
