#include "foundation/nfile.h"
#include "foundation/unique_handle.h"
#include "tests/support/message_box_driver.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace {
constexpr UINT RetryBoxType = 69;
constexpr UINT PlainBoxType = 64;
// A device on which every write finds the disk full.
const wchar_t FullDisk[] = L"Z:\\dev\\full";

class Files : public testing::Test {
protected:
    NString Make(const std::string& bytes) {
        NString path = folder_.File(L"file.bin");
        NFile file(path, GENERIC_WRITE, CREATE_ALWAYS, false, true);
        EXPECT_TRUE(file.Write(bytes.data(), static_cast<uint32_t>(bytes.size()), NFile::NoSeek));
        return path;
    }
    NString MakeWide(const std::wstring& units) {
        return Make(std::string(reinterpret_cast<const char*>(units.data()), units.size() * 2));
    }
    std::string Contents(const NString& path) {
        NFile file(path, GENERIC_READ, OPEN_EXISTING, false, true);
        bool failed = false;
        std::string bytes(static_cast<size_t>(file.GetSize(failed)), '\0');
        file.Read(bytes.data(), static_cast<uint32_t>(bytes.size()), NFile::NoSeek, failed);
        return bytes;
    }

    TempFolder folder_;
};

void ExpectBox(const SeenBox& box, const wchar_t* text, const wchar_t* caption, UINT type) {
    EXPECT_EQ(box.text, text);
    EXPECT_EQ(box.caption, caption);
    EXPECT_EQ(box.type, type);
    EXPECT_FALSE(box.hasOwner);
}

NString About(const wchar_t* failure, const NString& path) {
    NString text(failure);
    text.Append(L" '");
    text.Append(path);
    text.Append(L"'");
    return text;
}
} // namespace

TEST_F(Files, AFreshObjectHasNoHandle) {
    NFile file;
    EXPECT_EQ(file.Handle, reinterpret_cast<HANDLE>(-1));
    EXPECT_EQ(file.Path, L"");
    EXPECT_FALSE(file.ShowErrors);
    EXPECT_FALSE(file.OwnsHandle);
}

TEST_F(Files, TheFieldsStandInTheirOrder) {
    EXPECT_EQ(offsetof(NFile, Path), 0u);
    EXPECT_LT(offsetof(NFile, Path), offsetof(NFile, Handle));
    EXPECT_LT(offsetof(NFile, Handle), offsetof(NFile, ShowErrors));
    EXPECT_LT(offsetof(NFile, ShowErrors), offsetof(NFile, OwnsHandle));
}

TEST_F(Files, WhatIsWrittenIsRead) {
    NString path = Make("hello");
    NFile file(path, GENERIC_READ, OPEN_EXISTING, false, true);
    ASSERT_TRUE(file.IsOpen());
    EXPECT_TRUE(file.OwnsHandle);
    EXPECT_EQ(file.Path, path);
    EXPECT_EQ(Contents(path), "hello");
}

TEST_F(Files, AFileThatCantBeOpenedHasNoHandle) {
    MessageBoxDriver driver;
    NFile file(folder_.File(L"missing"), GENERIC_READ, OPEN_EXISTING, false, true);
    EXPECT_EQ(file.Handle, reinterpret_cast<HANDLE>(-1));
    EXPECT_TRUE(driver.Boxes().empty());
}

TEST_F(Files, SharingLetsOthersReadAndWrite) {
    NString path = Make("x");
    NFile first(path, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING, false, true);
    EXPECT_TRUE(NFile(path, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING, false, true).IsOpen());
    first.Close();
    first.Open(GENERIC_READ, OPEN_EXISTING, false, false);
    ASSERT_TRUE(first.IsOpen());
    EXPECT_FALSE(NFile(path, GENERIC_READ, OPEN_EXISTING, false, true).IsOpen());
}

TEST_F(Files, AttributesReachTheNewFile) {
    NString path = folder_.File(L"hidden");
    NFile file(path, GENERIC_WRITE, CREATE_NEW, false, true, FILE_ATTRIBUTE_HIDDEN);
    file.Close();
    EXPECT_TRUE(GetFileAttributesW(path.Text) & FILE_ATTRIBUTE_HIDDEN);
}

