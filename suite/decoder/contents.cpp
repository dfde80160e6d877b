#include "suite/decoder/contents.h"

#include "suite/decoder/audio_facts.h"
#include "suite/tagmap/aiff_text_chunks.h"
#include "suite/tagmap/pictures.h"
#include "suite/tagmap/wav_file.h"

#include <apefile.h>
#include <apefooter.h>
#include <apetag.h>
#include <asffile.h>
#include <flacfile.h>
#include <id3v2header.h>
#include <id3v2tag.h>
#include <mp4file.h>
#include <mpcfile.h>
#include <mpegfile.h>
#include <oggflacfile.h>
#include <trueaudiofile.h>
#include <wavpackfile.h>

namespace decoder {

using tagmap::AudioFile;
using tagmap::Format;

namespace {
constexpr wchar_t Id3v1Tag[] = L"ID3v1 tag";
constexpr wchar_t VorbisComment[] = L"Vorbis comment";

// A text of parts with ", " between them.
class Parts {
public:
    void Add(const NString& part) {
        if (!text_.IsEmpty())
            text_.Append(L", ");
        text_.Append(part);
    }
    void AddIf(bool isThere, const wchar_t* part) {
        if (isThere)
            Add(part);
    }
    void AddId3v2(bool isThere, const TagLib::ID3v2::Tag* tag) {
        if (isThere && tag && tag->header())
            Add(Text("ID3v2.%u tag", tag->header()->majorVersion()));
    }
    void AddApe(bool isThere, const TagLib::APE::Tag* tag) {
        constexpr unsigned firstOfVersion2 = 2000;
        if (isThere && tag && tag->footer())
            Add(tag->footer()->version() >= firstOfVersion2 ? L"APEv2 tag" : L"APEv1 tag");
    }
    const NString& Whole() const { return text_; }

private:
    NString text_;
};

void AddMpeg(TagLib::MPEG::File& file, Parts& parts) {
    parts.AddId3v2(file.hasID3v2Tag(), file.ID3v2Tag());
    parts.AddApe(file.hasAPETag(), file.APETag());
    parts.AddIf(file.hasID3v1Tag(), Id3v1Tag);
}

void AddFlac(TagLib::FLAC::File& file, Parts& parts) {
    parts.AddIf(file.hasXiphComment(), VorbisComment);
    parts.AddId3v2(file.hasID3v2Tag(), file.ID3v2Tag());
    parts.AddIf(file.hasID3v1Tag(), Id3v1Tag);
}

void AddWav(tagmap::WavFile& file, Parts& parts) {
    parts.AddId3v2(file.hasID3v2Tag(), file.ID3v2Tag());
    parts.AddIf(file.hasInfoTag(), L"INFO list");
}

void AddAiff(tagmap::AiffFile& file, Parts& parts) {
    parts.AddId3v2(file.hasID3v2Tag(), file.tag());
    for (unsigned index = 0; index < file.chunkCount(); ++index) {
        const TagLib::ByteVector name = file.chunkName(index);
        if (name == "NAME" || name == "AUTH" || name == "(c) " || name == "ANNO")
            return parts.Add(L"AIFF text chunks");
    }
}

template <typename File>
void AddApeFamily(File& file, Parts& parts) {
    parts.AddApe(file.hasAPETag(), file.APETag());
    parts.AddIf(file.hasID3v1Tag(), Id3v1Tag);
}

void AddTrueAudio(TagLib::TrueAudio::File& file, Parts& parts) {
    parts.AddId3v2(file.hasID3v2Tag(), file.ID3v2Tag());
    parts.AddIf(file.hasID3v1Tag(), Id3v1Tag);
}

void AddTags(AudioFile& file, Parts& parts) {
    switch (file.Kind()) {
    case Format::Mpeg:
        return AddMpeg(file.As<TagLib::MPEG::File>(), parts);
    case Format::Flac:
        return AddFlac(file.As<TagLib::FLAC::File>(), parts);
    case Format::OggVorbis:
    case Format::OggOpus:
    case Format::OggSpeex:
        return parts.Add(VorbisComment); // without one it's no such stream
    case Format::OggFlac:
        return parts.AddIf(file.As<TagLib::Ogg::FLAC::File>().hasXiphComment(), VorbisComment);
    case Format::Mp4:
        return parts.AddIf(!file.As<TagLib::MP4::File>().tag()->isEmpty(), L"MP4 tag");
    case Format::Asf:
        return parts.AddIf(!file.As<TagLib::ASF::File>().tag()->isEmpty(), L"ASF tag");
    case Format::Wav:
        return AddWav(file.As<tagmap::WavFile>(), parts);
    case Format::Aiff:
        return AddAiff(file.As<tagmap::AiffFile>(), parts);
    case Format::MonkeysAudio:
        return AddApeFamily(file.As<TagLib::APE::File>(), parts);
    case Format::WavPack:
        return AddApeFamily(file.As<TagLib::WavPack::File>(), parts);
    case Format::Musepack:
        return AddApeFamily(file.As<TagLib::MPC::File>(), parts);
    case Format::TrueAudio:
        return AddTrueAudio(file.As<TagLib::TrueAudio::File>(), parts);
    default:
        return; // modules have titles and texts, and no tag
    }
}
} // namespace

NString ContentsOf(AudioFile& file, clTagRecord& tags) {
    Parts parts;
    AddTags(file, parts);
    unsigned pictures = 0;
    for (int index = 0; index < tags.Count(); ++index)
        pictures += tagmap::IsArtName(tags[index]->Name) ? 1 : 0;
    if (pictures > 0)
        parts.Add(Text("%u %s", pictures, pictures == 1 ? "picture" : "pictures"));
    return parts.Whole();
}

} // namespace decoder
