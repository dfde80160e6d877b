// The program itself, with real files of every format.

#include "suite/querytrackdata/program.h"
#include "tests/querytrackdata/disk_change_watch.h"
#include "tests/querytrackdata/program_runner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace {

constexpr wchar_t NewTitle[] = L"Na\u00efve \u66f2 of a title that is longer than the one before";

// A folder with one copy of a sample.
class SampleCopy {
public:
    explicit SampleCopy(const std::string& name, const std::wstring& as = L"")
        : content(Sample(name)),
          path(folder.Write(as.empty() ? std::wstring(name.begin(), name.end()) : as, content)) {}

    void ExpectUntouched() const {
        EXPECT_TRUE(ReadWhole(path) == content) << "the audio file was changed";
        EXPECT_EQ(folder.Names().size(), 1u) << "a copy was left behind";
    }

    TestFolder folder;
    Bytes content;
    std::wstring path;
};

bool IsOneLine(const std::string& text) {
    return text.size() > 2 && text.find("\r\n") == text.size() - 2 &&
           text.rfind("QueryTrackData: ", 0) == 0;
}

void ExpectFailure(const ProgramRun& run) {
    EXPECT_EQ(run.ExitCode, 1u);
    EXPECT_TRUE(IsOneLine(run.Error)) << run.Error;
}

void ExpectSuccess(const ProgramRun& run) {
    EXPECT_EQ(run.ExitCode, 0u);
    EXPECT_EQ(run.Error, "");
}

// The file can't be worked on: no request has an effect.
void ExpectAllRefused(const std::wstring& audioFile) {
    TagProgram program;
    Bytes exchange = BytesOf(audioFile);
    ExpectFailure(program.Exchange(ReadOption, exchange));
    EXPECT_EQ(exchange, BytesOf(audioFile)) << "the exchange file was written";
    clTagRecord changes;
    changes.Add(L"title", NewTitle);
    ExpectFailure(program.Set(audioFile, changes));
    ExpectFailure(program.Delete(audioFile, {L"title"}));
    ExpectFailure(program.Delete(audioFile, {}));
}

void ExpectWritable(const std::wstring& audioFile) {
    clTagRecord changes;
    changes.Add(L"title", NewTitle);
    ExpectSuccess(TagProgram().Set(audioFile, changes));
    EXPECT_EQ(ValueIn(audioFile, L"title"), NewTitle);
}

FILETIME LastWriteOf(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data);
    return data.ftLastWriteTime;
}

class EachFormat : public testing::TestWithParam<const char*> {};

} // namespace

TEST_P(EachFormat, TheSamplesTagIsRead) {
    clTagRecord record;
    ExpectSuccess(TagProgram().Read(SamplePath(GetParam()), record));
    EXPECT_EQ(ValueOf(record, L"artist"), L"Bj\u00f6rk \u00c5ngstr\u00f6m");
    EXPECT_EQ(ValueOf(record, L"title"), L"Klang \u97f3\u8272");
    EXPECT_EQ(ValueOf(record, L"genre"), L"Ambient");
}

TEST_P(EachFormat, WhatIsNamedIsSetAndTheRestStays) {
    SampleCopy sample(GetParam());
    TagProgram program;
    clTagRecord before, changes, after;
    program.Read(sample.path, before);
    changes.Add(L"title", NewTitle);
    ExpectSuccess(program.Set(sample.path, changes));
    EXPECT_EQ(sample.folder.Names().size(), 1u);
    program.Read(sample.path, after);
    EXPECT_EQ(ValueOf(after, L"title"), NewTitle);
    before.Remove(L"title");
    after.Remove(L"title");
    ASSERT_EQ(after.Count(), before.Count());
    for (int index = 0; index < before.Count(); ++index) {
        clTagElement* kept = after.Find(before[index]->Name.c_str());
        ASSERT_NE(kept, nullptr);
        EXPECT_STREQ(kept->Value.c_str(), before[index]->Value.c_str());
        EXPECT_TRUE(kept->Data.Equals(before[index]->Data));
    }
}

