// What the plug-in tells of a file of every format.
#include "tests/decoder/plug_in.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {
struct Row {
    const char* Name;
    uint32_t SampleRate;
    int Channels;
    int Bits;
    int FormatTag;
    int LengthMs; // within 30
    int BitRate;  // within 2 %
    const wchar_t* Encoder;
    const wchar_t* Settings;
    const wchar_t* Quality;
    const wchar_t* Contains;
    const wchar_t* Mapping;
};

constexpr wchar_t Stereo[] = L"Left, Right";
constexpr wchar_t Lossless[] = L"Lossless";
constexpr wchar_t Cbr[] = L"Lossy, CBR";
constexpr wchar_t Vbr[] = L"Lossy, VBR";
constexpr wchar_t XiphPicture[] = L"Vorbis comment, 1 picture";

// Lengths and rates by ffprobe: a stream's duration, and the sizes of its
// packets.
const Row Samples[] = {
    {"sample.mp3", 44100, 2, 16, 1, 1045, 128000, L"Lavf lame", L"CBR 128 kbps", Cbr,
     L"ID3v2.3 tag, 1 picture", Stereo},
    {"sample-id3v22.mp3", 44100, 2, 16, 1, 1045, 128000, L"Lavf lame", L"CBR 128 kbps", Cbr,
     L"ID3v2.2 tag, 1 picture", Stereo},
    {"sample-id3v24.mp3", 44100, 2, 16, 1, 1045, 128000, L"Lavf lame", L"CBR 128 kbps", Cbr,
     L"ID3v2.4 tag, 1 picture", Stereo},
    {"sample-id3v1.mp3", 44100, 2, 16, 1, 1045, 128000, L"Lavf lame", L"CBR 128 kbps", Cbr,
     L"ID3v1 tag", Stereo},
    {"sample-ape.mp3", 44100, 2, 16, 1, 1045, 128000, L"Lavf lame", L"CBR 128 kbps", Cbr,
     L"APEv2 tag, 1 picture", Stereo},
    {"odd/three-tags.mp3", 44100, 2, 16, 1, 1045, 128000, L"Lavf lame", L"CBR 128 kbps", Cbr,
     L"ID3v2.3 tag, APEv2 tag, ID3v1 tag, 1 picture", Stereo},
    {"odd/mp3-named.flac", 44100, 2, 16, 1, 1045, 128000, L"Lavf lame", L"CBR 128 kbps", Cbr,
     L"ID3v2.3 tag, 1 picture", Stereo},
    {"sample.flac", 44100, 2, 16, 1, 1000, 111096, L"reference libFLAC 1.4.2 20221022", L"-",
     Lossless, XiphPicture, Stereo},
    {"odd/pictures.flac", 44100, 2, 16, 1, 1000, 111096, L"reference libFLAC 1.4.2 20221022", L"-",
     Lossless, L"Vorbis comment, 3 pictures", Stereo},
    {"sample.oga", 44100, 2, 16, 1, 1000, 111096, L"reference libFLAC 1.4.2 20221022", L"-",
     Lossless, XiphPicture, Stereo},
    // Its header was never completed.
    {"odd/unknown-header-count.oga", 44100, 2, 16, 1, 1000, 99248, L"Lavc flac", L"-", Lossless,
     L"Vorbis comment", Stereo},
    {"sample.ogg", 44100, 2, 16, 1, 1000, 22376, L"Lavc libvorbis", L"VBR, nominal 112 kbps", Vbr,
     XiphPicture, Stereo},
    {"sample.opus", 48000, 2, 16, 1, 1006, 107589, L"Lavc libopus", L"VBR", Vbr, XiphPicture,
     Stereo},
    {"sample.spx", 32000, 2, 16, 1, 1000, 30800, L"Lavc libspeex", L"Ultra-wideband, CBR", Cbr,
     XiphPicture, Stereo},
    {"sample.m4a", 44100, 2, 16, 1, 1000, 127393, L"-", L"AAC LC", L"Lossy", L"MP4 tag, 1 picture",
     Stereo},
    {"odd/fragmented.m4a", 44100, 2, 16, 1, 1023, 127394, L"-", L"AAC LC", L"Lossy", L"MP4 tag",
     Stereo},
    {"sample-alac.m4a", 44100, 2, 16, 1, 1000, 136496, L"-", L"ALAC", Lossless,
     L"MP4 tag, 1 picture", Stereo},
    {"sample.wma", 44100, 2, 16, 1, 1021, 128000, L"Windows Media Audio V8", L"-", L"Lossy",
     L"ASF tag, 1 picture", Stereo},
    {"sample.wav", 44100, 2, 16, 1, 1000, 1411200, L"-", L"PCM", Lossless, L"INFO list", Stereo},
    {"sample-id3.wav", 44100, 2, 16, 1, 1000, 1411200, L"-", L"PCM", Lossless,
     L"ID3v2.3 tag, 1 picture", Stereo},
    {"sample.aiff", 44100, 2, 16, 1, 1000, 1411200, L"-", L"PCM", Lossless,
     L"ID3v2.3 tag, AIFF text chunks, 1 picture", Stereo},
    {"sample.ape", 44100, 2, 16, 1, 3550, 192025, L"Monkey's Audio 3.99", L"High", Lossless,
     L"APEv2 tag, 1 picture", Stereo},
    {"sample.wv", 44100, 2, 16, 1, 1000, 163472, L"WavPack, stream version 4.16", L"Normal",
     Lossless, L"APEv2 tag, 1 picture", Stereo},
    {"sample.mpc", 44100, 2, 16, 1, 1000, 47400, L"mppenc 1.30.1", L"Standard", Vbr,
     L"APEv2 tag, 1 picture", Stereo},
    {"sample.tta", 44100, 2, 16, 1, 1000, 158392, L"True Audio 1", L"-", Lossless,
     L"ID3v2.3 tag, 1 picture", Stereo},
};

