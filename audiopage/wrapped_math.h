#pragma once

#include <cstdint>

// Arithmetic in 64 bits signed that wraps around, since the numbers come from
// plug-ins and may be anything.
constexpr int64_t WrappedSum(int64_t a, int64_t b) {
    return static_cast<int64_t>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}
constexpr int64_t WrappedDifference(int64_t a, int64_t b) {
    return static_cast<int64_t>(static_cast<uint64_t>(a) - static_cast<uint64_t>(b));
}
constexpr int64_t WrappedProduct(int64_t a, int64_t b) {
    return static_cast<int64_t>(static_cast<uint64_t>(a) * static_cast<uint64_t>(b));
}
// Truncates; `b` isn't 0. The lowest number has no positive counterpart, and
// its quotient by -1 is itself.
constexpr int64_t WrappedQuotient(int64_t a, int64_t b) {
    return b == -1 ? WrappedDifference(0, a) : a / b;
}
