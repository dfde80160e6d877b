#pragma once

#include "foundation/nstring.h"

// The program's two streams, in UTF-8 whatever the console's code page is.
// Each call writes one line. A stream that isn't there is passed over.
namespace Console {
void Line(const NString& text);
void Error(const NString& text);
} // namespace Console
