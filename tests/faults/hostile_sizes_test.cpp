// Fields that claim more than there is, or less than nothing, in a file of each
// format: the tag program's parts neither crash nor hang nor take memory
// without bound, and a file that they can't change stays as it is.

#include "tests/faults/hostile_sizes.h"
#include "tests/querytrackdata/program_runner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

// Odd, so that fields on every alignment are met. All offsets take minutes for
// each format: by hand.
constexpr int Stride = 1499;

ProgramRun RunOn(const char* sample, const std::wstring& further) {
    TestFolder work, log;
    std::wstring line = L"\"" + HostPath(TONEWRIGHT_BUILD_DIR) +
                        L"\\tests\\querytrackdata\\hostile_sizes.exe\" \"" + SamplePath(sample) +
                        L"\" \"" + work.Path() + L"\" " + further;
    return StartedProgram(line, log.File(L"error.txt")).Finish();
}

class HostileSizes : public testing::TestWithParam<const char*> {};

} // namespace

TEST_P(HostileSizes, AreAnswered) {
    ProgramRun run = RunOn(GetParam(), std::to_wstring(Stride));
    EXPECT_EQ(run.ExitCode, DWORD{HostileSizesGood}) << run.Error;
    EXPECT_NE(run.Error.find(" cases; at most "), std::string::npos) << run.Error;
    RecordProperty("summary", run.Error);
}

TEST(HostileSizesOfAFile, WouldBeFoundToTakeTooMuchMemory) {
    ProgramRun run = RunOn("sample.flac", L"4096 0 50");
    EXPECT_NE(run.ExitCode, DWORD{HostileSizesGood});
    EXPECT_NE(run.Error.find("asked for more memory than there is"), std::string::npos)
        << run.Error;
}

INSTANTIATE_TEST_SUITE_P(
    TagProgram, HostileSizes,
    testing::Values("sample.mp3", "sample-ape.mp3", "sample.flac", "sample.oga", "sample.ogg",
                    "sample.opus", "sample.spx", "sample.m4a", "sample.wma", "sample-id3.wav",
                    "sample.aiff", "sample.ape", "sample.wv", "sample.mpc", "sample.tta"),
    [](const auto& format) {
        std::string name = format.param;
        std::replace_if(
            name.begin(), name.end(), [](char c) { return c == '.' || c == '-'; }, '_');
        return name;
    });
