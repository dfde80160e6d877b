#include "suite/tagmap/lesser_tags.h"

#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/pictures.h"

#include <algorithm>
#include <set>
#include <string>

namespace tagmap {

namespace {

// Numbers from here on are reached by no tag; nine digits are the most.
constexpr int BehindAll = 900'000'000;
constexpr int LastBehindAll = 999'999'999;

// A picture's place in a tag; 0 is none.
struct Place {
    int Number = 0;
    NString Description;
};

Place PlaceOf(const clTagElement& element) {
    Place place;
    if (!ParseArtName(element.Name, place.Number, place.Description))
        place.Number = 0;
    return place;
}

const clTagElement* PictureAt(clTagRecord& record, int number) {
    for (int index = 0; index < record.Count(); ++index) {
        const clTagElement* element = record[index];
        if (PlaceOf(*element).Number == number)
            return element;
    }
    return nullptr;
}

template <typename Question>
int NumberWhere(clTagRecord& record, Question isRight) {
    for (int index = 0; index < record.Count(); ++index) {
        const clTagElement& element = *record[index];
        const Place place = PlaceOf(element);
        if (place.Number > 0 && isRight(element, place))
            return place.Number;
    }
    return 0;
}

// The number that a picture of `first` has in `lesser`; 0 if it isn't there.
int NumberInLesser(clTagRecord& lesser, const clTagElement& picture) {
    const NString description = PlaceOf(picture).Description;
    const int same = NumberWhere(lesser, [&](const clTagElement& other, const Place& place) {
        return other.Data.Equals(picture.Data) &&
               place.Description.Compare(description.c_str(), 0, true) == 0;
    });
    if (same > 0)
        return same;
    const int sameBytes = NumberWhere(lesser, [&](const clTagElement& other, const Place&) {
        return other.Data.Equals(picture.Data);
    });
    if (sameBytes > 0)
        return sameBytes;
    return NumberWhere(lesser, [&](const clTagElement&, const Place& place) {
        return !description.IsEmpty() &&
               place.Description.Compare(description.c_str(), 0, true) == 0;
    });
}

// The name of a request's picture in the numbers of `lesser`; empty if the
// picture isn't there.
NString NameInLesser(clTagRecord& first, clTagRecord& lesser, const NString& name) {
    Place place;
    if (!HasPictures(first) || !ParseArtName(name, place.Number, place.Description))
        return name;
    const clTagElement* picture = PictureAt(first, place.Number);
    // Several of them keep their order.
    const int number = picture
                           ? NumberInLesser(lesser, *picture)
                           : std::min(BehindAll + std::min(place.Number, BehindAll), LastBehindAll);
    return number > 0 ? FormatArtName(number, place.Description) : NString();
}

} // namespace

bool HasPictures(clTagRecord& record) {
    for (int index = 0; index < record.Count(); ++index) {
        if (IsArtName(record[index]->Name))
            return true;
    }
    return false;
}

void CopyPictures(clTagRecord& source, clTagRecord& record) {
    for (int index = 0; index < source.Count(); ++index) {
        if (IsArtName(source[index]->Name))
            record.AddCopy(*source[index]);
    }
}

void AddMissing(clTagRecord& record, clTagRecord& lesser) {
    const bool hasPictures = HasPictures(record);
    std::set<std::wstring> known;
    for (int index = 0; index < record.Count(); ++index)
        known.insert(NameKey(record[index]->Name));
    for (int index = 0; index < lesser.Count(); ++index) {
        const clTagElement& element = *lesser[index];
        const bool isOther = !hasPictures || !IsArtName(element.Name);
        if (isOther && known.insert(NameKey(element.Name)).second)
            record.AddCopy(element);
    }
}

void TakeAccepted(clTagRecord& changes, const Refusals& refused, clTagRecord& accepted) {
    for (int index = 0; index < changes.Count(); ++index) {
        if (!refused.Contains(changes[index]->Name))
            accepted.AddCopy(*changes[index]);
    }
}

void RenumberPictures(clTagRecord& first, clTagRecord& lesser, clTagRecord& changes,
                      clTagRecord& renumbered) {
    for (int index = 0; index < changes.Count(); ++index) {
        const NString name = NameInLesser(first, lesser, changes[index]->Name);
        if (name.IsEmpty())
            continue;
        renumbered.AddCopy(*changes[index]);
        renumbered.Current()->Name = name;
    }
}

void RenumberPictures(clTagRecord& first, clTagRecord& lesser, const NStringList& names,
                      NStringList& renumbered) {
    for (int index = 0; index < names.Count; ++index) {
        const NString name = NameInLesser(first, lesser, *names[index]);
        if (!name.IsEmpty())
            renumbered.Add(name);
    }
}

bool AsksRemovalAlone(clTagRecord& changes) {
    for (int index = 0; index < changes.Count(); ++index) {
        if (!AsksRemoval(*changes[index]))
            return false;
    }
    return true;
}

} // namespace tagmap
