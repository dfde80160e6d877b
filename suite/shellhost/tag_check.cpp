#include "suite/shellhost/tag_check.h"

#include "suite/shellhost/element_argument.h"

#include <set>

namespace {
bool SameParts(const NString& first, const NString& second) {
    NStringList a;
    NStringList b;
    a.SplitLines(first.Text);
    b.SplitLines(second.Text);
    a.SortByText(false);
    b.SortByText(false);
    return a.Join(L"\r") == b.Join(L"\r");
}

bool SameValue(const NString& wanted, const NString& found) {
    NString joined(wanted);
    joined.Replace(L"\r", L"; ");
    return SameParts(wanted, found) || found == joined;
}

// Whether one element of the kind of `wanted`, a picture or not, has its bytes
// and, unless it is a picture, its name.
bool HoldsBytes(clTagRecord& tag, const clTagElement& wanted) {
    bool isPicture = IsPictureName(wanted.Name);
    for (int index = 0; index < tag.Count(); ++index) {
        const clTagElement* element = tag[index];
        bool sameKind = isPicture ? IsPictureName(element->Name)
                                  : element->Name.Compare(wanted.Name, 0, true) == 0;
        if (sameKind && element->Data.Equals(wanted.Data))
            return true;
    }
    return false;
}

int CountPictures(clTagRecord& tag) {
    int count = 0;
    for (int index = 0; index < tag.Count(); ++index)
        count += IsPictureName(tag[index]->Name);
    return count;
}

// How many pictures of `tag` the names stand for. A number counts once.
int CountNamedPictures(clTagRecord& tag, const NStringList& names) {
    std::set<int> named;
    for (int index = 0; index < names.Count; ++index)
        named.insert(PictureNumber(*names[index]));
    int count = 0;
    for (int index = 0; index < tag.Count(); ++index) {
        const NString& name = tag[index]->Name;
        count += IsPictureName(name) && named.count(PictureNumber(name));
    }
    return count;
}
} // namespace

bool HoldsElement(clTagRecord& tag, const clTagElement& wanted) {
    if (wanted.Data.Size > 0)
        return HoldsBytes(tag, wanted);
    const clTagElement* found = tag.Find(wanted.Name.Text);
    if (wanted.Value.IsEmpty())
        return !found;
    return found && SameValue(wanted.Value, found->Value);
}

void FindLeft(clTagRecord& before, clTagRecord& after, const NStringList& names,
              NStringList& left) {
    int wentAtLeast = CountNamedPictures(before, names);
    bool picturesWent = CountPictures(before) - CountPictures(after) >= wentAtLeast;
    for (int index = 0; index < names.Count; ++index) {
        const NString& name = *names[index];
        if (IsPictureName(name) ? !picturesWent : after.Find(name.Text) != nullptr)
            left.Add(name);
    }
}
