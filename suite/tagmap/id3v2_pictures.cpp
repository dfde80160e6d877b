#include "suite/tagmap/id3v2_pictures.h"

#include "suite/tagmap/id3v2_frames.h"
#include "suite/tagmap/pictures.h"

#include <attachedpictureframe.h>

#include <algorithm>
#include <vector>

namespace tagmap {

namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::ID3v2::Tag;
using PictureFrame = TagLib::ID3v2::AttachedPictureFrame;
using PictureFrames = std::vector<PictureFrame*>;

constexpr char PictureFrameId[] = "APIC";
constexpr char LinkMimeType[] = "-->"; // the data is the address of a picture
// A tag's length has 28 bits; the library would write a longer one with its
// length cut.
constexpr uint32_t PictureMost = 0x0FFFFFFF - 0x00100000;

PictureFrames PicturesOf(const Tag& tag) {
    PictureFrames pictures = FramesAs<PictureFrame>(tag, PictureFrameId);
    std::erase_if(pictures, [](const PictureFrame* picture) {
        return picture->mimeType() == LinkMimeType || picture->picture().isEmpty();
    });
    return pictures;
}

clArtLabel LabelOf(const PictureFrame* old, const clArtRequest& request) {
    return old ? LabelFor(request, old->type(), ToNString(old->description())) : LabelFor(request);
}

// Without a description, or with a plain one, the encoding is Latin-1: some
// players stumble over UTF-16 in a picture.
PictureFrame* MakePicture(PictureFrame* const* old, const clArtRequest& request, int version) {
    const clArtLabel label = LabelOf(old ? *old : nullptr, request);
    const String description = ToTagLib(label.Description);
    auto* picture = new PictureFrame;
    picture->setTextEncoding(description.isLatin1() ? String::Latin1 : TextEncodingOf(version));
    picture->setType(static_cast<PictureFrame::Type>(label.Type));
    picture->setDescription(description);
    picture->setMimeType(MimeTypeOf(request.Data->Data, request.Data->Size));
    picture->setPicture(
        ByteVector(reinterpret_cast<const char*>(request.Data->Data), request.Data->Size));
    return picture;
}

// Gives the tag the pictures `after` in place of `before`; those of both stay
// the frames that they are.
void PutPictures(Tag& tag, const PictureFrames& before, const PictureFrames& after) {
    for (PictureFrame* picture : before) {
        const bool stays = std::find(after.begin(), after.end(), picture) != after.end();
        tag.removeFrame(picture, !stays);
    }
    for (PictureFrame* picture : after)
        tag.addFrame(picture);
}

std::vector<clArtRequest> RequestsOf(clTagRecord& changes, Refusals& refused) {
    for (int index = 0; index < changes.Count(); ++index)
        if (IsUnusableArt(*changes[index]))
            refused.Add(changes[index]->Name);
    std::vector<clArtRequest> requests = ArtRequestsOf(changes);
    std::erase_if(requests, [&](const clArtRequest& request) {
        const bool isTooLarge = request.Data && request.Data->Size > PictureMost;
        if (isTooLarge)
            refused.Add(FormatArtName(request.Number, request.Description));
        return isTooLarge;
    });
    return requests;
}

} // namespace

void ReadId3v2Pictures(const Tag& tag, clTagRecord& record) {
    int number = 1;
    for (const PictureFrame* picture : PicturesOf(tag)) {
        const ByteVector data = picture->picture();
        AddArt(record, number, DescriptionOf(picture->type(), ToNString(picture->description())),
               data.data(), data.size());
        ++number;
    }
}

void SetId3v2Pictures(Tag& tag, clTagRecord& changes, int version, Refusals& refused) {
    const std::vector<clArtRequest> requests = RequestsOf(changes, refused);
    if (requests.empty())
        return;
    const PictureFrames before = PicturesOf(tag);
    PictureFrames after = before;
    ApplyArtRequests(after, requests,
                     [version](PictureFrame* const* old, const clArtRequest& request) {
                         return MakePicture(old, request, version);
                     });
    PutPictures(tag, before, after);
}

void DeleteId3v2Pictures(Tag& tag, const NStringList& names) {
    const PictureFrames before = PicturesOf(tag);
    PictureFrames after;
    if (names.Count > 0) {
        after = before;
        RemoveArtNumbers(after, ArtNumbersOf(names));
    }
    PutPictures(tag, before, after);
}

} // namespace tagmap