TEST_F(Files, ClosingFreesAHandleThatIsOwned) {
    NString path = Make("x");
    NFile file(path, GENERIC_READ, OPEN_EXISTING, false, false);
    file.Close();
    EXPECT_EQ(file.Handle, reinterpret_cast<HANDLE>(-1));
    EXPECT_TRUE(NFile(path, GENERIC_READ, OPEN_EXISTING, false, false).IsOpen());
    file.Close();
}

TEST_F(Files, ClosingLeavesAHandleThatIsNotOwned) {
    NFile owner(Make("x"), GENERIC_READ, OPEN_EXISTING, false, true);
    NFile borrower;
    borrower.Handle = owner.Handle;
    borrower.Close();
    EXPECT_EQ(borrower.Handle, reinterpret_cast<HANDLE>(-1));
    bool failed = true;
    EXPECT_EQ(owner.GetSize(failed), 1);
    EXPECT_FALSE(failed);
}

TEST_F(Files, OpeningAgainLeavesTheOldHandleToItsHolder) {
    NFile file(Make("x"), GENERIC_READ, OPEN_EXISTING, false, true);
    UniqueFileHandle old(file.Handle);
    file.Open(GENERIC_READ, OPEN_EXISTING, false, true);
    ASSERT_TRUE(file.IsOpen());
    EXPECT_NE(file.Handle, old.Get());
    EXPECT_EQ(GetFileSize(old.Get(), nullptr), 1u);
}

TEST_F(Files, TheEndOfAnObjectClosesItsFile) {
    NString path = Make("x");
    { NFile file(path, GENERIC_READ, OPEN_EXISTING, false, false); }
    EXPECT_TRUE(NFile(path, GENERIC_READ, OPEN_EXISTING, false, false).IsOpen());
}

TEST_F(Files, SeekGoesFromTheStartTheEndAndTheCurrentPosition) {
    NFile file(Make("0123456789"), GENERIC_READ, OPEN_EXISTING, false, true);
    bool failed = false;
    auto next = [&] {
        char byte = 0;
        file.Read(&byte, 1, 2, failed);
        return byte;
    };
    EXPECT_TRUE(file.Seek(3, 0));
    EXPECT_EQ(next(), '3');
    EXPECT_TRUE(file.Seek(-2, 1));
    EXPECT_EQ(next(), '8');
    EXPECT_TRUE(file.Seek(-4, 2));
    EXPECT_EQ(next(), '5');
    EXPECT_TRUE(file.Seek(2, 2));
    EXPECT_EQ(next(), '8');
}

TEST_F(Files, ASeekThatCantBeFails) {
    NFile file(Make("x"), GENERIC_READ, OPEN_EXISTING, false, true);
    EXPECT_FALSE(file.Seek(-1, NFile::FromStart));
    EXPECT_FALSE(file.Seek(0, 3));
    file.Close();
    EXPECT_FALSE(file.Seek(0, NFile::FromStart));
}

TEST_F(Files, PositionsAndSizesBeyondFourGigabytesCount) {
    NString path = folder_.File(L"sparse");
    NFile file(path, GENERIC_READ | GENERIC_WRITE, CREATE_ALWAYS, false, true);
    // The low half is the platform's mark of failure, and is none here.
    constexpr int64_t size = 0x1FFFFFFFF;
    ASSERT_TRUE(file.Seek(size, NFile::FromStart));
    ASSERT_TRUE(SetEndOfFile(file.Handle));
    bool failed = true;
    EXPECT_EQ(file.GetSize(failed), size);
    EXPECT_FALSE(failed);
    EXPECT_TRUE(file.Seek(0, NFile::FromEnd));
}

TEST_F(Files, TheSizeOfWhatIsNotAnOpenFileFails) {
    NFile file;
    bool failed = false;
    EXPECT_EQ(file.GetSize(failed), 0);
    EXPECT_TRUE(failed);
    UniqueKernelHandle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    file.Handle = event.Get();
    failed = false;
    EXPECT_EQ(file.GetSize(failed), 0);
    EXPECT_TRUE(failed);
}

