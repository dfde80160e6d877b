#include "suite/tagmap/flac_blocks.h"

#include "suite/tagmap/vorbis_save.h"

#include <flacpicture.h>
#include <id3v2header.h>
#include <id3v2tag.h>

#include <optional>

namespace tagmap {

namespace {

using TagLib::ByteVector;

constexpr char StreamMark[] = "fLaC";
constexpr long StreamMarkSize = 4;
constexpr unsigned HeaderSize = 4;
// More than any file has. To take a picture off a file the library goes over all
// blocks.
constexpr int MostBlocks = 10000;
constexpr unsigned char LastBlock = 0x80;
constexpr unsigned char BlockTypes = 0x7F;
constexpr unsigned char CommentBlock = 4;
constexpr unsigned char PictureBlock = 6;

long FirstBlockOf(TagLib::FLAC::File& file) {
    const auto behindId3 =
        file.hasID3v2Tag() ? static_cast<long>(file.ID3v2Tag()->header()->completeTagSize()) : 0;
    return file.find(StreamMark, behindId3) + StreamMarkSize;
}

bool CommentSurvives(TagLib::FLAC::File& file, const ByteVector& data) {
    const std::optional<VorbisList> list = ParseVorbisList(data);
    return list && file.hasXiphComment() && VorbisSurvivesSave(*list, *file.xiphComment());
}

} // namespace

bool FlacPictureSurvivesSave(const ByteVector& data) {
    TagLib::FLAC::Picture picture;
    return picture.parse(data) && picture.render() == data;
}

bool FlacSurvivesSave(TagLib::FLAC::File& file) {
    int comments = 0;
    int blocks = 0;
    long at = FirstBlockOf(file);
    for (bool isLast = false; !isLast;) {
        file.seek(at);
        const ByteVector header = file.readBlock(HeaderSize);
        if (header.size() != HeaderSize || ++blocks > MostBlocks)
            return false;
        const auto first = static_cast<unsigned char>(header[0]);
        const unsigned length = header.toUInt(1U, 3U);
        const unsigned type = first & BlockTypes;
        if (type == CommentBlock &&
            (++comments > 1 || !CommentSurvives(file, file.readBlock(length))))
            return false;
        if (type == PictureBlock && !FlacPictureSurvivesSave(file.readBlock(length)))
            return false;
        isLast = (first & LastBlock) != 0;
        at += static_cast<long>(HeaderSize + length);
    }
    return true;
}

} // namespace tagmap
