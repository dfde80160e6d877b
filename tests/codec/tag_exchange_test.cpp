#include "codec/tag_exchange.h"
#include "codec/tag_wire.h"
#include "foundation/module_instance.h"
#include "foundation/nfile.h"
#include "foundation/nprocess.h"
#include "foundation/unique_handle.h"
#include "tests/support/message_box_driver.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/scoped_priority.h"
#include "tests/support/shared_event.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

// A stand-in for QueryTrackData.exe lies in the folder of this program; what it
// does stands in stand_in/query_track_data.cpp.
namespace {
using Bytes = std::vector<uint8_t>;

const wchar_t AudioPath[] = L"C:\\Music\\Bj\u00F6rk \u4E2D\u6587.mp3";

Bytes Utf16(const wchar_t* text) {
    Bytes bytes;
    for (; *text; ++text) {
        bytes.push_back(static_cast<uint8_t>(*text & 0xFF));
        bytes.push_back(static_cast<uint8_t>(*text >> 8));
    }
    return bytes;
}

Bytes operator+(Bytes first, const Bytes& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Bytes Contents(const NString& path) {
    NFile file(path.Text, GENERIC_READ, OPEN_EXISTING, false, true, FILE_ATTRIBUTE_NORMAL);
    bool failed = false;
    Bytes bytes(static_cast<size_t>(file.GetSize(failed)));
    file.Read(bytes.data(), static_cast<uint32_t>(bytes.size()), NFile::NoSeek, failed);
    return bytes;
}

NString TextOf(const Bytes& bytes) {
    NString text;
    for (size_t index = 0; index + 1 < bytes.size(); index += 2)
        text.InsertChar(static_cast<wchar_t>(bytes[index] | bytes[index + 1] << 8));
    return text;
}

Bytes BytesOf(const NBuffer& buffer) {
    return Bytes(buffer.Data, buffer.Data + buffer.Size);
}

class TagExchange : public testing::Test {
protected:
    void SetUp() override { SetEnvironmentVariableW(L"TONEWRIGHT_STAND_IN", folder_.Path().Text); }

    void ReplyWith(const Bytes& bytes) {
        NFile file(folder_.File(L"reply.bin").Text, GENERIC_WRITE, CREATE_ALWAYS, false, true,
                   FILE_ATTRIBUTE_NORMAL);
        file.Write(bytes.data(), static_cast<uint32_t>(bytes.size()), NFile::NoSeek);
    }

    Bytes Request() { return Contents(folder_.File(L"request.bin")); }
    NString CommandLine() { return TextOf(Contents(folder_.File(L"command_line.txt"))); }
    bool WasRun() {
        return GetFileAttributesW(folder_.File(L"command_line.txt").Text) !=
               INVALID_FILE_ATTRIBUTES;
    }

    // The exchange file's path, out of the command line.
    NString ExchangePath() {
        NString line = CommandLine();
        int last = line.FindLastChar(L'"');
        int first = line.FindLastChar(L'"', last - 1);
        return line.Mid(first + 1, last - 1);
    }

    NString ExpectedCommandLine(const wchar_t* option) {
        NString line(L"\"");
        line.Append(NGetModuleFolder(NModuleInstance()));
        line.Append(L"QueryTrackData.exe\"  ");
        line.Append(option);
        line.Append(L"=\"");
        line.Append(ExchangePath());
        line.Append(L"\"");
        return line;
    }

    Bytes PayloadOf(const Bytes& reply) {
        ReplyWith(reply);
        NBuffer out;
        out.Set("old", 3);
        RunGetAudioInf(AudioPath, out);
        return BytesOf(out);
    }

    TempFolder folder_;
};

const Bytes Magic = {'I', 'D', 'T', 'G'};

// For the time of a test the module seems to lie where no sibling lies.
class WithoutSibling {
public:
    WithoutSibling() { NSetModuleInstance(GetModuleHandleW(L"kernel32.dll")); }
    ~WithoutSibling() { NSetModuleInstance(nullptr); }
};

// For the time of a test no temporary file can be made.
class WithoutTempFolder {
public:
    WithoutTempFolder() {
        GetEnvironmentVariableW(L"TMP", tmp_, MAX_PATH);
        GetEnvironmentVariableW(L"TEMP", temp_, MAX_PATH);
        for (const wchar_t* name : {L"TMP", L"TEMP"})
            SetEnvironmentVariableW(name, L"C:\\windows\\system32\\kernel32.dll\\none");
    }
    ~WithoutTempFolder() {
        SetEnvironmentVariableW(L"TMP", tmp_);
        SetEnvironmentVariableW(L"TEMP", temp_);
    }

private:
    wchar_t tmp_[MAX_PATH] = {};
    wchar_t temp_[MAX_PATH] = {};
};
} // namespace

TEST_F(TagExchange, AReadRequestIsThePathAlone) {
    NBuffer out;
    RunGetAudioInf(AudioPath, out);
    EXPECT_EQ(Request(), Utf16(AudioPath));
    EXPECT_EQ(CommandLine(), ExpectedCommandLine(L"--GetAudioInf"));
}

TEST_F(TagExchange, ASetRequestIsSizeRecordMarkerAndPath) {
    clTagRecord record;
    record.Add(L"artist", L"B");
    record.AddData(L"_albumart_1", "xyz", 3);
    NBuffer serialised;
    record.Serialise(serialised);

    EXPECT_TRUE(RunSetTags(AudioPath, record));

    Bytes size = {static_cast<uint8_t>(serialised.Size), 0, 0, 0};
    EXPECT_EQ(Request(),
              size + BytesOf(serialised) + Bytes({0x33, 0x56, 0x94, 0x12}) + Utf16(AudioPath));
    EXPECT_EQ(CommandLine(), ExpectedCommandLine(L"--SetTags"));
}

TEST_F(TagExchange, TwoBlanksStandBetweenTheProgramAndItsOption) {
    clTagRecord record;
    record.Add(L"a", L"b");
    RunSetTags(AudioPath, record);
    EXPECT_NE(CommandLine().Find(L"QueryTrackData.exe\"  --SetTags=\""), 0);
}

TEST_F(TagExchange, ADeleteRequestOfNoNamesAsksForAll) {
    RunDelTagElements(AudioPath, NStringList());
    EXPECT_EQ(Request(), Utf16(AudioPath) + Utf16(L"\r\n[tag_del_all]"));
    EXPECT_EQ(CommandLine(), ExpectedCommandLine(L"--DelTagElements"));
}

TEST_F(TagExchange, ADeleteRequestOfOneNameHoldsThatNameAlone) {
    NStringList names;
    names.Add(L"artist");
    RunDelTagElements(AudioPath, names);
    EXPECT_EQ(Request(), Utf16(AudioPath) + Utf16(L"\r\nartist"));
}

TEST_F(TagExchange, ADeleteRequestJoinsItsNames) {
    NStringList names;
    names.Add(L"artist");
    names.Add(L"_albumart_1_Front Album Cover");
    names.Add(L"year");
    RunDelTagElements(AudioPath, names);
    EXPECT_EQ(Request(), Utf16(AudioPath) + Utf16(L"\r\nartist{tag_sep}_albumart_1_Front Album "
                                                  L"Cover{tag_sep}year"));
}

TEST_F(TagExchange, TheExchangeFileHasItsPrefixAndIsGoneAfterEachRequest) {
    NBuffer out;
    clTagRecord record;
    for (int request = 0; request < 3; ++request) {
        if (request == 0)
            RunGetAudioInf(AudioPath, out);
        else if (request == 1)
            RunSetTags(AudioPath, record);
        else
            RunDelTagElements(AudioPath, NStringList());
        NString path = ExchangePath();
        EXPECT_EQ(path.From(path.FindLastChar(L'\\') + 1).Compare(L"tNP", 3), 0);
        EXPECT_EQ(GetFileAttributesW(path.Text), INVALID_FILE_ATTRIBUTES);
    }
}

TEST_F(TagExchange, ARecordComesThroughAReply) {
    clTagRecord record;
    record.Add(L"artist", L"Bj\u00F6rk");
    NBuffer serialised;
    record.Serialise(serialised);
    Bytes payload = PayloadOf(Magic + Bytes({static_cast<uint8_t>(serialised.Size), 0, 0, 0}) +
                              BytesOf(serialised));
    clTagRecord back;
    back.Deserialise(payload.data(), static_cast<int>(payload.size()));
    ASSERT_EQ(back.Count(), 1);
    EXPECT_EQ(back[0]->Value, L"Bj\u00F6rk");
}

TEST_F(TagExchange, AReplyOfEightBytesIsRejected) {
    EXPECT_EQ(PayloadOf(Magic + Bytes({0, 0, 0, 0})), Bytes());
    EXPECT_EQ(PayloadOf(Magic + Bytes({1, 0, 0, 0})), Bytes());
}

TEST_F(TagExchange, AReplyOfNineBytesHoldsOneByte) {
    EXPECT_EQ(PayloadOf(Magic + Bytes({1, 0, 0, 0, 'x'})), Bytes({'x'}));
}

TEST_F(TagExchange, AnEmptyReplyFileIsRejected) {
    EXPECT_EQ(PayloadOf({}), Bytes());
}

TEST_F(TagExchange, AnotherMagicIsRejected) {
    EXPECT_EQ(PayloadOf(Bytes({'I', 'D', 'T', 'g', 1, 0, 0, 0, 'x'})), Bytes());
}

TEST_F(TagExchange, ARequestLeftUnansweredIsRejected) {
    NBuffer out;
    out.Set("old", 3);
    RunGetAudioInf(AudioPath, out);
    EXPECT_TRUE(WasRun());
    EXPECT_EQ(out.Size, 0u);
}

TEST_F(TagExchange, ALengthOfZeroYieldsNoTags) {
    EXPECT_EQ(PayloadOf(Magic + Bytes({0, 0, 0, 0, 'x', 'y'})), Bytes());
}

TEST_F(TagExchange, WhatAReplyLeavesOfALongerRequestIsNoPartOfIt) {
    ScopedEnvironment keep(L"TONEWRIGHT_STAND_IN_KEEP_REST", L"1");
    clTagRecord record;
    record.Add(L"a", L"b");
    NBuffer serialised;
    record.Serialise(serialised);
    Bytes reply =
        Magic + Bytes({static_cast<uint8_t>(serialised.Size), 0, 0, 0}) + BytesOf(serialised);
    ASSERT_LT(reply.size(), Utf16(AudioPath).size());
    EXPECT_EQ(PayloadOf(reply), BytesOf(serialised));
    // A length that reaches into the rest of the request takes it along.
    Bytes path = Utf16(AudioPath);
    EXPECT_EQ(PayloadOf(Magic + Bytes({3, 0, 0, 0, 'x'})), Bytes({'x', path[9], path[10]}));
}

TEST_F(TagExchange, ALengthBelowThePayloadCutsIt) {
    EXPECT_EQ(PayloadOf(Magic + Bytes({2, 0, 0, 0, 'x', 'y', 'z'})), Bytes({'x', 'y'}));
}

TEST_F(TagExchange, ALengthAboveThePayloadIsFilledWithZeros) {
    EXPECT_EQ(PayloadOf(Magic + Bytes({5, 0, 0, 0, 'x', 'y'})), Bytes({'x', 'y', 0, 0, 0}));
}

TEST_F(TagExchange, ANegativeLengthCountsAsNone) {
    EXPECT_EQ(PayloadOf(Magic + Bytes({0xFF, 0xFF, 0xFF, 0xFF, 'x'})), Bytes());
}

TEST_F(TagExchange, TheExitCodeOfTheSiblingIsNotRead) {
    clTagRecord record;
    record.Add(L"a", L"b");
    EXPECT_TRUE(RunSetTags(AudioPath, record)); // the stand-in always exits with 1
}

TEST_F(TagExchange, WithoutTheSiblingAReadIsEmptyAndASetIsFalse) {
    WithoutSibling noSibling;
    NBuffer out;
    out.Set("old", 3);
    RunGetAudioInf(AudioPath, out);
    EXPECT_EQ(out.Size, 0u);
    clTagRecord record;
    record.Add(L"a", L"b");
    EXPECT_FALSE(RunSetTags(AudioPath, record));
    RunDelTagElements(AudioPath, NStringList());
    EXPECT_FALSE(WasRun());
}

TEST_F(TagExchange, WithoutATemporaryFileReadAndDeleteStillRunTheSibling) {
    WithoutTempFolder noTemp;
    NBuffer out;
    RunGetAudioInf(AudioPath, out);
    EXPECT_TRUE(WasRun());
    EXPECT_EQ(out.Size, 0u);
    DeleteFileW(folder_.File(L"command_line.txt").Text);
    RunDelTagElements(AudioPath, NStringList());
    EXPECT_TRUE(WasRun());
}

TEST_F(TagExchange, WithoutATemporaryFileASetIsFalseAndTheSiblingIsNotRun) {
    WithoutTempFolder noTemp;
    clTagRecord record;
    record.Add(L"a", L"b");
    EXPECT_FALSE(RunSetTags(AudioPath, record));
    EXPECT_FALSE(WasRun());
}

TEST_F(TagExchange, ARecordTooLargeForItsFormAsksForNothing) {
    clTagRecord record;
    record.AddData(L"a", "x", 1);
    record[0]->Data.Size = INT32_MAX;
    EXPECT_TRUE(RunSetTags(AudioPath, record));
    EXPECT_FALSE(WasRun());
}

TEST_F(TagExchange, TheLow32BitsOfAReplysSizeCount) {
    ScopedEnvironment growth(L"TONEWRIGHT_STAND_IN_GROW", L"4");
    EXPECT_EQ(PayloadOf(Magic + Bytes({1, 0, 0, 0, 'x'})), Bytes({'x'}));
    EXPECT_EQ(PayloadOf(Magic + Bytes({1, 0, 0, 0})), Bytes());
}

TEST_F(TagExchange, TheSiblingGetsNoWindowNoHandlesAndNormalPriority) {
    SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), nullptr, TRUE};
    UniqueKernelHandle event(CreateEventW(&inheritable, TRUE, FALSE, nullptr));
    std::wstring number = std::to_wstring(reinterpret_cast<uintptr_t>(event.Get()));
    ScopedEnvironment handle(L"TONEWRIGHT_STAND_IN_HANDLE", number.c_str());
    ScopedPriority priority(BELOW_NORMAL_PRIORITY_CLASS);
    clTagRecord record;
    record.Add(L"a", L"b");
    NBuffer out;
    for (int request = 0; request < 3; ++request) {
        if (request == 0)
            RunGetAudioInf(AudioPath, out);
        else if (request == 1)
            RunSetTags(AudioPath, record);
        else
            RunDelTagElements(AudioPath, NStringList());
        // It has a console to itself, but not the exchange file.
        EXPECT_EQ(TextOf(Contents(folder_.File(L"started_as.txt"))),
                  L"priority=32 console=1 window=0 alone=0");
        EXPECT_NE(WaitForSingleObject(event.Get(), 0), WAIT_OBJECT_0);
    }
}

