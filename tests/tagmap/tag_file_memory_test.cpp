#include "suite/tagmap/tag_file.h"
#include "tests/querytrackdata/test_files.h"
#include "tests/tagmap/large_allocations.h"

#include <gtest/gtest.h>

#include <new>
#include <ostream>
#include <string>

// Memory for large blocks runs out at one place after the other: nothing is
// thrown.
namespace {
using namespace tagmap;

std::wstring SamplePath(const std::string& name) {
    return HostPath((TONEWRIGHT_SOURCE_DIR "/build/samples/" + name).c_str());
}

class TagFileMemory : public testing::TestWithParam<const char*> {};

// Does `work` with more and more large allocations that succeed, until none fails;
// how many times one failed.
template <typename Work>
int TimesMemoryRanOut(Work work, Outcome failure) {
    constexpr int most = 1000;
    int failures = 0;
    for (int successes = 0; successes < most; ++successes) {
        const Outcome outcome = work(successes);
        if (outcome == Outcome::Done)
            return failures;
        EXPECT_EQ(outcome, failure) << successes;
        ++failures;
    }
    ADD_FAILURE() << "never done";
    return failures;
}

constexpr int FewTimes = 1;
} // namespace

TEST_P(TagFileMemory, ReadingTellsThatTheFileCannotBeOpened) {
    const std::wstring path = SamplePath(GetParam());
    const int failures = TimesMemoryRanOut(
        [&](int successes) {
            clTagRecord record;
            const FailingLargeAllocations later(successes);
            return ReadTags(path.c_str(), record);
        },
        Outcome::CannotOpen);
    EXPECT_GT(failures, FewTimes);
}

TEST_P(TagFileMemory, AChangeTellsThatItCannotBeWritten) {
    const TestFolder folder;
    const Bytes content = ReadWhole(SamplePath(GetParam()));
    const int failures = TimesMemoryRanOut(
        [&](int successes) {
            const std::wstring path = folder.Write(L"sample.bin", content);
            clTagRecord changes;
            changes.Add(L"title", L"another");
            Refusals refused;
            const FailingLargeAllocations later(successes);
            return SetTags(path.c_str(), changes, refused);
        },
        Outcome::CannotWrite);
    EXPECT_GT(failures, FewTimes);
}

TEST_P(TagFileMemory, ADeletionTellsThatItCannotBeWritten) {
    const TestFolder folder;
    const Bytes content = ReadWhole(SamplePath(GetParam()));
    const int failures = TimesMemoryRanOut(
        [&](int successes) {
            const std::wstring path = folder.Write(L"sample.bin", content);
            const NStringList all{};
            const FailingLargeAllocations later(successes);
            return DeleteTags(path.c_str(), all);
        },
        Outcome::CannotWrite);
    EXPECT_GT(failures, FewTimes);
}

TEST_P(TagFileMemory, AQuestionIsAnsweredWithNo) {
    const std::wstring path = SamplePath(GetParam());
    const int failures = TimesMemoryRanOut(
        [&](int successes) {
            const FailingLargeAllocations later(successes);
            return SoundsAlike(path.c_str(), path.c_str()) ? Outcome::Done : Outcome::Refused;
        },
        Outcome::Refused);
    EXPECT_GT(failures, FewTimes);
}

INSTANTIATE_TEST_SUITE_P(Formats, TagFileMemory,
                         testing::Values("sample.mp3", "sample.flac", "sample.ogg", "sample.m4a",
                                         "sample.wma", "sample.wav", "sample.ape"),
                         [](const auto& test) {
                             std::string name = test.param;
                             name[name.find('.')] = '_';
                             return name;
                         });

// What the caller's own function throws while the disk changes.
TEST(TagFileFaults, NothingThatIsThrownInTheMiddleOfAChangeGetsOut) {
    const TestFolder folder;
    const std::wstring path = folder.Write(L"x.mp3", ReadWhole(SamplePath("sample.mp3")));
    clTagRecord changes;
    changes.Add(L"title", L"another");
    Refusals refused;
    const DiskChanged throws = [] { throw std::bad_alloc(); };
    EXPECT_EQ(SetTags(path.c_str(), changes, refused, throws), Outcome::CannotWrite);
    EXPECT_EQ(DeleteTags(path.c_str(), NStringList(), throws), Outcome::CannotWrite);
}
