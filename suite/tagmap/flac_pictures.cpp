#include "suite/tagmap/flac_pictures.h"

#include "suite/tagmap/pictures.h"

#include <flacpicture.h>

#include <memory>
#include <vector>

namespace tagmap {

namespace {

using TagLib::FLAC::Picture;
using TagLib::Ogg::XiphComment;
using OwnedPicture = std::unique_ptr<Picture>;
using OwnedPictures = std::vector<OwnedPicture>;

// A block's length has 24 bits; the library would write a longer one with its
// length cut, and so break the file.
constexpr size_t BlockMost = 0xFFFFFF;

void AddAll(const TagLib::List<Picture*>& pictures, clTagRecord& record, int& number) {
    for (const Picture* picture : pictures) {
        const TagLib::ByteVector data = picture->data();
        AddArt(record, number, DescriptionOf(picture->type(), ToNString(picture->description())),
               data.data(), data.size());
        ++number;
    }
}

// Holder stands for a FLAC file and for a comment alike.
template <typename Holder>
void TakePictures(Holder& holder, OwnedPictures& pictures) {
    for (Picture* picture : holder.pictureList()) {
        holder.removePicture(picture, false);
        pictures.emplace_back(picture);
    }
}

template <typename Holder>
void GivePictures(Holder& holder, OwnedPictures& pictures) {
    for (OwnedPicture& picture : pictures)
        holder.addPicture(picture.release());
}

// Sizes and colours stay 0, "not known", as RFC 9639 allows.
OwnedPicture MakePicture(const OwnedPicture* old, const clArtRequest& request) {
    const clArtLabel label =
        old ? LabelFor(request, (*old)->type(), ToNString((*old)->description()))
            : LabelFor(request);
    auto picture = std::make_unique<Picture>();
    picture->setType(static_cast<Picture::Type>(label.Type));
    picture->setDescription(ToTagLib(label.Description));
    picture->setMimeType(MimeTypeOf(request.Data->Data, request.Data->Size));
    picture->setData(
        TagLib::ByteVector(reinterpret_cast<const char*>(request.Data->Data), request.Data->Size));
    return picture;
}

// The requests that a block can hold; the names of the others go to `refused`.
std::vector<clArtRequest> RequestsForBlocks(clTagRecord& changes, Refusals& refused) {
    std::vector<clArtRequest> requests = ArtRequestsOf(changes);
    std::erase_if(requests, [&](const clArtRequest& request) {
        if (!request.Data || MakePicture(nullptr, request)->render().size() <= BlockMost)
            return false;
        refused.Add(FormatArtName(request.Number, request.Description));
        return true;
    });
    return requests;
}

void RefuseUnusable(clTagRecord& changes, Refusals& refused) {
    for (int index = 0; index < changes.Count(); ++index)
        if (IsUnusableArt(*changes[index]))
            refused.Add(changes[index]->Name);
}

} // namespace

void ReadFlacPictures(TagLib::FLAC::File& file, clTagRecord& record) {
    int number = 1;
    AddAll(file.pictureList(), record, number);
    if (XiphComment* comment = file.xiphComment())
        AddAll(comment->pictureList(), record, number);
}

void SetFlacPictures(TagLib::FLAC::File& file, clTagRecord& changes, Refusals& refused) {
    RefuseUnusable(changes, refused);
    const std::vector<clArtRequest> requests = RequestsForBlocks(changes, refused);
    if (requests.empty())
        return;
    OwnedPictures pictures;
    TakePictures(file, pictures);
    if (XiphComment* comment = file.xiphComment())
        TakePictures(*comment, pictures);
    ApplyArtRequests(pictures, requests, MakePicture);
    GivePictures(file, pictures);
}

void DeleteFlacPictures(TagLib::FLAC::File& file, const NStringList& names) {
    const std::vector<int> numbers = ArtNumbersOf(names);
    if (names.Count > 0 && numbers.empty())
        return;
    OwnedPictures pictures;
    TakePictures(file, pictures);
    if (XiphComment* comment = file.xiphComment())
        TakePictures(*comment, pictures);
    if (names.Count == 0)
        return;
    RemoveArtNumbers(pictures, numbers);
    GivePictures(file, pictures);
}

void ReadVorbisPictures(XiphComment& comment, clTagRecord& record) {
    int number = 1;
    AddAll(comment.pictureList(), record, number);
}

void SetVorbisPictures(XiphComment& comment, clTagRecord& changes, Refusals& refused) {
    RefuseUnusable(changes, refused);
    const std::vector<clArtRequest> requests = ArtRequestsOf(changes);
    if (requests.empty())
        return;
    OwnedPictures pictures;
    TakePictures(comment, pictures);
    ApplyArtRequests(pictures, requests, MakePicture);
    GivePictures(comment, pictures);
}

void DeleteVorbisPictures(XiphComment& comment, const NStringList& names) {
    OwnedPictures pictures;
    TakePictures(comment, pictures);
    if (names.Count == 0)
        return;
    RemoveArtNumbers(pictures, ArtNumbersOf(names));
    GivePictures(comment, pictures);
}

} // namespace tagmap
