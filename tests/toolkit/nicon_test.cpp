#include "foundation/nfile.h"
#include "tests/support/leak_counters.h"
#include "tests/support/temp_folder.h"
#include "tests/toolkit/pixels.h"
#include "tests/toolkit/test_resources.h"
#include "toolkit/nicon.h"

#include <gtest/gtest.h>

namespace {
constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Green = RGB(0, 255, 0);

// The colour in the middle of the icon as it is drawn.
COLORREF ColourOf(const NIcon& icon) {
    TestSurface surface(40, 40, White);
    icon.Draw(surface.Dc(), 0, 0);
    return surface.At(8, 8);
}

NString OwnProgram() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return NString(path);
}

NString IconFile(const wchar_t* name) {
    NString path(TONEWRIGHT_BUILD_DIR);
    path.Append(L"/tests/toolkit/");
    path.Append(name);
    return path;
}
} // namespace

TEST(NIcon, AnEmptyOneHasNoSizeAndDrawsNothing) {
    TestSurface surface(40, 40, White);
    NIcon icon;
    EXPECT_EQ(0, icon.Width());
    EXPECT_EQ(0, icon.Height());
    EXPECT_FALSE(icon.Draw(surface.Dc(), 0, 0));
    const RECT ink = surface.Ink(White);
    EXPECT_TRUE(IsRectEmpty(&ink));
}

TEST(NIcon, IsLoadedFromResourcesAtTheSizeAskedFor) {
    for (HINSTANCE module : {HINSTANCE(nullptr), GetModuleHandleW(nullptr)}) {
        NIcon icon;
        EXPECT_TRUE(icon.Load(IDI_MARK, 16, 16, module));
        EXPECT_EQ(16, icon.Width());
        EXPECT_EQ(16, icon.Height());
        EXPECT_EQ(Red, ColourOf(icon));
        EXPECT_TRUE(icon.Load(IDI_MARK, 32, 32, module));
        EXPECT_EQ(32, icon.Width());
        EXPECT_EQ(Green, ColourOf(icon));
    }
}

TEST(NIcon, OneInBlackAndWhiteHasNoSizeAndIsDrawnAllTheSame) {
    NIcon icon;
    ASSERT_TRUE(icon.LoadFile(IconFile(L"mono.ico"), 16, 16));
    EXPECT_EQ(0, icon.Width());
    EXPECT_EQ(0, icon.Height());
    TestSurface surface(40, 40, 0);
    EXPECT_TRUE(icon.Draw(surface.Dc(), 3, 4));
    const RECT ink = surface.Ink(0);
    const RECT expected = {3, 4, 19, 20};
    EXPECT_TRUE(EqualRect(&expected, &ink));
}

TEST(NIcon, IsDrawnAtItsOwnSize) {
    for (int size : {16, 32}) {
        NIcon icon;
        ASSERT_TRUE(icon.Load(IDI_MARK, size, size));
        TestSurface surface(40, 40, White);
        EXPECT_TRUE(icon.Draw(surface.Dc(), 3, 4));
        const RECT ink = surface.Ink(White);
        const RECT expected = {3, 4, 3 + size, 4 + size};
        EXPECT_TRUE(EqualRect(&expected, &ink));
    }
}

TEST(NIcon, ACopyIsAnotherIcon) {
    NIcon original;
    ASSERT_TRUE(original.Load(IDI_MARK, 16, 16));
    NIcon copy;
    EXPECT_TRUE(copy.Copy(original));
    EXPECT_NE(original.handle, copy.handle);
    original.Release();
    EXPECT_EQ(16, copy.Width());
    EXPECT_EQ(Red, ColourOf(copy));
    EXPECT_TRUE(copy.Copy(copy));
    EXPECT_EQ(Red, ColourOf(copy));
}

TEST(NIcon, ACopyOfAnEmptyOneIsEmpty) {
    NIcon empty;
    NIcon copy;
    ASSERT_TRUE(copy.Load(IDI_MARK, 16, 16));
    EXPECT_FALSE(copy.Copy(empty));
    EXPECT_EQ(nullptr, copy.handle);
}

TEST(NIcon, AProgramsOrLibrarysIconIsTakenInAnyCaseOfItsExtensionAndWhateverTheSize) {
    TempFolder folder;
    for (const wchar_t* name : {L"a.exe", L"b.EXE", L"c.Exe", L"d.dll", L"e.DLL", L"f.dLl"}) {
        const NString path = folder.File(name);
        ASSERT_TRUE(CopyFileW(OwnProgram().Text, path.Text, FALSE));
        NIcon icon;
        EXPECT_TRUE(icon.LoadFile(path, 16, 16)) << path.Text;
        EXPECT_EQ(GetSystemMetrics(SM_CXICON), icon.Width());
        EXPECT_EQ(Green, ColourOf(icon));
    }
}

TEST(NIcon, AnyOtherFileIsReadAsAnIconFileAtTheSizeAskedFor) {
    TempFolder folder;
    for (const wchar_t* name : {L"a.ico", L"b.cur", L"c", L"d.exe.bak"}) {
        const NString path = folder.File(name);
        ASSERT_TRUE(CopyFileW(IconFile(L"mark.ico").Text, path.Text, FALSE));
        NIcon icon;
        EXPECT_TRUE(icon.LoadFile(path, 16, 16)) << path.Text;
        EXPECT_EQ(16, icon.Width());
        EXPECT_EQ(Red, ColourOf(icon));
        EXPECT_TRUE(icon.LoadFile(path, 32, 32));
        EXPECT_EQ(32, icon.Width());
    }
    // A program by another name is none.
    const NString program = folder.File(L"program.bin");
    ASSERT_TRUE(CopyFileW(OwnProgram().Text, program.Text, FALSE));
    NIcon icon;
    EXPECT_FALSE(icon.LoadFile(program, 16, 16));
}

TEST(NIcon, WhatHoldsNoIconLeavesItEmpty) {
    TempFolder folder;
    const NString text = folder.File(L"text.exe");
    const NString broken = folder.File(L"broken.ico");
    for (const NString& path : {text, broken}) {
        NFile file(path, GENERIC_WRITE, CREATE_ALWAYS, false, false);
        file.WriteString(L"no icon", true);
    }
    const NString noIcons(L"C:\\windows\\system32\\ntdll.dll");
    for (const NString& path : {text, broken, noIcons, folder.File(L"missing.exe"),
                                folder.File(L"missing.ico"), NString()}) {
        NIcon icon;
        icon.Load(IDI_MARK, 16, 16);
        EXPECT_FALSE(icon.LoadFile(path, 16, 16));
        EXPECT_EQ(nullptr, icon.handle);
    }
    NIcon icon;
    EXPECT_FALSE(icon.Load(999, 16, 16));
    EXPECT_EQ(nullptr, icon.handle);
}

TEST(NIcon, NothingItMakesOutlivesIt) {
    const auto useAll = [] {
        NIcon icon;
        icon.Load(IDI_MARK, 16, 16);
        icon.Load(IDI_MARK, 32, 32);
        NIcon copy;
        copy.Copy(icon);
        copy.Copy(icon);
        EXPECT_EQ(32, copy.Width());
        EXPECT_EQ(32, copy.Height());
        copy.LoadFile(OwnProgram(), 16, 16);
        copy.LoadFile(IconFile(L"mono.ico"), 16, 16);
        EXPECT_EQ(0, copy.Width());
        copy.Release();
        copy.Release();
    };
    useAll();
    const PlatformObjects before = CountPlatformObjects();
    for (int i = 0; i < 30; ++i)
        useAll();
    EXPECT_EQ(before, CountPlatformObjects());
}
