#include "tagpage/combined_set.h"

namespace {
void MergeElement(const clTagElement& element, bool isFirstFile, clTagRecord& combined) {
    // 1.2.
    clTagElement* known = combined.Find(element.Name.Text);
    // 1.3.
    if (known) {
        if (known->Value.Compare(element.Value) != 0)
            known->Value = DifferentMark;
        return;
    }
    // 1.4. Those before lack it, also if none of them could be read: wanted.
    combined.AddCopy(element);
    if (!isFirstFile)
        combined.Current()->Value = DifferentMark;
}
} // namespace

void MergeIntoCombined(int fileIndex, clTagRecord& file, bool replied, clTagRecord& combined) {
    // 1.
    for (int index = 0; replied && index < file.Count(); ++index) {
        // 1.1. Pictures have no value, and so never come in.
        const clTagElement& element = *file[index];
        if (!element.Value.IsEmpty())
            MergeElement(element, fileIndex == 0, combined);
    }
    // 2. An element that the file has without a value is not missing: wanted.
    for (int index = 0; index < combined.Count(); ++index) {
        clTagElement& element = *combined[index];
        if (!file.Find(element.Name.Text))
            element.Value = DifferentMark;
    }
}

void MarkDifferent(clTagRecord& combined, const NString& name) {
    if (clTagElement* element = combined.Find(name.Text))
        element->Value = DifferentMark;
}
