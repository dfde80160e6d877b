#include "tagpage/id_tag_page.h"
#include "tagpage/row_texts.h"
#include "tagpage/tag_choices.h"
#include "tagpage/title_text.h"
#include "toolkit/packed_coordinates.h"

namespace {
// At the row's right end.
constexpr uint32_t TitleX = AnchorFar | MinusSize | Negative | 4;
constexpr int TitleFontSize = 13;
constexpr uint32_t RowNameX = 6;
constexpr uint32_t AddArtX = 8;
constexpr int AddArtWidth = 100;
constexpr int LastArtNumber = 99;
constexpr int MostOtherRows = 1000;

// Shown whether or not the tag has them. Not the order of the names that are
// offered for a new element, and not meant to become it.
constexpr const wchar_t* FixedNames[] = {L"Artist", L"Title", L"Album",  L"Track",
                                         L"Year",   L"Genre", L"Comment"};

bool IsFixed(const NString& name) {
    for (const wchar_t* fixed : FixedNames) {
        if (name.Compare(fixed, 0, true) == 0)
            return true;
    }
    return false;
}

bool IsText(const clTagElement& element) {
    return element.Data.Size == 0;
}

void EnableIf(NButton& button, bool condition) {
    if (condition)
        button.Enable();
    else
        button.Disable();
}

// Pictures are listed only: a press on their buttons does nothing.
void OnViewArtButton(NValueList&) {}
void OnAddArtButton(NValueList&) {}

// Keeps a list box from drawing to the end of the scope, which then draws it
// once: each row by itself would have the scroll bar drawn anew.
class HeldDrawing {
public:
    explicit HeldDrawing(HWND list) : list_(list) { SendMessageW(list_, WM_SETREDRAW, FALSE, 0); }
    ~HeldDrawing() {
        if (!IsWindow(list_)) // null would have all windows drawn
            return;
        SendMessageW(list_, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(list_, nullptr, TRUE);
    }
    HeldDrawing(const HeldDrawing&) = delete;
    HeldDrawing& operator=(const HeldDrawing&) = delete;

private:
    HWND list_;
};

} // namespace

void clIDTagPage::BuildRows() {
    const HeldDrawing held(ValueList.listBox);
    // 1.
    ValueList.Clear();
    // 2.
    AddTitleRow();
    // 3.
    clTagRecord& tags = CurrentTags();
    // 4.
    if (tags.Count() == 0)
        AddNoTagsRow();
    // 5.
    for (const wchar_t* name : FixedNames)
        AddFixedRow(tags, name);
    // 6. and 7.
    AddOtherRows(tags);
    // 8. to 12.
    if (SingleView())
        AddArtRows(tags);
}

void clIDTagPage::AddTitleRow() {
    NValueRowInit row;
    row.kind = Title;
    row.nameX = TitleX;
    row.nameFontSize = TitleFontSize;
    const NString* path = SingleView() ? Files[CurrentFile] : nullptr;
    row.name = path ? TitleOfFile(*path, CurrentFile, Files.Count) : TitleOfFiles(Files.Count);
    ValueList.AddRow(row);
}

void clIDTagPage::AddNoTagsRow() {
    NValueRowInit row;
    row.kind = Plain;
    row.name = L"  <Contains no ID-Tags>"; // with its blanks: wanted
    row.nameBold = true;
    row.nameX = RowNameX;
    row.tag = RowTagNoTags;
    ValueList.AddRow(row);
}

void clIDTagPage::AddFixedRow(clTagRecord& tags, const wchar_t* name) {
    for (int index = 0; index < tags.Count(); ++index) {
        const clTagElement& element = *tags[index];
        if (IsText(element) && element.Name.Compare(name, 0, true) == 0) {
            AddTextRow(element.Name, element.Value);
            return;
        }
    }
    AddTextRow(name, L"");
}

void clIDTagPage::AddOtherRows(clTagRecord& tags) {
    // 6. A name that is there twice stands in the list twice, and so its
    // elements have two rows each: wanted. Each row is stored, and so has as
    // many more the next time; without a limit that would end in a shell that
    // answers nobody. What has no row stays in the file as it is.
    NStringList names;
    for (int index = 0; index < tags.Count(); ++index) {
        const clTagElement& element = *tags[index];
        if (IsText(element) && !IsFixed(element.Name))
            names.Add(element.Name);
    }
    names.SortByText(true);
    // 7. By then their data aren't looked at any more: wanted.
    int room = MostOtherRows;
    for (int name = 0; name < names.Count && room > 0; ++name) {
        for (int index = 0; index < tags.Count() && room > 0; ++index) {
            const clTagElement& element = *tags[index];
            if (element.Name != *names[name])
                continue;
            AddTextRow(element.Name, element.Value);
            --room;
        }
    }
}

void clIDTagPage::AddArtRows(clTagRecord& tags) {
    // 9.
    ValueList.AddRow(NValueRowInit());
    // 10.
    NValueRowInit heading;
    heading.kind = Heading;
    heading.name = ArtHeading;
    heading.nameX = RowNameX;
    heading.nameBold = true;
    ValueList.AddRow(heading);
    // 11. A gap in the numbers hides the pictures behind it: wanted.
    NString description;
    for (int number = 1; number <= LastArtNumber && tags.FindAlbumArt(number, description);
         ++number) {
        NValueRowInit art;
        art.kind = Plain;
        art.name = L"Art ";
        art.name.Append(NString::FromInt(number));
        art.value = description;
        art.buttonText = L"View";
        art.onButton = OnViewArtButton;
        art.tag = RowTagArt;
        ValueList.AddRow(art);
    }
    // 12.
    NValueRowInit add;
    add.kind = Plain;
    add.buttonText = L"Add Album Art";
    add.valueX = AddArtX;
    add.valueWidth = AddArtWidth;
    add.onButton = OnAddArtButton;
    ValueList.AddRow(add);
}

void clIDTagPage::AddTextRow(const NString& name, const NString& value) {
    // 1. and 2.
    NValueRowInit row;
    FillTextRow(row, name, RowValueOf(value));
    // 3.
    const TagChoices choices = TagChoicesFor(name);
    if (choices != TagChoices::None) {
        row.kind = ComboEdit;
        AddChoices(choices, row.choices);
    }
    // 4.
    ValueList.AddRow(row);
}

void clIDTagPage::FillTextRow(NValueRowInit& row, const NString& name, const NString& value) {
    row.kind = Edit;
    row.name = name;
    row.value = value;
    row.nameX = RowNameX;
    row.tag = RowTagText;
    row.onChange = OnRowValueChanged;
}

void clIDTagPage::RefreshView() {
    if (!IsInUse())
        return;
    // 1.
    BuildRows();
    // 2. to 4.
    const bool many = Files.Count >= 2;
    const bool stepping = many && cmdViewSingle.latched;
    EnableIf(cmdViewSingle, many);
    EnableIf(cmdSkipFirst, stepping && CurrentFile != 0);
    EnableIf(cmdSkipPrev, stepping && CurrentFile != 0);
    EnableIf(cmdSkipNext, stepping && CurrentFile != Files.Count - 1);
    EnableIf(cmdSkipLast, stepping && CurrentFile != Files.Count - 1);
    // Remove stays as the last selection left it: wanted. It does nothing while
    // no row is selected.
}
