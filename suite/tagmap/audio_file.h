#pragma once

#include "suite/tagmap/id3v2_guard.h"

#include <tfile.h>

#include <memory>

namespace tagmap {

enum class Format {
    Unknown,
    Mpeg,
    Flac,
    OggVorbis,
    OggOpus,
    OggSpeex,
    OggFlac,
    Mp4,
    Asf,
    Wav,
    Aiff,
    MonkeysAudio,
    WavPack,
    Musepack,
    TrueAudio,
    ImpulseTracker,
    ScreamTracker,
    FastTracker,
    Module,
};

// The format by the content: marks of the container, behind an ID3v2 tag if
// there is one. MPEG audio has no mark; several frames in a row count, and a
// single one with the extension of such a file.
Format FormatOf(FileStream& stream);

// An MP4 file of several fragments ("moof"): the library would not mend what
// points into them.
bool HasMp4Fragments(FileStream& stream);

// One audio file: its stream, and the library's object for its format.
class AudioFile {
public:
    // Properties of the audio are read along with `readAudio`.
    AudioFile(const wchar_t* path, FileStream::Mode mode, bool readAudio,
              FileStream::DiskChanged diskChanged = nullptr);

    FileStream& Stream() { return stream_; }
    Format Kind() const { return format_; }
    // The library can read it; false for any fault, for an MP4 file of too many
    // boxes (mp4_bounds.h) and an ID3v2 tag without bounds (id3v2_guard.h).
    bool IsValid() const { return file_ && !stream_.HasWithheldTag() && file_->isValid(); }
    TagLib::File& File() { return *file_; }

    // As the class for Kind(), which the caller knows.
    template <typename Class>
    Class& As() {
        return static_cast<Class&>(*file_);
    }

private:
    GuardedStream stream_;
    Format format_;
    std::unique_ptr<TagLib::File> file_; // goes before the stream
};

} // namespace tagmap