TEST_F(TagExchange, AReadThatTakesTooLongIsGivenUpAndTheSiblingRunsOn) {
    SharedEvent started(L"TONEWRIGHT_STAND_IN_STARTED");
    SharedEvent release(L"TONEWRIGHT_STAND_IN_RELEASE");
    SharedEvent ending(L"TONEWRIGHT_STAND_IN_ENDING");
    ReplyWith(Magic + Bytes({1, 0, 0, 0, 'x'}));
    NBuffer out;
    ULONGLONG begin = GetTickCount64();
    RunGetAudioInf(AudioPath, out);
    ULONGLONG taken = GetTickCount64() - begin;
    EXPECT_TRUE(started.WaitFor(0));
    EXPECT_EQ(out.Size, 0u);
    EXPECT_GE(taken, 10000u);
    EXPECT_EQ(GetFileAttributesW(ExchangePath().Text), INVALID_FILE_ATTRIBUTES);
    EXPECT_FALSE(ending.WaitFor(0));
    release.Set();
    EXPECT_TRUE(ending.WaitFor(60000));
}

TEST_F(TagExchange, AnExchangeFileThatTheSiblingHoldsOutlastsAReadThatIsGivenUp) {
    MessageBoxDriver driver;
    ScopedEnvironment temp(L"TMP", folder_.Path().Text);
    ScopedEnvironment hold(L"TONEWRIGHT_STAND_IN_HOLD", L"1");
    SharedEvent release(L"TONEWRIGHT_STAND_IN_RELEASE");
    SharedEvent ending(L"TONEWRIGHT_STAND_IN_ENDING");
    ReplyWith(Magic + Bytes({1, 0, 0, 0, 'x'}));
    NBuffer out;
    RunGetAudioInf(AudioPath, out);
    EXPECT_EQ(out.Size, 0u);
    // The system doesn't let go a file that is open without sharing for it.
    EXPECT_NE(GetFileAttributesW(ExchangePath().Text), INVALID_FILE_ATTRIBUTES);
    EXPECT_FALSE(ending.WaitFor(0));
    EXPECT_TRUE(driver.Boxes().empty());
    // The next request has another file, and is answered.
    release.Set();
    ASSERT_TRUE(ending.WaitFor(60000));
    NString held = ExchangePath();
    EXPECT_EQ(PayloadOf(Magic + Bytes({1, 0, 0, 0, 'y'})), Bytes({'y'}));
    EXPECT_FALSE(ExchangePath() == held);
}

