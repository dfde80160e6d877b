#include "suite/decoder/audio_reading.h"

#include "suite/decoder/contents.h"
#include "suite/decoder/format_facts.h"
#include "suite/tagmap/format_tags.h"

namespace decoder {

namespace {
void AddKnown(clTagRecord& record, const wchar_t* name, const NString& value) {
    if (!value.IsEmpty())
        record.Add(name, value.c_str());
}

// What the audio itself says counts before what its tag says.
NString EncoderOf(AudioReading& reading) {
    if (!reading.Facts.Encoder.IsEmpty())
        return reading.Facts.Encoder;
    const clTagElement* tagged = reading.Tags.Find(L"encoder");
    return tagged ? tagged->Value : NString();
}

void FillTechInfo(AudioFile& file, AudioReading& reading) {
    clTagRecord& tech = reading.TechInfo;
    AddKnown(tech, L"encoder", EncoderOf(reading));
    AddKnown(tech, L"encoder settings", reading.Facts.EncoderSettings);
    AddKnown(tech, L"audio quality", reading.Facts.Quality);
    AddKnown(tech, L"contains", ContentsOf(file, reading.Tags));
    AddKnown(tech, L"channel mapping", reading.Facts.ChannelMapping);
}
} // namespace

bool ReadAudio(const wchar_t* path, AudioReading& reading) {
    AudioFile file(path, tagmap::FileStream::Mode::Read, true);
    const std::unique_ptr<tagmap::FormatTags> tags = tagmap::TagsOf(file);
    if (!tags || !ReadFacts(file, reading.Facts))
        return false;
    tags->Read(reading.Tags);
    FillTechInfo(file, reading);
    reading.FileSize = file.Stream().length();
    return !file.Stream().Failed();
}

} // namespace decoder
