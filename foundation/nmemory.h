#pragma once

#include <cstddef>

// How many of the `wanted` bytes from `address` on can be read, up to the first
// page that can't be: for pointers from libraries that aren't ours. 0 for null.
// True as long as no other thread frees the memory meanwhile.
size_t NReadableBytes(const void* address, size_t wanted);
