// Damaged files of all formats: no crash, no hang, and numbers within reason.
#include "tests/decoder/plug_in.h"

#include <gtest/gtest.h>

#include <random>

namespace {
// Opens it; what is told must be such that a caller can work with it.
bool OpenHostile(const std::wstring& path) {
    OpenedFile file(path);
    if (!file.opened)
        return false;
    EXPECT_GE(file.info.Channels, 1);
    EXPECT_LE(file.info.Channels, 255);
    EXPECT_LE(file.info.BitsPerSample, 64);
    EXPECT_GE(file.info.LengthMs, 0);
    EXPECT_GE(file.info.FileSize, 0);
    return true;
}

std::vector<std::string> SampleNames() {
    std::vector<std::string> names;
    for (const std::wstring& name : NamesIn(SamplePath(".")))
        if (name.find(L"sample") == 0)
            names.emplace_back(name.begin(), name.end());
    EXPECT_GE(names.size(), 19U);
    return names;
}
} // namespace

TEST(HostileFiles, OfTheLibrarysOwnTestsGiveAnAnswer) {
    int opened = 0;
    const std::vector<std::wstring> names = NamesIn(LibraryDataPath("."));
    for (const std::wstring& name : names)
        opened += OpenHostile(LibraryDataPath("") + name);
    EXPECT_GE(names.size(), 90U);
    EXPECT_GE(opened, 60);
}

TEST(HostileFiles, BesideTheSamplesGiveAnAnswer) {
    for (const std::wstring& name : NamesIn(SamplePath("odd")))
        OpenHostile(SamplePath("odd/") + name);
}

TEST(HostileFiles, ThatAreCutAnywhereGiveAnAnswer) {
    TestFolder folder;
    for (const std::string& name : SampleNames()) {
        SCOPED_TRACE(name);
        const Bytes whole = ReadWhole(SamplePath(name));
        const size_t step = whole.size() / 40 + 1;
        for (size_t size = 0; size < whole.size(); size += size < 64 ? 7 : step)
            OpenHostile(folder.Write(
                L"cut.mp3", Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size))));
    }
}

TEST(HostileFiles, WithChangedBytesGiveAnAnswer) {
    constexpr int rounds = 60;
    constexpr size_t headerSize = 4096; // where most that is believed stands
    TestFolder folder;
    std::mt19937 random(7);
    for (const std::string& name : SampleNames()) {
        SCOPED_TRACE(name);
        const Bytes whole = ReadWhole(SamplePath(name));
        for (int round = 0; round < rounds; ++round) {
            Bytes changed = whole;
            for (int count = 0; count < 8; ++count) {
                const size_t span = count % 2 ? changed.size() : std::min(headerSize, whole.size());
                const uint8_t values[] = {0, 0xFF, 0x7F, 0x80, static_cast<uint8_t>(random())};
                changed[random() % span] = values[random() % std::size(values)];
            }
            OpenHostile(folder.Write(L"changed.mp3", changed));
        }
    }
}
