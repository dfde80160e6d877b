#include "suite/tagmap/wav_file_tags.h"

#include "suite/tagmap/chunk_walk.h"
#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/id3v2_source.h"
#include "suite/tagmap/id3v2_tags.h"
#include "suite/tagmap/lesser_tags.h"
#include "suite/tagmap/riff_info_tags.h"
#include "suite/tagmap/wav_file.h"

namespace tagmap {

namespace {

// WAV: the ID3v2 chunk counts first. Of it and the INFO list those that the
// file has are kept in step: the list gets what the chunk has taken. A file with
// neither gets both. What an INFO list alone can't hold makes a chunk. Entries
// (`_riff_<id>`) belong to the list alone, and make one.
class WavTags : public FormatTags {
public:
    using File = WavFile;
    explicit WavTags(File& file)
        : file_(file), usesId3_(file.hasID3v2Tag()), usesInfo_(file.hasInfoTag()),
          source_(Id3v2SourceInChunks(usesId3_ ? file.ID3v2Tag() : nullptr, file)),
          version_(Id3v2VersionToWrite(usesId3_ ? file.ID3v2Tag() : nullptr)) {}

    bool CanBeWritten() override {
        return WasWalkedToItsEnd(file_, "data") && source_.SurvivesSave() && ListsSurviveSave();
    }

    void Read(clTagRecord& record) override {
        if (usesId3_)
            ReadId3v2(*file_.ID3v2Tag(), record);
        if (usesInfo_)
            AddMissingFrom(record, ReadRiffInfo, *file_.InfoTag());
    }

    void Set(clTagRecord& changes, Refusals& refused) override {
        clTagRecord entries;
        clTagRecord others;
        for (int index = 0; index < changes.Count(); ++index)
            (IsEntry(*changes[index]) ? entries : others).AddCopy(*changes[index]);
        source_.Remember(*file_.ID3v2Tag());
        if (!usesId3_ && !usesInfo_)
            usesId3_ = usesInfo_ = true;
        if (!usesId3_ && NeedsChunk(others)) {
            FillNewTag(
                others, [&](clTagRecord& shown) { ReadSureRiffInfo(*file_.InfoTag(), shown); },
                [&](clTagRecord& shown, Refusals& none) {
                    SetId3v2(*file_.ID3v2Tag(), shown, version_, none);
                });
            usesId3_ = true;
        }
        if (usesId3_)
            SetChunk(others, refused);
        else
            SetRiffInfo(*file_.InfoTag(), others, refused);
        SetRiffInfo(*file_.InfoTag(), entries, refused);
        usesInfo_ = usesInfo_ || !file_.InfoTag()->isEmpty();
    }

    void Delete(const NStringList& names) override {
        source_.Remember(*file_.ID3v2Tag());
        if (usesId3_)
            DeleteId3v2(*file_.ID3v2Tag(), names);
        if (usesInfo_)
            DeleteRiffInfo(*file_.InfoTag(), names);
    }

    bool Save() override {
        if (usesId3_ && !source_.PrepareSave(*file_.ID3v2Tag(), version_))
            return false;
        int kinds = File::NoTags;
        if (usesId3_)
            kinds |= File::ID3v2;
        if (usesInfo_)
            kinds |= File::Info;
        return file_.save(static_cast<File::TagTypes>(kinds), File::StripNone,
                          LibraryVersion(version_));
    }

private:
    static bool IsEntry(const clTagElement& element) {
        return BeginsWithName(ToTagLib(element.Name), RiffPrefix);
    }

    // Of several lists a save keeps the first.
    bool ListsSurviveSave() {
        bool hasList = false;
        for (unsigned index = 0; index < file_.chunkCount(); ++index) {
            if (file_.chunkName(index) != "LIST")
                continue;
            const TagLib::ByteVector list = file_.chunkData(index);
            if (!list.startsWith("INFO"))
                continue;
            if (hasList || !RiffInfoSurvivesSave(list, *file_.InfoTag()))
                return false;
            hasList = true;
        }
        return true;
    }

    // A chunk can hold some of what an INFO list can't.
    bool NeedsChunk(clTagRecord& changes) const {
        TagLib::RIFF::Info::Tag list;
        Refusals byList;
        SetRiffInfo(list, changes, byList);
        clTagRecord more;
        for (int index = 0; index < changes.Count(); ++index) {
            if (byList.Contains(changes[index]->Name))
                more.AddCopy(*changes[index]);
        }
        TagLib::ID3v2::Tag chunk;
        Refusals byChunk;
        SetId3v2(chunk, more, version_, byChunk);
        return !chunk.isEmpty();
    }

    void SetChunk(clTagRecord& changes, Refusals& refused) {
        clTagRecord accepted;
        Refusals byList;
        SetId3v2(*file_.ID3v2Tag(), changes, version_, refused);
        TakeAccepted(changes, refused, accepted);
        if (usesInfo_)
            SetRiffInfo(*file_.InfoTag(), accepted, byList);
    }

    File& file_;
    bool usesId3_;
    bool usesInfo_;
    Id3v2Source source_;
    int version_;
};

} // namespace

std::unique_ptr<FormatTags> MakeWavTags(AudioFile& file) {
    return std::make_unique<WavTags>(file.As<WavFile>());
}

} // namespace tagmap
