#include "codec/tag_exchange.h"
#include "tagpage/combined_set.h"
#include "tagpage/id_tag_page.h"
#include "tagpage/rating_forms.h"

namespace {
// False if there is nothing in the reply. A tag that is taken in part, since
// memory came to its end, would be written back like that: it is none.
bool TakeTags(const NBuffer& reply, clTagRecord& tags) {
    if (reply.Size == 0)
        return false;
    try {
        tags.Deserialise(reply.Data, static_cast<int>(reply.Size));
        RatingsToDisplay(tags);
        tags.RemoveSpecial(clTagRecord::KeepAlbumArt);
        return true;
    } catch (...) {
        tags.Clear();
        throw;
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
        // 3.3.
        NBuffer reply;
        RunGetAudioInf(set.Name.Text, reply);
        // 3.4.
        const bool replied = TakeTags(reply, set.Tags);
        // 3.5.
        MergeIntoCombined(index, set.Tags, replied, combined);
    }
}
