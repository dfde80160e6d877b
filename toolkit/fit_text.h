#pragma once

#include "foundation/nstring.h"
#include "toolkit/nfont.h"

// Shortens `text` until it is narrower than `maxWidth` pixels, as one line
// without tabs and with "..." in place of what was cut. True if it cut; the
// text is empty then if not even one character and the "..." have room. Only a
// width strictly below `maxWidth` fits. The font measures on its `dc`.
bool FitText(NFont& font, int maxWidth, NString& text);
