#include "suite/tagmap/id3v2_names.h"

#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/id3v2_frames.h"
#include "suite/tagmap/id3v2_people.h"
#include "suite/tagmap/id3v2_tags.h"
#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/pictures.h"

#include <commentsframe.h>
#include <textidentificationframe.h>
#include <uniquefileidentifierframe.h>
#include <unsynchronizedlyricsframe.h>
#include <urllinkframe.h>

#include <memory>

namespace tagmap {

namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::StringList;
using TagLib::ID3v2::CommentsFrame;
using TagLib::ID3v2::Frame;
using TagLib::ID3v2::Tag;
using TagLib::ID3v2::UniqueFileIdentifierFrame;
using TagLib::ID3v2::UrlLinkFrame;
using TagLib::ID3v2::UserUrlLinkFrame;
using LyricsFrame = TagLib::ID3v2::UnsynchronizedLyricsFrame;
using TextFrame = TagLib::ID3v2::TextIdentificationFrame;
using UserText = TagLib::ID3v2::UserTextIdentificationFrame;

constexpr wchar_t CommentName[] = L"comment";
constexpr wchar_t LyricsName[] = L"lyrics";
constexpr wchar_t LinkName[] = L"url";
constexpr wchar_t TrackIdName[] = L"musicbrainz_trackid";
constexpr char TrackIdOwner[] = "http://musicbrainz.org";
constexpr unsigned TrackIdMost = 64;    // bytes of an identifier in a UFID frame
constexpr char PodcastFrame[] = "PCST"; // a mark without a text

// TXXX frames that hold a row's text: the row's own, and the element's name,
// which other taggers write.
bool IsTableUserText(const String& description) {
    for (const clMappingRow& row : MappingRows()) {
        const bool isUserText = BeginsWithName(row.Id3v2, UserTextPrefix);
        if (SameName(description, row.Element) ||
            (isUserText && SameName(description, row.Id3v2 + UserTextPrefix.size())))
            return true;
    }
    return false;
}

bool IsTableId(const ByteVector& id) {
    for (const clMappingRow& row : MappingRows())
        if (IsId(id, row.Id3v2))
            return true;
    return id == OldYearFrame;
}

// Names that stand for something else than a text.
bool IsReserved(const NString& name) {
    const String text = ToTagLib(name);
    return IsArtName(name) || SameName(text, CdTocName) || BeginsWithName(text, RiffPrefix);
}

NString Described(const wchar_t* name, const String& description) {
    NString text(name);
    if (!description.isEmpty()) {
        text.Append(L":");
        text.Append(ToNString(description));
    }
    return text;
}

NString UserTextName(const String& description) {
    const String key = FrameAccess::UserTextKey(description);
    const NString name = key == description.upper() ? ToNString(description) : LowerName(key);
    return IsReserved(name) ? NString() : name;
}

NString LyricsFrameName(const LyricsFrame& frame) {
    // The library's own description of lyrics.
    return SameName(frame.description(), LyricsName) ? NString(LyricsName)
                                                     : Described(LyricsName, frame.description());
}

// The element's name for the frame; empty if it is a row's, or none that is
// read as a text.
NString NameOf(const Frame& frame) {
    if (IsTableFrame(frame) || IsPeopleFrame(frame))
        return NString();
    if (const auto* user = dynamic_cast<const UserText*>(&frame))
        return UserTextName(user->description());
    if (const auto* comment = dynamic_cast<const CommentsFrame*>(&frame))
        return Described(CommentName, comment->description());
    if (const auto* lyrics = dynamic_cast<const LyricsFrame*>(&frame))
        return LyricsFrameName(*lyrics);
    if (const auto* link = dynamic_cast<const UserUrlLinkFrame*>(&frame))
        return Described(LinkName, link->description());
    if (const auto* id = dynamic_cast<const UniqueFileIdentifierFrame*>(&frame))
        return id->owner() == TrackIdOwner ? NString(TrackIdName) : NString();
    if (dynamic_cast<const TextFrame*>(&frame) || dynamic_cast<const UrlLinkFrame*>(&frame))
        return LowerName(FrameAccess::KeyOf(frame.frameID()));
    return NString();
}

StringList ValuesOf(const Frame& frame) {
    if (const auto* text = dynamic_cast<const TextFrame*>(&frame)) {
        StringList fields = text->fieldList();
        if (dynamic_cast<const UserText*>(&frame) && !fields.isEmpty())
            fields.erase(fields.begin()); // the description
        return fields;
    }
    if (const auto* link = dynamic_cast<const UrlLinkFrame*>(&frame))
        return StringList(link->url());
    if (const auto* id = dynamic_cast<const UniqueFileIdentifierFrame*>(&frame))
        return StringList(String(id->identifier(), String::UTF8));
    return StringList(frame.toString());
}

Frames FramesNamed(const Tag& tag, const NString& name) {
    Frames found;
    for (Frame* frame : FramesOf(tag))
        if (NameOf(*frame).Compare(name, 0, true) == 0)
            found.push_back(frame);
    return found;
}

// Puts the values into a frame that is there; false if it can't hold them.
bool FillTexts(Frame& frame, const StringList& values, int version) {
    auto* text = dynamic_cast<TextFrame*>(&frame);
    if (!text)
        return false;
    text->setTextEncoding(TextEncodingOf(version));
    // The description is one of the fields, and the setter isn't virtual.
    if (auto* user = dynamic_cast<UserText*>(text))
        user->setText(FieldsFor(values, version));
    else
        text->setText(FieldsFor(values, version));
    return true;
}

template <typename Class>
bool FillSingleText(Frame& frame, const StringList& values, int version) {
    auto* typed = dynamic_cast<Class*>(&frame);
    if (!typed)
        return false;
    typed->setTextEncoding(TextEncodingOf(version));
    typed->setText(JoinForSingleField(values));
    return true;
}

bool FillLink(Frame& frame, const StringList& values) {
    auto* link = dynamic_cast<UrlLinkFrame*>(&frame);
    if (!link || values.size() != 1 || !values.front().isLatin1())
        return false;
    link->setUrl(values.front());
    return true;
}

bool FillIdentifier(Frame& frame, const StringList& values) {
    auto* id = dynamic_cast<UniqueFileIdentifierFrame*>(&frame);
    if (!id || values.size() != 1 || values.front().data(String::UTF8).size() > TrackIdMost)
        return false;
    id->setIdentifier(values.front().data(String::UTF8));
    return true;
}

bool Fill(Frame& frame, const StringList& values, int version) {
    return FillTexts(frame, values, version) ||
           FillSingleText<CommentsFrame>(frame, values, version) ||
           FillSingleText<LyricsFrame>(frame, values, version) || FillLink(frame, values) ||
           FillIdentifier(frame, values);
}

// What follows `prefix` and its colon in the name.
bool IsDescribed(const NString& name, const wchar_t* prefix, String& description) {
    const String text = ToTagLib(name);
    const String beginning = String(prefix) + ":";
    if (!BeginsWithName(text, beginning) || text.size() == beginning.size())
        return false;
    description = text.substr(beginning.size());
    return true;
}

template <typename Class>
std::unique_ptr<Frame> DescribedFrame(const String& description, int version) {
    auto frame = std::make_unique<Class>(TextEncodingOf(version));
    frame->setDescription(description);
    return frame;
}

// An empty frame of the kind that the library has for the name, or null.
std::unique_ptr<Frame> KnownFrame(const NString& name, int version) {
    const String key = ToTagLib(name);
    String description;
    if (IsDescribed(name, CommentName, description))
        return DescribedFrame<CommentsFrame>(description, version);
    if (SameName(key, LyricsName) || IsDescribed(name, LyricsName, description))
        return DescribedFrame<LyricsFrame>(description, version);
    if (SameName(key, LinkName) || IsDescribed(name, LinkName, description))
        return DescribedFrame<UserUrlLinkFrame>(description, version);
    if (SameName(key, TrackIdName))
        return std::make_unique<UniqueFileIdentifierFrame>(String(TrackIdOwner), ByteVector());
    const ByteVector id = FrameAccess::IdOf(key);
    if (id.isEmpty() || IsTableId(id) || id == PodcastFrame)
        return nullptr;
    if (FrameAccess::IsLink(id))
        return std::make_unique<UrlLinkFrame>(id);
    return std::make_unique<TextFrame>(id, TextEncodingOf(version));
}

std::unique_ptr<Frame> MakeFrame(const NString& name, const StringList& values, int version) {
    std::unique_ptr<Frame> frame = KnownFrame(name, version);
    if (frame && Fill(*frame, values, version))
        return frame;
    auto text = std::make_unique<UserText>(TextEncodingOf(version));
    text->setDescription(FrameAccess::UserTextDescription(ToTagLib(name)));
    text->setText(FieldsFor(values, version));
    return text;
}

// One value each, if there are as many; a comment or lyrics in several
// languages come back as they were read.
bool FillOneEach(const Frames& frames, const StringList& values, int version) {
    if (frames.size() < 2 || frames.size() != values.size())
        return false;
    for (const Frame* frame : frames)
        if (ValuesOf(*frame).size() != 1 || dynamic_cast<const TextFrame*>(frame))
            return false;
    bool filled = true;
    auto frame = frames.begin();
    for (const String& value : values)
        filled = Fill(**frame++, StringList(value), version) && filled;
    return filled;
}

// The first of the frames gets the values, the others go.
void WriteFrames(Tag& tag, const Frames& frames, const NString& name, const StringList& values,
                 int version) {
    if (FillOneEach(frames, values, version))
        return;
    const bool isFilled = !values.isEmpty() && !frames.empty() && Fill(*frames[0], values, version);
    for (size_t index = isFilled ? 1 : 0; index < frames.size(); ++index)
        tag.removeFrame(frames[index]);
    if (!isFilled && !values.isEmpty())
        tag.addFrame(MakeFrame(name, values, version).release());
}

// A TXXX frame of this description would be read under another name.
bool IsReadable(const NString& name) {
    return !IsReserved(name) && FrameAccess::UserTextKey(ToTagLib(name)) == ToTagLib(name).upper();
}

} // namespace

