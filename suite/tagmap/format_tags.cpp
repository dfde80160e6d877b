#include "suite/tagmap/format_tags.h"

#include "suite/tagmap/aiff_text_chunks.h"
#include "suite/tagmap/ape_tags.h"
#include "suite/tagmap/asf_tags.h"
#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/flac_pictures.h"
#include "suite/tagmap/id3v2_tags.h"
#include "suite/tagmap/mp4_tags.h"
#include "suite/tagmap/ogg_flac_pictures.h"
#include "suite/tagmap/pictures.h"
#include "suite/tagmap/riff_info_tags.h"
#include "suite/tagmap/vorbis_tags.h"

#include <apefile.h>
#include <asffile.h>
#include <flacfile.h>
#include <id3v2header.h>
#include <modfilebase.h>
#include <mp4file.h>
#include <mpcfile.h>
#include <mpegfile.h>
#include <oggflacfile.h>
#include <opusfile.h>
#include <speexfile.h>
#include <trueaudiofile.h>
#include <vorbisfile.h>
#include <wavfile.h>
#include <wavpackfile.h>

namespace tagmap {

namespace {
constexpr int OldVersion = 3;
constexpr int NewVersion = 4;
constexpr unsigned LargestFlacBlock = 0xFFFFFF; // bytes

TagLib::ID3v2::Version LibraryVersion(int version) {
    return version == OldVersion ? TagLib::ID3v2::v3 : TagLib::ID3v2::v4;
}

bool HasPictures(clTagRecord& record) {
    for (int index = 0; index < record.Count(); ++index) {
        if (IsArtName(record[index]->Name))
            return true;
    }
    return false;
}

// Adds what a tag that counts less has beyond `record`. The pictures of two
// tags are mostly the same ones under other names, so they count as one.
void AddMissing(clTagRecord& record, clTagRecord& lesser) {
    if (HasPictures(record)) {
        for (int index = lesser.Count() - 1; index >= 0; --index) {
            if (IsArtName(lesser[index]->Name))
                lesser.RemoveAt(index);
        }
    }
    record.Merge(lesser, false);
}

// What the tag that counts first has taken of a request. The lesser tags get no
// more, or they would fall out of step with it.
void TakeAccepted(clTagRecord& changes, const Refusals& refused, clTagRecord& accepted) {
    for (int index = 0; index < changes.Count(); ++index) {
        if (!refused.Contains(changes[index]->Name))
            accepted.AddCopy(*changes[index]);
    }
}

template <typename Reader, typename Tag>
void AddMissingFrom(clTagRecord& record, Reader read, Tag& tag) {
    clTagRecord lesser;
    read(tag, lesser);
    AddMissing(record, lesser);
}

// MP3: ID3v2 counts first and is made when there is none; APE and ID3v1 are
// kept in step where the file has them.
class MpegTags : public FormatTags {
public:
    explicit MpegTags(TagLib::MPEG::File& file)
        : file_(file),
          version_(Id3v2VersionToWrite(file.hasID3v2Tag() ? file.ID3v2Tag() : nullptr)) {}

    // A damaged tag that claims more than the file would take the audio with it.
    bool CanBeWritten() override {
        if (!file_.hasID3v2Tag())
            return true;
        const TagLib::ID3v2::Tag& tag = *file_.ID3v2Tag();
        return Id3v2SurvivesSave(tag) &&
               tag.header()->completeTagSize() <= static_cast<unsigned long>(file_.length());
    }

    void Read(clTagRecord& record) override {
        if (file_.hasID3v2Tag())
            ReadId3v2(*file_.ID3v2Tag(), record);
        if (file_.hasAPETag())
            AddMissingFrom(record, ReadApe, *file_.APETag());
        if (file_.hasID3v1Tag())
            AddMissingFrom(record, ReadId3v1, *file_.ID3v1Tag());
    }

    void Set(clTagRecord& changes, Refusals& refused) override {
        Refusals ofLesser;
        clTagRecord accepted;
        SetId3v2(*file_.ID3v2Tag(true), changes, version_, refused);
        TakeAccepted(changes, refused, accepted);
        if (file_.hasAPETag())
            SetApe(*file_.APETag(), accepted, ofLesser);
        if (file_.hasID3v1Tag())
            SetId3v1(*file_.ID3v1Tag(), accepted);
    }

