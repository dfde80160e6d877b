// The questions of tag_file.h about a file that was changed, or may not need to
// be.
#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/format_tags.h"
#include "suite/tagmap/pictures.h"
#include "suite/tagmap/tag_file.h"

#include <audioproperties.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace tagmap {

namespace {
// A file that was opened to be looked at, with its tags as a record.
class LookedAtFile {
public:
    explicit LookedAtFile(const wchar_t* path) : file_(path, FileStream::Mode::Read, true) {
        tags_ = TagsOf(file_);
        if (tags_)
            tags_->Read(record_);
    }

    // Readable as audio, tags and all.
    bool IsSound() {
        return tags_ && !file_.Stream().Failed() && file_.File().audioProperties() != nullptr;
    }
    clTagRecord& Record() { return record_; }
    FormatTags& Tags() { return *tags_; }
    Format Kind() const { return file_.Kind(); }
    const TagLib::AudioProperties& Audio() { return *file_.File().audioProperties(); }

private:
    AudioFile file_;
    std::unique_ptr<FormatTags> tags_;
    clTagRecord record_;
};

// The parts of a value, whatever stands between them, in an order of their own:
// formats join them, and hand them back in another order.
std::vector<std::wstring> SortedParts(const NString& value) {
    NString text(value);
    text.Replace(L"; ", L"\r");
    std::vector<std::wstring> parts;
    for (const TagLib::String& part : SplitValues(text))
        parts.push_back(part.toWString());
    std::sort(parts.begin(), parts.end());
    return parts;
}

bool SameNumbers(const NString& a, const NString& b) {
    clNumberPair first;
    clNumberPair second;
    constexpr int most = 65535;
    return ParseNumberPair(a, most, first) && ParseNumberPair(b, most, second) &&
           first.Number == second.Number && first.Total == second.Total;
}

bool LacksText(LookedAtFile& file, const NString& name) {
    const clTagElement* found = file.Record().Find(name.c_str());
    return !found ||
           (SameName(ToTagLib(name), L"encoder") && found->Value == file.Tags().EncoderOfStream());
}

bool HoldsText(LookedAtFile& file, const clTagElement& wanted) {
    if (AsksRemoval(wanted))
        return LacksText(file, wanted.Name);
    const clTagElement* found = file.Record().Find(wanted.Name.c_str());
    if (!found)
        return false;
    if (wanted.Data.Size > 0)
        return found->Data.Equals(wanted.Data);
    // MP4 keeps numbers as numbers.
    return SortedParts(found->Value) == SortedParts(wanted.Value) ||
           (file.Kind() == Format::Mp4 && SameNumbers(found->Value, wanted.Value));
}

std::vector<const clTagElement*> PicturesOf(clTagRecord& record) {
    std::vector<const clTagElement*> pictures;
    for (int index = 0; index < record.Count(); ++index) {
        if (IsArtName(record[index]->Name))
            pictures.push_back(record[index]);
    }
    return pictures;
}

// A picture that was set without a description is a front cover, and shown as
// one from then on.
NString ShownDescription(const NString& asked) {
    return DescriptionOf(PictureTypeOf(asked), NativeDescriptionOf(asked));
}

bool IsThisPicture(const clTagElement& found, const clTagElement& wanted, bool sameNumber,
                   bool sameDescription) {
    int foundNumber = 0;
    int wantedNumber = 0;
    NString foundDescription;
    NString wantedDescription;
    return ParseArtName(found.Name, foundNumber, foundDescription) &&
           ParseArtName(wanted.Name, wantedNumber, wantedDescription) &&
           (!sameNumber || foundNumber == wantedNumber) &&
           (!sameDescription ||
            foundDescription.Compare(ShownDescription(wantedDescription), 0, true) == 0) &&
           found.Data.Equals(wanted.Data);
}

// A picture that was added beyond the next free number got that one.
bool HoldsPicture(LookedAtFile& file, const clTagElement& wanted) {
    int number = 0;
    NString description;
    if (!ParseArtName(wanted.Name, number, description))
        return false;
    const std::vector<const clTagElement*> pictures = PicturesOf(file.Record());
    const bool isInside = number <= static_cast<int>(pictures.size());
    if (wanted.Data.Size == 0)
        return !isInside;
    return std::any_of(pictures.begin(), pictures.end(), [&](const clTagElement* found) {
        return IsThisPicture(*found, wanted, isInside, file.Tags().KeepsDescriptions());
    });
}

bool LacksEverything(LookedAtFile& file) {
    for (int index = 0; index < file.Record().Count(); ++index) {
        const NString name(file.Record()[index]->Name);
        if (!LacksText(file, name))
            return false;
    }
    return true;
}

bool LacksTexts(LookedAtFile& file, const NStringList& names) {
    if (names.Count == 0)
        return LacksEverything(file);
    for (int index = 0; index < names.Count; ++index) {
        if (!IsArtName(*names[index]) && !LacksText(file, *names[index]))
            return false;
    }
    return true;
}

// The pictures of `before` without those of these numbers, in their order.
bool PicturesAreLeft(clTagRecord& before, clTagRecord& after, const NStringList& names) {
    std::vector<const clTagElement*> expected = PicturesOf(before);
    RemoveArtNumbers(expected, ArtNumbersOf(names));
    const std::vector<const clTagElement*> left = PicturesOf(after);
    return std::equal(
        expected.begin(), expected.end(), left.begin(), left.end(),
        [](const clTagElement* a, const clTagElement* b) { return a->Data.Equals(b->Data); });
}

// There the library counts the frames around the tag's pages as audio: a large
// picture changes the rate of a short file.
bool IsOgg(Format kind) {
    return kind == Format::OggVorbis || kind == Format::OggOpus || kind == Format::OggSpeex ||
           kind == Format::OggFlac;
}

// Asks about each element of a request that counts: not refused, and the last
// of its name.
template <typename Question>
bool AllElements(clTagRecord& changes, const Refusals& refused, Question isRight) {
    for (int index = 0; index < changes.Count(); ++index) {
        const clTagElement& element = *changes[index];
        bool isLast = true;
        for (int later = index + 1; later < changes.Count() && isLast; ++later)
            isLast = changes[later]->Name.Compare(element.Name, 0, true) != 0;
        if (isLast && !refused.Contains(element.Name) && !isRight(element))
            return false;
    }
    return true;
}

std::vector<std::string> SortedContents(const std::vector<const NBuffer*>& pictures) {
    std::vector<std::string> contents;
    contents.reserve(pictures.size());
    for (const NBuffer* picture : pictures)
        contents.emplace_back(reinterpret_cast<const char*>(picture->Data), picture->Size);
    std::sort(contents.begin(), contents.end());
    return contents;
}

// The pictures are those that were there with the requested changes, whatever
// their order: some formats sort them by what they show. Such a format has one
// of each kind, so that a picture may have taken another's place.
bool PicturesAreAsAsked(LookedAtFile& old, LookedAtFile& changed, clTagRecord& changes,
                        const Refusals& refused) {
    clTagRecord taken;
    for (int index = 0; index < changes.Count(); ++index) {
        if (!refused.Contains(changes[index]->Name))
            taken.AddCopy(*changes[index]);
    }
    std::vector<const NBuffer*> expected;
    for (const clTagElement* picture : PicturesOf(old.Record()))
        expected.push_back(&picture->Data);
    const std::vector<clArtRequest> requests = ArtRequestsOf(taken);
    ApplyArtRequests(expected, requests, [](const NBuffer* const*, const clArtRequest& request) {
        return request.Data;
    });
    std::vector<const NBuffer*> found;
    for (const clTagElement* picture : PicturesOf(changed.Record()))
        found.push_back(&picture->Data);
    const std::vector<std::string> wanted = SortedContents(expected);
    const std::vector<std::string> got = SortedContents(found);
    if (changed.Tags().HoldsOnePictureOfAKind())
        return std::includes(wanted.begin(), wanted.end(), got.begin(), got.end());
    return wanted == got;
}

// What can't be looked at for want of memory is not as it should be.
template <typename Question>
bool AnswersYes(Question question) noexcept {
    try {
        return question();
    } catch (...) {
        return false;
    }
}

bool WithinOnePercent(int a, int b) {
    return std::abs(a - b) <= std::max(a, b) / 100 + 1;
}
} // namespace

