// Tracker modules: notes for a player, which chooses the sample rate. They have
// a number of tracks and no length of their own.
#include "suite/decoder/format_facts.h"
#include "suite/tagmap/tag_values.h"

#include <audioproperties.h>
#include <modtag.h>

namespace decoder {

void ModuleFacts(AudioFile& file, AudioFacts& facts) {
    facts.Channels = static_cast<uint32_t>(file.File().audioProperties()->channels());
    if (const auto* tag = dynamic_cast<TagLib::Mod::Tag*>(file.File().tag()))
        facts.Encoder = tagmap::ToNString(tag->trackerName().stripWhiteSpace());
}

} // namespace decoder
