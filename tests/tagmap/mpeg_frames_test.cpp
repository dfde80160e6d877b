#include "suite/tagmap/audio_file.h"
#include "suite/tagmap/mpeg_frames.h"
#include "tests/querytrackdata/test_files.h"

#include <gtest/gtest.h>

namespace {
using tagmap::FileStream;
using tagmap::Format;

Format FormatAt(const std::wstring& path) {
    FileStream stream(path.c_str(), FileStream::Mode::Read);
    EXPECT_TRUE(stream.isOpen());
    return tagmap::FormatOf(stream);
}

// A frame of this header and size, filled with what is no header.
Bytes Frame(uint32_t header, size_t size) {
    Bytes frame(size, 0x55);
    for (size_t index = 0; index < 4; ++index)
        frame[index] = static_cast<uint8_t>(header >> (24 - 8 * index));
    return frame;
}

Bytes Mp3Frame() {
    // MPEG 1, layer III, 128 kbit/s, 44100 Hz: 417 bytes.
    Bytes frame(417, 0x55);
    frame[0] = 0xFF;
    frame[1] = 0xFB;
    frame[2] = 0x90;
    frame[3] = 0x00;
    return frame;
}

bool ThreeAreFound(uint32_t header, size_t size) {
    TestFolder folder;
    const Bytes frame = Frame(header, size);
    const std::wstring path = folder.Write(L"frames", frame + frame + frame);
    FileStream stream(path.c_str(), FileStream::Mode::Read);
    return tagmap::HoldsMpegFrames(stream, 0);
}
} // namespace

TEST(MpegFrames, OfEveryVersionAndLayerHaveTheirPublishedSizes) {
    EXPECT_TRUE(ThreeAreFound(0xFFFB9000, 417)); // 1, III, 128 kbit/s, 44100 Hz
    EXPECT_TRUE(ThreeAreFound(0xFFFB9200, 418)); // the same, padded
    EXPECT_TRUE(ThreeAreFound(0xFFFDA400, 576)); // 1, II, 192 kbit/s, 48000 Hz
    EXPECT_TRUE(ThreeAreFound(0xFFFF8000, 276)); // 1, I, 256 kbit/s, 44100 Hz
    EXPECT_TRUE(ThreeAreFound(0xFFFF8200, 280)); // the same, padded by four
    EXPECT_TRUE(ThreeAreFound(0xFFF38000, 208)); // 2, III, 64 kbit/s, 22050 Hz
    EXPECT_TRUE(ThreeAreFound(0xFFF58000, 417)); // 2, II, 64 kbit/s, 22050 Hz
    EXPECT_TRUE(ThreeAreFound(0xFFF78000, 276)); // 2, I, 128 kbit/s, 22050 Hz
    EXPECT_TRUE(ThreeAreFound(0xFFE34000, 208)); // 2.5, III, 32 kbit/s, 11025 Hz
}

TEST(MpegFrames, OfAnotherSizeThanTheirHeaderSaysAreNone) {
    EXPECT_FALSE(ThreeAreFound(0xFFFB9000, 416));
    EXPECT_FALSE(ThreeAreFound(0xFFFB9000, 418));
}

TEST(MpegFrames, HeadersWithReservedValuesAreNone) {
    EXPECT_FALSE(ThreeAreFound(0xFFEB9000, 417)); // version
    EXPECT_FALSE(ThreeAreFound(0xFFF99000, 417)); // layer
    EXPECT_FALSE(ThreeAreFound(0xFFFBF000, 417)); // bit rate
    EXPECT_FALSE(ThreeAreFound(0xFFFB0000, 417)); // free bit rate
    EXPECT_FALSE(ThreeAreFound(0xFFFB9C00, 417)); // sampling rate
    EXPECT_FALSE(ThreeAreFound(0xFF1B9000, 417)); // no sync
}

TEST(MpegFrames, ThreeFramesInARowAreMpegAudio) {
    TestFolder folder;
    const Bytes three = Mp3Frame() + Mp3Frame() + Mp3Frame();
    EXPECT_EQ(FormatAt(folder.Write(L"three", three)), Format::Mpeg);
    EXPECT_EQ(FormatAt(folder.Write(L"late", BytesOf("some bytes in front") + three)),
              Format::Mpeg);
}

TEST(MpegFrames, ASingleFrameNeedsTheExtension) {
    TestFolder folder;
    EXPECT_EQ(FormatAt(folder.Write(L"one.mp3", Mp3Frame())), Format::Mpeg);
    EXPECT_EQ(FormatAt(folder.Write(L"one.bin", Mp3Frame())), Format::Unknown);
}
