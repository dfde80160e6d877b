// The plug-in lives in a program that runs for weeks: it keeps no memory, and
// the lack of it is a failure like any other. The exports are linked here, and
// not loaded, so that the test's own operator new counts for them.
#include "suite/decoder/exports.h"
#include "tests/decoder/plug_in.h"
#include "tests/shell/counted_allocations.h"

#include <gtest/gtest.h>

namespace {
int32_t OpenOnce(const std::wstring& path) {
    void* instance = TonewrightDecoderCreate(nullptr);
    clAudioInfo info = {};
    info.Path = path.c_str();
    info.Request = AudioInfoRequest;
    const int32_t result = TonewrightDecoderOpen(instance, &info);
    TonewrightDecoderDestroy(instance);
    return result;
}
} // namespace

TEST(Memory, IsFreedBehindEveryFile) {
    // Of an Ogg FLAC the pictures were lost, which stand in blocks of their own.
    for (const char* name : {"sample.oga", "sample.ogg", "sample.flac", "sample.mp3", "sample.m4a",
                             "sample.wma", "sample.wav", "sample.aiff", "sample.ape", "sample.wv",
                             "sample.mpc", "sample.tta", "sample.opus", "sample.spx"}) {
        const std::wstring path = SamplePath(name);
        EXPECT_EQ(OpenOnce(path), 1) << name;
        const std::ptrdiff_t before = LiveAllocations();
        EXPECT_EQ(OpenOnce(path), 1) << name;
        EXPECT_EQ(LiveAllocations(), before) << name;
    }
}

TEST(Memory, ThatIsNotThereMakesOpenFail) {
    const std::wstring path = SamplePath("sample.mp3");
    int failed = 0;
    for (int successes = 0; successes < 60; ++successes) {
        const FailingAllocations scarce(successes);
        failed += OpenOnce(path) == 0;
    }
    EXPECT_EQ(failed, 60);
    EXPECT_EQ(OpenOnce(path), 1);
}