TEST_F(Files, AReadOfNothingAtTheEndIsNoError) {
    NFile file(Make("x"), GENERIC_READ, OPEN_EXISTING, false, true);
    bool failed = true;
    char buffer[1];
    EXPECT_EQ(file.Read(buffer, 0, NFile::FromEnd, failed), 0u);
    EXPECT_FALSE(failed);
}

TEST_F(Files, AReadPastTheEndGivesWhatIsLeftWithoutAnError) {
    NFile file(Make("0123456789"), GENERIC_READ, OPEN_EXISTING, true, true);
    MessageBoxDriver driver;
    file.Seek(6, NFile::FromStart);
    char buffer[10] = {};
    bool failed = true;
    SetLastError(ERROR_ACCESS_DENIED);
    EXPECT_EQ(file.Read(buffer, 10, NFile::NoSeek, failed), 4u);
    EXPECT_FALSE(failed);
    EXPECT_STREQ(buffer, "6789");
    EXPECT_EQ(file.Read(buffer, 10, NFile::NoSeek, failed), 0u);
    EXPECT_FALSE(failed);
    EXPECT_TRUE(driver.Boxes().empty());
}

TEST_F(Files, ReadingAndWritingGoToAnEndFirstIfAsked) {
    NString path = Make("abc");
    NFile file(path, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING, false, true);
    EXPECT_TRUE(file.Write("X", 1, NFile::FromEnd));
    EXPECT_TRUE(file.Write("Y", 1, NFile::FromStart));
    EXPECT_TRUE(file.Write("Z", 1, NFile::NoSeek));
    char buffer[5] = {};
    bool failed = true;
    EXPECT_EQ(file.Read(buffer, 4, NFile::FromStart, failed), 4u);
    EXPECT_STREQ(buffer, "YZcX");
}

TEST_F(Files, ASeekThatFailsIsAFailureOfItsReadOrWrite) {
    NFile file(Make("x"), GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING, false, true);
    constexpr int noOrigin = 3;
    char buffer[1];
    bool failed = false;
    EXPECT_EQ(file.Read(buffer, 1, noOrigin, failed), 0u);
    EXPECT_TRUE(failed);
    EXPECT_FALSE(file.Write("y", 1, noOrigin));
    EXPECT_EQ(Contents(file.Path), "x");
}

TEST_F(Files, WithoutMessagesAFailureIsInTheResultAlone) {
    MessageBoxDriver driver;
    NFile file;
    char buffer[1];
    bool failed = false;
    EXPECT_EQ(file.Read(buffer, 1, NFile::NoSeek, failed), 0u);
    EXPECT_TRUE(failed);
    EXPECT_FALSE(file.Write("x", 1, NFile::NoSeek));
    EXPECT_FALSE(file.Write("x", 0, NFile::NoSeek));
    EXPECT_FALSE(file.Write(nullptr, 1, NFile::NoSeek));
    EXPECT_TRUE(driver.Boxes().empty());
}

TEST_F(Files, WritingNothingFromNowhereSucceeds) {
    NFile file;
    EXPECT_TRUE(file.Write(nullptr, 0, NFile::FromStart));
}

TEST_F(Files, AStringIsWrittenWithoutItsTerminatorAndWithALineEndIfAsked) {
    NString path = folder_.File(L"text");
    NFile file(path, GENERIC_WRITE, CREATE_ALWAYS, false, true);
    EXPECT_TRUE(file.WriteString(L"A\u4E2D", true));
    EXPECT_TRUE(file.WriteString(L"B", false));
    file.Close();
    EXPECT_EQ(Contents(path), std::string("A\0\x2D\x4E\r\0\n\0B\0", 10));
    EXPECT_FALSE(file.WriteString(L"A", true));
}