    void Delete(const NStringList& names) override {
        if (file_.hasID3v2Tag())
            DeleteId3v2(*file_.ID3v2Tag(), names);
        if (file_.hasAPETag())
            DeleteApe(*file_.APETag(), names);
        if (file_.hasID3v1Tag())
            DeleteId3v1(*file_.ID3v1Tag(), names);
    }

    bool Save() override {
        int kinds = TagLib::MPEG::File::ID3v2;
        if (file_.hasAPETag())
            kinds |= TagLib::MPEG::File::APE;
        if (file_.hasID3v1Tag())
            kinds |= TagLib::MPEG::File::ID3v1;
        return file_.save(kinds, TagLib::File::StripNone, LibraryVersion(version_),
                          TagLib::File::DoNotDuplicate);
    }

private:
    TagLib::MPEG::File& file_;
    int version_;
};

class FlacTags : public FormatTags {
public:
    explicit FlacTags(TagLib::FLAC::File& file) : file_(file) {}

    bool CanBeWritten() override {
        return !file_.hasID3v2Tag() || Id3v2SurvivesSave(*file_.ID3v2Tag());
    }

    NString EncoderOfStream() const override {
        return file_.hasXiphComment() ? ToNString(file_.xiphComment()->vendorID()) : NString();
    }

    void Read(clTagRecord& record) override {
        if (file_.hasXiphComment())
            ReadVorbis(*file_.xiphComment(), record);
        ReadFlacPictures(file_, record);
        if (file_.hasID3v2Tag())
            AddMissingFrom(record, ReadId3v2, *file_.ID3v2Tag());
        if (file_.hasID3v1Tag())
            AddMissingFrom(record, ReadId3v1, *file_.ID3v1Tag());
    }

    void Set(clTagRecord& changes, Refusals& refused) override {
        Refusals ofLesser;
        clTagRecord accepted;
        SetVorbis(*file_.xiphComment(true), changes, refused);
        SetFlacPictures(file_, changes, refused);
        TakeAccepted(changes, refused, accepted);
        if (file_.hasID3v2Tag())
            SetId3v2(*file_.ID3v2Tag(), accepted, NewVersion, ofLesser);
        if (file_.hasID3v1Tag())
            SetId3v1(*file_.ID3v1Tag(), accepted);
    }

    void Delete(const NStringList& names) override {
        if (file_.hasXiphComment())
            DeleteVorbis(*file_.xiphComment(), names);
        DeleteFlacPictures(file_, names);
        if (file_.hasID3v2Tag())
            DeleteId3v2(*file_.ID3v2Tag(), names);
        if (file_.hasID3v1Tag())
            DeleteId3v1(*file_.ID3v1Tag(), names);
    }

    // The library would cut the length of a longer block, and lose what follows.
    bool Save() override {
        return (!file_.hasXiphComment() ||
                file_.xiphComment()->render(false).size() <= LargestFlacBlock) &&
               file_.save();
    }

private:
    TagLib::FLAC::File& file_;
};

// Ogg files, which have a comment and nothing beside it.
class OggTags : public FormatTags {
public:
    OggTags(TagLib::File& file, TagLib::Ogg::XiphComment& comment)
        : file_(file), comment_(comment) {}

    NString EncoderOfStream() const override { return ToNString(comment_.vendorID()); }

    void Read(clTagRecord& record) override {
        ReadVorbis(comment_, record);
        ReadVorbisPictures(comment_, record);
    }

    void Set(clTagRecord& changes, Refusals& refused) override {
        SetVorbis(comment_, changes, refused);
        SetVorbisPictures(comment_, changes, refused);
    }

    void Delete(const NStringList& names) override {
        // Pictures first: an empty list takes the comments that hold them too.
        DeleteVorbisPictures(comment_, names);
        DeleteVorbis(comment_, names);
    }

