#pragma once

#include <id3v2frame.h>
#include <id3v2tag.h>
#include <tstringlist.h>
#include <unknownframe.h>

#include <algorithm>
#include <string_view>
#include <vector>

// Work on single frames that the files of ID3v2 share. The frames belong to
// their tag.
namespace tagmap {

inline constexpr char UserTextFrame[] = "TXXX";
inline constexpr char CommentFrame[] = "COMM";
inline constexpr char DateFrame[] = "TDRC";
inline constexpr char OldYearFrame[] = "TYER";
inline constexpr char GenreFrame[] = "TCON";
inline constexpr char MoodFrame[] = "TMOO";
// A row of the table that names a TXXX frame begins so, before the description.
inline constexpr std::wstring_view UserTextPrefix = L"TXXX:";

// A frame's header as the library reads it.
struct FrameHead {
    TagLib::ByteVector Id;
    unsigned Size; // of what follows the header
    bool IsPacked; // compressed or encrypted, and not looked into
    bool IsUnsynchronised;
    bool HasLengthInFront;
};

// What the library lets only frames themselves use.
class FrameAccess : public TagLib::ID3v2::Frame {
public:
    // Empty if the library has no name for the frame.
    static TagLib::String KeyOf(const TagLib::ByteVector& id) { return frameIDToKey(id); }
    // Empty if there is no such frame.
    static TagLib::ByteVector IdOf(const TagLib::String& key) { return keyToFrameID(key); }
    // The library's name for a TXXX frame, upper case; the description itself
    // if it knows none.
    static TagLib::String UserTextKey(const TagLib::String& description) {
        return txxxToKey(description);
    }

    // The description of a TXXX frame for the library's name.
    static TagLib::String UserTextDescription(const TagLib::String& key) { return keyToTXXX(key); }
    // A frame of a link alone. WFED is one by its letter, and has a text.
    static bool IsLink(const TagLib::ByteVector& id) { return id[0] == 'W' && id != "WFED"; }

    // Of the frame that the bytes begin with.
    static FrameHead HeadOf(const TagLib::ByteVector& bytes, unsigned version) {
        const Header header(bytes, version);
        return {header.frameID(), header.frameSize(), header.compression() || header.encryption(),
                header.unsynchronisation(), header.dataLengthIndicator()};
    }

    // The frame's bytes mean something else without flags that the library does
    // not write.
    static bool NeedsFlags(const Frame& frame) {
        return HeaderOf(frame)->compression() || HeaderOf(frame)->encryption() ||
               HeaderOf(frame)->groupingIdentity();
    }
    static bool IsUnsynchronised(const Frame& frame) {
        return HeaderOf(frame)->unsynchronisation();
    }
    static bool HasLengthInFront(const Frame& frame) {
        return HeaderOf(frame)->dataLengthIndicator();
    }
    // The format's wish that a program that doesn't know the frame drops it,
    // and the library's mark for what it won't write.
    static void Keep(Frame& frame) { HeaderOf(frame)->setTagAlterPreservation(false); }
    // For a frame that is in no tag: tags find their frames by id.
    static void Rename(Frame& frame, const TagLib::ByteVector& id) {
        HeaderOf(frame)->setFrameID(id);
    }
    static void SetVersion(Frame& frame, unsigned version) { HeaderOf(frame)->setVersion(version); }

private:
    static Header* HeaderOf(const Frame& frame) { return (frame.*(&FrameAccess::header))(); }
};

// What stands in front of the frames; 0 if that is none, or more than there is.
unsigned ExtendedHeaderSize(const TagLib::ID3v2::Header& header, const TagLib::ByteVector& content);

// A copy of the list: what is done to the tag's own would move it.
using Frames = std::vector<TagLib::ID3v2::Frame*>;
Frames FramesOf(const TagLib::ID3v2::Tag& tag);
Frames FramesOf(const TagLib::ID3v2::Tag& tag, const char* id);

// The frames of one class; ones of the same id that the library could not read
// are left out.
template <typename Class>
std::vector<Class*> FramesAs(const TagLib::ID3v2::Tag& tag, const char* id) {
    const TagLib::ID3v2::FrameList& list = tag.frameList(TagLib::ByteVector(id));
    std::vector<Class*> found;
    for (TagLib::ID3v2::Frame* frame : list)
        if (auto* typed = dynamic_cast<Class*>(frame))
            found.push_back(typed);
    return found;
}

// Compares without copies; the table names frames by wide texts.
template <typename Unit>
bool IsId(const TagLib::ByteVector& id, const Unit* name) {
    const std::basic_string_view<Unit> units(name);
    return std::equal(id.begin(), id.end(), units.begin(), units.end());
}

// What a tag has, as it is when this is made. Most rows of the table stand for
// frames that a tag lacks, and the library's own search is dear.
class FrameNames {
public:
    explicit FrameNames(const TagLib::ID3v2::Tag& tag);

    template <typename Unit>
    bool HasFrame(const Unit* id) const {
        return std::any_of(ids_.begin(), ids_.end(),
                           [id](const TagLib::ByteVector& own) { return IsId(own, id); });
    }
    // A TXXX frame of that description, in any case.
    bool HasUserText(const wchar_t* description) const;

private:
    std::vector<TagLib::ByteVector> ids_;
    std::vector<TagLib::String> descriptions_;
};

// The encoding of texts that are written: UTF-16 in ID3v2.3, UTF-8 in 2.4.
TagLib::String::Type TextEncodingOf(int version);
// The values as fields of one frame: ID3v2.3 has a single one.
TagLib::StringList FieldsFor(const TagLib::StringList& values, int version);

// The fields of all text frames of that id.
TagLib::StringList TextsOf(const TagLib::ID3v2::Tag& tag, const char* id);
// Makes them one frame with these values, in the place of the first.
void PutTexts(TagLib::ID3v2::Tag& tag, const char* id, const TagLib::StringList& values,
              int version);
void RemoveTexts(TagLib::ID3v2::Tag& tag, const char* id);

// The same for TXXX frames of one description, in any case; a frame that is
// there keeps its spelling.
TagLib::StringList UserTextsOf(const TagLib::ID3v2::Tag& tag, const TagLib::String& description);
void PutUserTexts(TagLib::ID3v2::Tag& tag, const TagLib::String& description,
                  const TagLib::StringList& values, int version);
void RemoveUserTexts(TagLib::ID3v2::Tag& tag, const TagLib::String& description);

// A frame of plain bytes, in the form of ID3v2.4; its header is made anew when it
// is rendered. The caller gives it to a tag.
TagLib::ID3v2::UnknownFrame* MakeBytesFrame(const char* id, const TagLib::ByteVector& bytes);

// A frame of these bytes under a name that the library would not write in
// ID3v2.3, or would change. The caller gives it to a tag; it can be saved once.
TagLib::ID3v2::Frame* MakeCarriedFrame(const TagLib::ByteVector& id,
                                       const TagLib::ByteVector& fields);

} // namespace tagmap
