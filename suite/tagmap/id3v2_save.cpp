// What has to be done to a tag before the library saves it.
#include "suite/tagmap/id3v2_frames.h"
#include "suite/tagmap/id3v2_tags.h"

#include <id3v1genres.h>
#include <textidentificationframe.h>

#include <algorithm>
#include <iterator>

namespace tagmap {

namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::StringList;
using TagLib::ID3v2::Frame;
using TagLib::ID3v2::Tag;
using TextFrame = TagLib::ID3v2::TextIdentificationFrame;

constexpr char OldDateFrame[] = "TDAT";
constexpr char OldTimeFrame[] = "TIME";
constexpr char MoodDescription[] = "MOOD";
constexpr int NoGenre = 255;
// Far more than any tag has, with all of its chapters. To take a frame off a tag
// the library goes over all of them.
constexpr size_t MostFrames = 10000;

// Frames of ID3v2.2 without a counterpart in 2.4, and their names in 2.3.
struct Renaming {
    const char* Id;
    const char* NewId;
};
constexpr Renaming OldestFrames[] = {
    {"EQU", "EQUA"}, {"RVA", "RVAD"}, {"TDA", "TDAT"}, {"TIM", "TIME"}, {"TSI", "TSIZ"}};

// Frames of ID3v2.4 that the library won't write in 2.3, though taggers do and
// players read them there. TMOO goes another way.
constexpr const char* NewFrames[] = {"ASPI", "EQU2", "RVA2", "SEEK", "SIGN",
                                     "TDRL", "TDTG", "TPRO", "TSST"};

void RenameFrame(Tag& tag, Frame& frame, const char* id) {
    tag.removeFrame(&frame, false);
    FrameAccess::Rename(frame, ByteVector(id));
    tag.addFrame(&frame);
}

void RenameOldestFrames(Tag& tag) {
    for (const Renaming& renaming : OldestFrames)
        for (Frame* frame : FramesOf(tag, renaming.Id))
            RenameFrame(tag, *frame, renaming.NewId);
}

// A frame of ID3v2.2 for which nothing of the later versions stands.
bool HasNoNewName(const Frame& frame) {
    constexpr unsigned NameLength = 4;
    const ByteVector id = frame.frameID();
    return id.size() != NameLength &&
           std::none_of(std::begin(OldestFrames), std::end(OldestFrames),
                        [&](const Renaming& renaming) { return id == renaming.Id; });
}

bool HasDigitsOnly(const String& text) {
    for (const wchar_t unit : text)
        if (unit < L'0' || unit > L'9')
            return false;
    return !text.isEmpty();
}

// "2004", "2004-05-06" and "2004-05-06T12:34": the forms that become TYER, TDAT
// and TIME without loss, as the number of these frames; 0 for any other.
int OldFramesOfDate(const String& date) {
    constexpr unsigned Year = 4;
    constexpr unsigned Day = 10;
    constexpr unsigned Minute = 16;
    const unsigned length = date.size();
    if (length != Year && length != Day && length != Minute)
        return 0;
    constexpr wchar_t Form[] = L"0000-00-00T00:00";
    for (unsigned index = 0; index < length; ++index) {
        const bool isDigit = HasDigitsOnly(date.substr(index, 1));
        if (Form[index] == L'0' ? !isDigit : date[static_cast<int>(index)] != Form[index])
            return 0;
    }
    return length == Year ? 1 : length == Day ? 2 : 3;
}

// The text of a date that is kept in another way than by the library.
void PutDateAside(Tag& tag, TextFrame& frame, const char* id) {
    frame.setText(FieldsFor(frame.fieldList(), Id3v2OldVersion));
    RenameFrame(tag, frame, id);
}

// The library makes TYER, TDAT and TIME of TDRC, and TORY of TDOR, and cuts all
// else off; a text of another form goes into TYER and TORY whole, as players
// read it.
void PrepareDates(Tag& tag) {
    int oldFrames = 0;
    for (TextFrame* frame : FramesAs<TextFrame>(tag, DateFrame)) {
        oldFrames = frame->fieldList().size() == 1 ? OldFramesOfDate(frame->toString()) : 0;
        if (oldFrames == 0)
            PutDateAside(tag, *frame, OldYearFrame);
    }
    for (TextFrame* frame : FramesAs<TextFrame>(tag, "TDOR"))
        if (OldFramesOfDate(frame->toString()) != 1)
            PutDateAside(tag, *frame, "TORY");
    // What the library makes anew must not stand twice.
    if (oldFrames >= 2)
        tag.removeFrames(OldDateFrame);
    if (oldFrames >= 3)
        tag.removeFrames(OldTimeFrame);
}

bool IsListedGenre(const String& genre) {
    bool isNumber = false;
    genre.toInt(&isNumber);
    return isNumber || genre == "RX" || genre == "CR" ||
           TagLib::ID3v1::genreIndex(genre) != NoGenre;
}

// Of several genres the library keeps those of the format's list and one more,
// of several frames the last.
void PrepareGenres(Tag& tag) {
    const StringList genres = TextsOf(tag, GenreFrame);
    int unlisted = 0;
    for (const String& genre : genres)
        unlisted += IsListedGenre(genre) ? 0 : 1;
    if (unlisted > 1 || FramesAs<TextFrame>(tag, GenreFrame).size() > 1)
        PutTexts(tag, GenreFrame, genres, Id3v2OldVersion);
}

void PrepareMood(Tag& tag) {
    const StringList moods = TextsOf(tag, MoodFrame);
    RemoveTexts(tag, MoodFrame);
    if (!moods.isEmpty() && UserTextsOf(tag, MoodDescription).isEmpty())
        PutUserTexts(tag, MoodDescription, moods, Id3v2OldVersion);
}

void CarryNewFrames(Tag& tag) {
    for (const char* id : NewFrames) {
        for (Frame* frame : FramesOf(tag, id)) {
            FrameAccess::SetVersion(*frame, Id3v2OldVersion);
            const ByteVector fields =
                frame->render().mid(Frame::headerSize(static_cast<unsigned>(Id3v2OldVersion)));
            tag.addFrame(MakeCarriedFrame(frame->frameID(), fields));
            tag.removeFrame(frame);
        }
    }
}

// The library leaves the flagged frames out, in any version.
void KeepFlaggedFrames(Tag& tag) {
    for (Frame* frame : FramesOf(tag))
        FrameAccess::Keep(*frame);
}

} // namespace

