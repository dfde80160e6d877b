#pragma once

#include "foundation/nbuffer.h"
#include "foundation/nlists.h"
#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

// Lets the user choose a file, or several with OFN_ALLOWMULTISELECT in
// `flags`, and puts their full paths into `list`. False, and an empty list, if
// the dialog was cancelled. A filter entry is a description and a pattern with
// a carriage return between them; those of `filterList` come before
// `filterText`. All but `list` may be null. Blocks its thread in the dialog.
bool NOpenFileDialog(NStringList& list, const wchar_t* title, DWORD flags,
                     const wchar_t* filterText, const NStringList* filterList,
                     const wchar_t* initialFolder, const wchar_t* initialFile, HWND owner);

// Its two halves. The filter block as the platform wants it: descriptions and
// patterns in turn, each with a terminator, and a further one at the end.
void NMakeFilterBlock(NBuffer& block, const wchar_t* filterText, const NStringList* filterList);
// Takes the paths out of the dialog's name buffer of `units` units.
void NTakeDialogNames(NStringList& list, const wchar_t* names, uint32_t units, bool multiSelect);
