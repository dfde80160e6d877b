#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"

// What a value reads where the files of a selection disagree.
inline constexpr wchar_t DifferentText[] = L"<different>";

// The tag that stands for several files: of a few elements the common value, or
// DifferentText. Names compare without regard to ASCII case, values exactly.
class MergedTags {
public:
    MergedTags();

    // One file alone: its whole tag.
    void TakeWhole(clTagRecord& fileTags) { Combined.CopyFrom(fileTags); }
    // One of several files; `isFirstPath` is true for the one at the top of
    // the list, whether or not others have been read. An element that a later
    // path brings in reads DifferentText at once.
    void Merge(clTagRecord& fileTags, bool isFirstPath);
    // What the file lacks reads DifferentText from now on.
    void MarkWhatIsMissing(clTagRecord& fileTags);

    // Empty if there is no such element.
    NString Value(const wchar_t* name);

    NStringList MergeKeys; // the only elements of several files that count
    clTagRecord Combined;

private:
    void MergeElement(const clTagElement& element, bool isFirstPath);
};

// The element's value; empty if there is none.
NString TagValue(clTagRecord& record, const wchar_t* name);
