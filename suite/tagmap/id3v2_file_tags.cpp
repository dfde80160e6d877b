#include "suite/tagmap/id3v2_file_tags.h"

#include "suite/tagmap/aiff_text_chunks.h"
#include "suite/tagmap/ape_save.h"
#include "suite/tagmap/ape_tags.h"
#include "suite/tagmap/chunk_walk.h"
#include "suite/tagmap/id3v1_source.h"
#include "suite/tagmap/id3v2_source.h"
#include "suite/tagmap/id3v2_tags.h"
#include "suite/tagmap/lesser_tags.h"

#include <mpegfile.h>
#include <trueaudiofile.h>

namespace tagmap {

namespace {

// MP3: ID3v2 counts first and is made when there is none; APE and ID3v1 are
// kept in step where the file has them.
class MpegTags : public FormatTags {
public:
    explicit MpegTags(TagLib::MPEG::File& file)
        : file_(file), source_(Id3v2Of(file), file, 0), id3v1_(file),
          version_(Id3v2VersionToWrite(Id3v2Of(file))) {}

    bool CanBeWritten() override {
        return source_.SurvivesSave() &&
               ApeSurvivesSave(file_, file_.APETag(), file_.hasID3v1Tag());
    }

    void Read(clTagRecord& record) override {
        if (file_.hasID3v2Tag())
            ReadId3v2(*file_.ID3v2Tag(), record);
        AddLesser(record, ReadId3v1);
    }

    void Set(clTagRecord& changes, Refusals& refused) override {
        TagLib::ID3v2::Tag& first = *file_.ID3v2Tag(true);
        source_.Remember(first);
        const bool isNew = !file_.hasID3v2Tag();
        if (isNew)
            FillNewTag(
                changes, [&](clTagRecord& shown) { AddLesser(shown, ReadSureId3v1); },
                [&](clTagRecord& shown, Refusals& none) {
                    SetId3v2(first, shown, version_, none);
                });
        clTagRecord before;
        clTagRecord accepted;
        ReadId3v2(first, before);
        // A new tag has them, or is not made.
        if (!isNew && file_.hasAPETag())
            TakeOverPictures(before, changes, ReadApe, *file_.APETag(), [&](clTagRecord& pictures) {
                Refusals none;
                SetId3v2(first, pictures, version_, none);
            });
        SetId3v2(first, changes, version_, refused);
        TakeAccepted(changes, refused, accepted);
        if (file_.hasAPETag())
            SetLesser(before, accepted, ReadApe, SetApe, *file_.APETag());
        if (file_.hasID3v1Tag())
            SetId3v1(*file_.ID3v1Tag(), accepted);
        id3v1_.Name(accepted);
    }

    void Delete(const NStringList& names) override {
        clTagRecord before;
        if (file_.hasID3v2Tag()) {
            source_.Remember(*file_.ID3v2Tag());
            ReadId3v2(*file_.ID3v2Tag(), before);
            DeleteId3v2(*file_.ID3v2Tag(), names);
        }
        if (file_.hasAPETag())
            DeleteFromLesser(before, names, ReadApe, DeleteApe, *file_.APETag());
        if (file_.hasID3v1Tag())
            DeleteId3v1(*file_.ID3v1Tag(), names);
        id3v1_.Name(names);
    }

    bool Save() override {
        int kinds = TagLib::MPEG::File::ID3v2;
        if (file_.hasAPETag())
            kinds |= TagLib::MPEG::File::APE;
        if (file_.hasID3v1Tag())
            kinds |= TagLib::MPEG::File::ID3v1;
        if (file_.ID3v2Tag() && !source_.PrepareSave(*file_.ID3v2Tag(), version_))
            return false;
        if (!file_.save(kinds, TagLib::File::StripNone, LibraryVersion(version_),
                        TagLib::File::DoNotDuplicate))
            return false;
        if (HasId3v1(file_))
            id3v1_.PutBack(file_);
        return true;
    }

private:
    template <typename Id3v1Reader>
    void AddLesser(clTagRecord& record, Id3v1Reader readId3v1) {
        if (file_.hasAPETag())
            AddMissingFrom(record, ReadApe, *file_.APETag());
        if (file_.hasID3v1Tag())
            AddMissingFrom(record, readId3v1, *file_.ID3v1Tag());
    }

    // The library makes one where there is none.
    static TagLib::ID3v2::Tag* Id3v2Of(TagLib::MPEG::File& file) {
        return file.hasID3v2Tag() ? file.ID3v2Tag() : nullptr;
    }

