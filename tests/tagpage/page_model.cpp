#include "tests/tagpage/page_model.h"

#include "foundation/nlists.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

namespace {
using Text = PageModel::Text;
using Tag = PageModel::Tag;
using Element = PageModel::Element;
using Kind = PageModel::Kind;

const Text Different = L"<different>";
const Text Unnamed = L"<edit>";
const Text PicturePrefix = L"_albumart_";
const Text FixedNames[] = {L"Artist", L"Title", L"Album", L"Track", L"Year", L"Genre", L"Comment"};

Text Folded(Text text) {
    for (wchar_t& unit : text)
        unit = unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit + 32) : unit;
    return text;
}

bool SameName(const Text& one, const Text& other) {
    return Folded(one) == Folded(other);
}

Element* Find(Tag& tag, const Text& name) {
    for (Element& element : tag) {
        if (SameName(element.name, name))
            return &element;
    }
    return nullptr;
}

bool IsFixed(const Text& name) {
    return std::any_of(std::begin(FixedNames), std::end(FixedNames),
                       [&](const Text& fixed) { return SameName(fixed, name); });
}

Text Replaced(Text text, const Text& what, const Text& by) {
    for (size_t at = text.find(what); at != Text::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

Text ShownRating(const Text& halfSteps) {
    const long number = std::wcstol(halfSteps.c_str(), nullptr, 10);
    return std::to_wstring(number / 2) + (number % 2 ? L".5" : L"");
}

Text StoredRating(const Text& steps) {
    return std::to_wstring(std::lround(std::trunc(std::wcstod(steps.c_str(), nullptr) * 2)));
}

void TurnRatings(Tag& tag, Text (*turn)(const Text&)) {
    for (Element& element : tag) {
        if (SameName(element.name, L"rating"))
            element.value = turn(element.value);
    }
}

// What the tag program does with the elements that it is given.
void Write(Tag& file, const Tag& changes) {
    for (const Element& change : changes) {
        if (Element* present = Find(file, change.name))
            *present = change;
        else
            file.push_back(change);
    }
}

void AddOnce(std::vector<Text>& names, const Text& name) {
    if (std::find(names.begin(), names.end(), name) == names.end())
        names.push_back(name);
}

Text BaseName(const Text& path) {
    const Text name = path.substr(path.rfind(L'\\') + 1);
    return name.substr(0, name.rfind(L'.'));
}
} // namespace

PageModel::PageModel(std::vector<std::pair<Text, Tag>> filesGiven)
    : files(std::move(filesGiven)), sets_(files.size()) {
    for (size_t number = 0; number < files.size(); ++number)
        Merge(static_cast<int>(number));
    Build();
}

void PageModel::Merge(int number) {
    Tag& tag = sets_[static_cast<size_t>(number)].tag;
    for (const Element& element : files[static_cast<size_t>(number)].second) {
        if (element.name[0] != L'_' || SameName(element.name.substr(0, 10), PicturePrefix))
            tag.push_back(element);
    }
    TurnRatings(tag, ShownRating);
    for (const Element& element : tag) {
        if (element.value.empty())
            continue;
        Element* known = Find(combined_.tag, element.name);
        if (!known)
            combined_.tag.push_back({element.name, number ? Different : element.value, L""});
        else if (known->value != element.value)
            known->value = Different;
    }
    for (Element& element : combined_.tag) {
        if (!Find(tag, element.name))
            element.value = Different;
    }
}

void PageModel::AddTextRow(const Text& name, const Text& value) {
    const bool hasChoices =
        SameName(name, L"track") || SameName(name, L"year") || SameName(name, L"genre");
    rows.push_back({hasChoices ? Kind::Choice : Kind::Text, name, Replaced(value, L"\r", L"; ")});
}

void PageModel::Build() {
    rows.clear();
    selection = -1;
    Tag& tag = View().tag;
    Text title = L"Tonewright: ID-Tags From " + std::to_wstring(files.size()) + L" Files ";
    if (ShowsOneFile()) {
        title = L"Tonewright: '" + BaseName(files[static_cast<size_t>(file)].first) + L"' ID-Tag ";
        if (files.size() > 1)
            title +=
                L"[" + std::to_wstring(file + 1) + L"/" + std::to_wstring(files.size()) + L"] ";
    }
    rows.push_back({Kind::Title, title, L""});
    if (tag.empty())
        rows.push_back({Kind::Note, L"  <Contains no ID-Tags>", L""});
    for (const Text& fixed : FixedNames) {
        const auto found = std::find_if(tag.begin(), tag.end(), [&](const Element& element) {
            return element.data.empty() && SameName(element.name, fixed);
        });
        AddTextRow(found == tag.end() ? fixed : found->name,
                   found == tag.end() ? L"" : found->value);
    }
    NStringList others;
    for (const Element& element : tag) {
        if (element.data.empty() && !IsFixed(element.name))
            others.Add(element.name.c_str());
    }
    others.SortByText(true);
    for (int index = 0; index < others.Count; ++index) {
        for (const Element& element : tag) {
            if (element.name == others[index]->Text)
                AddTextRow(element.name, element.value);
        }
    }
    if (!ShowsOneFile())
        return;
    rows.push_back({Kind::Spacer, L"", L""});
    rows.push_back({Kind::Heading, L"Album Art", L""});
    for (int number = 1;; ++number) {
        const Text prefix = PicturePrefix + std::to_wstring(number);
        const auto found = std::find_if(tag.begin(), tag.end(), [&](const Element& element) {
            const Text rest = element.name.substr(std::min(prefix.size(), element.name.size()));
            return SameName(element.name.substr(0, prefix.size()), prefix) &&
                   (rest.empty() || rest[0] == L'_');
        });
        if (found == tag.end())
            break;
        const Text rest = found->name.substr(prefix.size());
        rows.push_back({Kind::Picture, L"Art " + std::to_wstring(number),
                        rest.empty() ? L"" : rest.substr(1)});
    }
    rows.push_back({Kind::AddPicture, L"", L""});
}

void PageModel::EndEdit() {
    if (typedRow_ >= 0)
        rows[static_cast<size_t>(typedRow_)].value = typed_;
    typedRow_ = -1;
}

void PageModel::OnSelected() {
    const auto showsContent = [](const Row& row) {
        return row.kind == Kind::Picture || (row.IsText() && !row.value.empty());
    };
    if (std::any_of(rows.begin(), rows.end(), showsContent)) {
        for (Row& row : rows)
            row.name = row.kind == Kind::Note ? L"" : row.name;
    }
    canRemove = false;
    if (selection >= 0) {
        const Row& row = rows[static_cast<size_t>(selection)];
        canRemove = row.IsText() || row.kind == Kind::Picture;
    }
}

void PageModel::Select(int row) {
    EndEdit();
    selection = row;
    OnSelected();
}

void PageModel::Type(int row, const Text& value) {
    Select(row);
    TypeNewValue(value);
}

void PageModel::Pick(int row, const Text& choice) {
    Select(row);
    rows[static_cast<size_t>(row)].value = choice;
}

void PageModel::TypeNewValue(const Text& value) {
    if (rows[static_cast<size_t>(selection)].kind == Kind::Text) {
        rows[static_cast<size_t>(selection)].value = value;
        return;
    }
    typedRow_ = selection;
    typed_ = value;
}

void PageModel::AddElement(const Text& name) {
    EndEdit();
    for (Row& row : rows)
        row.name = row.kind == Kind::Note ? L"" : row.name;
    const auto spacer = std::find_if(rows.begin(), rows.end(),
                                     [](const Row& row) { return row.kind == Kind::Spacer; });
    const auto place = static_cast<int>(spacer - rows.begin());
    rows.insert(spacer, {Kind::Text, Unnamed, Unnamed});
    Select(place);
    if (name.empty())
        DeleteRow(place);
    else
        rows[static_cast<size_t>(place)].name = name;
}

void PageModel::DeleteRow(int row) {
    EndEdit();
    rows.erase(rows.begin() + row);
    if (row < static_cast<int>(rows.size()))
        Select(row);
    else
        selection = -1;
}

void PageModel::Remove() {
    EndEdit();
    // A picture stays as it is.
    if (selection < 0 || rows[static_cast<size_t>(selection)].kind == Kind::Picture)
        return;
    const int row = selection;
    const Text name = rows[static_cast<size_t>(row)].name;
    if (ShowsOneFile()) {
        AddOnce(View().deleteNames, name);
        if (Element* element = Find(combined_.tag, name))
            element->value = Different;
    } else {
        const auto takeOff = [&](Set& set) {
            if (Element* element = Find(set.tag, name))
                set.tag.erase(set.tag.begin() + (element - set.tag.data()));
            AddOnce(set.deleteNames, name);
        };
        std::for_each(sets_.begin(), sets_.end(), takeOff);
        takeOff(combined_);
    }
    DeleteRow(row);
    if (!rows.empty())
        Select(std::min(row, static_cast<int>(rows.size()) - 1));
}

void PageModel::Clear() {
    EndEdit();
    if (ShowsOneFile()) {
        for (const Element& element : View().tag) {
            if (Element* known = Find(combined_.tag, element.name))
                known->value = Different;
        }
        View() = Set{{}, true, {}};
    } else {
        std::fill(sets_.begin(), sets_.end(), Set{{}, true, {}});
        combined_ = Set{{}, true, {}};
    }
    // The rows go from the last to the first, and the selection moves as each
    // of them does.
    bool deleted = false;
    for (int row = static_cast<int>(rows.size()) - 1; row >= 0; --row) {
        const Row& one = rows[static_cast<size_t>(row)];
        if (!one.IsText() && one.kind != Kind::Picture)
            continue;
        deleted = true;
        if (row == selection) {
            DeleteRow(row);
        } else {
            rows.erase(rows.begin() + row);
            selection -= row < selection;
        }
    }
    if (deleted)
        Build();
}

void PageModel::Store() {
    EndEdit();
    Tag& tag = View().tag;
    Tag pictures;
    for (const Element& element : tag) {
        if (!element.data.empty())
            pictures.push_back(element);
    }
    tag.clear();
    for (const Row& row : rows) {
        if (!row.IsText() || row.value.empty())
            continue;
        const Text value = Replaced(row.value, L"; ", L"\r");
        tag.push_back({row.name, value, L""});
        if (value.find(Different) != Text::npos)
            continue;
        if (ShowsOneFile()) {
            Element* known = Find(combined_.tag, row.name);
            if (!known)
                combined_.tag.push_back({row.name, Different, L""});
            else if (known->value != value)
                known->value = Different;
            continue;
        }
        for (Set& set : sets_) {
            if (Element* known = Find(set.tag, row.name))
                known->value = value;
            else
                set.tag.push_back({row.name, value, L""});
        }
    }
    for (const Element& picture : pictures) {
        if (!Find(tag, picture.name))
            tag.push_back(picture);
    }
}

void PageModel::ToggleView() {
    Store();
    single = !single;
    Build();
}

void PageModel::ShowFile(int number) {
    Store();
    file = number;
    Build();
}

void PageModel::Apply() {
    Store();
    for (size_t number = 0; number < files.size(); ++number)
        ApplyTo(static_cast<int>(number));
    combined_.deleteAll = false;
    combined_.deleteNames.clear();
}

void PageModel::ApplyTo(int number) {
    Set& set = sets_[static_cast<size_t>(number)];
    Tag& onDisk = files[static_cast<size_t>(number)].second;
    if (set.deleteAll)
        onDisk.clear();
    for (const Text& name : set.deleteNames)
        std::erase_if(onDisk, [&](const Element& element) { return SameName(element.name, name); });
    set.deleteAll = false;
    set.deleteNames.clear();

    Tag present = onDisk;
    TurnRatings(present, ShownRating);
    Tag changes;
    for (const Element& element : set.tag) {
        if (element.value.find(Different) != Text::npos)
            continue;
        const Element* known = Find(present, element.name);
        const bool isThere = known && (known->data.empty() ? known->value == element.value
                                                           : known->data == element.data);
        if (!isThere)
            changes.push_back(element);
    }
    if (changes.empty())
        return;
    TurnRatings(changes, StoredRating);
    Write(onDisk, changes);
    ++writes;
}
