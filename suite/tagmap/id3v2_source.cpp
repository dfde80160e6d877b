#include "suite/tagmap/id3v2_source.h"

#include "suite/tagmap/id3v2_frames.h"
#include "suite/tagmap/id3v2_guard.h"
#include "suite/tagmap/id3v2_tags.h"
#include "suite/tagmap/id3v2_unsynch.h"

#include <id3v2framefactory.h>
#include <id3v2header.h>
#include <id3v2synchdata.h>
#include <textidentificationframe.h>

#include <algorithm>
#include <climits>
#include <utility>

namespace tagmap {

namespace {

namespace SynchData = TagLib::ID3v2::SynchData;
using TagLib::ByteVector;
using TagLib::File;
using TagLib::String;
using TagLib::ID3v2::Frame;
using TagLib::ID3v2::FrameFactory;
using TagLib::ID3v2::Header;
using TagLib::ID3v2::Tag;
using TextFrame = TagLib::ID3v2::TextIdentificationFrame;

constexpr unsigned WholeTag = UINT_MAX;
constexpr unsigned FooterSize = 10;
constexpr unsigned FrameIdSize = 4; // from ID3v2.3 on
// A size has 28 bits; the headers of the frames and the padding need some room.
constexpr size_t LargestTag = 0x0FFFFFFF - 0x100000;

bool IsCode(const String& text) {
    bool isNumber = false;
    text.toInt(&isNumber);
    return isNumber || text == "RX" || text == "CR";
}

// A genre begins with brackets around something that is no code of one.
bool HasOtherBrackets(const String& genre) {
    unsigned at = 0;
    while (at < genre.size() && genre[static_cast<int>(at)] == L'(') {
        const int end = genre.find(")", static_cast<int>(at) + 1);
        if (end < 0)
            return false;
        if (!IsCode(genre.substr(at + 1, static_cast<unsigned>(end) - at - 1)))
            return true;
        at = static_cast<unsigned>(end) + 1;
    }
    return false;
}

// The fields of a text frame as they stand, from what follows its header.
TagLib::StringList RawTexts(const ByteVector& fields) {
    // The library looks into genres by their name.
    constexpr char PlainText[] = "TIT1";
    const ByteVector flags(2, '\0');
    return TextFrame(ByteVector(PlainText) + SynchData::fromUInt(fields.size()) + flags + fields)
        .fieldList();
}

void RestoreGenres(TextFrame& frame, const ByteVector& fields) {
    const TagLib::StringList texts = RawTexts(fields);
    for (const String& text : texts) {
        if (HasOtherBrackets(text)) {
            frame.setText(texts);
            return;
        }
    }
}

// The frame as it is read from all of its fields. Null if the library can't, or
// would have no end to it.
Frame* MakeFrame(const ByteVector& id, const ByteVector& fields) {
    Header plain;
    plain.setMajorVersion(static_cast<unsigned>(Id3v2NewVersion));
    const ByteVector flags(2, '\0');
    const ByteVector bytes = id + SynchData::fromUInt(fields.size()) + flags + fields;
    return Id3v2FramesAreBounded(plain, bytes)
               ? FrameFactory::instance()->createFrame(bytes, &plain)
               : nullptr;
}

// Nothing but padding, or less than a frame, follows the last frame.
bool EndsAt(const Header& header, const ByteVector& content, unsigned at) {
    unsigned end = content.size();
    if (header.footerPresent() && end >= FooterSize)
        end -= FooterSize;
    return at + Frame::headerSize(header.majorVersion()) >= end ||
           std::all_of(content.begin() + static_cast<int>(at),
                       content.begin() + static_cast<int>(end),
                       [](char byte) { return byte == 0; });
}

// The library counts what follows a tag and is one too as its padding.
bool HasTagBehind(const Header& header, const ByteVector& bytes) {
    constexpr unsigned SizeAt = 6;
    return SynchData::toUInt(bytes.mid(SizeAt, sizeof(uint32_t))) != header.tagSize();
}

// The bit of an extended header. In 2.2 it says that the tag is compressed, in a
// way that was never defined, and in 2.3 the size leaves itself out: the library
// takes both for what 2.4 has.
bool IsMisread(const Header& header) {
    return header.extendedHeader() &&
           header.majorVersion() < static_cast<unsigned>(Id3v2NewVersion);
}

} // namespace

Id3v2Source::Id3v2Source(Tag* tag, const BytesOf& bytesOf) : tag_(tag), bytesOf_(bytesOf) {
    if (tag_ && (MayHaveMisreadFrame() || MayHaveBracketedGenre()))
        LookAtBytes();
}

Id3v2Source::Id3v2Source(Tag* tag, const ByteVector& bytes)
    : Id3v2Source(tag, [bytes](unsigned at, unsigned count) { return bytes.mid(at, count); }) {}

Id3v2Source::Id3v2Source(Tag* tag, File& file, long offset)
    : Id3v2Source(tag, [tag, &file, offset](unsigned at, unsigned count) {
          const unsigned size = tag->header()->completeTagSize();
          file.seek(offset + static_cast<long>(at));
          const ByteVector bytes = file.readBlock(std::min(count, size - std::min(at, size)));
          const bool isThere = at > 0 || bytes.startsWith(Header::fileIdentifier());
          return isThere ? bytes : ByteVector();
      }) {}

// Whether a length in front of a frame is right, its bytes alone tell.
bool Id3v2Source::MayHaveMisreadFrame() const {
    const TagLib::ID3v2::FrameList& frames = tag_->frameList();
    return std::any_of(frames.begin(), frames.end(),
                       [](const Frame* frame) { return FrameAccess::HasLengthInFront(*frame); });
}

// Only the bytes of the genres are read. Where they can't be found by the lengths
// of the frames alone, any genre may have brackets.
bool Id3v2Source::MayHaveBracketedGenre() const {
    const Header& header = *tag_->header();
    const bool isPlain = !header.unsynchronisation() && !header.extendedHeader();
    const unsigned headerSize = Frame::headerSize(header.majorVersion());
    unsigned at = Header::size();
    for (const Frame* frame : tag_->frameList()) {
        at += headerSize;
        if (frame->frameID() == GenreFrame &&
            (!isPlain || bytesOf_(at, frame->size()).find("(") >= 0))
            return true;
        at += frame->size();
    }
    return false;
}

bool Id3v2Source::SurvivesSave() {
    LookAtBytes();
    return survives_;
}

void Id3v2Source::LookAtBytes() {
    Tag* const tag = std::exchange(tag_, nullptr);
    if (!tag)
        return;
    const ByteVector bytes = bytesOf_(0, WholeTag);
    const Header& header = *tag->header();
    // A damaged tag that claims more than there is would take the audio with it.
    if (bytes.size() < header.completeTagSize() || IsMisread(header) ||
        HasTagBehind(header, bytes)) {
        survives_ = false;
        return;
    }
    version_ = static_cast<int>(header.majorVersion());
    const PlainBytes content = ContentOf(header, bytes);
    // Before the walk, which reads some frames anew, without their flags.
    survives_ = !content.IsDoubtful && Id3v2SurvivesSave(*tag);
    Walk(*tag, content.Bytes);
    survives_ = survives_ && EndsAt(header, content.Bytes, end_);
}

// Walks over the frames where they stand.
void Id3v2Source::Walk(Tag& tag, const ByteVector& content) {
    const Header& header = *tag.header();
    const unsigned headerSize = Frame::headerSize(header.majorVersion());
    end_ = ExtendedHeaderSize(header, content);
    for (Frame* frame : FramesOf(tag)) {
        const unsigned size = frame->size();
        // All move to the list's end, so that they keep their order.
        tag.removeFrame(frame, false);
        if (!FrameAccess::NeedsFlags(*frame))
            frame = TakeFields(header, frame, content.mid(end_, FrameIdSize),
                               content.mid(end_ + headerSize, size));
        tag.addFrame(frame);
        end_ += headerSize + size;
    }
}

// Notes what the frame holds. Gives it back, or one in its place.
Frame* Id3v2Source::TakeFields(const Header& header, Frame* frame, const ByteVector& id,
                               const ByteVector& stored) {
    const PlainBytes fields = FieldsOf(header, *frame, stored);
    survives_ = survives_ && !fields.IsDoubtful;
    if (IsMisreadByLength(header, *frame, stored, fields.Bytes)) {
        if (Frame* whole = MakeFrame(id, fields.Bytes)) {
            delete frame;
            frame = whole;
        }
    }
    frames_.emplace(frame, SourceFrame{id, fields.Bytes, ByteVector()});
    auto* text = dynamic_cast<TextFrame*>(frame);
    if (text && frame->frameID() == GenreFrame)
        RestoreGenres(*text, fields.Bytes);
    return frame;
}

void Id3v2Source::Remember(Tag& tag) {
    LookAtBytes();
    if (version_ != Id3v2VersionToWrite(&tag))
        return;
    for (auto& [frame, source] : frames_)
        source.Rendered = frame->render();
}

const Id3v2Source::SourceFrame* Id3v2Source::SourceOf(Frame* frame,
                                                      const ByteVector& rendered) const {
    const auto found = frames_.find(frame);
    return found != frames_.end() && found->second.Rendered == rendered ? &found->second : nullptr;
}

bool Id3v2Source::PrepareSave(Tag& tag, int version) {
    size_t size = 0;
    for (Frame* frame : FramesOf(tag)) {
        const ByteVector rendered = frame->render();
        const SourceFrame* source = version == version_ ? SourceOf(frame, rendered) : nullptr;
        // All move to the list's end, so that they keep their order.
        tag.removeFrame(frame, false);
        tag.addFrame(source ? MakeCarriedFrame(source->Id, source->Fields) : frame);
        if (source)
            delete frame;
        size += rendered.size();
    }
    PrepareId3v2Save(tag, version);
    return size <= LargestTag;
}

} // namespace tagmap