    bool Save() override { return file_.save(); }

private:
    TagLib::File& file_;
    TagLib::Ogg::XiphComment& comment_;
};

bool NamesPictures(clTagRecord& changes) {
    return HasPictures(changes);
}

bool NamesPictures(const NStringList& names) {
    return names.Count == 0 || !ArtNumbersOf(names).empty();
}

// A FLAC stream in Ogg may have its pictures in blocks beside the comment. They
// are moved into it when the pictures are to be changed.
class OggFlacTags : public OggTags {
public:
    explicit OggFlacTags(TagLib::Ogg::FLAC::File& file)
        : OggTags(file, *file.tag()), flacFile_(file) {}

    void Read(clTagRecord& record) override {
        MovePictureBlocksToComment(flacFile_);
        OggTags::Read(record);
    }
    void Set(clTagRecord& changes, Refusals& refused) override {
        if (NamesPictures(changes))
            MovePictureBlocksToComment(flacFile_);
        OggTags::Set(changes, refused);
    }
    void Delete(const NStringList& names) override {
        if (NamesPictures(names))
            MovePictureBlocksToComment(flacFile_);
        OggTags::Delete(names);
    }
    // The comment is a block here too, with a length of 24 bits.
    bool Save() override {
        return flacFile_.tag()->render(false).size() <= LargestFlacBlock && OggTags::Save();
    }

private:
    TagLib::Ogg::FLAC::File& flacFile_;
};

class Mp4Tags : public FormatTags {
public:
    explicit Mp4Tags(AudioFile& file)
        : stream_(file.Stream()), file_(file.As<TagLib::MP4::File>()) {}

    bool CanBeWritten() override { return !HasMp4Fragments(stream_) && Mp4SurvivesSave(file_); }
    bool KeepsDescriptions() const override { return false; }

    void Read(clTagRecord& record) override { ReadMp4(*file_.tag(), record); }
    void Set(clTagRecord& changes, Refusals& refused) override {
        SetMp4(*file_.tag(), changes, refused);
    }
    void Delete(const NStringList& names) override { DeleteMp4(*file_.tag(), names); }
    bool Save() override { return file_.save(); }

private:
    FileStream& stream_;
    TagLib::MP4::File& file_;
};

class AsfTags : public FormatTags {
public:
    explicit AsfTags(TagLib::ASF::File& file) : file_(file) {}

    void Read(clTagRecord& record) override { ReadAsf(*file_.tag(), record); }
    void Set(clTagRecord& changes, Refusals& refused) override {
        SetAsf(*file_.tag(), changes, refused);
    }
    void Delete(const NStringList& names) override { DeleteAsf(*file_.tag(), names); }
    bool Save() override {
        ArrangeAsfForSave(file_);
        return file_.save();
    }

private:
    TagLib::ASF::File& file_;
};

// WAV: the ID3v2 chunk counts first. Of it and the INFO list those that the
// file has are kept in step; a file with neither gets both. What an INFO list
// alone can't hold makes a chunk.
class WavTags : public FormatTags {
public:
    using File = TagLib::RIFF::WAV::File;
    explicit WavTags(File& file)
        : file_(file), usesId3_(file.hasID3v2Tag()), usesInfo_(file.hasInfoTag()),
          version_(Id3v2VersionToWrite(usesId3_ ? file.ID3v2Tag() : nullptr)) {}

    bool CanBeWritten() override {
        return !file_.hasID3v2Tag() || Id3v2SurvivesSave(*file_.ID3v2Tag());
    }

    void Read(clTagRecord& record) override {
        if (usesId3_)
            ReadId3v2(*file_.ID3v2Tag(), record);
        if (usesInfo_)
            AddMissingFrom(record, ReadRiffInfo, *file_.InfoTag());
    }

    void Set(clTagRecord& changes, Refusals& refused) override {
        if (!usesId3_ && !usesInfo_)
            usesId3_ = usesInfo_ = true;
        Refusals byInfo;
        if (usesInfo_)
            SetRiffInfo(*file_.InfoTag(), changes, byInfo);
        if (byInfo.Names().Count > 0)
            usesId3_ = true;
        if (usesId3_)
            SetChunk(changes, byInfo, refused);
    }

