#pragma once

#include "foundation/windows_lean.h"

#include <shlobj.h>

// The module's two items in the shell's menu: what they are called, and how a
// command of the shell's names them. Nothing here looks at the selected files.

// Offsets from the first command id that the shell allots.
inline constexpr int CommandConvert = 0;
inline constexpr int CommandEditTag = 1;
inline constexpr int NoCommand = -1;

// Inserts "Convert To" at position `index` of the menu, and "Edit ID-Tag" below
// it unless the user's setting `tNWNoEditTag` forbids it, each with its picture.
// Nothing is inserted if `flags` has CMF_DEFAULTONLY. Returns the number of
// items. The pictures stay with the menu, and nobody frees them.
int NAddMenuItems(HMENU menu, UINT index, UINT firstCommand, UINT flags);

// IContextMenu::GetCommandString: the verb or the help text of the command at
// the offset, as `type` (GCS_) asks. `capacity` counts characters, the
// terminator included, and a longer text is cut; 0 stands for room enough.
// The types that ask whether there is such a command write nothing.
// E_INVALIDARG, and nothing written, for any other offset, or if there is a
// text and no `name`.
HRESULT NCommandText(UINT_PTR offset, UINT type, CHAR* name, UINT capacity);

// The offset that IContextMenu::InvokeCommand's `lpVerb` asks for, as an index
// or by a verb in the exact case; NoCommand for any other.
int NCommandOf(const CHAR* verbOrIndex);