bool Holds(const wchar_t* path, clTagRecord& changes, const Refusals& refused) {
    return AnswersYes([&] {
        LookedAtFile file(path);
        return file.IsSound() && AllElements(changes, refused, [&](const clTagElement& wanted) {
                   return IsArtName(wanted.Name) ? HoldsPicture(file, wanted)
                                                 : HoldsText(file, wanted);
               });
    });
}

bool WasSet(const wchar_t* before, const wchar_t* after, clTagRecord& changes,
            const Refusals& refused) {
    return AnswersYes([&] {
        LookedAtFile old(before);
        LookedAtFile changed(after);
        return old.IsSound() && changed.IsSound() &&
               AllElements(changes, refused,
                           [&](const clTagElement& wanted) {
                               return IsArtName(wanted.Name) || HoldsText(changed, wanted);
                           }) &&
               PicturesAreAsAsked(old, changed, changes, refused);
    });
}

bool LacksAll(const wchar_t* path, const NStringList& names) {
    return AnswersYes([&] {
        LookedAtFile file(path);
        if (!file.IsSound() || !LacksTexts(file, names))
            return false;
        const std::vector<int> numbers = ArtNumbersOf(names);
        const int pictures = static_cast<int>(PicturesOf(file.Record()).size());
        return std::all_of(numbers.begin(), numbers.end(),
                           [&](int number) { return number > pictures; });
    });
}

bool WasDeleted(const wchar_t* before, const wchar_t* after, const NStringList& names) {
    return AnswersYes([&] {
        LookedAtFile old(before);
        LookedAtFile changed(after);
        return old.IsSound() && changed.IsSound() && LacksTexts(changed, names) &&
               (names.Count == 0 || PicturesAreLeft(old.Record(), changed.Record(), names));
    });
}

bool SoundsAlike(const wchar_t* first, const wchar_t* second) {
    return AnswersYes([&] {
        LookedAtFile one(first);
        LookedAtFile other(second);
        if (!one.IsSound() || !other.IsSound() || one.Kind() != other.Kind())
            return false;
        const TagLib::AudioProperties& a = one.Audio();
        const TagLib::AudioProperties& b = other.Audio();
        return a.lengthInMilliseconds() == b.lengthInMilliseconds() &&
               a.sampleRate() == b.sampleRate() && a.channels() == b.channels() &&
               (IsOgg(one.Kind()) || WithinOnePercent(a.bitrate(), b.bitrate()));
    });
}

} // namespace tagmap