TEST_F(Files, LinesEndAtALineFeedACarriageReturnAndBoth) {
    NFile file(Make("a\nbb\r\n\rccc\rd"), GENERIC_READ, OPEN_EXISTING, false, true);
    NString line(L"old");
    for (const wchar_t* expected : {L"a", L"bb", L"", L"ccc", L"d"}) {
        EXPECT_TRUE(file.ReadLine(line, false));
        EXPECT_EQ(line, expected);
    }
    EXPECT_FALSE(file.ReadLine(line, false));
    EXPECT_EQ(line, L"");
}

TEST_F(Files, BytesOfALineGoThroughTheNarrowCodePage) {
    NString expected("\xE9\xE8");
    NFile file(Make("\xE9\xE8\n"), GENERIC_READ, OPEN_EXISTING, false, true);
    NString line;
    EXPECT_TRUE(file.ReadLine(line, false));
    EXPECT_EQ(line, expected);
}

TEST_F(Files, WideLinesEndAtALineFeedAndAtBothUnits) {
    NFile file(MakeWide(L"\u4E2D\r\n\na"), GENERIC_READ, OPEN_EXISTING, false, true);
    NString line;
    for (const wchar_t* expected : {L"\u4E2D", L"", L"a"}) {
        EXPECT_TRUE(file.ReadLine(line, true));
        EXPECT_EQ(line, expected);
    }
    EXPECT_FALSE(file.ReadLine(line, true));
}

TEST_F(Files, BehindALoneCarriageReturnAWideReaderStandsInTheMiddleOfAUnit) {
    // 0x0041 and 0x0042 are read as 0x4200 from the middle on.
    NFile file(MakeWide(L"x\r\x0041\x0042\x0043"), GENERIC_READ, OPEN_EXISTING, false, true);
    NString line;
    EXPECT_TRUE(file.ReadLine(line, true));
    EXPECT_EQ(line, L"x");
    EXPECT_TRUE(file.ReadLine(line, true));
    EXPECT_EQ(line, L"\x4200\x4300");
}

TEST_F(Files, TheEndBehindACarriageReturnCountsAsTheEnd) {
    NString line;
    NFile withText(Make("a\r"), GENERIC_READ, OPEN_EXISTING, false, true);
    EXPECT_TRUE(withText.ReadLine(line, false));
    EXPECT_EQ(line, L"a");
    NFile withoutText(Make("\r"), GENERIC_READ, OPEN_EXISTING, false, true);
    EXPECT_FALSE(withoutText.ReadLine(line, false));
}

TEST_F(Files, TheEndBehindACarriageReturnCountsAsTheEndInWideModeToo) {
    NString line;
    NFile withText(MakeWide(L"a\r"), GENERIC_READ, OPEN_EXISTING, false, true);
    EXPECT_TRUE(withText.ReadLine(line, true));
    EXPECT_EQ(line, L"a");
    withText.Close();
    NFile withoutText(MakeWide(L"\r"), GENERIC_READ, OPEN_EXISTING, false, true);
    EXPECT_FALSE(withoutText.ReadLine(line, true));
}

TEST_F(Files, AZeroByteIsPartOfItsLine) {
    NString line;
    NFile inside(Make(std::string("a\0b\n", 4)), GENERIC_READ, OPEN_EXISTING, false, true);
    EXPECT_TRUE(inside.ReadLine(line, false));
    EXPECT_EQ(line.CharCount(), 3);
    EXPECT_EQ(line.At(3), L'b');
    inside.Close();
    NFile alone(Make(std::string(1, '\0')), GENERIC_READ, OPEN_EXISTING, false, true);
    EXPECT_TRUE(alone.ReadLine(line, false));
    EXPECT_EQ(line.CharCount(), 1);
}

TEST_F(Files, LongLinesAreReadWhole) {
    NFile file(Make(std::string(3000, 'x') + "\n"), GENERIC_READ, OPEN_EXISTING, false, true);
    NString line;
    EXPECT_TRUE(file.ReadLine(line, false));
    EXPECT_EQ(line.CharCount(), 3000);
}

