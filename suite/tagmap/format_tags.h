#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "suite/tagmap/audio_file.h"
#include "suite/tagmap/tag_values.h"

#include <memory>

namespace tagmap {

// All tags of one open file as one: which kinds a format has, which of them
// counts first, and which are kept in step.
class FormatTags {
public:
    virtual ~FormatTags() = default;

    // A write would keep the file whole, as far as the library is known.
    virtual bool CanBeWritten() { return true; }
    // The format keeps what a picture is called.
    virtual bool KeepsDescriptions() const { return true; }
    // A picture takes the place of another that shows the same kind of thing.
    virtual bool HoldsOnePictureOfAKind() const { return false; }
    // What the audio stream itself says in the place of an element "encoder",
    // and no write can take away.
    virtual NString EncoderOfStream() const { return NString(); }

    virtual void Read(clTagRecord& record) = 0;
    virtual void Set(clTagRecord& changes, Refusals& refused) = 0;
    virtual void Delete(const NStringList& names) = 0;
    // Writes to the file's stream, which tells of failures of the disk; false
    // if the library itself gave up.
    virtual bool Save() = 0;
};

// Null if the file isn't valid, or lacks the tag objects that its format has.
// Lives no longer than the file.
std::unique_ptr<FormatTags> TagsOf(AudioFile& file);

} // namespace tagmap
