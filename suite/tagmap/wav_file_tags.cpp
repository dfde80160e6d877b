#include "suite/tagmap/wav_file_tags.h"

#include "suite/tagmap/id3v2_source.h"
#include "suite/tagmap/id3v2_tags.h"
#include "suite/tagmap/lesser_tags.h"
#include "suite/tagmap/riff_info_tags.h"
#include "suite/tagmap/wav_file.h"

namespace tagmap {

namespace {

// WAV: the ID3v2 chunk counts first. Of it and the INFO list those that the
// file has are kept in step; a file with neither gets both. What an INFO list
// alone can't hold makes a chunk.
class WavTags : public FormatTags {
public:
    using File = WavFile;
    explicit WavTags(File& file)
        : file_(file), usesId3_(file.hasID3v2Tag()), usesInfo_(file.hasInfoTag()),
          source_(Id3v2SourceInChunks(usesId3_ ? file.ID3v2Tag() : nullptr, file)),
          version_(Id3v2VersionToWrite(usesId3_ ? file.ID3v2Tag() : nullptr)) {}

    bool CanBeWritten() override { return source_.SurvivesSave(); }

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
    Id3v2Source source_;
    int version_;
};

} // namespace

std::unique_ptr<FormatTags> MakeWavTags(AudioFile& file) {
    return std::make_unique<WavTags>(file.As<WavFile>());
}

} // namespace tagmap
