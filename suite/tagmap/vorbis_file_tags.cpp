#include "suite/tagmap/vorbis_file_tags.h"

#include "suite/tagmap/flac_blocks.h"
#include "suite/tagmap/flac_pictures.h"
#include "suite/tagmap/id3v1_source.h"
#include "suite/tagmap/id3v2_source.h"
#include "suite/tagmap/id3v2_tags.h"
#include "suite/tagmap/lesser_tags.h"
#include "suite/tagmap/ogg_flac_comment.h"
#include "suite/tagmap/ogg_flac_pictures.h"
#include "suite/tagmap/pictures.h"
#include "suite/tagmap/vorbis_save.h"
#include "suite/tagmap/vorbis_tags.h"

#include <flacfile.h>
#include <oggflacfile.h>
#include <opusfile.h>
#include <speexfile.h>
#include <vorbisfile.h>

#include <optional>

namespace tagmap {

namespace {

constexpr unsigned LargestFlacBlock = 0xFFFFFF; // bytes

class FlacTags : public FormatTags {
public:
    explicit FlacTags(TagLib::FLAC::File& file)
        : file_(file), id3v2_(Id3v2Of(file), file, 0), id3v1_(file),
          id3v2Version_(Id3v2VersionToWrite(Id3v2Of(file))) {}

    bool CanBeWritten() override { return id3v2_.SurvivesSave() && FlacSurvivesSave(file_); }

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
        clTagRecord before;
        clTagRecord accepted;
        RememberId3v2();
        FillNewComment();
        ReadFlacPictures(file_, before);
        if (file_.hasID3v2Tag())
            TakeOverPictures(before, changes, ReadId3v2, *file_.ID3v2Tag(),
                             [&](clTagRecord& pictures) {
                                 Refusals none;
                                 SetFlacPictures(file_, pictures, none);
                             });
        SetVorbis(*file_.xiphComment(true), changes, refused);
        SetFlacPictures(file_, changes, refused);
        TakeAccepted(changes, refused, accepted);
        if (file_.hasID3v2Tag())
            SetLesser(
                before, accepted, ReadId3v2,
                [&](TagLib::ID3v2::Tag& tag, clTagRecord& request, Refusals& refusedThere) {
                    SetId3v2(tag, request, id3v2Version_, refusedThere);
                },
                *file_.ID3v2Tag());
        if (file_.hasID3v1Tag())
            SetId3v1(*file_.ID3v1Tag(), accepted);
        id3v1_.Name(accepted);
    }

    void Delete(const NStringList& names) override {
        clTagRecord before;
        RememberId3v2();
        if (names.Count > 0)
            FillNewComment();
        ReadFlacPictures(file_, before);
        DeleteVorbis(*file_.xiphComment(true), names);
        DeleteFlacPictures(file_, names);
        if (file_.hasID3v2Tag())
            DeleteFromLesser(before, names, ReadId3v2, DeleteId3v2, *file_.ID3v2Tag());
        if (file_.hasID3v1Tag())
            DeleteId3v1(*file_.ID3v1Tag(), names);
        id3v1_.Name(names);
    }

    bool Save() override {
        // The library would cut the length of a longer block, and lose what follows.
        if (file_.xiphComment(true)->render(false).size() > LargestFlacBlock)
            return false;
        if (file_.hasID3v2Tag() && !id3v2_.PrepareSave(*file_.ID3v2Tag(), id3v2Version_))
            return false;
        if (!SaveInVersion(file_, file_.ID3v2Tag(), id3v2Version_))
            return false;
        if (HasId3v1(file_))
            id3v1_.PutBack(file_);
        return true;
    }

private:
    // A save makes a comment where there is none, and fills it with what it can
    // get of the other tags: the year of a date, a track without the number of
    // tracks, artists run together. Most programs look at nothing else once there
    // is one. So it gets all that the file shows, and nothing is left to fill in.
    void FillNewComment() {
        if (file_.hasXiphComment() || !(file_.hasID3v2Tag() || file_.hasID3v1Tag()))
            return;
        clTagRecord shown;
        Read(shown);
        clTagRecord texts;
        for (int index = 0; index < shown.Count(); ++index) {
            if (!IsArtName(shown[index]->Name))
                texts.AddCopy(*shown[index]);
        }
        Refusals none;
        SetVorbis(*file_.xiphComment(true), texts, none);
    }

