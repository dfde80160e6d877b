#pragma once

#include "codec/tag_record.h"
#include "suite/tagmap/tag_values.h"

// Files with tags of several kinds: one counts first, and the lesser ones are
// kept in step with it.
namespace tagmap {

bool HasPictures(clTagRecord& record);

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

} // namespace tagmap
