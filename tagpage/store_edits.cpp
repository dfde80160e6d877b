#include "tagpage/combined_set.h"
#include "tagpage/id_tag_page.h"
#include "tagpage/row_texts.h"

namespace {
constexpr wchar_t ArtPrefix[] = L"_albumart_";
constexpr int ArtPrefixLength = 10;

bool IsPicture(const clTagElement& element) {
    return element.Data.Size > 0 && element.Name.Compare(ArtPrefix, ArtPrefixLength, true) == 0;
}

void CopyPictures(clTagRecord& tags, clTagRecord& pictures) {
    for (int index = 0; index < tags.Count(); ++index) {
        const clTagElement& element = *tags[index];
        if (IsPicture(element))
            pictures.AddData(element.Name.Text, element.Data.Data,
                             static_cast<int>(element.Data.Size));
    }
}
} // namespace

void clIDTagPage::StoreEdits() {
    if (!IsInUse())
        return;
    // 1. The sheet hears of a name that was typed, and may close the page.
    ValueList.EndEdit(true);
    if (!IsInUse())
        return;
    // 2.
    clTagRecord& view = CurrentTags();
    // 3.
    clTagRecord pictures;
    CopyPictures(view, pictures);
    // 4.
    view.Clear();
    // 5. and 6. Without rows nothing but the pictures comes back.
    for (int index = 0; index < ValueList.rows.Count(); ++index) {
        const NValueRow& row = *ValueList.rows[index];
        if (row.tag == RowTagText)
            StoreRow(row, view);
    }
    // 7.
    view.Merge(pictures, false);
}

void clIDTagPage::StoreRow(const NValueRow& row, clTagRecord& view) {
    // 6.1. The file keeps what stands in an emptied row: wanted. It is Remove
    // that deletes.
    if (row.value.IsEmpty())
        return;
    // 6.2.
    const NString value = ElementValueOf(row.value);
    // 6.3.
    view.Add(row.name.Text, value.Text);
    // 6.4.
    if (HoldsDifferentMark(value))
        return;
    // 6.5. and 6.6.
    if (SingleView())
        StoreInCombined(row.name, value);
    else
        StoreInFiles(row.name, value);
}

// Also what nobody changed: Commit finds out which files have it already.
void clIDTagPage::StoreInFiles(const NString& name, const NString& value) {
    for (int index = 0; index < TagSets.Count(); ++index) {
        clTagSet& set = *TagSets[index];
        if (set.Name == CombinedName)
            continue;
        // Also one that has data: wanted.
        if (clTagElement* element = set.Tags.Find(name.Text))
            element->Value = value;
        else
            set.Tags.Add(name.Text, value.Text);
    }
}

void clIDTagPage::StoreInCombined(const NString& name, const NString& value) {
    clTagRecord& combined = CombinedSet().Tags;
    clTagElement* element = combined.Find(name.Text);
    if (!element)
        combined.Add(name.Text, DifferentMark);
    else if (element->Value.Compare(value) != 0)
        element->Value = DifferentMark;
}
