#include "audiopage/merged_tags.h"

namespace {
constexpr const wchar_t* MergedNames[] = {
    L"artist", L"title", L"album", L"track", L"disc", L"genre", L"year", L"rating",
};
} // namespace

MergedTags::MergedTags() {
    for (const wchar_t* name : MergedNames)
        MergeKeys.Add(name);
}

void MergedTags::Merge(clTagRecord& fileTags, bool isFirstPath) {
    for (int index = 0; index < fileTags.Count(); ++index) {
        const clTagElement& element = *fileTags[index];
        if (!element.Value.IsEmpty() && MergeKeys.Contains(element.Name.Text, true))
            MergeElement(element, isFirstPath);
    }
}

void MergedTags::MergeElement(const clTagElement& element, bool isFirstPath) {
    clTagElement* known = Combined.Find(element.Name.Text);
    if (known) {
        if (known->Value.Compare(element.Value) != 0)
            known->Value = DifferentText;
        return;
    }
    Combined.AddCopy(element);
    // Also when no file before it could be read: wanted.
    if (!isFirstPath)
        Combined.Current()->Value = DifferentText;
}

void MergedTags::MarkWhatIsMissing(clTagRecord& fileTags) {
    for (int index = 0; index < Combined.Count(); ++index) {
        clTagElement& element = *Combined[index];
        if (!fileTags.Find(element.Name.Text))
            element.Value = DifferentText;
    }
}

NString MergedTags::Value(const wchar_t* name) {
    return TagValue(Combined, name);
}

NString TagValue(clTagRecord& record, const wchar_t* name) {
    const clTagElement* element = record.Find(name);
    return element ? element->Value : NString();
}
