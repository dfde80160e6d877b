#include "suite/tagmap/ogg_flac_comment.h"

#include "suite/tagmap/vorbis_save.h"

#include <optional>

namespace tagmap {

namespace {

using TagLib::ByteVector;

constexpr unsigned HeaderSize = 4;
constexpr unsigned LargestBlock = 0xFFFFFF; // bytes
constexpr unsigned char LastBlock = 0x80;
constexpr unsigned char BlockTypes = 0x7F;
constexpr unsigned char CommentBlock = 4;
// More blocks than any file has; a damaged one may never say which is the last.
constexpr unsigned MostBlocks = 256;

struct CommentPacket {
    unsigned Index;
    bool IsLast;
    ByteVector List;
};

// Of several comments the library takes the last.
std::optional<CommentPacket> FindComment(TagLib::Ogg::FLAC::File& file) {
    std::optional<CommentPacket> found;
    for (unsigned index = 1; index < MostBlocks; ++index) {
        const ByteVector block = file.packet(index);
        if (block.size() < HeaderSize)
            break;
        const auto first = static_cast<unsigned char>(block[0]);
        const bool isLast = (first & LastBlock) != 0;
        if ((first & BlockTypes) == CommentBlock)
            found = {index, isLast, block.mid(HeaderSize, block.toUInt(1U, 3U))};
        if (isLast)
            break;
    }
    return found;
}

} // namespace

bool OggFlacSurvivesSave(TagLib::Ogg::FLAC::File& file) {
    const std::optional<CommentPacket> packet = FindComment(file);
    const std::optional<VorbisList> list =
        packet ? ParseVorbisList(packet->List) : std::optional<VorbisList>();
    return list && VorbisSurvivesSave(*list, *file.tag());
}

bool SaveOggFlac(TagLib::Ogg::FLAC::File& file) {
    const std::optional<CommentPacket> packet = FindComment(file);
    const ByteVector list = file.tag()->render(false);
    if (!packet || list.size() > LargestBlock)
        return false;
    ByteVector block = ByteVector::fromUInt(list.size());
    block[0] = static_cast<char>(packet->IsLast ? CommentBlock | LastBlock : CommentBlock);
    file.setPacket(packet->Index, block + list);
    return file.TagLib::Ogg::File::save();
}

} // namespace tagmap
