#pragma once

#include "toolkit/ndrawlist.h"
#include "toolkit/nfont.h"

// What painting and measuring of a display list's texts have in common.

// The font that the element is drawn in, selected into `dc`. False if there is
// none.
bool SelectFontOf(const NDrawList::Text& element, HDC dc, NFont& font);
// The size of one of the element's texts, whole or cut, with its lines and
// tabs.
SIZE SizeOfText(const NDrawList::Text& element, NFont& font, const NString& text);
// The element's text, cut to its room if it has one.
NString FittedText(const NDrawList::Text& element, NFont& font);
