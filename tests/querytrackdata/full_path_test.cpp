#include "foundation/windows_lean.h"
#include "suite/querytrackdata/full_path.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::wstring Full(const wchar_t* path) {
    return FullPath(path).c_str();
}

} // namespace

TEST(FullPath, APathOnADriveGetsThePrefixThatLiftsTheLimit) {
    EXPECT_EQ(Full(L"C:\\music\\song.mp3"), L"\\\\?\\C:\\music\\song.mp3");
    EXPECT_EQ(Full(L"C:/music/../song.mp3"), L"\\\\?\\C:\\song.mp3");
}

TEST(FullPath, APathOnAServerGetsTheServersForm) {
    EXPECT_EQ(Full(L"\\\\server\\share\\song.mp3"), L"\\\\?\\UNC\\server\\share\\song.mp3");
}

TEST(FullPath, APathWithThePrefixStaysAsItIs) {
    EXPECT_EQ(Full(L"\\\\?\\C:\\a. \\b"), L"\\\\?\\C:\\a. \\b");
    EXPECT_EQ(Full(L"\\\\?\\UNC\\server\\share\\b"), L"\\\\?\\UNC\\server\\share\\b");
}

TEST(FullPath, ARelativePathStartsAtTheCurrentFolder) {
    wchar_t current[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, current);
    std::wstring folder = current;
    if (folder.back() != L'\\')
        folder += L'\\';
    EXPECT_EQ(Full(L"song.mp3"), L"\\\\?\\" + folder + L"song.mp3");
}

TEST(FullPath, APathFarBeyondTheOldLimitIsTakenWhole) {
    std::wstring path = L"C:";
    for (int level = 0; level < 300; ++level)
        path += L"\\a folder with a name of some length in it to get there soon";
    EXPECT_EQ(Full(path.c_str()), L"\\\\?\\" + path);
}

TEST(FullPath, ADeviceHasNone) {
    EXPECT_EQ(Full(L"\\\\.\\PhysicalDrive0"), L"");
    EXPECT_EQ(Full(L"\\\\.\\pipe\\x"), L"");
    EXPECT_EQ(Full(L"CON"), L"");
    EXPECT_EQ(Full(L""), L"");
}

TEST(FullPath, FolderAndNameMeetAtTheLastBackslash) {
    NString path(L"\\\\?\\C:\\music\\song.mp3");
    EXPECT_STREQ(FolderOf(path).c_str(), L"\\\\?\\C:\\music\\");
    EXPECT_STREQ(NameOf(path).c_str(), L"song.mp3");
}
