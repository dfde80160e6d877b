#include "suite/tagmap/lesser_tags.h"

#include "suite/tagmap/pictures.h"

namespace tagmap {

bool HasPictures(clTagRecord& record) {
    for (int index = 0; index < record.Count(); ++index) {
        if (IsArtName(record[index]->Name))
            return true;
    }
    return false;
}

void AddMissing(clTagRecord& record, clTagRecord& lesser) {
    if (HasPictures(record)) {
        for (int index = lesser.Count() - 1; index >= 0; --index) {
            if (IsArtName(lesser[index]->Name))
                lesser.RemoveAt(index);
        }
    }
    record.Merge(lesser, false);
}

void TakeAccepted(clTagRecord& changes, const Refusals& refused, clTagRecord& accepted) {
    for (int index = 0; index < changes.Count(); ++index) {
        if (!refused.Contains(changes[index]->Name))
            accepted.AddCopy(*changes[index]);
    }
}

} // namespace tagmap
