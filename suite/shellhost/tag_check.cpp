#include "suite/shellhost/tag_check.h"

#include "suite/shellhost/element_argument.h"

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

// The elements that hold bytes under a name of the same kind.
bool HoldsBytes(clTagRecord& tag, const clTagElement& wanted) {
    for (int index = 0; index < tag.Count(); ++index) {
        const clTagElement* element = tag[index];
        if (IsBinaryName(element->Name) && element->Data.Equals(wanted.Data))
            return true;
    }
    return false;
}

int CountPictures(clTagRecord& tag) {
    constexpr wchar_t Prefix[] = L"_albumart_";
    constexpr int PrefixLength = 10;
    int count = 0;
    for (int index = 0; index < tag.Count(); ++index)
        count += tag[index]->Name.Compare(Prefix, PrefixLength, true) == 0;
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

bool IsGone(clTagRecord& before, clTagRecord& after, const NString& name) {
    if (!before.Find(name.Text) || !IsBinaryName(name))
        return !after.Find(name.Text);
    return CountPictures(after) < CountPictures(before) || !after.Find(name.Text);
}