TEST_F(Files, APathAtTheLimitIsOpenedAndOneBelowItToo) {
    for (int length : {259, 260, 400}) {
        NString path = folder_.Path();
        // Components have a limit of their own, so a long path needs folders.
        while (path.CharCount() < length - 200) {
            path.Append(L"\\dddddddddddddddddddddddddddddddddddddddd");
            CreateDirectoryW(NString(L"\\\\?\\").Concat(path.Text).Text, nullptr);
        }
        path.Append(L"\\");
        path.SetLength(length, L'f');
        NFile file(path, GENERIC_WRITE, CREATE_ALWAYS, false, true);
        EXPECT_TRUE(file.IsOpen()) << length;
    }
}

TEST_F(Files, AnEmptyApiPathMakesOpeningFail) {
    NString path(L"\\\\?\\");
    path.Append(folder_.File(L"x"));
    path.SetLength(300, L'y');
    EXPECT_FALSE(NFile(path, GENERIC_WRITE, CREATE_ALWAYS, false, true).IsOpen());
}

TEST_F(Files, ABlockIsReadAtAnOffset) {
    NString path = Make("0123456789");
    char buffer[4] = {};
    bool failed = true;
    EXPECT_EQ(NReadFile(path, buffer, 3, 2, NFile::FromStart, failed), 3u);
    EXPECT_FALSE(failed);
    EXPECT_STREQ(buffer, "234");
    EXPECT_EQ(NReadFile(path, buffer, 3, -2, NFile::FromEnd, failed), 2u);
    EXPECT_FALSE(failed);
    EXPECT_EQ(buffer[0], '8');
    EXPECT_EQ(NReadFile(path, buffer, 3, 5, NFile::NoSeek, failed), 3u);
    EXPECT_STREQ(buffer, "012");
}

TEST_F(Files, ABlockOfAFileThatIsMissingOrTooShortToSeekInFails) {
    char buffer[1];
    bool failed = false;
    EXPECT_EQ(NReadFile(folder_.File(L"missing"), buffer, 1, 0, NFile::NoSeek, failed), 0u);
    EXPECT_TRUE(failed);
    failed = false;
    EXPECT_EQ(NReadFile(Make("x"), buffer, 1, -5, NFile::FromEnd, failed), 0u);
    EXPECT_TRUE(failed);
}

TEST_F(Files, ABlockOfAMissingFileAsksTheUserOnce) {
    MessageBoxDriver driver;
    char buffer[1];
    bool failed = false;
    NReadFile(folder_.File(L"missing"), buffer, 1, 0, NFile::NoSeek, failed, true);
    EXPECT_TRUE(failed);
    EXPECT_EQ(driver.Boxes().size(), 1u);
}

TEST_F(Files, AFailedOpenForReadingOffersRetryUntilItIsCancelled) {
    NString path = folder_.File(L"missing");
    MessageBoxDriver driver({IDRETRY, IDRETRY, IDCANCEL});
    NFile file(path, GENERIC_READ, OPEN_EXISTING, true, true);
    EXPECT_FALSE(file.IsOpen());
    ASSERT_EQ(driver.Boxes().size(), 3u);
    for (const SeenBox& box : driver.Boxes())
        ExpectBox(box, About(L"Unable to open", path).Text, L"File Read Error", RetryBoxType);
}

TEST_F(Files, AFailedOpenForWritingHasItsOwnCaption) {
    NString path = folder_.File(L"missing");
    MessageBoxDriver driver({IDCANCEL});
    NFile file(path, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING, true, true);
    ASSERT_EQ(driver.Boxes().size(), 1u);
    ExpectBox(driver.Boxes()[0], About(L"Unable to open", path).Text, L"File Write Error",
              RetryBoxType);
}

TEST_F(Files, RetryOpensAFileThatIsThereByThen) {
    NString path = folder_.File(L"file.bin");
    MessageBoxDriver driver({IDRETRY, IDRETRY});
    driver.beforeAnswer = [&](size_t number) {
        if (number == 1)
            Make("x");
    };
    NFile file(path, GENERIC_READ, OPEN_EXISTING, true, true);
    EXPECT_TRUE(file.IsOpen());
    EXPECT_EQ(driver.Boxes().size(), 2u);
}

