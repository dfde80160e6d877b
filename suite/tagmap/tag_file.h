#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "suite/tagmap/tag_values.h"

// The tags of an audio file as a record, whatever its format, which is found by
// the file's content; the extension counts only where the content can't tell.
//
// Formats: MP3 (ID3v2.2 to 2.4, ID3v1, APE), FLAC, Ogg (Vorbis, Opus, Speex,
// FLAC), MP4, ASF, WAV, AIFF, Monkey's Audio, WavPack, Musepack, True Audio,
// and, read only, tracker modules. Files of 2 GiB or more are refused: the
// library counts in 32 bits.
//
// Paths are absolute, of any length. Nothing is shown and nothing is thrown; a
// file of any content gives one of the outcomes, or false. Where memory runs out,
// or the library throws, reading tells CannotOpen, and a change CannotWrite.
namespace tagmap {

enum class Outcome {
    Done,
    CannotOpen, // or the disk, or memory, failed in the middle of reading
    NotAudio,
    Refused,    // a format that can't be written, or a file that a write would damage
    CannotWrite // the disk, or memory, failed; the file may be incomplete
};

// Called behind each call that changes the disk.
using DiskChanged = void (*)();

// Empties `record`, then fills it, in part after a failure, with the elements of the file's tags.
// Opens the file for reading alone, and lets others read, write and delete it.
Outcome ReadTags(const wchar_t* path, clTagRecord& record);

// Both change the file at `path` in place, which a fault in the middle can leave
// incomplete: callers work on a copy.
//
// Each element of `changes` replaces the field of its name; one without value
// and data removes it. `_albumart_<n>` replaces the picture of that number, or
// is added behind the others. Everything else in the file stays: fields of
// other names, chapters, cue sheets, private data. What the format can't hold
// as asked is named in `refused`, and the rest is written.
Outcome SetTags(const wchar_t* path, clTagRecord& changes, Refusals& refused,
                DiskChanged diskChanged = nullptr);

// Numbers of pictures count them as they stand before the request. An empty
// list removes all tags of the kinds that ReadTags reads; chapters, cue sheets
// and seek tables, which are no tags, stay.
Outcome DeleteTags(const wchar_t* path, const NStringList& names,
                   DiskChanged diskChanged = nullptr);

// True if the file can be read as audio, and its tags hold each element of
// `changes` but those in `refused`; values of several parts may stand in
// another order.
bool Holds(const wchar_t* path, clTagRecord& changes, const Refusals& refused);

// True if `after` can be read as audio, holds the texts of `changes` but those
// in `refused`, and has the pictures of `before` as `changes` would have them.
bool WasSet(const wchar_t* before, const wchar_t* after, clTagRecord& changes,
            const Refusals& refused);

// True if the file can be read as audio, and none of these elements is left (no
// names: no element but those that the audio stream itself carries).
bool LacksAll(const wchar_t* path, const NStringList& names);

// True if `after` can be read as audio, lacks these elements, and has the
// pictures of `before` but those of these numbers, in their order.
bool WasDeleted(const wchar_t* before, const wchar_t* after, const NStringList& names);

// True if both files are of one format and agree in length, sample rate,
// channels and, but for Ogg, average bit rate.
bool SoundsAlike(const wchar_t* first, const wchar_t* second);

} // namespace tagmap