TEST_P(EachFormat, WhatIsThereAlreadyIsNotWrittenAgain) {
    SampleCopy sample(GetParam());
    TagProgram program;
    clTagRecord changes;
    changes.Add(L"title", NewTitle);
    ExpectSuccess(program.Set(sample.path, changes));
    Bytes content = ReadWhole(sample.path);
    // A date that no write would leave.
    {
        UniqueFileHandle file(CreateFileW(sample.path.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        FILETIME longAgo{0, 0x01c00000};
        ASSERT_TRUE(SetFileTime(file.Get(), nullptr, nullptr, &longAgo));
    }
    FILETIME dated = LastWriteOf(sample.path);
    ExpectSuccess(program.Set(sample.path, changes));
    ExpectSuccess(program.Delete(sample.path, {L"no element of this file"}));
    EXPECT_TRUE(ReadWhole(sample.path) == content);
    FILETIME now = LastWriteOf(sample.path);
    EXPECT_EQ(CompareFileTime(&now, &dated), 0);
}

TEST_P(EachFormat, AnElementIsDeletedByName) {
    SampleCopy sample(GetParam());
    TagProgram program;
    clTagRecord after;
    ExpectSuccess(program.Delete(sample.path, {L"Title", L"genre"}));
    program.Read(sample.path, after);
    EXPECT_EQ(after.Find(L"title"), nullptr);
    EXPECT_EQ(after.Find(L"genre"), nullptr);
    EXPECT_EQ(ValueOf(after, L"artist"), L"Bj\u00f6rk \u00c5ngstr\u00f6m");
}

TEST_P(EachFormat, TheWholeTagIsDeleted) {
    SampleCopy sample(GetParam());
    TagProgram program;
    clTagRecord after;
    ExpectSuccess(program.Delete(sample.path, {}));
    EXPECT_EQ(sample.folder.Names().size(), 1u);
    ExpectSuccess(program.Read(sample.path, after));
    EXPECT_EQ(after.Find(L"title"), nullptr);
    EXPECT_EQ(after.Find(L"artist"), nullptr);
    EXPECT_EQ(after.Find(L"_albumart_1"), nullptr);
}

TEST_P(EachFormat, ADamagedFileIsAnsweredAndLosesNothing) {
    Bytes whole = Sample(GetParam());
    std::vector<Bytes> damaged;
    for (size_t part : {1, 3, 30})
        damaged.emplace_back(whole.begin(),
                             whole.end() - static_cast<int>(whole.size() / 31 * part));
    for (unsigned seed : {1u, 2u, 3u}) {
        std::mt19937 random(seed);
        damaged.push_back(whole);
        // Most of what a tag library reads stands in front.
        for (int change = 0; change < 20; ++change)
            damaged.back()[random() % 400] = static_cast<uint8_t>(random());
    }
    TestFolder folder;
    std::string name = GetParam();
    std::wstring path = folder.File(std::wstring(name.begin(), name.end()));
    TagProgram program;
    clTagRecord changes;
    changes.Add(L"title", NewTitle);
    for (const Bytes& content : damaged) {
        WriteWhole(path, content);
        ProgramRun run = program.Set(path, changes);
        EXPECT_EQ(run.Error.find("internal error"), std::string::npos) << run.Error;
        EXPECT_LE(run.ExitCode, 1u);
        if (run.ExitCode == 0) {
            EXPECT_EQ(ValueIn(path, L"title"), NewTitle);
        } else {
            EXPECT_TRUE(IsOneLine(run.Error)) << run.Error;
            EXPECT_TRUE(ReadWhole(path) == content);
        }
        EXPECT_EQ(folder.Names().size(), 1u);
    }
}

INSTANTIATE_TEST_SUITE_P(
    TagProgram, EachFormat,
    testing::Values("sample.mp3", "sample-id3v22.mp3", "sample-id3v24.mp3", "sample-ape.mp3",
                    "sample.flac", "sample.oga", "sample.ogg", "sample.opus", "sample.spx",
                    "sample.m4a", "sample-alac.m4a", "sample.wma", "sample.wav", "sample-id3.wav",
                    "sample.aiff", "sample.ape", "sample.wv", "sample.mpc", "sample.tta"),
    [](const auto& format) {
        std::string name = format.param;
        std::replace_if(
            name.begin(), name.end(), [](char c) { return c == '.' || c == '-'; }, '_');
        return name;
    });

TEST(TagProgram, AFileWithALyingExtensionIsTakenForWhatItIs) {
    for (const char* name : {"odd/flac-named.mp3", "odd/mp3-named.flac"}) {
        SampleCopy sample(name, std::string(name).find(".mp3") != std::string::npos ? L"a.mp3"
                                                                                    : L"a.flac");
        EXPECT_EQ(ValueIn(sample.path, L"title"), L"Klang \u97f3\u8272") << name;
        ExpectWritable(sample.path);
        // Still what it was.
        EXPECT_TRUE(std::equal(sample.content.begin(), sample.content.begin() + 3,
                               ReadWhole(sample.path).begin()));
    }
}

TEST(TagProgram, AFileThatIsNoAudioIsRefusedUntouched) {
    for (const char* name : {"odd/text-named.mp3", "odd/empty.mp3", "odd/cut.flac"}) {
        SampleCopy sample(name, std::string(name) == "odd/cut.flac" ? L"a.flac" : L"a.mp3");
        ExpectAllRefused(sample.path);
        sample.ExpectUntouched();
    }
}

TEST(TagProgram, AFileThatIsNotThereOrIsAFolderIsRefused) {
    TestFolder folder;
    ExpectAllRefused(folder.File(L"none.mp3"));
    ExpectAllRefused(folder.Path());
    EXPECT_TRUE(folder.Names().empty());
}

TEST(TagProgram, AFileThatIsLockedIsRefusedUntouched) {
    SampleCopy sample("sample.flac");
    {
        UniqueFileHandle lock(CreateFileW(sample.path.c_str(), GENERIC_READ, 0, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        ASSERT_TRUE(lock);
        ExpectAllRefused(sample.path);
    }
    sample.ExpectUntouched();
}

TEST(TagProgram, AReadOnlyFileIsReadAndIsNotWritten) {
    SampleCopy sample("sample.flac");
    SetFileAttributesW(sample.path.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(ValueIn(sample.path, L"title"), L"Klang \u97f3\u8272");
    TagProgram program;
    clTagRecord changes;
    changes.Add(L"title", NewTitle);
    ExpectFailure(program.Set(sample.path, changes));
    ExpectFailure(program.Delete(sample.path, {}));
    sample.ExpectUntouched();
}

TEST(TagProgram, AFileThatCannotBeReplacedIsLeftAndTheExitCodeSaysSo) {
    SampleCopy sample("sample.flac");
    TestFolder exchangeFolder;
    clTagRecord changes;
    changes.Add(L"title", NewTitle);
    std::wstring option =
        L"--SetTags=" + exchangeFolder.Write(L"x.tmp", SetRequestOf(changes, sample.path));
    const wchar_t* arguments[] = {L"QueryTrackData", option.c_str()};
    {
        // From the first change on somebody reads the file.
        UniqueFileHandle reader;
        DiskChangeWatch watch([&] {
            if (!reader)
                reader.Reset(CreateFileW(sample.path.c_str(), GENERIC_READ,
                                         FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                         FILE_ATTRIBUTE_NORMAL, nullptr));
        });
        EXPECT_EQ(RunQueryTrackData(2, arguments), 1);
        EXPECT_TRUE(reader);
    }
    sample.ExpectUntouched();
    EXPECT_EQ(RunQueryTrackData(2, arguments), 0);
    EXPECT_EQ(ValueIn(sample.path, L"title"), NewTitle);
}

TEST(TagProgram, AFileThatItsLibraryWouldDamageIsReadAndIsNotWritten) {
    SampleCopy sample("odd/fragmented.m4a", L"a.m4a");
    EXPECT_EQ(ValueIn(sample.path, L"title"), L"Klang \u97f3\u8272");
    TagProgram program;
    clTagRecord changes;
    changes.Add(L"title", NewTitle);
    ExpectFailure(program.Set(sample.path, changes));
    ExpectFailure(program.Delete(sample.path, {}));
    sample.ExpectUntouched();
}

TEST(TagProgram, WhatAFormatCannotHoldIsNamedAndTheRestIsWritten) {
    SampleCopy sample("sample.m4a");
    TagProgram program;
    clTagRecord changes;
    changes.Add(L"tempo", L"rather fast"); // a number in this format
    changes.Add(L"title", NewTitle);
    ProgramRun run = program.Set(sample.path, changes);
    EXPECT_EQ(run.ExitCode, 0u);
    EXPECT_EQ(run.Error, "QueryTrackData: the file's format cannot hold: \"tempo\"\r\n");
    EXPECT_EQ(ValueIn(sample.path, L"title"), NewTitle);
    EXPECT_EQ(ValueIn(sample.path, L"tempo"), L"");
}

TEST(TagProgram, AFileOfWhichNothingCanBeChangedAsAskedIsLeftAlone) {
    SampleCopy sample("sample.m4a");
    clTagRecord changes;
    changes.Add(L"tempo", L"rather fast");
    ProgramRun run = TagProgram().Set(sample.path, changes);
    EXPECT_EQ(run.ExitCode, 0u);
    EXPECT_EQ(run.Error, "QueryTrackData: the file's format cannot hold: \"tempo\"\r\n");
    sample.ExpectUntouched();
}

TEST(TagProgram, AChangeOfNothingLeavesTheFileAlone) {
    SampleCopy sample("sample.mp3");
    clTagRecord nothing;
    ExpectSuccess(TagProgram().Set(sample.path, nothing));
    sample.ExpectUntouched();
}

TEST(TagProgram, PathsOfAnyLengthAndScriptAreRead) {
    TestFolder folder;
    std::wstring deep = folder.Path();
    while (deep.size() < 400) {
        deep += L"\\\u00e9t\u00e9 \u6b4c \U0001F3B5 and some more to get beyond the limit";
        MakeFolder(deep);
    }
    std::wstring path = deep + L"\\\u97f3\u8272.ogg";
    WriteWhole(path, Sample("sample.ogg"));
    EXPECT_EQ(ValueIn(path, L"title"), L"Klang \u97f3\u8272");
    ExpectWritable(path);
    ExpectWritable(L"\\\\?\\" + path);
    EXPECT_EQ(NamesIn(deep).size(), 1u);
}

TEST(TagProgram, TheErrorLineIsInUtf8) {
    ProgramRun run = TagProgram().Delete(L"C:\\\u00e9\u97f3.mp3", {});
    EXPECT_NE(run.Error.find("\"C:\\\xc3\xa9\xe9\x9f\xb3.mp3\""), std::string::npos) << run.Error;
}

TEST(TagProgram, ARequestThatWasCutAnywhereChangesNothing) {
    SampleCopy sample("sample.flac");
    TagProgram program;
    clTagRecord changes;
    changes.Add(L"title", NewTitle);
    Bytes whole = SetRequestOf(changes, sample.path);
    size_t pathStart = whole.size() - 2 * sample.path.size();
    for (size_t size = 0; size < whole.size(); size += size < pathStart ? 9 : 31) {
        Bytes cut(whole.begin(), whole.begin() + static_cast<int>(size));
        Bytes exchange = cut;
        ExpectFailure(program.Exchange(SetOption, exchange));
        EXPECT_EQ(exchange, cut);
    }
    sample.ExpectUntouched();
}

TEST(TagProgram, ARequestOfAnotherKindChangesNothing) {
    SampleCopy sample("sample.flac");
    TagProgram program;
    clTagRecord changes;
    changes.Add(L"title", NewTitle);
    Bytes set = SetRequestOf(changes, sample.path);
    Bytes erase = DeleteRequestOf({}, sample.path);
    Bytes read = BytesOf(sample.path);
    ExpectFailure(program.Exchange(ReadOption, set));
    ExpectFailure(program.Exchange(ReadOption, erase));
    ExpectFailure(program.Exchange(SetOption, erase));
    ExpectFailure(program.Exchange(SetOption, read));
    ExpectFailure(program.Exchange(DeleteOption, set));
    ExpectFailure(program.Exchange(DeleteOption, read));
    sample.ExpectUntouched();
}

TEST(TagProgram, OneOptionWithAnExchangeFileThatIsThereIsNeeded) {
    TestFolder folder;
    TagProgram program;
    for (const std::wstring& arguments :
         {std::wstring(L""), std::wstring(L"--SetTags"), std::wstring(L"--SetTags="),
          std::wstring(L"--Other=x"), L"--SetTags=\"" + folder.File(L"none") + L"\"",
          L"--GetAudioInf=\"" + folder.Path() + L"\"", std::wstring(L"--SetTags=a --SetTags=b")})
        ExpectFailure(program.Run(arguments));
}

TEST(TagProgram, AnExchangeFileMayBeNamedWithTheLongPrefix) {
    TestFolder folder;
    std::wstring exchange = folder.Write(L"x.tmp", BytesOf(SamplePath("sample.flac")));
    ExpectSuccess(TagProgram().Run(L"--GetAudioInf=\"\\\\?\\" + exchange + L"\""));
    Bytes reply = ReadWhole(exchange);
    ASSERT_GT(reply.size(), 9u);
    EXPECT_EQ(Bytes(reply.begin(), reply.begin() + 4), BytesOf("IDTG"));
    // The length in the header is that of what follows.
    EXPECT_EQ(Bytes(reply.begin() + 4, reply.begin() + 8),
              LittleEndian32(static_cast<uint32_t>(reply.size() - 8)));
}