TEST_F(Files, AFailedReadOffersRetryUntilItIsCancelled) {
    NString path = Make("x");
    NFile file(path, GENERIC_WRITE, OPEN_EXISTING, true, true);
    MessageBoxDriver driver({IDRETRY, IDCANCEL});
    char buffer[1];
    bool failed = false;
    EXPECT_EQ(file.Read(buffer, 1, NFile::NoSeek, failed), 0u);
    EXPECT_TRUE(failed);
    ASSERT_EQ(driver.Boxes().size(), 2u);
    for (const SeenBox& box : driver.Boxes())
        ExpectBox(box, About(L"Unable to read from", path).Text, L"File Read Error", RetryBoxType);
}

TEST_F(Files, RetryReadsAgainFromWhereItWasAsked) {
    NString path = Make("abc");
    NFile file(path, GENERIC_WRITE, OPEN_EXISTING, true, true);
    MessageBoxDriver driver({IDRETRY});
    driver.beforeAnswer = [&](size_t) {
        file.Close();
        file.Open(GENERIC_READ, OPEN_EXISTING, true, true);
        file.Seek(1, NFile::FromStart);
    };
    char byte = 0;
    bool failed = true;
    EXPECT_EQ(file.Read(&byte, 1, NFile::FromStart, failed), 1u);
    EXPECT_FALSE(failed);
    EXPECT_EQ(byte, 'a');
    EXPECT_EQ(driver.Boxes().size(), 1u);
}

TEST_F(Files, AFullDiskOffersRetryForAsLongAsTheUserPressesIt) {
    NFile file(FullDisk, GENERIC_WRITE, OPEN_EXISTING, true, true);
    ASSERT_TRUE(file.IsOpen());
    MessageBoxDriver driver({IDRETRY, IDRETRY, IDRETRY, IDRETRY, IDRETRY, IDCANCEL});
    EXPECT_FALSE(file.Write("x", 1, NFile::NoSeek));
    ASSERT_EQ(driver.Boxes().size(), 6u);
    for (const SeenBox& box : driver.Boxes())
        ExpectBox(box, L"Unable to write to 'Z:\\dev\\full'", L"File Write Error", RetryBoxType);
}

TEST_F(Files, RetryWritesOnceTheCauseIsGone) {
    NString path = Make("abc");
    NFile file(path, GENERIC_READ, OPEN_EXISTING, true, true);
    MessageBoxDriver driver({IDRETRY});
    driver.beforeAnswer = [&](size_t) {
        file.Close();
        file.Open(GENERIC_WRITE, OPEN_EXISTING, true, true);
    };
    EXPECT_TRUE(file.Write("X", 1, NFile::FromEnd));
    file.Close();
    EXPECT_EQ(driver.Boxes().size(), 1u);
    EXPECT_EQ(Contents(path), "abcX");
}

TEST_F(Files, AWriteFromNowhereIsReportedWithoutRetry) {
    NFile file(Make("x"), GENERIC_WRITE, OPEN_EXISTING, true, true);
    MessageBoxDriver driver;
    EXPECT_FALSE(file.Write(nullptr, 5, NFile::NoSeek));
    ASSERT_EQ(driver.Boxes().size(), 1u);
    ExpectBox(driver.Boxes()[0], L"Error writing a NULL buffer to file", L"File Write Error",
              PlainBoxType);
}

TEST_F(Files, AFileThatIsNotOpenAsksBeforeItFails) {
    NFile file;
    file.ShowErrors = true;
    MessageBoxDriver driver;
    char buffer[1];
    bool failed = false;
    file.Read(buffer, 1, NFile::NoSeek, failed);
    EXPECT_TRUE(failed);
    EXPECT_FALSE(file.Write("x", 1, NFile::NoSeek));
    ASSERT_EQ(driver.Boxes().size(), 2u);
    EXPECT_EQ(driver.Boxes()[0].text, L"Unable to read from ''");
    EXPECT_EQ(driver.Boxes()[1].text, L"Unable to write to ''");
}
