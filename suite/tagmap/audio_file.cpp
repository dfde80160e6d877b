#include "suite/tagmap/audio_file.h"

#include "suite/tagmap/aiff_text_chunks.h"
#include "suite/tagmap/mp4_bounds.h"
#include "suite/tagmap/mpeg_frames.h"
#include "suite/tagmap/ogg_flac_bounds.h"
#include "suite/tagmap/wav_file.h"

#include <apefile.h>
#include <asffile.h>
#include <flacfile.h>
#include <id3v2framefactory.h>
#include <itfile.h>
#include <modfile.h>
#include <mp4file.h>
#include <mpcfile.h>
#include <mpegfile.h>
#include <oggflacfile.h>
#include <opusfile.h>
#include <s3mfile.h>
#include <speexfile.h>
#include <trueaudiofile.h>
#include <vorbisfile.h>
#include <wavpackfile.h>
#include <xmfile.h>

#include <string_view>

using namespace std::literals;

namespace tagmap {

namespace {
constexpr long Id3v2HeaderSize = 10;
constexpr unsigned char Id3v2HasFooter = 0x10;

bool StartsWith(const TagLib::ByteVector& bytes, std::string_view mark, unsigned offset = 0) {
    return bytes.size() >= offset + mark.size() &&
           std::string_view(bytes.data() + offset, mark.size()) == mark;
}

TagLib::ByteVector BytesAt(FileStream& stream, long offset, unsigned count) {
    stream.seek(offset, TagLib::IOStream::Beginning);
    return stream.readBlock(count);
}

// Where the audio begins behind the ID3v2 tags that may stand in front of it.
long BehindId3v2(FileStream& stream) {
    long offset = 0;
    for (;;) {
        const TagLib::ByteVector header = BytesAt(stream, offset, Id3v2HeaderSize);
        if (header.size() < static_cast<unsigned>(Id3v2HeaderSize) || !StartsWith(header, "ID3"sv))
            return offset;
        long size = 0;
        for (unsigned index = 6; index < 10; ++index)
            size = size << 7 | (static_cast<unsigned char>(header[index]) & 0x7F);
        size += Id3v2HeaderSize;
        if (static_cast<unsigned char>(header[5]) & Id3v2HasFooter)
            size += Id3v2HeaderSize;
        if (size > stream.length() - offset)
            return offset;
        offset += size;
    }
}

struct Mark {
    std::string_view Bytes;
    unsigned Offset;
    Format Kind;
};

constexpr Mark Marks[] = {
    {"fLaC"sv, 0, Format::Flac},
    {"ftyp"sv, 4, Format::Mp4},
    {"\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"sv, 0, Format::Asf},
    {"MAC "sv, 0, Format::MonkeysAudio},
    {"MPCK"sv, 0, Format::Musepack},
    {"MP+"sv, 0, Format::Musepack},
    {"wvpk"sv, 0, Format::WavPack},
    {"TTA1"sv, 0, Format::TrueAudio},
    {"IMPM"sv, 0, Format::ImpulseTracker},
    {"Extended Module: "sv, 0, Format::FastTracker},
    {"SCRM"sv, 44, Format::ScreamTracker},
    {"M.K."sv, 1080, Format::Module},
    {"M!K!"sv, 1080, Format::Module},
    {"4CHN"sv, 1080, Format::Module},
    {"6CHN"sv, 1080, Format::Module},
    {"8CHN"sv, 1080, Format::Module},
    {"FLT4"sv, 1080, Format::Module},
    {"FLT8"sv, 1080, Format::Module},
};

// What the first packet of an Ogg stream begins with (RFC 3533, section 6: a
// page's header of 27 bytes and its segment table stand before it).
Format FormatOfOgg(const TagLib::ByteVector& page) {
    constexpr unsigned segmentCountAt = 26;
    if (page.size() <= segmentCountAt)
        return Format::Unknown;
    const unsigned packet = segmentCountAt + 1 + static_cast<unsigned char>(page[segmentCountAt]);
    if (StartsWith(page, "\x01vorbis"sv, packet))
        return Format::OggVorbis;
    if (StartsWith(page, "OpusHead"sv, packet))
        return Format::OggOpus;
    if (StartsWith(page, "Speex   "sv, packet))
        return Format::OggSpeex;
    if (StartsWith(page,
                   "\x7F"
                   "FLAC"sv,
                   packet))
        return Format::OggFlac;
    return Format::Unknown;
}

Format FormatOfMarks(const TagLib::ByteVector& head) {
    if (StartsWith(head, "OggS"sv))
        return FormatOfOgg(head);
    if (StartsWith(head, "RIFF"sv))
        return StartsWith(head, "WAVE"sv, 8) ? Format::Wav : Format::Unknown;
    if (StartsWith(head, "FORM"sv))
        return StartsWith(head, "AIFF"sv, 8) || StartsWith(head, "AIFC"sv, 8) ? Format::Aiff
                                                                              : Format::Unknown;
    for (const Mark& mark : Marks) {
        if (StartsWith(head, mark.Bytes, mark.Offset))
            return mark.Kind;
    }
    return Format::Unknown;
}

std::unique_ptr<TagLib::File> OpenMp4(FileStream& stream, bool readAudio) {
    if (!Mp4BoxesAreBounded(stream))
        return nullptr;
    stream.seek(0, TagLib::IOStream::Beginning);
    return std::make_unique<TagLib::MP4::File>(&stream, readAudio);
}

std::unique_ptr<TagLib::File> OpenOggFlac(FileStream& stream, bool readAudio) {
    if (!OggFlacBlocksAreBounded(stream))
        return nullptr;
    stream.seek(0, TagLib::IOStream::Beginning);
    return std::make_unique<TagLib::Ogg::FLAC::File>(&stream, readAudio);
}

std::unique_ptr<TagLib::File> FileFor(Format format, FileStream& stream, bool readAudio) {
    TagLib::ID3v2::FrameFactory* frames = TagLib::ID3v2::FrameFactory::instance();
    switch (format) {
    case Format::Mpeg:
        return std::make_unique<TagLib::MPEG::File>(&stream, frames, readAudio);
    case Format::Flac:
        return std::make_unique<TagLib::FLAC::File>(&stream, frames, readAudio);
    case Format::OggVorbis:
        return std::make_unique<TagLib::Vorbis::File>(&stream, readAudio);
    case Format::OggOpus:
        return std::make_unique<TagLib::Ogg::Opus::File>(&stream, readAudio);
    case Format::OggSpeex:
        return std::make_unique<TagLib::Ogg::Speex::File>(&stream, readAudio);
    case Format::OggFlac:
        return OpenOggFlac(stream, readAudio);
    case Format::Mp4:
        return OpenMp4(stream, readAudio);
    case Format::Asf:
        return std::make_unique<TagLib::ASF::File>(&stream, readAudio);
    case Format::Wav:
        return std::make_unique<WavFile>(&stream, readAudio);
    case Format::Aiff:
        return std::make_unique<AiffFile>(&stream, readAudio);
    case Format::MonkeysAudio:
        return std::make_unique<TagLib::APE::File>(&stream, readAudio);
    case Format::WavPack:
        return std::make_unique<TagLib::WavPack::File>(&stream, readAudio);
    case Format::Musepack:
        return std::make_unique<TagLib::MPC::File>(&stream, readAudio);
    case Format::TrueAudio:
        return std::make_unique<TagLib::TrueAudio::File>(&stream, readAudio);
    case Format::ImpulseTracker:
        return std::make_unique<TagLib::IT::File>(&stream, readAudio);
    case Format::ScreamTracker:
        return std::make_unique<TagLib::S3M::File>(&stream, readAudio);
    case Format::FastTracker:
        return std::make_unique<TagLib::XM::File>(&stream, readAudio);
    case Format::Module:
        return std::make_unique<TagLib::Mod::File>(&stream, readAudio);
    case Format::Unknown:
        break;
    }
    return nullptr;
}
} // namespace

Format FormatOf(FileStream& stream) {
    constexpr unsigned headSize = 2048;
    if (!stream.isOpen())
        return Format::Unknown;
    const long audioAt = BehindId3v2(stream);
    const Format byMark = FormatOfMarks(BytesAt(stream, audioAt, headSize));
    if (byMark != Format::Unknown)
        return byMark;
    return HoldsMpegFrames(stream, audioAt) ? Format::Mpeg : Format::Unknown;
}

bool HasMp4Fragments(FileStream& stream) {
    // The top level of boxes (ISO/IEC 14496-12, section 4.2).
    constexpr unsigned longHeaderSize = 16;
    int64_t offset = 0;
    while (offset + 8 <= stream.length()) {
        const TagLib::ByteVector box = BytesAt(stream, static_cast<long>(offset), longHeaderSize);
        if (StartsWith(box, "moof"sv, 4))
            return true;
        int64_t size = box.toUInt(0U);
        if (size == 1 && box.size() == longHeaderSize)
            size = box.toLongLong(8U);
        // 0 reaches to the end of the file; anything else below 8 is none.
        if (size < 8 || size > stream.length() - offset)
            return false;
        offset += size;
    }
    return false;
}

AudioFile::AudioFile(const wchar_t* path, FileStream::Mode mode, bool readAudio,
                     FileStream::DiskChanged diskChanged)
    : stream_(path, mode, diskChanged), format_(FormatOf(stream_)) {
    stream_.seek(0, TagLib::IOStream::Beginning);
    file_ = FileFor(format_, stream_, readAudio);
}

} // namespace tagmap
