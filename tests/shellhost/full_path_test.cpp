#include "foundation/windows_lean.h"
#include "suite/shellhost/full_path.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <string>

namespace {
// The current folder, for the time of the scope.
class CurrentFolder {
public:
    explicit CurrentFolder(const NString& folder) {
        GetCurrentDirectoryW(MAX_PATH, old_);
        SetCurrentDirectoryW(folder.Text);
    }
    ~CurrentFolder() { SetCurrentDirectoryW(old_); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    wchar_t old_[MAX_PATH] = {};
};
} // namespace

TEST(FullPath, BeginsAtTheCurrentFolder) {
    TempFolder folder;
    CurrentFolder current(folder.Path());
    NString full = FullPath(L"sub\\..\\音.mp3");
    EXPECT_EQ(full.Right(6), L"\\音.mp3");
    EXPECT_EQ(full, FullPath(folder.File(L"音.mp3").Text));
}

TEST(FullPath, OfAFullPathIsThatPath) {
    EXPECT_EQ(FullPath(L"C:\\a b\\ä.mp3"), L"C:\\a b\\ä.mp3");
    EXPECT_EQ(FullPath(L"\\\\server\\share\\ä.mp3"), L"\\\\server\\share\\ä.mp3");
    EXPECT_EQ(FullPath(L"C:/a/b.mp3"), L"C:\\a\\b.mp3");
}

TEST(FullPath, MayBeLongerThanThePlatformsLimit) {
    std::wstring path = L"C:\\" + std::wstring(1000, L'x') + L".mp3";
    EXPECT_EQ(FullPath(path.c_str()), path.c_str());
}

TEST(FullPath, OfNothingIsNothing) {
    EXPECT_EQ(FullPath(L""), L"");
}