    void Delete(const NStringList& names) override {
        if (usesId3_)
            DeleteId3v2(*file_.ID3v2Tag(), names);
        if (usesInfo_)
            DeleteRiffInfo(*file_.InfoTag(), names);
    }

    bool Save() override {
        int kinds = File::NoTags;
        if (usesId3_)
            kinds |= File::ID3v2;
        if (usesInfo_)
            kinds |= File::Info;
        return file_.save(static_cast<File::TagTypes>(kinds), File::StripNone,
                          LibraryVersion(version_));
    }

private:
    // Refused is what neither takes.
    void SetChunk(clTagRecord& changes, const Refusals& byInfo, Refusals& refused) {
        Refusals byChunk;
        SetId3v2(*file_.ID3v2Tag(), changes, version_, byChunk);
        for (int index = 0; index < byChunk.Names().Count; ++index) {
            const NString& name = *byChunk.Names()[index];
            if (!usesInfo_ || byInfo.Contains(name))
                refused.Add(name);
        }
    }

    File& file_;
    bool usesId3_;
    bool usesInfo_;
    int version_;
};

// AIFF: the ID3v2 chunk, and AIFF's own texts where they are.
class AiffTags : public FormatTags {
public:
    explicit AiffTags(AiffFile& file)
        : file_(file), version_(Id3v2VersionToWrite(file.hasID3v2Tag() ? file.tag() : nullptr)) {}

    bool CanBeWritten() override { return !file_.hasID3v2Tag() || Id3v2SurvivesSave(*file_.tag()); }

    void Read(clTagRecord& record) override {
        ReadId3v2(*file_.tag(), record);
        AddMissingFrom(record, ReadAiffTexts, file_);
    }
    void Set(clTagRecord& changes, Refusals& refused) override {
        clTagRecord accepted;
        SetId3v2(*file_.tag(), changes, version_, refused);
        TakeAccepted(changes, refused, accepted);
        SetAiffTexts(file_, accepted);
    }
    void Delete(const NStringList& names) override {
        DeleteId3v2(*file_.tag(), names);
        DeleteAiffTexts(file_, names);
    }
    bool Save() override { return file_.save(LibraryVersion(version_)); }

private:
    AiffFile& file_;
    int version_;
};

// Monkey's Audio, WavPack and Musepack: an APE tag, and ID3v1 where it is.
template <typename File>
class ApeFamilyTags : public FormatTags {
public:
    explicit ApeFamilyTags(File& file) : file_(file) {}

    bool KeepsDescriptions() const override { return false; }
    bool HoldsOnePictureOfAKind() const override { return true; }

    void Read(clTagRecord& record) override {
        if (file_.hasAPETag())
            ReadApe(*file_.APETag(), record);
        if (file_.hasID3v1Tag())
            AddMissingFrom(record, ReadId3v1, *file_.ID3v1Tag());
    }

    void Set(clTagRecord& changes, Refusals& refused) override {
        clTagRecord accepted;
        SetApe(*file_.APETag(true), changes, refused);
        TakeAccepted(changes, refused, accepted);
        if (file_.hasID3v1Tag())
            SetId3v1(*file_.ID3v1Tag(), accepted);
    }

    void Delete(const NStringList& names) override {
        if (file_.hasAPETag())
            DeleteApe(*file_.APETag(), names);
        if (file_.hasID3v1Tag())
            DeleteId3v1(*file_.ID3v1Tag(), names);
    }

    bool Save() override { return file_.save(); }

private:
    File& file_;
};

// True Audio; the library writes its ID3v2 tag in version 2.4 alone.
class TrueAudioTags : public FormatTags {
public:
    explicit TrueAudioTags(TagLib::TrueAudio::File& file) : file_(file) {}

    bool CanBeWritten() override {
        return !file_.hasID3v2Tag() || Id3v2SurvivesSave(*file_.ID3v2Tag());
    }

    void Read(clTagRecord& record) override {
        if (file_.hasID3v2Tag())
            ReadId3v2(*file_.ID3v2Tag(), record);
        if (file_.hasID3v1Tag())
            AddMissingFrom(record, ReadId3v1, *file_.ID3v1Tag());
    }

