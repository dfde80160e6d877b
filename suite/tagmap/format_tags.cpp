#include "suite/tagmap/format_tags.h"

#include "suite/tagmap/ape_save.h"
#include "suite/tagmap/ape_tags.h"
#include "suite/tagmap/asf_save.h"
#include "suite/tagmap/asf_tags.h"
#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/id3v1_source.h"
#include "suite/tagmap/id3v2_file_tags.h"
#include "suite/tagmap/id3v2_tags.h"
#include "suite/tagmap/lesser_tags.h"
#include "suite/tagmap/mp4_save.h"
#include "suite/tagmap/mp4_tags.h"
#include "suite/tagmap/vorbis_file_tags.h"
#include "suite/tagmap/wav_file_tags.h"

#include <apefile.h>
#include <asffile.h>
#include <modfilebase.h>
#include <mp4file.h>
#include <mpcfile.h>
#include <wavpackfile.h>

namespace tagmap {

namespace {

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
    explicit AsfTags(AudioFile& file)
        : stream_(file.Stream()), file_(file.As<TagLib::ASF::File>()) {}

    bool CanBeWritten() override { return AsfSurvivesSave(stream_); }

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
    FileStream& stream_;
    TagLib::ASF::File& file_;
};

// Monkey's Audio, WavPack and Musepack: an APE tag, and ID3v1 where it is.
template <typename File>
class ApeFamilyTags : public FormatTags {
public:
    explicit ApeFamilyTags(File& file) : file_(file), id3v1_(file) {}

    bool CanBeWritten() override {
        return ApeSurvivesSave(file_, file_.APETag(), file_.hasID3v1Tag());
    }
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
        TagLib::APE::Tag& first = *file_.APETag(true);
        if (!file_.hasAPETag() && file_.hasID3v1Tag())
            FillNewTag(
                changes, [&](clTagRecord& shown) { ReadSureId3v1(*file_.ID3v1Tag(), shown); },
                [&](clTagRecord& shown, Refusals& none) { SetApe(first, shown, none); });
        SetApe(first, changes, refused);
        TakeAccepted(changes, refused, accepted);
        if (file_.hasID3v1Tag())
            SetId3v1(*file_.ID3v1Tag(), accepted);
        id3v1_.Name(accepted);
    }

    void Delete(const NStringList& names) override {
        if (file_.hasAPETag())
            DeleteApe(*file_.APETag(), names);
        if (file_.hasID3v1Tag())
            DeleteId3v1(*file_.ID3v1Tag(), names);
        id3v1_.Name(names);
    }

    bool Save() override {
        if (!file_.save())
            return false;
        if (HasId3v1(file_))
            id3v1_.PutBack(file_);
        return true;
    }

private:
    File& file_;
    Id3v1Source id3v1_;
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

} // namespace

std::unique_ptr<FormatTags> TagsOf(AudioFile& file) {
    // The library can hand out a file without a tag object for a damaged one.
    if (!file.IsValid() || (file.Kind() != Format::OggFlac && !file.File().tag()))
        return nullptr;
    switch (file.Kind()) {
    case Format::Mpeg:
        return MakeMpegTags(file);
    case Format::Flac:
        return MakeFlacTags(file);
    case Format::OggVorbis:
        return MakeOggVorbisTags(file);
    case Format::OggOpus:
        return MakeOpusTags(file);
    case Format::OggSpeex:
        return MakeSpeexTags(file);
    case Format::OggFlac:
        return MakeOggFlacTags(file);
    case Format::Mp4:
        return std::make_unique<Mp4Tags>(file);
    case Format::Asf:
        return std::make_unique<AsfTags>(file);
    case Format::Wav:
        return MakeWavTags(file);
    case Format::Aiff:
        return MakeAiffTags(file);
    case Format::MonkeysAudio:
        return std::make_unique<ApeFamilyTags<TagLib::APE::File>>(file.As<TagLib::APE::File>());
    case Format::WavPack:
        return std::make_unique<ApeFamilyTags<TagLib::WavPack::File>>(
            file.As<TagLib::WavPack::File>());
    case Format::Musepack:
        return std::make_unique<ApeFamilyTags<TagLib::MPC::File>>(file.As<TagLib::MPC::File>());
    case Format::TrueAudio:
        return MakeTrueAudioTags(file);
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
