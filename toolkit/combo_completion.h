#pragma once

#include "foundation/windows_lean.h"

// Completes what was typed into a combo box from the first of its entries that
// begins with it; capitals of the ASCII letters don't matter. What was typed
// stays as it is, and the rest of the entry stands behind it, selected. Without
// such an entry, or with nothing typed, nothing changes.
void CompleteCombo(HWND combo);

// Whether the key, a virtual-key code, types a character that is to be
// completed: an unaccented letter, a digit or a space.
bool IsCompletedKey(WPARAM key);
