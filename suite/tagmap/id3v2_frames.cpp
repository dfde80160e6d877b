#include "suite/tagmap/id3v2_frames.h"

#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/id3v2_tags.h"
#include "suite/tagmap/tag_values.h"

#include <id3v2extendedheader.h>
#include <id3v2synchdata.h>
#include <textidentificationframe.h>

#include <algorithm>

namespace tagmap {

namespace {

namespace SynchData = TagLib::ID3v2::SynchData;
using TagLib::ByteVector;
using TagLib::String;
using TagLib::StringList;
using TagLib::ID3v2::Frame;
using TagLib::ID3v2::Tag;
using TagLib::ID3v2::UnknownFrame;
using TextFrame = TagLib::ID3v2::TextIdentificationFrame;
using UserText = TagLib::ID3v2::UserTextIdentificationFrame;

std::vector<UserText*> UserTextFrames(const Tag& tag, const String& description) {
    std::vector<UserText*> found;
    for (UserText* frame : FramesAs<UserText>(tag, UserTextFrame))
        if (SameName(frame->description(), description))
            found.push_back(frame);
    return found;
}

// Takes all frames but the first off the tag.
template <typename Class>
void KeepFirst(Tag& tag, const std::vector<Class*>& frames) {
    for (size_t index = 1; index < frames.size(); ++index)
        tag.removeFrame(frames[index]);
}

template <typename Class>
void RemoveFrames(Tag& tag, const std::vector<Class*>& frames) {
    for (Class* frame : frames)
        tag.removeFrame(frame);
}

// A frame's bytes under a name that the library writes; the frame takes its
// own name when it is rendered, which is behind the library's choice.
class CarriedFrame : public Frame {
public:
    CarriedFrame(const ByteVector& id, const ByteVector& fields)
        : Frame(ByteVector("XCAR")), id_(id), fields_(fields) {}
    String toString() const override { return String(); }

protected:
    void parseFields(const ByteVector&) override {}
    ByteVector renderFields() const override {
        header()->setFrameID(id_);
        return fields_;
    }

private:
    ByteVector id_;
    ByteVector fields_;
};

} // namespace

unsigned ExtendedHeaderSize(const TagLib::ID3v2::Header& header, const ByteVector& content) {
    if (!header.extendedHeader())
        return 0;
    TagLib::ID3v2::ExtendedHeader extended;
    extended.setData(content);
    return extended.size() <= content.size() ? extended.size() : 0;
}

Frames FramesOf(const Tag& tag) {
    return Frames(tag.frameList().begin(), tag.frameList().end());
}

Frames FramesOf(const Tag& tag, const char* id) {
    const TagLib::ID3v2::FrameList& list = tag.frameList(ByteVector(id));
    return Frames(list.begin(), list.end());
}

FrameNames::FrameNames(const Tag& tag) {
    ids_.reserve(tag.frameList().size());
    for (const Frame* frame : tag.frameList()) {
        ids_.push_back(frame->frameID());
        if (ids_.back() != UserTextFrame)
            continue;
        if (const auto* text = dynamic_cast<const UserText*>(frame))
            descriptions_.push_back(text->description());
    }
}

bool FrameNames::HasUserText(const wchar_t* description) const {
    return std::any_of(descriptions_.begin(), descriptions_.end(),
                       [description](const String& own) { return SameName(own, description); });
}

String::Type TextEncodingOf(int version) {
    return version == Id3v2OldVersion ? String::UTF16 : String::UTF8;
}

StringList FieldsFor(const StringList& values, int version) {
    return version == Id3v2OldVersion ? StringList(JoinForSingleField(values)) : values;
}

StringList TextsOf(const Tag& tag, const char* id) {
    StringList texts;
    for (const TextFrame* frame : FramesAs<TextFrame>(tag, id))
        texts.append(frame->fieldList());
    return texts;
}

void PutTexts(Tag& tag, const char* id, const StringList& values, int version) {
    const std::vector<TextFrame*> frames = FramesAs<TextFrame>(tag, id);
    // What says so already keeps its encoding, and so its bytes.
    if (frames.size() == 1 && frames[0]->fieldList() == FieldsFor(values, version))
        return;
    KeepFirst(tag, frames);
    TextFrame* frame = frames.empty() ? new TextFrame(id, TextEncodingOf(version)) : frames[0];
    if (frames.empty())
        tag.addFrame(frame);
    frame->setTextEncoding(TextEncodingOf(version));
    frame->setText(FieldsFor(values, version));
}

void RemoveTexts(Tag& tag, const char* id) {
    RemoveFrames(tag, FramesAs<TextFrame>(tag, id));
}

StringList UserTextsOf(const Tag& tag, const String& description) {
    StringList texts;
    for (const UserText* frame : UserTextFrames(tag, description)) {
        StringList fields = frame->fieldList();
        fields.erase(fields.begin()); // the description
        texts.append(fields);
    }
    return texts;
}

void PutUserTexts(Tag& tag, const String& description, const StringList& values, int version) {
    const std::vector<UserText*> frames = UserTextFrames(tag, description);
    KeepFirst(tag, frames);
    UserText* frame = frames.empty() ? new UserText(TextEncodingOf(version)) : frames[0];
    if (frames.empty()) {
        frame->setDescription(description);
        tag.addFrame(frame);
    }
    frame->setTextEncoding(TextEncodingOf(version));
    frame->setText(FieldsFor(values, version));
}

void RemoveUserTexts(Tag& tag, const String& description) {
    RemoveFrames(tag, UserTextFrames(tag, description));
}

UnknownFrame* MakeBytesFrame(const char* id, const ByteVector& bytes) {
    const ByteVector flags(2, '\0');
    return new UnknownFrame(ByteVector(id) + SynchData::fromUInt(bytes.size()) + flags + bytes);
}

Frame* MakeCarriedFrame(const ByteVector& id, const ByteVector& fields) {
    return new CarriedFrame(id, fields);
}

} // namespace tagmap
