#include "suite/tagmap/id3v2_file_tags.h"

#include "suite/tagmap/aiff_text_chunks.h"
#include "suite/tagmap/ape_tags.h"
#include "suite/tagmap/id3v2_tags.h"
#include "suite/tagmap/lesser_tags.h"

#include <id3v2header.h>
#include <mpegfile.h>
#include <trueaudiofile.h>

namespace tagmap {

namespace {

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
        SetId3v2(*file_.ID3v2Tag(true), changes, Id3v2NewVersion, refused);
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

} // namespace

std::unique_ptr<FormatTags> MakeMpegTags(AudioFile& file) {
    return std::make_unique<MpegTags>(file.As<TagLib::MPEG::File>());
}

std::unique_ptr<FormatTags> MakeAiffTags(AudioFile& file) {
    return std::make_unique<AiffTags>(file.As<AiffFile>());
}

std::unique_ptr<FormatTags> MakeTrueAudioTags(AudioFile& file) {
    return std::make_unique<TrueAudioTags>(file.As<TagLib::TrueAudio::File>());
}

} // namespace tagmap
