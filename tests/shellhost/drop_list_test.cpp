#include "foundation/ndropfiles.h"
#include "suite/shellhost/drop_list.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

#include <string>

namespace {
NString Read(const NStringList& paths) {
    UniqueGlobalMemory block = MakeDropList(paths);
    NStringList read;
    NDropFilesRead(static_cast<HDROP>(block.Get()), read);
    EXPECT_EQ(read.Count, paths.Count);
    return read.Join(L"|");
}
} // namespace

TEST(DropList, IsReadBackInItsOrderByThePlatform) {
    NStringList paths;
    paths.Add(L"C:\\b\\Ärger 音.flac");
    paths.Add(L"C:\\a.mp3");
    paths.Add(L"\\\\server\\share\\c d.ogg");
    EXPECT_EQ(Read(paths), L"C:\\b\\Ärger 音.flac|C:\\a.mp3|\\\\server\\share\\c d.ogg");
}

TEST(DropList, KeepsAPathThatIsLongerThanThePlatformsLimit) {
    std::wstring path = L"C:\\" + std::wstring(1000, L'x') + L".mp3";
    NStringList paths;
    paths.Add(path.c_str());
    EXPECT_EQ(Read(paths), path.c_str());
}

TEST(DropList, MayBeEmpty) {
    NStringList none;
    EXPECT_TRUE(Read(none).IsEmpty());
}
