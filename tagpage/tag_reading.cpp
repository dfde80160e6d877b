#include "codec/tag_exchange.h"
#include "tagpage/combined_set.h"
#include "tagpage/id_tag_page.h"
#include "tagpage/rating_forms.h"

namespace {
// False if there is nothing in the reply.
bool TakeTags(const NBuffer& reply, clTagRecord& tags) {
    if (reply.Size == 0)
        return false;
    tags.Deserialise(reply.Data, static_cast<int>(reply.Size));
    RatingsToDisplay(tags);
    tags.RemoveSpecial(clTagRecord::KeepAlbumArt);
    return true;
}

// The same of a file. A tag that is taken in part, since memory came to its end,
// would be written back like that: it is none.
bool ReadTags(const NString& path, clTagRecord& tags) {
    try {
        // 3.3.
        NBuffer reply;
        RunGetAudioInf(path.Text, reply);
        // 3.4.
        return TakeTags(reply, tags);
    } catch (...) {
        tags.Clear();
        return false;
    }
}
} // namespace

void clIDTagPage::ReadFiles(NEvent& stop) {
    // 1.
    TagSets.Clear();
    // 2.
    clTagRecord& combined = CombinedSet().Tags;
    // 3.
    for (int index = 0; index < Files.Count; ++index) {
        // 3.1.
        if (stop.IsSet())
            return;
        // 3.2. A path that was selected twice has one set: two would write over
        // each other.
        clTagSet& set = SetNamed(Files[index]->Text);
        // 3.3. and 3.4.
        const bool replied = ReadTags(set.Name, set.Tags);
        // 3.5.
        MergeIntoCombined(index, set.Tags, replied, combined);
    }
}