    static TagLib::ID3v2::Tag* Id3v2Of(TagLib::FLAC::File& file) {
        return file.hasID3v2Tag() ? file.ID3v2Tag() : nullptr;
    }

    void RememberId3v2() {
        if (file_.hasID3v2Tag())
            id3v2_.Remember(*file_.ID3v2Tag());
    }

    TagLib::FLAC::File& file_;
    Id3v2Source id3v2_;
    Id3v1Source id3v1_;
    int id3v2Version_;
};

// Ogg files, which have a comment and nothing beside it.
class OggTags : public FormatTags {
public:
    // Where in the second packet the list begins, behind a mark.
    static constexpr unsigned ListAtInVorbis = 7;
    static constexpr unsigned ListAtInOpus = 8;
    static constexpr unsigned ListAtInSpeex = 0;

    OggTags(TagLib::Ogg::File& file, TagLib::Ogg::XiphComment& comment, unsigned listAt)
        : file_(file), comment_(comment), listAt_(listAt) {}

    bool CanBeWritten() override {
        const std::optional<VorbisList> list = ParseVorbisList(file_.packet(1).mid(listAt_));
        return list && VorbisSurvivesSave(*list, comment_) && !HasDataToKeep(*list);
    }

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
    // Opus may have binary data behind the list, which is to be kept if its
    // first bit is set (RFC 7845, section 5.2); the library drops it. What
    // Vorbis has there is its framing bit.
    bool HasDataToKeep(const VorbisList& list) const {
        return listAt_ == ListAtInOpus && !list.Behind.isEmpty() && (list.Behind[0] & 1) != 0;
    }

    TagLib::Ogg::File& file_;
    TagLib::Ogg::XiphComment& comment_;
    unsigned listAt_;
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
        : OggTags(file, *file.tag(), 0), flacFile_(file) {}

    bool CanBeWritten() override { return OggFlacSurvivesSave(flacFile_); }
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
    bool Save() override { return SaveOggFlac(flacFile_); }

private:
    TagLib::Ogg::FLAC::File& flacFile_;
};

template <typename File>
std::unique_ptr<FormatTags> OggTagsOf(AudioFile& file, unsigned listAt) {
    auto& ogg = file.As<File>();
    return ogg.tag() ? std::make_unique<OggTags>(ogg, *ogg.tag(), listAt) : nullptr;
}

} // namespace

std::unique_ptr<FormatTags> MakeFlacTags(AudioFile& file) {
    return std::make_unique<FlacTags>(file.As<TagLib::FLAC::File>());
}

std::unique_ptr<FormatTags> MakeOggVorbisTags(AudioFile& file) {
    return OggTagsOf<TagLib::Vorbis::File>(file, OggTags::ListAtInVorbis);
}

std::unique_ptr<FormatTags> MakeOpusTags(AudioFile& file) {
    return OggTagsOf<TagLib::Ogg::Opus::File>(file, OggTags::ListAtInOpus);
}

std::unique_ptr<FormatTags> MakeSpeexTags(AudioFile& file) {
    return OggTagsOf<TagLib::Ogg::Speex::File>(file, OggTags::ListAtInSpeex);
}

std::unique_ptr<FormatTags> MakeOggFlacTags(AudioFile& file) {
    auto& flac = file.As<TagLib::Ogg::FLAC::File>();
    return flac.tag() ? std::make_unique<OggFlacTags>(flac) : nullptr;
}

} // namespace tagmap
