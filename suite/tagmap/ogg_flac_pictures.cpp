#include "suite/tagmap/ogg_flac_pictures.h"

#include <flacpicture.h>

#include <memory>
#include <vector>

namespace tagmap {

namespace {
using TagLib::FLAC::Picture;
using Pictures = std::vector<std::unique_ptr<Picture>>;

constexpr unsigned BlockHeaderSize = 4;
constexpr unsigned char LastBlock = 0x80;
constexpr unsigned char BlockTypes = 0x7F;
constexpr unsigned char PaddingBlock = 1;
constexpr unsigned char PictureBlock = 6;
// More blocks than any file has; a damaged one may never say which is the last.
constexpr unsigned MostBlocks = 256;

// Takes the pictures out of their packets. The first packet is the stream's
// own header.
Pictures TakeBlocks(TagLib::Ogg::FLAC::File& file) {
    Pictures pictures;
    for (unsigned index = 1; index < MostBlocks; ++index) {
        const TagLib::ByteVector block = file.packet(index);
        if (block.size() < BlockHeaderSize)
            break;
        const auto type = static_cast<unsigned char>(block[0]);
        if ((type & BlockTypes) == PictureBlock) {
            auto picture = std::make_unique<Picture>();
            if (picture->parse(block.mid(BlockHeaderSize))) {
                pictures.push_back(std::move(picture));
                TagLib::ByteVector padding(BlockHeaderSize, 0);
                padding[0] = static_cast<char>(PaddingBlock | (type & LastBlock));
                file.setPacket(index, padding);
            }
        }
        if (type & LastBlock)
            break;
    }
    return pictures;
}

// The comment's list must be let go before the comment is changed: one that is
// shared is copied then, and the copy no longer deletes what it holds.
void AddCopies(TagLib::Ogg::XiphComment& comment, Pictures& pictures) {
    const TagLib::List<Picture*> behind = comment.pictureList();
    for (const Picture* picture : behind) {
        auto copy = std::make_unique<Picture>();
        if (copy->parse(picture->render()))
            pictures.push_back(std::move(copy));
    }
}
} // namespace

void MovePictureBlocksToComment(TagLib::Ogg::FLAC::File& file) {
    Pictures pictures = TakeBlocks(file);
    if (pictures.empty())
        return;
    TagLib::Ogg::XiphComment& comment = *file.tag();
    AddCopies(comment, pictures);
    comment.removeAllPictures();
    // The comment owns what it is given.
    for (std::unique_ptr<Picture>& picture : pictures)
        comment.addPicture(picture.release());
}

} // namespace tagmap
