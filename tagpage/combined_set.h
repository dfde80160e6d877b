#pragma once

#include "codec/tag_record.h"

// The tag that stands for several files: the common value of each element, or
// DifferentMark. Names compare without regard to ASCII case, values exactly.

// The name of its set among those of the files.
inline constexpr wchar_t CombinedName[] = L"<combined>";
// What a value reads where the files disagree, or one of them lacks the
// element. It is told by its text alone, also in the tag of a file: a value
// that holds it is never written.
inline constexpr wchar_t DifferentMark[] = L"<different>";

inline bool HoldsDifferentMark(const NString& value) {
    return value.Find(DifferentMark) != 0;
}

// Folds in the tag of one more file, the `fileIndex`-th from 0 on; `replied`
// tells whether it could be read.
void MergeIntoCombined(int fileIndex, clTagRecord& file, bool replied, clTagRecord& combined);
// If the record has the element, the files disagree about it from now on.
void MarkDifferent(clTagRecord& combined, const NString& name);
