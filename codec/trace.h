#pragma once

#include "foundation/windows_lean.h"

#include <cstdint>

// Where the trace output of a search for a decoder goes. Passed by pointer
// through the finder and to each plug-in's "Create". The caller zeroes it;
// that switches the output off, and in the module all callers leave it so.
struct NLogContext {
    uint64_t Reserved[2];
    HANDLE File; // the caller's; null or INVALID_HANDLE_VALUE for no output
};
static_assert(sizeof(NLogContext) == 24);

// Writes one piece of a line to the context's file, as UTF-16 without a byte-
// order mark. A piece that begins a line stands behind the indent, or behind
// `prefix` if one is given. `endLine` ends it, with the function's name in
// brackets before the end if one is given; without `endLine` the name isn't
// written. A text that begins with "->->" indents the lines behind it by two
// blanks; one that begins with "<-<-" takes two back, from its own line on.
//
// The indent, and whether a line was ended, are process-wide, output or none.
// Any thread may call; the calls of several share the one indent. A context of
// null counts as a zeroed one.
void NTraceWrite(const wchar_t* text, const NLogContext* logContext,
                 const wchar_t* function = nullptr, bool endLine = false,
                 const wchar_t* prefix = nullptr);
