// What the libraries that a shell loads and unloads leave behind in it.

#include "codec/audio_info.h"
#include "codec/decoder.h"
#include "tests/shell/loaded_module.h"
#include "tests/support/leak_counters.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

// The slot of thread-local storage that is next in turn.
DWORD NextSlot() {
    const DWORD slot = TlsAlloc();
    TlsFree(slot);
    return slot;
}

// A copy, since what this program has loaded already stays loaded.
std::wstring CopyOfPlugIn(const TemporaryFolder& folder) {
    fs::path built = fs::path(BuiltModulePath()).parent_path() / L"decoder/TonewrightDecoder.dll";
    fs::path copy = fs::path(folder.Path()) / L"plug-in.dll";
    fs::copy_file(built, copy);
    return copy.wstring();
}

void UsePlugIn(const std::wstring& path) {
    cltNDecoder decoder;
    ASSERT_TRUE(decoder.LoadFor(path.c_str(), L".mp3"));
    ASSERT_TRUE(decoder.CreateInstance(nullptr));
    clAudioInfo info = {};
    info.Path = path.c_str(); // no audio
    info.Request = AudioInfoRequest;
    EXPECT_EQ(decoder.Open(&info), 0);
}

template <typename Use>
void ExpectNothingLeftBehind(Use use) {
    constexpr int Rounds = 20;
    CountPlatformObjects(); // what counting makes once
    for (int round = 0; round < 3; ++round)
        use();
    const PlatformObjects objects = CountPlatformObjects();
    const DWORD slot = NextSlot();
    for (int round = 0; round < Rounds; ++round)
        use();
    EXPECT_EQ(CountPlatformObjects(), objects);
    EXPECT_EQ(NextSlot(), slot);
}

} // namespace

// The compiler's threads library keeps a slot for each load of what it is in,
// and a process that has none left ends.
TEST(Unloading, TheModuleLeavesNoSlotAndNoHandle) {
    TemporaryFolder folder;
    const std::wstring path = folder.CopyModule();
    ExpectNothingLeftBehind([&] { LoadedModule module(path); });
}

TEST(Unloading, ThePlugInLeavesNoSlotAndNoHandle) {
    TemporaryFolder folder;
    const std::wstring path = CopyOfPlugIn(folder);
    ExpectNothingLeftBehind([&] { UsePlugIn(path); });
}
