#pragma once

// The system's own UTF-8 decoder, for a platform without one; after RFC 2279
// in that it takes forms of up to six bytes. It is deliberately forgiving:
//
// - a stray continuation byte, or a lead byte with more than six leading one
//   bits, is passed over;
// - a broken or cut continuation ends the decoding, and what is decoded stands;
// - a value of 65536 or more becomes "?", since surrogates aren't made;
// - a value of zero ends the text.
//
// `text` is zero-terminated. `output` has room for `capacity` units, the
// terminator included, which is always written; units beyond it are dropped.
// Returns the units written without the terminator.
int NDecodeUtf8(const char* text, wchar_t* output, int capacity);