int Id3v2VersionToWrite(const Tag* tag) {
    return tag && tag->header()->majorVersion() >= Id3v2NewVersion ? Id3v2NewVersion
                                                                   : Id3v2OldVersion;
}

TagLib::ID3v2::Version LibraryVersion(int version) {
    return version == Id3v2OldVersion ? TagLib::ID3v2::v3 : TagLib::ID3v2::v4;
}

bool Id3v2SurvivesSave(const Tag& tag) {
    const Frames frames = FramesOf(tag);
    return frames.size() <= MostFrames &&
           std::none_of(frames.begin(), frames.end(), [](const Frame* frame) {
               return FrameAccess::NeedsFlags(*frame) || HasNoNewName(*frame);
           });
}

void PrepareId3v2Save(Tag& tag, int version) {
    RenameOldestFrames(tag);
    if (version == Id3v2OldVersion) {
        PrepareDates(tag);
        PrepareGenres(tag);
        PrepareMood(tag);
        CarryNewFrames(tag);
    }
    KeepFlaggedFrames(tag);
}

bool SaveInVersion(TagLib::File& file, Tag* tag, int version) {
    if (!tag || tag->isEmpty() || version == Id3v2NewVersion)
        return file.save();
    // Before the library's own rendering, for which a carried frame has its name.
    const ByteVector bytes = tag->render(LibraryVersion(version));
    if (!file.save())
        return false;
    file.insert(bytes, 0, tag->header()->completeTagSize());
    return true;
}

} // namespace tagmap
