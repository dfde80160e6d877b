#include "suite/tagmap/id3v2_people.h"

#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/id3v2_frames.h"

#include <textidentificationframe.h>

#include <iterator>
#include <vector>

namespace tagmap {

namespace {

using TagLib::String;
using TagLib::StringList;
using TagLib::ID3v2::Frame;
using TagLib::ID3v2::Tag;
using TextFrame = TagLib::ID3v2::TextIdentificationFrame;

constexpr char RoleFrame[] = "TIPL";
constexpr char InstrumentFrame[] = "TMCL";
constexpr wchar_t PerformerPrefix[] = L"performer:";

// The element's name for a pair. ID3v2.3 has one frame for both, so an
// instrument can stand among the roles.
NString NameOfPair(const Frame& frame, const String& role) {
    if (frame.frameID() == RoleFrame)
        for (const auto& [key, text] : TextFrame::involvedPeopleMap())
            if (SameName(role, text))
                return LowerName(key);
    NString name(PerformerPrefix);
    name.Append(ToNString(role));
    return name;
}

bool SameElement(const NString& a, const NString& b) {
    return a.Compare(b, 0, true) == 0;
}

// The first half of the pairs that a name stands for.
String RoleOf(const NString& name) {
    const String key = ToTagLib(name).upper();
    if (TextFrame::involvedPeopleMap().contains(key))
        return TextFrame::involvedPeopleMap()[key];
    return ToTagLib(name.From(static_cast<int>(wcslen(PerformerPrefix)) + 1));
}

// The pairs that stand for other names. An odd field at the end stays too.
StringList PairsOfOthers(const TextFrame& frame, const NString& name) {
    const StringList fields = frame.fieldList();
    StringList kept;
    for (auto field = fields.begin(); field != fields.end(); ++field) {
        const String& role = *field;
        const bool isPair = std::next(field) != fields.end();
        if (isPair)
            ++field;
        if (isPair && SameElement(NameOfPair(frame, role), name))
            continue;
        kept.append(role);
        if (isPair)
            kept.append(*field);
    }
    return kept;
}

std::vector<TextFrame*> PeopleFrames(const Tag& tag) {
    std::vector<TextFrame*> frames = FramesAs<TextFrame>(tag, RoleFrame);
    for (TextFrame* frame : FramesAs<TextFrame>(tag, InstrumentFrame))
        frames.push_back(frame);
    return frames;
}

void AddPairs(Tag& tag, const NString& name, const StringList& values, int version) {
    const bool isRole = TextFrame::involvedPeopleMap().contains(ToTagLib(name).upper());
    const char* id = isRole ? RoleFrame : InstrumentFrame;
    std::vector<TextFrame*> frames = FramesAs<TextFrame>(tag, id);
    if (frames.empty()) {
        frames.push_back(new TextFrame(id, TextEncodingOf(version)));
        tag.addFrame(frames[0]);
    }
    // In front of an odd field there, which would shift the pairs.
    StringList pairs;
    for (const String& value : values) {
        pairs.append(RoleOf(name));
        pairs.append(value);
    }
    pairs.append(frames[0]->fieldList());
    frames[0]->setTextEncoding(TextEncodingOf(version));
    frames[0]->setText(pairs);
}

} // namespace

void NamedTexts::Add(const NString& name, const StringList& values) {
    const auto [place, isNew] = places_.emplace(NameKey(name), entries_.size());
    if (isNew)
        entries_.emplace_back(name, values);
    else
        entries_[place->second].second.append(values);
}

bool IsPeopleFrame(const Frame& frame) {
    const TagLib::ByteVector id = frame.frameID();
    return (id == RoleFrame || id == InstrumentFrame) && dynamic_cast<const TextFrame*>(&frame);
}

bool IsPersonName(const NString& name) {
    const String text = ToTagLib(name);
    return TextFrame::involvedPeopleMap().contains(text.upper()) ||
           (BeginsWithName(text, PerformerPrefix) && text.size() > String(PerformerPrefix).size());
}

void ReadPeople(const Frame& frame, NamedTexts& texts) {
    const StringList fields = dynamic_cast<const TextFrame&>(frame).fieldList();
    const String* role = nullptr;
    for (const String& field : fields) {
        if (role)
            texts.Add(NameOfPair(frame, *role), StringList(field));
        role = role ? nullptr : &field;
    }
}

void PutPeople(Tag& tag, const NString& name, const StringList& values, int version) {
    for (TextFrame* frame : PeopleFrames(tag)) {
        const StringList kept = PairsOfOthers(*frame, name);
        if (kept.isEmpty())
            tag.removeFrame(frame);
        else
            frame->setText(kept);
    }
    if (!values.isEmpty())
        AddPairs(tag, name, values, version);
}

void RemovePeople(Tag& tag) {
    RemoveTexts(tag, RoleFrame);
    RemoveTexts(tag, InstrumentFrame);
}

} // namespace tagmap
