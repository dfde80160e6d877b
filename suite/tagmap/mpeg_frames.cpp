#include "suite/tagmap/mpeg_frames.h"

#include "foundation/npath.h"

namespace tagmap {

namespace {
constexpr unsigned SearchSize = 64 * 1024;
constexpr unsigned LargestFrame = 4 * 1024;
constexpr unsigned HeaderSize = 4;
constexpr int FramesInARow = 3;

// Kilobits a second, by the header's index.
constexpr int BitRates[5][16] = {
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448, -1}, // 1, layer I
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, -1},    // 1, layer II
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, -1},     // 1, layer III
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256, -1},    // 2, layer I
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, -1},         // 2, II and III
};
constexpr int SampleRates[3] = {44100, 48000, 32000}; // halved for 2, quartered for 2.5

struct FrameHeader {
    uint32_t Kind = 0; // version, layer and sampling rate
    unsigned Size = 0; // bytes, header included; 0 if it's no header
};

FrameHeader HeaderAt(const TagLib::ByteVector& bytes, unsigned at) {
    constexpr uint32_t syncBits = 0xFFE00000;
    constexpr uint32_t kindBits = 0xFFFE0C00;
    const uint32_t bits = bytes.toUInt(at);
    const unsigned version = bits >> 19 & 3; // 3: 1, 2: 2, 0: 2.5
    const unsigned layer = 4 - (bits >> 17 & 3);
    const unsigned rateIndex = bits >> 10 & 3;
    if ((bits & syncBits) != syncBits || version == 1 || layer == 4 || rateIndex == 3)
        return {};
    const bool isFirst = version == 3;
    const unsigned row = isFirst ? layer - 1 : layer == 1 ? 3 : 4;
    const int kilobits = BitRates[row][bits >> 12 & 15];
    if (kilobits <= 0)
        return {};
    const int sampleRate = SampleRates[rateIndex] / (isFirst ? 1 : version == 2 ? 2 : 4);
    const int padding = static_cast<int>(bits >> 9 & 1);
    // Samples of a frame by bits a second, in bytes; layer I counts in fours.
    int size = 0;
    if (layer == 1)
        size = (12000 * kilobits / sampleRate + padding) * 4;
    else
        size = (layer == 3 && !isFirst ? 72000 : 144000) * kilobits / sampleRate + padding;
    return {bits & kindBits, static_cast<unsigned>(size)};
}

// Frames that follow each other from `at` on, up to FramesInARow; `atEnd` says
// that the last one ends with the bytes in hand.
int CountFrames(const TagLib::ByteVector& bytes, unsigned at, bool& atEnd) {
    const FrameHeader first = HeaderAt(bytes, at);
    int count = 0;
    FrameHeader header = first;
    while (header.Size && header.Kind == first.Kind && count < FramesInARow) {
        ++count;
        at += header.Size;
        atEnd = at + HeaderSize > bytes.size();
        if (atEnd)
            break;
        header = HeaderAt(bytes, at);
    }
    return count;
}

bool HasMpegExtension(const FileStream& stream) {
    const NString extension = NGetFileExt(NString(static_cast<const wchar_t*>(stream.name())));
    for (const wchar_t* known : {L".mp3", L".mp2", L".mp1", L".mpga"}) {
        if (extension.Compare(known, 0, true) == 0)
            return true;
    }
    return false;
}
} // namespace

bool HoldsMpegFrames(FileStream& stream, long offset) {
    stream.seek(offset, TagLib::IOStream::Beginning);
    const TagLib::ByteVector bytes =
        stream.readBlock(SearchSize + LargestFrame * static_cast<unsigned>(FramesInARow));
    const bool byExtension = HasMpegExtension(stream);
    for (unsigned at = 0; at + HeaderSize <= bytes.size() && at < SearchSize; ++at) {
        bool atEnd = false;
        const int count = CountFrames(bytes, at, atEnd);
        if (count == FramesInARow || (count > 0 && atEnd && byExtension))
            return true;
    }
    return false;
}

} // namespace tagmap
