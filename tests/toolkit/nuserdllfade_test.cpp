#include "toolkit/nuserdllfade.h"
#include "toolkit/nwindow.h"

#include <gtest/gtest.h>

namespace {
// The opacity of the window; -1 while none was set.
int AlphaOf(HWND window) {
    BYTE alpha = 0;
    DWORD flags = 0;
    if (!GetLayeredWindowAttributes(window, nullptr, &alpha, &flags))
        return -1;
    return flags == LWA_ALPHA ? alpha : -1;
}

class LayeredWindow : public NWindow {
public:
    LayeredWindow() { Create(L"", {10, 10, 60, 60}, WS_POPUP, WS_EX_LAYERED); }
    ~LayeredWindow() override { Destroy(); }
};
} // namespace

TEST(NUserDLLFade, BindsItsFunctionOnce) {
    NUserDLLFade library;
    EXPECT_FALSE(library.Loaded);
    EXPECT_TRUE(library.Load(L"user32.dll"));
    EXPECT_NE(nullptr, library.setLayeredWindowAttributes);
    const HMODULE first = library.Module;
    EXPECT_TRUE(library.Load(L"no such library.dll"));
    EXPECT_EQ(first, library.Module);
}

TEST(NUserDLLFade, ALibraryWithoutTheFunctionIsLoadedAllTheSame) {
    NUserDLLFade library;
    EXPECT_TRUE(library.Load(L"kernel32.dll"));
    EXPECT_NE(nullptr, library.Module);
    EXPECT_EQ(nullptr, library.setLayeredWindowAttributes);
}

TEST(NUserDLLFade, ALibraryThatIsMissingIsNotLoaded) {
    NUserDLLFade library;
    EXPECT_FALSE(library.Load(L"no such library.dll"));
    EXPECT_FALSE(library.Loaded);
    EXPECT_EQ(nullptr, library.Module);
    EXPECT_EQ(nullptr, library.setLayeredWindowAttributes);
}

TEST(NUserDLLFade, ItsDestructorFreesTheLibrary) {
    constexpr const wchar_t* Seldom = L"avicap32.dll";
    ASSERT_EQ(nullptr, GetModuleHandleW(Seldom));
    {
        NUserDLLFade library;
        ASSERT_TRUE(library.Load(Seldom));
        EXPECT_NE(nullptr, GetModuleHandleW(Seldom));
    }
    EXPECT_EQ(nullptr, GetModuleHandleW(Seldom));
}

TEST(NUserDLLFade, OneOfTheProcessIsLoadedAtTheFirstNeed) {
    const NUserDLLFade& first = NProcessFade();
    EXPECT_EQ(&first, &NProcessFade());
    EXPECT_EQ(GetModuleHandleW(L"user32.dll"), first.Module);
    EXPECT_NE(nullptr, first.setLayeredWindowAttributes);
}

TEST(NUserDLLFade, SetsTheOpacityOfALayeredWindow) {
    LayeredWindow window;
    for (int alpha : {255, 128, 0}) {
        NProcessFade().SetAlpha(window.hwnd, alpha);
        EXPECT_EQ(alpha, AlphaOf(window.hwnd));
    }
}

TEST(NUserDLLFade, WithoutTheFunctionItDoesNothing) {
    LayeredWindow window;
    const NUserDLLFade none;
    none.SetAlpha(window.hwnd, 255);
    EXPECT_EQ(-1, AlphaOf(window.hwnd));
}
