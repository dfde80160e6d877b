#include "foundation/utf8_decoder.h"

#include <bit>
#include <cstdint>

namespace {
constexpr uint32_t FirstBeyondOneUnit = 65536;
constexpr int LongestForm = 6;

bool IsContinuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

// Reads the continuation bytes of a form of `count` bytes into `value`, which
// holds the lead byte's bits; false at a broken or missing one.
bool ReadContinuation(const char*& cursor, int count, uint32_t& value) {
    for (int taken = 1; taken < count; ++taken) {
        unsigned char byte = static_cast<unsigned char>(*cursor);
        if (!IsContinuation(byte))
            return false;
        value = (value << 6) | (byte & 0x3Fu);
        ++cursor;
    }
    return true;
}
} // namespace

int NDecodeUtf8(const char* text, wchar_t* output, int capacity) {
    int written = 0;
    const char* cursor = text;
    while (*cursor && written < capacity - 1) {
        unsigned char lead = static_cast<unsigned char>(*cursor++);
        int count = std::countl_one(lead);
        if (count == 1 || count > LongestForm)
            continue;
        uint32_t value = lead;
        if (count > 0) {
            value = lead & ((1u << (7 - count)) - 1);
            if (!ReadContinuation(cursor, count, value))
                break;
        }
        if (value == 0)
            break;
        output[written++] = value >= FirstBeyondOneUnit ? L'?' : static_cast<wchar_t>(value);
    }
    if (capacity > 0)
        output[written] = 0;
    return written;
}
