#include "tagpage/combined_set.h"
#include "tagpage/id_tag_page.h"
#include "tagpage/row_texts.h"
#include "tagpage/tag_choices.h"

#include <algorithm>

namespace {
constexpr int AtEnd = -1;
// Up to it no heading is looked for: wanted.
constexpr int LastIndexOfNoHeading = 2;

bool IsElement(const NValueRow& row) {
    return row.tag == RowTagText || row.tag == RowTagArt;
}

// Of an element: a picture, or a text that isn't empty.
bool ShowsContent(const NValueRow& row) {
    return row.tag == RowTagArt || (row.tag == RowTagText && !row.value.IsEmpty());
}

bool IsArtHeading(const NValueRow& row) {
    return row.kind == Heading && row.name == ArtHeading;
}

// The place of the spacer above the pictures.
int PlaceOfNewElement(NValueList& list) {
    int place = AtEnd;
    for (int index = LastIndexOfNoHeading + 1; index < list.rows.Count(); ++index) {
        if (IsArtHeading(*list.rows[index]))
            place = index - 1;
    }
    return place;
}

void AddOnce(NStringList& names, const NString& name) {
    if (!names.Contains(name.Text))
        names.Add(name);
}

// True if there was one to delete.
bool DeleteElementRows(NValueList& list) {
    bool deleted = false;
    for (int index = list.rows.Count() - 1; index >= 0; --index) {
        // The end of a row's edit may take others along.
        const NValueRow* row = list.rows[index];
        if (!row || !IsElement(*row))
            continue;
        list.DeleteRow(index);
        deleted = true;
    }
    return deleted;
}
} // namespace

void clIDTagPage::BlankNoTagsRow() {
    for (int index = ValueList.rows.Count() - 1; index >= 0; --index) {
        NValueRow& row = *ValueList.rows[index];
        if (row.tag == RowTagNoTags && !row.name.IsEmpty()) {
            row.name = L"";
            InvalidateRect(ValueList.listBox, nullptr, FALSE);
        }
    }
}

void clIDTagPage::OnSelChange() {
    if (!IsInUse())
        return;
    // 1.
    for (int index = 0; index < ValueList.rows.Count(); ++index) {
        if (ShowsContent(*ValueList.rows[index])) {
            BlankNoTagsRow();
            break;
        }
    }
    // 2.
    const NValueRow* selected = ValueList.rows[ValueList.GetSelection()];
    if (selected && IsElement(*selected))
        cmdRemove.Enable();
    else
        cmdRemove.Disable();
}

// The list goes on to the value by itself. A row that got no name goes away
// without trace.
void clIDTagPage::OnRowEdited(int row) {
    const NValueRow* edited = IsInUse() ? ValueList.rows[row] : nullptr;
    if (!edited)
        return;
    if (!edited->name.IsEmpty() && edited->name != EditMark)
        NotifyChanged();
    else
        ValueList.DeleteRow(row);
}

void clIDTagPage::OnRowValueChanged(NValueList& list) {
    static_cast<clIDTagPage*>(list.owner)->TellOfValue();
}

void clIDTagPage::TellOfValue() {
    const NValueRow* row = IsInUse() ? ValueList.rows[ValueList.GetSelection()] : nullptr;
    if (!row)
        return;
    // 1.
    const clTagElement* element = CurrentTags().Find(row->name.Text);
    // 2. and 3. A change that is typed away again still counts: wanted.
    if (!element || element->Value.Compare(ElementValueOf(row->value)) != 0)
        NotifyChanged();
}

void clIDTagPage::AddElementRow() {
    // A row that gets no name goes now, while no place has been taken.
    ValueList.EndEdit(true);
    if (!IsInUse())
        return;
    // 1.
    BlankNoTagsRow();
    // 2. If the value is left like this it is stored like any other, and the
    // row has no choices, nor is its value learned, whatever it gets called:
    // wanted.
    NValueRowInit row;
    FillTextRow(row, EditMark, EditMark);
    // 3.
    int place = PlaceOfNewElement(ValueList);
    // 4.
    ValueList.AddRow(row, nullptr, place);
    if (place == AtEnd)
        place = ValueList.rows.Count() - 1;
    // 5.
    ValueList.Select(place);
    // 6.
    NStringList names;
    AddTagFieldNames(names);
    ValueList.EditSelectionName(&names, true);
}

void clIDTagPage::RemoveSelected() {
    if (!IsInUse())
        return;
    // 1.
    const int selected = ValueList.GetSelection();
    const NValueRow* row = ValueList.rows[selected];
    // A picture stays in its file, and its row on the page.
    if (!row || row->tag == RowTagArt)
        return;
    const NString name = row->name;
    // 2. and 3.
    if (SingleView())
        RemoveFromFile(name);
    else
        RemoveFromAll(name);
    // 4.
    ValueList.DeleteRow(selected);
    // 5.
    const int last = ValueList.rows.Count() - 1;
    if (last >= 0)
        ValueList.Select(std::min(selected, last));
    // 6.
    NotifyChanged();
}

// The element leaves `Tags` with the next StoreEdits, since its row is gone.
void clIDTagPage::RemoveFromFile(const NString& name) {
    AddOnce(CurrentSet().DeleteNames, name);
    MarkDifferent(CombinedSet().Tags, name);
}

// Those that lack the element get the deletion as well, and the combined set,
// for which nothing is ever deleted: wanted.
void clIDTagPage::RemoveFromAll(const NString& name) {
    for (int index = 0; index < TagSets.Count(); ++index) {
        clTagSet& set = *TagSets[index];
        set.Tags.TakeValue(name.Text);
        AddOnce(set.DeleteNames, name);
    }
}

void clIDTagPage::ClearTags() {
    if (!IsInUse())
        return;
    // 1.
    const bool deleted = DeleteElementRows(ValueList);
    if (!IsInUse())
        return;
    // 2. and 3.
    if (SingleView())
        ClearFile();
    else
        ClearAll();
    // 4.
    if (!deleted)
        return;
    NotifyChanged();
    if (IsInUse())
        BuildRows();
}

void clIDTagPage::ClearFile() {
    clTagSet& set = CurrentSet();
    set.DeleteAll = 1;
    set.DeleteNames.Clear();
    clTagRecord& combined = CombinedSet().Tags;
    for (int index = 0; index < set.Tags.Count(); ++index)
        MarkDifferent(combined, set.Tags[index]->Name);
    set.Tags.Clear();
}

// The combined set as well: wanted.
void clIDTagPage::ClearAll() {
    for (int index = 0; index < TagSets.Count(); ++index) {
        clTagSet& set = *TagSets[index];
        set.DeleteAll = 1;
        set.DeleteNames.Clear();
        set.Tags.Clear();
    }
}