bool IsTableFrame(const Frame& frame) {
    if (const auto* comment = dynamic_cast<const CommentsFrame*>(&frame))
        return comment->description().isEmpty();
    if (const auto* user = dynamic_cast<const UserText*>(&frame))
        return IsTableUserText(user->description());
    return IsTableId(frame.frameID());
}

void ReadOtherTexts(const Tag& tag, clTagRecord& record) {
    NamedTexts texts;
    for (const Frame* frame : tag.frameList()) {
        if (IsPeopleFrame(*frame)) {
            ReadPeople(*frame, texts);
            continue;
        }
        const NString name = NameOf(*frame);
        if (!name.IsEmpty())
            texts.Add(name, ValuesOf(*frame));
    }
    for (const auto& [name, values] : texts)
        AddValues(record, name, values);
}

bool WriteOtherTexts(Tag& tag, const NString& name, const StringList& values, int version) {
    if (!IsReadable(name))
        return false;
    if (IsPersonName(name))
        PutPeople(tag, name, values, version);
    else
        WriteFrames(tag, FramesNamed(tag, name), name, values, version);
    return true;
}

void RemoveOtherTexts(Tag& tag) {
    RemovePeople(tag);
    for (Frame* frame : FramesOf(tag))
        if (!NameOf(*frame).IsEmpty())
            tag.removeFrame(frame);
}

} // namespace tagmap
