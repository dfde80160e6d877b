// The fixed choice that stands in for the platform's code pages in the native
// build: Latin-1 as the narrow one, and the system's own decoder for UTF-8.
#include "foundation/codepage.h"
#include "foundation/utf8_decoder.h"

int NWideFromNarrow(const char* text, wchar_t* output, int capacity) {
    int written = 0;
    for (; text[written] && written < capacity - 1; ++written)
        output[written] = static_cast<unsigned char>(text[written]);
    output[written] = 0;
    return written;
}

int NWideFromUtf8(const char* text, wchar_t* output, int capacity) {
    return NDecodeUtf8(text, output, capacity);
}

int NNarrowFromWide(const wchar_t* text, char* output, int capacity) {
    int units = 0;
    while (text[units])
        ++units;
    if (!output)
        return units + 1;
    for (int index = 0; index <= units && index < capacity; ++index)
        output[index] = text[index] < 256 ? static_cast<char>(text[index]) : '?';
    return units + 1;
}
