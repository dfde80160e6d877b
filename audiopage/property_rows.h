#pragma once

#include "foundation/nlists.h"
#include "foundation/nstring.h"

#include <cstdint>

class NCanvas;
class NEvent;

// One row of the Audio Properties page. All measures are dialog units.
struct clPropRow {
    // Positive: the label's left edge. Negative: the label's right edge stands
    // at the absolute value.
    int32_t LabelX = 0;
    int32_t Y = 0; // of the label and of the value
    int32_t ValueX = 0;
    int32_t ValueWidth = 0;
    NString Label; // without a colon
    // Lines, with a CR or CR LF between them; may be empty, and may end in a CR.
    NString Value;
};

// Asks a decoder plug-in about each of `files` (full paths), merges the
// answers, and fills `rows`, which is emptied first: 16 rows, and 23 for a
// list of one path, each with an empty key. A file that no decoder reads is
// left out silently, but counts as a path for all labels.
//
// `stop` may be null. It is looked at before each file; once it is set the
// run is abandoned and `rows` stays empty.
//
// `artTarget` may be null. It is emptied first, and gets the framed covers of
// the one file if its decoder found a tag; of several files none.
//
// Without a lock: one run at a time for a process's lists of one path, since
// the last type of file is remembered for the next.
void BuildPropRows(const NStringList& files, NEvent* stop, NKeyedList<clPropRow>& rows,
                   NKeyedList<NCanvas>* artTarget);