    void Set(clTagRecord& changes, Refusals& refused) override {
        clTagRecord accepted;
        SetId3v2(*file_.ID3v2Tag(true), changes, NewVersion, refused);
        TakeAccepted(changes, refused, accepted);
        if (file_.hasID3v1Tag())
            SetId3v1(*file_.ID3v1Tag(), accepted);
    }

    void Delete(const NStringList& names) override {
        if (file_.hasID3v2Tag())
            DeleteId3v2(*file_.ID3v2Tag(), names);
        if (file_.hasID3v1Tag())
            DeleteId3v1(*file_.ID3v1Tag(), names);
    }

    bool Save() override { return file_.save(); }

private:
    TagLib::TrueAudio::File& file_;
};

// Tracker modules have a title and the texts of their samples, in fields of a
// fixed length. They are read alone.
class ModuleTags : public FormatTags {
public:
    explicit ModuleTags(TagLib::File& file) : file_(file) {}

    bool CanBeWritten() override { return false; }
    void Read(clTagRecord& record) override {
        const TagLib::Tag& tag = *file_.tag();
        AddValues(record, L"title", tag.title());
        // The lines of the sample texts, as parts of one value.
        AddValues(record, L"comment", TagLib::StringList::split(tag.comment(), "\n"));
    }
    void Set(clTagRecord&, Refusals&) override {}
    void Delete(const NStringList&) override {}
    bool Save() override { return false; }

private:
    TagLib::File& file_;
};

template <typename File>
std::unique_ptr<FormatTags> OggTagsOf(AudioFile& file) {
    auto* comment = file.As<File>().tag();
    return comment ? std::make_unique<OggTags>(file.File(), *comment) : nullptr;
}
} // namespace

std::unique_ptr<FormatTags> TagsOf(AudioFile& file) {
    // The library can hand out a file without a tag object for a damaged one.
    if (!file.IsValid() || (file.Kind() != Format::OggFlac && !file.File().tag()))
        return nullptr;
    switch (file.Kind()) {
    case Format::Mpeg:
        return std::make_unique<MpegTags>(file.As<TagLib::MPEG::File>());
    case Format::Flac:
        return std::make_unique<FlacTags>(file.As<TagLib::FLAC::File>());
    case Format::OggVorbis:
        return OggTagsOf<TagLib::Vorbis::File>(file);
    case Format::OggOpus:
        return OggTagsOf<TagLib::Ogg::Opus::File>(file);
    case Format::OggSpeex:
        return OggTagsOf<TagLib::Ogg::Speex::File>(file);
    case Format::OggFlac:
        if (!file.As<TagLib::Ogg::FLAC::File>().tag())
            return nullptr;
        return std::make_unique<OggFlacTags>(file.As<TagLib::Ogg::FLAC::File>());
    case Format::Mp4:
        return std::make_unique<Mp4Tags>(file);
    case Format::Asf:
        return std::make_unique<AsfTags>(file.As<TagLib::ASF::File>());
    case Format::Wav:
        return std::make_unique<WavTags>(file.As<TagLib::RIFF::WAV::File>());
    case Format::Aiff:
        return std::make_unique<AiffTags>(file.As<AiffFile>());
    case Format::MonkeysAudio:
        return std::make_unique<ApeFamilyTags<TagLib::APE::File>>(file.As<TagLib::APE::File>());
    case Format::WavPack:
        return std::make_unique<ApeFamilyTags<TagLib::WavPack::File>>(
            file.As<TagLib::WavPack::File>());
    case Format::Musepack:
        return std::make_unique<ApeFamilyTags<TagLib::MPC::File>>(file.As<TagLib::MPC::File>());
    case Format::TrueAudio:
        return std::make_unique<TrueAudioTags>(file.As<TagLib::TrueAudio::File>());
    case Format::ImpulseTracker:
    case Format::ScreamTracker:
    case Format::FastTracker:
    case Format::Module:
        return std::make_unique<ModuleTags>(file.File());
    case Format::Unknown:
        break;
    }
    return nullptr;
}

} // namespace tagmap