const Row LibraryFiles[] = {
    {"lame_cbr.mp3", 44100, 1, 16, 1, 1887164, 64000, L"LAME 3.99r", L"CBR 64 kbps", Cbr,
     L"ID3v2.3 tag", L"Mono"},
    {"lame_vbr.mp3", 44100, 1, 16, 1, 1887164, 70279, L"LAME 3.99r", L"VBR V5", Vbr, L"ID3v2.3 tag",
     L"Mono"},
    {"mpeg2.mp3", 22050, 1, 16, 1, 5387285, 25064, L"LAME 3.96r", L"ABR 24 kbps", L"Lossy, ABR",
     L"-", L"Mono"},
    {"rare_frames.mp3", 44100, 2, 16, 1, 222198, 233260, L"Fraunhofer", L"VBR", Vbr,
     L"ID3v2.4 tag, ID3v1 tag", Stereo},
    {"bladeenc.mp3", 44100, 1, 16, 1, 3553, 64000, L"-", L"CBR 64 kbps", Cbr, L"-", L"Mono"},
    {"empty-seektable.flac", 88200, 2, 24, 1, 217868, 15, L"reference libFLAC 1.1.3 20070917", L"-",
     Lossless, L"Vorbis comment", Stereo},
    {"has-tags.m4a", 44100, 2, 16, 1, 3708, 3143, L"FAAC 1.24", L"AAC LC", L"Lossy",
     L"MP4 tag, 2 pictures", Stereo},
    {"zero-length-mdat.m4a", 44100, 1, 16, 1, 1115, 22337, L"Nero AAC codec / 1.5.4.0", L"HE-AAC",
     L"Lossy", L"MP4 tag", L"Mono"},
    {"blank_video.m4v", 44100, 2, 16, 1, 975, 95993, L"-", L"AAC LC", L"Lossy", L"MP4 tag", Stereo},
    {"silence-1.wma", 48000, 2, 16, 1, 3712, 64008, L"Windows Media Audio 9.1",
     L"64 kbps, 48 kHz, stereo 2-pass CBR", Cbr, L"ASF tag", Stereo},
    {"lossless.wma", 44100, 2, 16, 1, 3549, 1152000, L"Windows Media Audio 9.2 Lossless",
     L"VBR Quality 100, 44 kHz, 2 channel 16 bit 1-pass VBR", Lossless, L"ASF tag", Stereo},
    {"float64.wav", 44100, 2, 64, 3, 97, 5644800, L"-", L"PCM", Lossless, L"-", Stereo},
    {"alaw.wav", 8000, 2, 16, 1, 3550, 128000, L"-", L"A-law", Cbr, L"-", Stereo},
    {"duplicate_tags.wav", 1000, 2, 16, 1, 3675, 32000, L"-", L"PCM", Lossless,
     L"ID3v2.4 tag, INFO list", Stereo},
    {"alaw.aifc", 44100, 1, 16, 1, 37, 352800, L"-", L"A-law", Cbr, L"AIFF text chunks", L"Mono"},
    {"noise.aif", 44100, 1, 24, 1, 2, 1058400, L"-", L"PCM", Lossless, L"-", L"Mono"},
    {"mac-390-hdr.ape", 44100, 2, 16, 1, 15630, 65, L"Monkey's Audio 3.90", L"Extra High", Lossless,
     L"-", Stereo},
    {"dsd_stereo.wv", 352800, 2, 8, 1, 200, 2094080, L"WavPack, stream version 4.16", L"High, DSD",
     Lossless, L"APEv2 tag", Stereo},
    {"tagged.wv", 44100, 2, 16, 1, 3550, 172087, L"WavPack, stream version 4.07", L"Normal, hybrid",
     L"Lossy", L"APEv2 tag, ID3v1 tag", Stereo},
    // Its header says no mask of speakers.
    {"four_channels.wv", 44100, 4, 16, 1, 3833, 111706, L"WavPack, stream version 4.07",
     L"Normal, hybrid", L"Lossy", L"-", L"-"},
    {"click.mpc", 44100, 2, 16, 1, 40, 317600, L"mppenc 1.15 alpha", L"Standard", Vbr, L"-",
     Stereo},
    {"tagged.tta", 44100, 2, 16, 1, 3685, 172596, L"True Audio 1", L"-", Lossless,
     L"ID3v2.3 tag, ID3v1 tag", Stereo},
};

