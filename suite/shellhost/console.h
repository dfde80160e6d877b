#pragma once

#include "foundation/nstring.h"

#include <string_view>

// The program's two streams, in UTF-8 whatever the console's code page is.
// Each call writes one line. A stream that isn't there is passed over.
namespace Console {
// False if the line, or the end of it, could not be written.
[[nodiscard]] bool Line(const NString& text);
void Error(const NString& text);
// Error for `text` in ASCII, which takes no memory.
void LastWords(std::string_view text) noexcept;
} // namespace Console
