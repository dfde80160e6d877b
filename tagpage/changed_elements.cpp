#include "tagpage/changed_elements.h"

#include "tagpage/combined_set.h"

namespace {
bool IsToBeWritten(const clTagElement& element, clTagRecord& inFile) {
    // 1.
    if (HoldsDifferentMark(element.Value))
        return false;
    // 2.
    const clTagElement* present = inFile.Find(element.Name.Text);
    if (!present)
        return true;
    // 3. The values aren't looked at: wanted.
    if (present->Data.Size > 0)
        return !present->Data.Equals(element.Data);
    // 4.
    return present->Value.Compare(element.Value) != 0;
}
} // namespace

void AddChangedElements(clTagRecord& wanted, clTagRecord& inFile, clTagRecord& changed) {
    for (int index = 0; index < wanted.Count(); ++index) {
        const clTagElement& element = *wanted[index];
        // 5.
        if (IsToBeWritten(element, inFile))
            changed.AddCopy(element);
    }
}