TEST_F(TagExchange, SetAndDeleteWaitLongerThanAReadWould) {
    SharedEvent started(L"TONEWRIGHT_STAND_IN_STARTED");
    SharedEvent release(L"TONEWRIGHT_STAND_IN_RELEASE");
    SharedEvent returned(L"TONEWRIGHT_TEST_RETURNED");
    clTagRecord record;
    record.Add(L"a", L"b");
    bool result = false;
    std::thread set([&] {
        result = RunSetTags(AudioPath, record);
        returned.Set();
    });
    std::thread deletion([&] {
        RunDelTagElements(AudioPath, NStringList());
        returned.Set();
    });
    EXPECT_TRUE(started.WaitFor(60000));
    EXPECT_FALSE(returned.WaitFor(10600));
    release.Set();
    set.join();
    deletion.join();
    EXPECT_TRUE(result);
}

TEST_F(TagExchange, TwoRequestsAtATimeDontDisturbEachOther) {
    ReplyWith(Magic + Bytes({1, 0, 0, 0, 'x'}));
    NBuffer first;
    NBuffer second;
    std::thread other([&] { RunGetAudioInf(AudioPath, first); });
    RunGetAudioInf(AudioPath, second);
    other.join();
    EXPECT_EQ(first.Size, 1u);
    EXPECT_EQ(second.Size, 1u);
}
