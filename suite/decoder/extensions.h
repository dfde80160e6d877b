#pragma once

#include <cstdint>

namespace decoder {

// The extensions of the files that the plug-in reads, with their dot, in lower
// case; null from the last one on.
const wchar_t* ExtensionAt(uint32_t index);

} // namespace decoder
