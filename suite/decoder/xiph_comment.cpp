#include "suite/decoder/xiph_comment.h"

#include "suite/decoder/channel_names.h"
#include "suite/tagmap/tag_values.h"

#include <cstdlib>

namespace decoder {

namespace {
// The first one of that name, or empty.
TagLib::String CommentOf(const TagLib::Ogg::XiphComment& comment, const char* name) {
    const TagLib::Ogg::FieldListMap& fields = comment.fieldListMap();
    const auto found = fields.find(name);
    return found == fields.end() || found->second.isEmpty() ? TagLib::String()
                                                            : found->second.front();
}
} // namespace

void TakeXiphEncoder(const TagLib::Ogg::XiphComment& comment, AudioFacts& facts) {
    const TagLib::String encoder = CommentOf(comment, "ENCODER");
    facts.Encoder = tagmap::ToNString(encoder.isEmpty() ? comment.vendorID() : encoder);
    for (const char* name : {"ENCODER_OPTIONS", "ENCODERSETTINGS"}) {
        const TagLib::String settings = CommentOf(comment, name);
        if (!settings.isEmpty())
            facts.EncoderSettings = tagmap::ToNString(settings);
    }
}

void TakeFlacComment(const TagLib::Ogg::XiphComment& comment, AudioFacts& facts) {
    TakeXiphEncoder(comment, facts);
    const std::string text = CommentOf(comment, "WAVEFORMATEXTENSIBLE_CHANNEL_MASK").to8Bit(false);
    const auto mask = static_cast<uint32_t>(std::strtoul(text.c_str(), nullptr, 0));
    if (mask == 0)
        return;
    const NString names = ChannelsOfMask(mask, facts.Channels);
    if (!names.IsEmpty())
        facts.ChannelMapping = names;
}

} // namespace decoder