void ExpectRow(const Row& row, const std::wstring& path) {
    SCOPED_TRACE(row.Name);
    OpenedFile file(path);
    ASSERT_TRUE(file.opened);
    const clAudioInfo& info = file.info;
    const int blockAlign = row.Channels * ((row.Bits + 7) / 8);
    EXPECT_EQ(info.FormatTag, row.FormatTag);
    EXPECT_EQ(info.Channels, row.Channels);
    EXPECT_EQ(info.SampleRate, row.SampleRate);
    EXPECT_EQ(info.BitsPerSample, row.Bits);
    EXPECT_EQ(info.BlockAlign, blockAlign);
    EXPECT_EQ(info.AvgBytesPerSec, row.SampleRate * static_cast<uint32_t>(blockAlign));
    EXPECT_EQ(info.FileSize, static_cast<int64_t>(ReadWhole(path).size()));
    EXPECT_NEAR(static_cast<double>(info.LengthMs), row.LengthMs, 30);
    EXPECT_NEAR(info.BitRate, row.BitRate, std::ceil(row.BitRate * 0.02));
    EXPECT_EQ(file.Tech(L"encoder"), row.Encoder);
    EXPECT_EQ(file.Tech(L"encoder settings"), row.Settings);
    EXPECT_EQ(file.Tech(L"audio quality"), row.Quality);
    EXPECT_EQ(file.Tech(L"contains"), row.Contains);
    EXPECT_EQ(file.Tech(L"channel mapping"), row.Mapping);
}
} // namespace

TEST(Samples, AreToldFactByFact) {
    for (const Row& row : Samples)
        ExpectRow(row, SamplePath(row.Name));
}

TEST(Samples, OfTheLibrarysOwnTestsAreToldFactByFact) {
    for (const Row& row : LibraryFiles)
        ExpectRow(row, LibraryDataPath(row.Name));
}

TEST(Samples, HaveTheirTags) {
    for (const char* name : {"sample.mp3", "sample.flac", "sample.ogg", "sample.opus", "sample.m4a",
                             "sample.wma", "sample.aiff", "sample.ape", "sample.tta"}) {
        SCOPED_TRACE(name);
        OpenedFile file(SamplePath(name));
        EXPECT_EQ(file.Tag(L"artist"), L"Bj\xF6rk \xC5ngstr\xF6m");
        EXPECT_EQ(file.Tag(L"track"), L"3/12");
        NString description;
        const clTagElement* cover = file.tags.FindAlbumArt(1, description);
        ASSERT_TRUE(cover);
        EXPECT_GT(cover->Data.Size, 100U);
    }
}

TEST(Samples, OfTrackersHaveChannelsAndTheirTracker) {
    struct Tracker {
        const char* Name;
        int Channels;
        const wchar_t* Encoder;
    };
    for (const Tracker& row :
         {Tracker{"test.mod", 8, L"StarTrekker"}, Tracker{"test.s3m", 16, L"ScreamTracker III"},
          Tracker{"test.it", 64, L"Impulse Tracker"}, Tracker{"test.xm", 8, L"MilkyTracker"}}) {
        SCOPED_TRACE(row.Name);
        OpenedFile file(LibraryDataPath(row.Name));
        ASSERT_TRUE(file.opened);
        EXPECT_EQ(file.info.Channels, row.Channels);
        EXPECT_EQ(file.info.SampleRate, 0U);
        EXPECT_EQ(file.info.AvgBytesPerSec, 0U);
        EXPECT_EQ(file.info.LengthMs, 0);
        EXPECT_EQ(file.Tech(L"encoder"), row.Encoder);
    }
}
