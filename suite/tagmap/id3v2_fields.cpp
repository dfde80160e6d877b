#include "suite/tagmap/id3v2_fields.h"

#include "suite/tagmap/id3v2_frames.h"
#include "suite/tagmap/rating.h"
#include "suite/tagmap/tag_values.h"

#include <commentsframe.h>
#include <id3v1genres.h>
#include <popularimeterframe.h>
#include <unknownframe.h>

#include <algorithm>
#include <vector>

namespace tagmap {

namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::StringList;
using TagLib::ID3v2::CommentsFrame;
using TagLib::ID3v2::PopularimeterFrame;
using TagLib::ID3v2::Tag;

constexpr char PlayCounterFrame[] = "PCNT";
constexpr wchar_t RatingDescription[] = L"RATING";

std::vector<CommentsFrame*> CommentsOf(const Tag& tag) {
    std::vector<CommentsFrame*> comments = FramesAs<CommentsFrame>(tag, CommentFrame);
    std::erase_if(comments,
                  [](const CommentsFrame* frame) { return !frame->description().isEmpty(); });
    return comments;
}

// The text for a number of the format's list, or for one of its two letters.
String GenreName(const String& genre) {
    constexpr int NumberMost = 255;
    if (genre == "RX")
        return "Remix";
    if (genre == "CR")
        return "Cover";
    bool isNumber = false;
    const int number = genre.toInt(&isNumber);
    const String name =
        isNumber && number >= 0 && number <= NumberMost ? TagLib::ID3v1::genre(number) : String();
    return name.isEmpty() ? genre : name;
}

// The frame that counts: the one of Windows, else the first that is rated.
const PopularimeterFrame* RatingOf(const std::vector<PopularimeterFrame*>& frames) {
    for (const PopularimeterFrame* frame : frames)
        if (frame->email() == PopmEmail)
            return frame;
    for (const PopularimeterFrame* frame : frames)
        if (frame->rating() != 0)
            return frame;
    return frames.empty() ? nullptr : frames[0];
}

} // namespace

StringList ReadComments(const Tag& tag) {
    StringList texts;
    for (const CommentsFrame* frame : CommentsOf(tag))
        texts.append(frame->text());
    return texts;
}

// Comments in several languages get one value each if there are as many;
// otherwise the first gets all of them. Languages stay.
void WriteComments(Tag& tag, const StringList& values, int version) {
    std::vector<CommentsFrame*> frames = CommentsOf(tag);
    if (frames.empty()) {
        frames.push_back(new CommentsFrame);
        tag.addFrame(frames[0]);
    }
    const bool oneEach = frames.size() == values.size();
    const std::vector<String> texts(values.begin(), values.end());
    for (unsigned index = 0; index < frames.size(); ++index) {
        if (index > 0 && !oneEach) {
            tag.removeFrame(frames[index]);
            continue;
        }
        frames[index]->setTextEncoding(TextEncodingOf(version));
        frames[index]->setText(oneEach ? texts[index] : JoinForSingleField(values));
    }
}

void RemoveComments(Tag& tag) {
    for (CommentsFrame* frame : CommentsOf(tag))
        tag.removeFrame(frame);
}

StringList ReadGenres(const Tag& tag) {
    StringList genres;
    for (const String& genre : TextsOf(tag, GenreFrame))
        genres.append(GenreName(genre));
    return genres;
}

// False for what would be read as another genre: numbers, and texts in
// brackets, which stand for numbers.
bool CanBeGenres(const StringList& values) {
    for (const String& value : values) {
        bool isNumber = false;
        value.toInt(&isNumber);
        const bool isBracketed = value.startsWith("(") && value.find(")") > 0;
        if (isNumber || isBracketed || GenreName(value) != value)
            return false;
    }
    return true;
}

StringList ReadRating(const Tag& tag) {
    int halfSteps = 0;
    const auto frames = FramesAs<PopularimeterFrame>(tag, RatingFrame);
    if (const PopularimeterFrame* frame = RatingOf(frames))
        return StringList(ToTagLib(RatingText(RatingFromPopm(frame->rating()))));
    for (const String& text : UserTextsOf(tag, RatingDescription))
        if (RatingFromPercent(ToNString(text), halfSteps))
            return StringList(ToTagLib(RatingText(halfSteps)));
    return StringList();
}

// Frames of other e-mails follow, so that all programs see one rating.
void WriteRating(Tag& tag, int halfSteps) {
    auto frames = FramesAs<PopularimeterFrame>(tag, RatingFrame);
    if (frames.empty()) {
        frames.push_back(new PopularimeterFrame);
        frames[0]->setEmail(PopmEmail);
        tag.addFrame(frames[0]);
    }
    for (PopularimeterFrame* frame : frames)
        frame->setRating(PopmFromRating(halfSteps));
}

// A rating of 0 is a rating, so the frame has to go; its play counter goes on
// in the frame that has nothing else, unless there is one.
void RemoveRating(Tag& tag) {
    unsigned counter = 0;
    for (PopularimeterFrame* frame : FramesAs<PopularimeterFrame>(tag, RatingFrame)) {
        counter = std::max(counter, frame->counter());
        tag.removeFrame(frame);
    }
    if (counter > 0 && FramesOf(tag, PlayCounterFrame).empty())
        tag.addFrame(MakeBytesFrame(PlayCounterFrame, ByteVector::fromUInt(counter)));
}

} // namespace tagmap
