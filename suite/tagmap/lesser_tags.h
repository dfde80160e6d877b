#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "suite/tagmap/tag_values.h"

// Files with tags of several kinds: one counts first, and the lesser ones are
// kept in step with it.
namespace tagmap {

bool HasPictures(clTagRecord& record);
// Adds the pictures of `source`.
void CopyPictures(clTagRecord& source, clTagRecord& record);

// Adds what a tag that counts less has beyond `record`. The pictures of two
// tags are mostly the same ones under other names, so they count as one.
void AddMissing(clTagRecord& record, clTagRecord& lesser);

template <typename Reader, typename Tag>
void AddMissingFrom(clTagRecord& record, Reader read, Tag& tag) {
    clTagRecord lesser;
    read(tag, lesser);
    AddMissing(record, lesser);
}

// What the tag that counts first has taken of a request. The lesser tags get no
// more, or they would fall out of step with it.
void TakeAccepted(clTagRecord& changes, const Refusals& refused, clTagRecord& accepted);

// Each tag has an order of pictures of its own. These turn the numbers of a
// request, which count those of `first`, into the numbers of `lesser`: a picture
// is known by its bytes, or else by its description, and one that `lesser` does
// not have is left out; one behind all others is so there too. Both records are
// the tags before the request. Where `first` has no pictures, a file shows
// those of `lesser`, and the numbers are right as they are.
void RenumberPictures(clTagRecord& first, clTagRecord& lesser, clTagRecord& changes,
                      clTagRecord& renumbered);
void RenumberPictures(clTagRecord& first, clTagRecord& lesser, const NStringList& names,
                      NStringList& renumbered);

// Does a request to a lesser tag, whose functions these are. `changes` is what
// the tag that counts first has taken.
template <typename Reader, typename Setter, typename Tag>
void SetLesser(clTagRecord& first, clTagRecord& changes, Reader read, Setter set, Tag& tag) {
    clTagRecord lesser;
    clTagRecord renumbered;
    Refusals refused;
    read(tag, lesser);
    RenumberPictures(first, lesser, changes, renumbered);
    set(tag, renumbered, refused);
}

template <typename Reader, typename Deleter, typename Tag>
void DeleteFromLesser(clTagRecord& first, const NStringList& names, Reader read, Deleter remove,
                      Tag& tag) {
    clTagRecord lesser;
    NStringList renumbered;
    read(tag, lesser);
    RenumberPictures(first, lesser, names, renumbered);
    // A list that became empty would stand for everything.
    if (names.Count == 0 || renumbered.Count > 0)
        remove(tag, renumbered);
}

// Before pictures are set: a file whose first tag has none shows those of a
// lesser one, so they are given to the first tag too, by `set`, and keep their
// numbers there. `first` is the tag that counts first as a record.
template <typename Reader, typename Setter, typename Tag>
void TakeOverPictures(clTagRecord& first, clTagRecord& changes, Reader read, Tag& lesserTag,
                      Setter set) {
    if (!HasPictures(changes) || HasPictures(first))
        return;
    clTagRecord lesser;
    read(lesserTag, lesser);
    clTagRecord pictures;
    CopyPictures(lesser, pictures);
    set(pictures);
    CopyPictures(lesser, first);
}

// Nothing is to be set, so that no tag has to be made.
bool AsksRemovalAlone(clTagRecord& changes);

// Before a tag that counts first is made for a file that has lesser ones alone:
// it gets, by `set`, all that `read` tells of the file. Programs that know the new
// tag look at no other.
template <typename Reader, typename Setter>
void FillNewTag(clTagRecord& changes, Reader read, Setter set) {
    if (AsksRemovalAlone(changes))
        return;
    clTagRecord shown;
    Refusals none;
    read(shown);
    set(shown, none);
}

} // namespace tagmap
