#include "audiopage/file_type.h"
#include "tests/shell/private_classes_root.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

namespace {
class FileType : public testing::Test {
protected:
    // The last answer of another test isn't given again.
    void SetUp() override { AskOther(); }
    void Register(const wchar_t* extension, const wchar_t* typeKey) {
        classes_.Write(extension, L"", typeKey);
    }
    void Name(const wchar_t* typeKey, const wchar_t* name) { classes_.Write(typeKey, L"", name); }
    // Makes the next question a new one.
    static void AskOther() { FileTypeText(L"other.other-extension"); }

    PrivateClassesRoot classes_;
};
} // namespace

TEST_F(FileType, IsTheNameOfTheKeyThatTheExtensionNames) {
    Register(L".mp3", L"Player.Song");
    Name(L"Player.Song", L"MP3 audio");
    EXPECT_EQ(FileTypeText(L"C:\\music\\a.mp3"), L"MP3 audio");
}

TEST_F(FileType, WithoutARegisteredTypeIsMadeOfTheExtension) {
    EXPECT_EQ(FileTypeText(L"a.MP4x"), L"mp4x File");
    EXPECT_EQ(FileTypeText(L"a.\x00C4\x00D6"), L"\x00C4\x00D6 File");
}

TEST_F(FileType, OfATypeWithoutANameIsMadeOfTheExtension) {
    Register(L".mp3", L"Player.Song");
    EXPECT_EQ(FileTypeText(L"a.mp3"), L"mp3 File");
    AskOther();
    Register(L".mp3", L"");
    EXPECT_EQ(FileTypeText(L"a.mp3"), L"mp3 File");
}

TEST_F(FileType, WithoutAnExtensionIsFileWhateverTheKeyOfTheDotSays) {
    Register(L".", L"Dot");
    Name(L"Dot", L"a dot");
    EXPECT_EQ(FileTypeText(L"C:\\mu.sic\\song"), L"File");
    AskOther();
    EXPECT_EQ(FileTypeText(L"song."), L"File");
}

TEST_F(FileType, TheLastAnswerIsGivenAgainForTheSameExtensionInAnyCase) {
    EXPECT_EQ(FileTypeText(L"a.mp3"), L"mp3 File");
    Register(L".mp3", L"Player.Song");
    Name(L"Player.Song", L"MP3 audio");
    EXPECT_EQ(FileTypeText(L"b.mp3"), L"mp3 File");
    EXPECT_EQ(FileTypeText(L"b.MP3"), L"mp3 File");
    AskOther();
    EXPECT_EQ(FileTypeText(L"b.MP3"), L"MP3 audio");
}