    TagLib::MPEG::File& file_;
    Id3v2Source source_;
    Id3v1Source id3v1_;
    int version_;
};

// AIFF: the ID3v2 chunk, and AIFF's own texts where they are.
class AiffTags : public FormatTags {
public:
    explicit AiffTags(AiffFile& file)
        : file_(file),
          source_(Id3v2SourceInChunks(file.hasID3v2Tag() ? file.tag() : nullptr, file)),
          version_(Id3v2VersionToWrite(file.hasID3v2Tag() ? file.tag() : nullptr)) {}

    bool CanBeWritten() override {
        return WasWalkedToItsEnd(file_, "SSND") && source_.SurvivesSave();
    }

    void Read(clTagRecord& record) override {
        ReadId3v2(*file_.tag(), record);
        AddMissingFrom(record, ReadAiffTexts, file_);
    }
    void Set(clTagRecord& changes, Refusals& refused) override {
        clTagRecord accepted;
        source_.Remember(*file_.tag());
        if (!file_.hasID3v2Tag())
            FillNewTag(
                changes, [&](clTagRecord& shown) { ReadSureAiffTexts(file_, shown); },
                [&](clTagRecord& shown, Refusals& none) {
                    SetId3v2(*file_.tag(), shown, version_, none);
                });
        SetId3v2(*file_.tag(), changes, version_, refused);
        TakeAccepted(changes, refused, accepted);
        SetAiffTexts(file_, accepted);
    }
    void Delete(const NStringList& names) override {
        source_.Remember(*file_.tag());
        DeleteId3v2(*file_.tag(), names);
        DeleteAiffTexts(file_, names);
    }
    bool Save() override {
        return source_.PrepareSave(*file_.tag(), version_) && file_.save(LibraryVersion(version_));
    }

private:
    AiffFile& file_;
    Id3v2Source source_;
    int version_;
};

class TrueAudioTags : public FormatTags {
public:
    explicit TrueAudioTags(TagLib::TrueAudio::File& file)
        : file_(file), source_(Id3v2Of(file), file, 0), id3v1_(file),
          version_(Id3v2VersionToWrite(Id3v2Of(file))) {}

    bool CanBeWritten() override { return source_.SurvivesSave(); }

    void Read(clTagRecord& record) override {
        if (file_.hasID3v2Tag())
            ReadId3v2(*file_.ID3v2Tag(), record);
        if (file_.hasID3v1Tag())
            AddMissingFrom(record, ReadId3v1, *file_.ID3v1Tag());
    }

    void Set(clTagRecord& changes, Refusals& refused) override {
        clTagRecord accepted;
        TagLib::ID3v2::Tag& first = *file_.ID3v2Tag(true);
        source_.Remember(first);
        if (!file_.hasID3v2Tag() && file_.hasID3v1Tag())
            FillNewTag(
                changes, [&](clTagRecord& shown) { ReadSureId3v1(*file_.ID3v1Tag(), shown); },
                [&](clTagRecord& shown, Refusals& none) {
                    SetId3v2(first, shown, version_, none);
                });
        SetId3v2(first, changes, version_, refused);
        TakeAccepted(changes, refused, accepted);
        if (file_.hasID3v1Tag())
            SetId3v1(*file_.ID3v1Tag(), accepted);
        id3v1_.Name(accepted);
    }

    void Delete(const NStringList& names) override {
        if (file_.hasID3v2Tag()) {
            source_.Remember(*file_.ID3v2Tag());
            DeleteId3v2(*file_.ID3v2Tag(), names);
        }
        if (file_.hasID3v1Tag())
            DeleteId3v1(*file_.ID3v1Tag(), names);
        id3v1_.Name(names);
    }

    bool Save() override {
        if (file_.ID3v2Tag() && !source_.PrepareSave(*file_.ID3v2Tag(), version_))
            return false;
        if (!SaveInVersion(file_, file_.ID3v2Tag(), version_))
            return false;
        if (HasId3v1(file_))
            id3v1_.PutBack(file_);
        return true;
    }

private:
    static TagLib::ID3v2::Tag* Id3v2Of(TagLib::TrueAudio::File& file) {
        return file.hasID3v2Tag() ? file.ID3v2Tag() : nullptr;
    }

    TagLib::TrueAudio::File& file_;
    Id3v2Source source_;
    Id3v1Source id3v1_;
    int version_;
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
