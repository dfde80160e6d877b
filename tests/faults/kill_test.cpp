// The tag program is killed, behind every call of its that changes the disk
// and at instants at random. The audio file must be the old one or the new
// one, byte for byte, and the next write must work and leave nothing behind.

#include "tests/faults/dies.h"
#include "tests/querytrackdata/program_runner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace {

constexpr wchar_t NewTitle[] = L"A title of a kill test, a good deal longer than the one before";
constexpr wchar_t NextTitle[] = L"The title of the write after it";
constexpr size_t PictureSize = 50000; // more than any padding: all behind the tag has to move

std::wstring DyingProgram() {
    return HostPath(TONEWRIGHT_BUILD_DIR) + L"\\tests\\querytrackdata\\querytrackdata_dies.exe";
}

void FillChanges(clTagRecord& changes, const wchar_t* title) {
    Bytes picture = BytesOf("\xff\xd8\xff\xe0");
    picture.resize(PictureSize, 0x55);
    changes.Add(L"title", title);
    changes.AddData(L"_albumart_1", picture.data(), static_cast<int>(picture.size()));
}

// One audio file in a folder of its own, in its old state at first.
class Victim {
public:
    explicit Victim(const std::string& sample)
        : old_(Sample(sample)), path_(folder_.File(std::wstring(sample.begin(), sample.end()))) {
        Restore();
        new_ = Changed();
        Restore();
    }

    const std::wstring& Path() const { return path_; }

    void Restore() const { WriteWhole(path_, old_); }

    void ExpectOldOrNew() const {
        Bytes now = ReadWhole(path_);
        EXPECT_TRUE(now == old_ || now == new_) << "neither the old file nor the new one";
    }
    void ExpectNew() const { EXPECT_TRUE(ReadWhole(path_) == new_); }

    void ExpectNextWriteWorks() const {
        clTagRecord changes;
        changes.Add(L"title", NextTitle);
        EXPECT_EQ(TagProgram().Set(path_, changes).ExitCode, 0u);
        EXPECT_EQ(ValueIn(path_, L"title"), NextTitle);
        EXPECT_EQ(folder_.Names().size(), 1u) << "a copy was left behind";
    }

private:
    Bytes Changed() const {
        clTagRecord changes;
        FillChanges(changes, NewTitle);
        EXPECT_EQ(TagProgram().Set(path_, changes).ExitCode, 0u);
        EXPECT_EQ(ValueIn(path_, L"title"), NewTitle);
        return ReadWhole(path_);
    }

    TestFolder folder_;
    Bytes old_, new_;
    std::wstring path_;
};

DWORD RunAndDieAt(const std::wstring& audioFile, int change) {
    SetEnvironmentVariableW(DieAtVariable, std::to_wstring(change).c_str());
    clTagRecord changes;
    FillChanges(changes, NewTitle);
    DWORD exitCode = TagProgram(DyingProgram()).Set(audioFile, changes).ExitCode;
    SetEnvironmentVariableW(DieAtVariable, nullptr);
    return exitCode;
}

class Killed : public testing::TestWithParam<const char*> {};

} // namespace

TEST_P(Killed, BehindEachChangeOfTheDiskItLeavesTheOldFileOrTheNewOne) {
    // The least that a write does: the copy, its attributes, a change of it,
    // its date, the flush, its attributes again, the move.
    constexpr int fewest = 7;
    constexpr int most = 2000;
    Victim victim(GetParam());
    int change = 1;
    for (; change < most; ++change) {
        victim.Restore();
        DWORD exitCode = RunAndDieAt(victim.Path(), change);
        if (exitCode == 0)
            break;
        ASSERT_EQ(exitCode, DiedExitCode) << "at change " << change;
        victim.ExpectOldOrNew();
        victim.ExpectNextWriteWorks();
        ASSERT_FALSE(HasFailure()) << "at change " << change;
    }
    victim.ExpectNew();
    EXPECT_GE(change, fewest);
    EXPECT_LT(change, most);
    RecordProperty("changes", change - 1);
}

TEST_P(Killed, AtAnyInstantItLeavesTheOldFileOrTheNewOne) {
    constexpr int rounds = 5;
    constexpr DWORD longest = 60; // milliseconds: a run takes about half of it
    unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    Victim victim(GetParam());
    clTagRecord changes;
    FillChanges(changes, NewTitle);
    for (int round = 0; round < rounds; ++round) {
        victim.Restore();
        {
            TagProgram program;
            StartedProgram started = program.Start(SetOption, SetRequestOf(changes, victim.Path()));
            if (!started.EndsWithin(random() % longest))
                started.Kill();
            started.Finish();
        }
        victim.ExpectOldOrNew();
        victim.ExpectNextWriteWorks();
        ASSERT_FALSE(HasFailure()) << "in round " << round;
    }
}

TEST(TagProgram, AFaultInItEndsItWithALineAndNoWindow) {
    Victim victim("sample.flac");
    clTagRecord changes;
    FillChanges(changes, NewTitle);
    SetEnvironmentVariableW(CrashAtVariable, L"3");
    ProgramRun run = TagProgram(DyingProgram()).Set(victim.Path(), changes);
    SetEnvironmentVariableW(CrashAtVariable, nullptr);
    EXPECT_EQ(run.ExitCode, 1u);
    EXPECT_EQ(run.Error, "QueryTrackData: internal error\r\n");
    victim.ExpectOldOrNew();
    victim.ExpectNextWriteWorks();
}

INSTANTIATE_TEST_SUITE_P(TagProgram, Killed,
                         testing::Values("sample.mp3", "sample.flac", "sample.ogg", "sample.m4a",
                                         "sample.wma", "sample.wav", "sample.wv"),
                         [](const auto& format) {
                             std::string name = format.param;
                             std::replace(name.begin(), name.end(), '.', '_');
                             return name;
                         });
