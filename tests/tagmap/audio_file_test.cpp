#include "suite/tagmap/audio_file.h"
#include "tests/querytrackdata/test_files.h"

#include <gtest/gtest.h>

#include <audioproperties.h>

#include <ostream>

namespace {
using tagmap::FileStream;
using tagmap::Format;

std::wstring Sample(const std::string& name) {
    return HostPath((TONEWRIGHT_SOURCE_DIR "/build/samples/" + name).c_str());
}

std::wstring LibraryData(const std::string& name) {
    return HostPath((TONEWRIGHT_SOURCE_DIR "/build/taglib/source/tests/data/" + name).c_str());
}

Format FormatAt(const std::wstring& path) {
    FileStream stream(path.c_str(), FileStream::Mode::Read);
    EXPECT_TRUE(stream.isOpen());
    return tagmap::FormatOf(stream);
}

struct Expected {
    const char* File;
    Format Kind;
};

void PrintTo(const Expected& expected, std::ostream* out) {
    *out << expected.File;
}

class FormatOfSample : public testing::TestWithParam<Expected> {};
} // namespace

TEST_P(FormatOfSample, IsFoundByItsContent) {
    EXPECT_EQ(FormatAt(Sample(GetParam().File)), GetParam().Kind);
}

TEST_P(FormatOfSample, IsFoundUnderALyingExtension) {
    TestFolder folder;
    for (const wchar_t* name : {L"lies.wav", L"lies.txt", L"lies"}) {
        const std::wstring path = folder.Write(name, ReadWhole(Sample(GetParam().File)));
        EXPECT_EQ(FormatAt(path), GetParam().Kind);
        tagmap::AudioFile file(path.c_str(), FileStream::Mode::Read, true);
        EXPECT_TRUE(file.IsValid());
        ASSERT_NE(file.File().audioProperties(), nullptr);
        EXPECT_GT(file.File().audioProperties()->sampleRate(), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Samples, FormatOfSample,
    testing::Values(
        Expected{"sample.mp3", Format::Mpeg}, Expected{"sample-id3v1.mp3", Format::Mpeg},
        Expected{"sample-id3v22.mp3", Format::Mpeg}, Expected{"sample-id3v24.mp3", Format::Mpeg},
        Expected{"sample-ape.mp3", Format::Mpeg}, Expected{"sample.flac", Format::Flac},
        Expected{"sample.ogg", Format::OggVorbis}, Expected{"sample.opus", Format::OggOpus},
        Expected{"sample.spx", Format::OggSpeex}, Expected{"sample.oga", Format::OggFlac},
        Expected{"sample.m4a", Format::Mp4}, Expected{"sample-alac.m4a", Format::Mp4},
        Expected{"sample.wma", Format::Asf}, Expected{"sample.wav", Format::Wav},
        Expected{"sample-id3.wav", Format::Wav}, Expected{"sample.aiff", Format::Aiff},
        Expected{"sample.ape", Format::MonkeysAudio}, Expected{"sample.wv", Format::WavPack},
        Expected{"sample.mpc", Format::Musepack}, Expected{"sample.tta", Format::TrueAudio}),
    [](const auto& test) {
        std::string name = test.param.File;
        for (char& character : name)
            character = isalnum(character) ? character : '_';
        return name;
    });

TEST(FormatOf, FindsTrackerModules) {
    EXPECT_EQ(FormatAt(LibraryData("test.it")), Format::ImpulseTracker);
    EXPECT_EQ(FormatAt(LibraryData("test.s3m")), Format::ScreamTracker);
    EXPECT_EQ(FormatAt(LibraryData("test.xm")), Format::FastTracker);
    EXPECT_EQ(FormatAt(LibraryData("test.mod")), Format::Module);
}

TEST(FormatOf, LooksBehindId3v2TagsOfOtherFormats) {
    TestFolder folder;
    const Bytes tag = BytesOf(std::string("ID3\3\0\0\0\0\0\4abcd", 14));
    const std::wstring path = folder.Write(L"flac", tag + tag + ReadWhole(Sample("sample.flac")));
    EXPECT_EQ(FormatAt(path), Format::Flac);
}

TEST(FormatOf, ATextIsNoAudioWhateverItsExtension) {
    TestFolder folder;
    std::string text;
    for (int line = 0; line < 2000; ++line)
        text += "No audio stands in this line of text.\n";
    EXPECT_EQ(FormatAt(folder.Write(L"text.mp3", BytesOf(text))), Format::Unknown);
    EXPECT_EQ(FormatAt(folder.Write(L"text.flac", BytesOf(text))), Format::Unknown);
    EXPECT_EQ(FormatAt(folder.Write(L"empty.mp3", {})), Format::Unknown);
    EXPECT_EQ(FormatAt(folder.Write(L"short.mp3", BytesOf("\xFF\xFB"))), Format::Unknown);
}

TEST(FormatOf, ContainersOfOtherThingsAreNoAudio) {
    TestFolder folder;
    EXPECT_EQ(FormatAt(folder.Write(L"avi.wav", BytesOf(std::string("RIFF\4\0\0\0AVI ", 12)))),
              Format::Unknown);
    EXPECT_EQ(FormatAt(folder.Write(L"picture.aiff", BytesOf(std::string("FORM\0\0\0\4ILBM", 12)))),
              Format::Unknown);
    EXPECT_EQ(FormatAt(folder.Write(L"video.ogg", BytesOf("OggS"))), Format::Unknown);
}

TEST(Mp4Fragments, AreFoundAtTheTopLevel) {
    FileStream plain(Sample("sample.m4a").c_str(), FileStream::Mode::Read);
    EXPECT_FALSE(tagmap::HasMp4Fragments(plain));
    FileStream fragmented(Sample("odd/fragmented.m4a").c_str(), FileStream::Mode::Read);
    EXPECT_TRUE(tagmap::HasMp4Fragments(fragmented));
}

TEST(Mp4Fragments, ABoxOfAnImpossibleSizeEndsTheSearch) {
    TestFolder folder;
    for (const std::string& size : {std::string("\0\0\0\7", 4), std::string("\377\377\377\377", 4),
                                    std::string("\0\0\0\0", 4)}) {
        const std::wstring path = folder.Write(L"box", BytesOf(size + "ftypM4A \0\0\0\10moof"));
        FileStream stream(path.c_str(), FileStream::Mode::Read);
        EXPECT_FALSE(tagmap::HasMp4Fragments(stream));
    }
}
