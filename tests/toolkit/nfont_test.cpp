#include "tests/support/leak_counters.h"
#include "tests/support/nstring_printer.h"
#include "tests/toolkit/pixels.h"
#include "toolkit/nfont.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {
constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Green = RGB(0, 255, 0);
constexpr int Height = 16;

struct FontTraits {
    using Handle = HFONT;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DeleteObject(handle); }
};

// The platform's own measures of a font, taken apart from NFont.
class Measured {
public:
    explicit Measured(const NFont& font)
        : font_(CreateFontIndirectW(&font.logFont)), selected_(memory_.dc, font_.Get()) {}

    SIZE Of(const wchar_t* text) const {
        SIZE size = {};
        GetTextExtentPoint32W(memory_.dc, text, static_cast<int>(wcslen(text)), &size);
        return size;
    }
    int Width(const wchar_t* text) const { return Of(text).cx; }
    int LineHeight() const { return Of(L"Ay").cy; }
    // Of the text that the tab stops are reckoned from.
    int Average() const {
        const int average = Width(L"abcdefABCDEF") / 12;
        return average < 1 ? 1 : average;
    }
    // The platform's, which is not the same.
    int PlatformAverage() const {
        TEXTMETRICW metrics = {};
        GetTextMetricsW(memory_.dc, &metrics);
        return metrics.tmAveCharWidth;
    }

private:
    NMemoryDC memory_;
    UniqueHandle<FontTraits> font_;
    ScopedSelection selected_;
};

struct TextState {
    HGDIOBJ font;
    COLORREF colour;
    int mode;

    explicit TextState(HDC dc)
        : font(GetCurrentObject(dc, OBJ_FONT)), colour(GetTextColor(dc)), mode(GetBkMode(dc)) {}
    bool operator==(const TextState&) const = default;
};

// Pixels of `surface` that aren't of its colour, one text of characters each.
std::vector<std::string> Drawing(const TestSurface& surface, RECT part) {
    std::vector<std::string> rows;
    for (int y = part.top; y < part.bottom; ++y) {
        std::string row;
        for (int x = part.left; x < part.right; ++x)
            row += surface.At(x, y) == White ? '.' : '#';
        rows.push_back(row);
    }
    return rows;
}

// A font without anti-aliasing of its own choosing, on the surface.
void MakeOn(NFont& font, const TestSurface& surface, bool transparent = true, int gap = 0) {
    ASSERT_TRUE(
        font.Create(surface.Dc(), nullptr, Height, 0, 0, false, false, false, transparent, 0, gap));
}
} // namespace

TEST(NFont, ItsLogicalFontHoldsWhatWasAskedForAndZeroElsewhere) {
    NFont font;
    ASSERT_TRUE(font.Create(nullptr, "Arial", 21, Red, 7, true, true, true, false, 450, 3));
    LOGFONTW expected = {};
    expected.lfHeight = 21;
    expected.lfWidth = 7;
    expected.lfEscapement = 450;
    expected.lfWeight = 700;
    expected.lfItalic = 1;
    expected.lfUnderline = 1;
    wcscpy(expected.lfFaceName, L"Arial");
    EXPECT_EQ(0, memcmp(&expected, &font.logFont, sizeof(expected)));
    EXPECT_FALSE(font.transparent);
    EXPECT_EQ(Red, font.textColour);
    EXPECT_EQ(3, font.lineGap);
    LOGFONTW made = {};
    ASSERT_NE(0, GetObjectW(font.handle, sizeof(made), &made));
    EXPECT_EQ(21, made.lfHeight);
    EXPECT_EQ(700, made.lfWeight);
    // Made again, nothing of the earlier one is left.
    ASSERT_TRUE(font.Create(nullptr, "Arial", -13, 0));
    expected = {};
    expected.lfHeight = -13;
    expected.lfWeight = 400;
    wcscpy(expected.lfFaceName, L"Arial");
    EXPECT_EQ(0, memcmp(&expected, &font.logFont, sizeof(expected)));
    EXPECT_TRUE(font.transparent);
    EXPECT_EQ(0, font.lineGap);
}

TEST(NFont, AFaceThatIsMissingEmptyOrTooLongIsTahoma) {
    const std::string longest(31, 'x');
    const std::string tooLong(32, 'x');
    const std::string longer(100, 'x');
    struct Case {
        const char* face;
        std::wstring expected;
    };
    const Case cases[] = {
        {nullptr, L"Tahoma"},        {"", L"Tahoma"},     {tooLong.c_str(), L"Tahoma"},
        {longer.c_str(), L"Tahoma"}, {"Arial", L"Arial"}, {longest.c_str(), std::wstring(31, L'x')},
    };
    for (const Case& each : cases) {
        NFont font;
        ASSERT_TRUE(font.Create(nullptr, each.face, Height, 0));
        EXPECT_EQ(NString(each.expected.c_str()), NString(font.logFont.lfFaceName));
    }
}

TEST(NFont, SelectSetsFontColourAndModeAndDeselectPutsThemBack) {
    for (bool transparent : {true, false}) {
        NMemoryDC memory;
        SetTextColor(memory.dc, Green);
        SetBkMode(memory.dc, transparent ? OPAQUE : TRANSPARENT);
        const TextState before(memory.dc);
        NFont font;
        ASSERT_TRUE(
            font.Create(nullptr, nullptr, Height, Red, 0, false, false, false, transparent));
        EXPECT_FALSE(font.selected);
        font.Select(memory.dc);
        EXPECT_TRUE(font.selected);
        EXPECT_EQ(memory.dc, font.dc);
        EXPECT_EQ(font.handle, GetCurrentObject(memory.dc, OBJ_FONT));
        EXPECT_EQ(Red, GetTextColor(memory.dc));
        EXPECT_EQ(transparent ? TRANSPARENT : OPAQUE, GetBkMode(memory.dc));
        EXPECT_EQ(before.font, font.previousFont);
        EXPECT_EQ(Green, font.previousColour);
        EXPECT_EQ(before.mode, font.previousBkMode);
        font.Deselect();
        EXPECT_FALSE(font.selected);
        EXPECT_TRUE(before == TextState(memory.dc));
        font.Deselect();
        EXPECT_TRUE(before == TextState(memory.dc));
    }
}

TEST(NFont, SelectingItElsewhereDeselectsItFirst) {
    NMemoryDC first;
    NMemoryDC second;
    const TextState before(first.dc);
    NFont font;
    font.Create(nullptr, nullptr, Height, Red);
    font.Select(first.dc);
    font.Select(second.dc);
    EXPECT_TRUE(before == TextState(first.dc));
    EXPECT_EQ(font.handle, GetCurrentObject(second.dc, OBJ_FONT));
}

TEST(NFont, ANewColourHoldsAtOnceIfItIsSelected) {
    NMemoryDC memory;
    SetTextColor(memory.dc, Green);
    NFont font;
    font.Create(nullptr, nullptr, Height, Red);
    font.Select(memory.dc);
    font.SetColour(0x123456);
    EXPECT_EQ(0x123456u, GetTextColor(memory.dc));
    font.Deselect();
    EXPECT_EQ(Green, GetTextColor(memory.dc));
    font.SetColour(Red);
    EXPECT_EQ(Green, GetTextColor(memory.dc));
    font.Select(memory.dc);
    EXPECT_EQ(Red, GetTextColor(memory.dc));
}

TEST(NFont, ANewColourSelectsItAgainIfSomethingElseIsThere) {
    NMemoryDC memory;
    const TextState before(memory.dc);
    NFont font;
    font.Create(nullptr, nullptr, Height, Red);
    font.Select(memory.dc);
    SelectObject(memory.dc, GetStockObject(SYSTEM_FONT));
    font.SetColour(Green);
    EXPECT_EQ(font.handle, GetCurrentObject(memory.dc, OBJ_FONT));
    SetBkMode(memory.dc, OPAQUE);
    font.SetColour(Red);
    EXPECT_EQ(TRANSPARENT, GetBkMode(memory.dc));
    EXPECT_EQ(Red, GetTextColor(memory.dc));
    font.Deselect();
    EXPECT_TRUE(before == TextState(memory.dc));
}

TEST(NFont, ReleaseDeselectsAndMayBeRepeated) {
    NMemoryDC memory;
    const TextState before(memory.dc);
    NFont font;
    font.Create(nullptr, nullptr, Height, Red);
    font.Select(memory.dc);
    const HFONT handle = font.handle;
    font.Release();
    EXPECT_TRUE(before == TextState(memory.dc));
    EXPECT_EQ(nullptr, font.handle);
    EXPECT_EQ(0u, GetObjectType(handle));
    font.Release();
    EXPECT_EQ(nullptr, font.handle);
}

TEST(NFont, WithoutADeviceContextOrAFontItMeasuresNothing) {
    NMemoryDC memory;
    NFont font;
    EXPECT_EQ(0, font.TextWidth(memory.dc, L"text"));
    EXPECT_EQ(0, font.TextHeight(memory.dc, L"text"));
    font.Create(nullptr, nullptr, Height, 0);
    EXPECT_EQ(0, font.TextWidth(L"text"));
    EXPECT_EQ(0, font.TextWidth(L"text", true, 5));
    EXPECT_EQ(0, font.TextHeight(L"text"));
    EXPECT_EQ(0, font.TextHeight(L"text", true));
    font.DrawText(0, 0, L"text");
}

TEST(NFont, MeasuresOnTheDeviceContextNamedOrOnItsOwn) {
    NMemoryDC memory;
    const TextState before(memory.dc);
    NFont font;
    font.Create(nullptr, nullptr, Height, 0);
    Measured measured(font);
    EXPECT_EQ(measured.Width(L"Some text"), font.TextWidth(memory.dc, L"Some text"));
    EXPECT_EQ(measured.LineHeight(), font.TextHeight(memory.dc, L"Some text"));
    font.Create(memory.dc, nullptr, Height, 0);
    EXPECT_EQ(measured.Width(L"Some text"), font.TextWidth(L"Some text"));
    EXPECT_EQ(measured.LineHeight(), font.TextHeight(L"Some text"));
    EXPECT_TRUE(before == TextState(memory.dc));
    font.Select(memory.dc);
    EXPECT_EQ(measured.Width(L"Some text"), font.TextWidth(L"Some text"));
    EXPECT_EQ(measured.LineHeight(), font.TextHeight(L"Some text"));
    EXPECT_TRUE(font.selected);
}

TEST(NFont, TheWidthIsThatOfTheWidestLine) {
    NMemoryDC memory;
    NFont font;
    font.Create(memory.dc, nullptr, Height, 0);
    Measured measured(font);
    struct Case {
        const wchar_t* text;
        const wchar_t* widest;
    };
    const Case cases[] = {
        {L"one", L"one"},
        {L"i\rwide one\rii", L"wide one"},
        {L"i\r\nwide one", L"wide one"},
        {L"i\r\n\n\nwide one", L"wide one"}, // all line feeds behind a return
        {L"wide one\r", L"wide one"},
        {L"\r\r", L""},
        {L"", L""},
    };
    for (const Case& each : cases)
        EXPECT_EQ(measured.Width(each.widest), font.TextWidth(each.text, true)) << each.text;
}

TEST(NFont, OneLineIsMeasuredWithAllItsCharacters) {
    NMemoryDC memory;
    NFont font;
    font.Create(memory.dc, nullptr, Height, 0);
    Measured measured(font);
    for (const wchar_t* text : {L"", L"one", L"one\rand two", L"a\tb"})
        EXPECT_EQ(measured.Width(text), font.TextWidth(text, false, 5));
}

TEST(NFont, TabStopsStandEightAverageCharactersApartLessTheOffset) {
    NMemoryDC memory;
    NFont font;
    font.Create(memory.dc, nullptr, Height, 0);
    Measured measured(font);
    const int interval = 8 * measured.Average();
    struct Case {
        int offset;
        int firstStop;
    };
    const Case cases[] = {
        {1, interval - 1},
        {5, interval - 5},
        {interval - 1, 1},
        // An offset of the interval itself is not reduced: stops at 0, interval...
        {interval, interval},
        {interval + 1, interval - 1},
        {2 * interval, interval},
        {2 * interval + 7, interval - 7},
        {1000 * interval + 3, interval - 3},
        // One to the left is not reduced either.
        {-3, interval + 3},
        {-2 * interval, 3 * interval},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.offset);
        EXPECT_EQ(each.firstStop, font.TextWidth(L"\t", true, each.offset));
        EXPECT_EQ(each.firstStop + measured.Width(L"X"), font.TextWidth(L"\tX", true, each.offset));
        EXPECT_EQ(each.firstStop + interval, font.TextWidth(L"\t\t", true, each.offset));
    }
}

TEST(NFont, WithoutAnOffsetTabsStandWhereThePlatformSetsThem) {
    NMemoryDC memory;
    NFont font;
    font.Create(memory.dc, nullptr, Height, 0);
    Measured measured(font);
    EXPECT_EQ(8 * measured.PlatformAverage(), font.TextWidth(L"\t", true, 0));
    EXPECT_NE(measured.PlatformAverage(), measured.Average()); // or the two would look alike
}

TEST(NFont, ThereAreTabStopsForTheDesktopsWidthAndTenMore) {
    NMemoryDC memory;
    NFont font;
    font.Create(memory.dc, nullptr, Height, 0);
    Measured measured(font);
    RECT desktop = {};
    GetClientRect(GetDesktopWindow(), &desktop);
    const int interval = 8 * measured.Average();
    const int count = desktop.right / measured.Average() + 10;
    const auto widthOfTabs = [&](int tabs, int offset) {
        return font.TextWidth(std::wstring(static_cast<size_t>(tabs), L'\t').c_str(), true, offset);
    };
    EXPECT_EQ(count * interval - 3, widthOfTabs(count, 3));
    EXPECT_NE((count + 1) * interval - 3, widthOfTabs(count + 1, 3));
    // The first stop of an offset of one interval stands at 0, where no tab ends.
    EXPECT_EQ((count - 1) * interval, widthOfTabs(count - 1, interval));
    EXPECT_NE(count * interval, widthOfTabs(count, interval));
    // One of two intervals is reduced to that, and not to nothing.
    EXPECT_EQ((count - 1) * interval, widthOfTabs(count - 1, 2 * interval));
    EXPECT_NE(count * interval, widthOfTabs(count, 2 * interval));
}

TEST(NFont, ATinyFontsAverageCharacterIsOnePixelWide) {
    NMemoryDC memory;
    NFont font;
    font.Create(memory.dc, nullptr, 1, 0, 1);
    Measured measured(font);
    ASSERT_LE(measured.Width(L"abcdefABCDEF") / 12, 1);
    EXPECT_EQ(7, font.TextWidth(L"\t", true, 1));
}

TEST(NFont, TheHeightIsThatOfAyForEachLineWithTheGapBetween) {
    NMemoryDC memory;
    NFont font;
    font.Create(memory.dc, nullptr, Height, 0, 0, false, false, false, true, 0, 3);
    const int line = Measured(font).LineHeight();
    struct Case {
        const wchar_t* text;
        bool multiLine;
        int lines;
    };
    const Case cases[] = {
        {L"one", true, 1},       {L"one\rtwo", true, 2}, {L"one\r\ntwo\r\nthree", true, 3},
        {L"\r\r", true, 2},      {L"one\r", true, 1},    {L"one\r\n\ntwo", true, 2},
        {L"one\rtwo", false, 1}, {L"", false, 1},
    };
    for (const Case& each : cases)
        EXPECT_EQ(each.lines * line + (each.lines - 1) * 3,
                  font.TextHeight(each.text, each.multiLine))
            << each.text;
    EXPECT_EQ(0, font.TextHeight(L"", true));
}

TEST(NFont, ThreeLinesOfThirteenWithAGapOfTwoAreFortyThreeHigh) {
    NMemoryDC memory;
    NFont font;
    for (int height = 1; height < 40; ++height) {
        font.Create(memory.dc, nullptr, height, 0, 0, false, false, false, true, 0, 2);
        if (Measured(font).LineHeight() == 13)
            break;
    }
    ASSERT_EQ(13, Measured(font).LineHeight());
    EXPECT_EQ(43, font.TextHeight(L"a\rb\rc", true));
}

TEST(NFont, DrawsALineWithItsTopLeftAtThePoint) {
    TestSurface surface(120, 40, White);
    NFont font;
    MakeOn(font, surface);
    font.DrawText(7, 5, L"HHH");
    const RECT ink = surface.Ink(White);
    EXPECT_FALSE(IsRectEmpty(&ink));
    EXPECT_GE(ink.left, 7);
    EXPECT_GE(ink.top, 5);
    EXPECT_LE(ink.right, 7 + font.TextWidth(L"HHH"));
    EXPECT_LE(ink.bottom, 5 + font.TextHeight(L"HHH"));
    // Ten pixels on it looks the same.
    TestSurface other(120, 40, White);
    NFont otherFont;
    MakeOn(otherFont, other);
    otherFont.DrawText(17, 9, L"HHH");
    RECT moved = ink;
    OffsetRect(&moved, 10, 4);
    EXPECT_EQ(Drawing(surface, ink), Drawing(other, moved));
}

TEST(NFont, DrawsInItsColour) {
    TestSurface surface(60, 40, White);
    NFont font;
    MakeOn(font, surface);
    font.SetColour(Red);
    font.DrawText(5, 5, L"I\u2588\u2588"); // full blocks, or boxes in their place
    bool hasRed = false;
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 60; ++x)
            hasRed = hasRed || surface.At(x, y) == Red;
    EXPECT_TRUE(hasRed);
}

TEST(NFont, DrawingSelectsItForTheCallAlone) {
    TestSurface surface(60, 40, White);
    const TextState before(surface.Dc());
    NFont font;
    MakeOn(font, surface);
    font.SetColour(Red);
    font.DrawText(5, 5, L"A");
    EXPECT_FALSE(font.selected);
    EXPECT_TRUE(before == TextState(surface.Dc()));
    font.DrawText(5, 5, L"A\rB", nullptr, true);
    EXPECT_FALSE(font.selected);
    EXPECT_TRUE(before == TextState(surface.Dc()));
    font.Select(surface.Dc());
    font.DrawText(5, 5, L"A");
    EXPECT_TRUE(font.selected);
    EXPECT_EQ(font.handle, GetCurrentObject(surface.Dc(), OBJ_FONT));
}

TEST(NFont, ATransparentFontLeavesWhatIsBetweenTheStrokes) {
    TestSurface surface(60, 40, White);
    NFont font;
    MakeOn(font, surface, true);
    SetBkColor(surface.Dc(), Green);
    const RECT clip = {2, 2, 50, 30};
    font.DrawText(5, 5, L"i", &clip);
    EXPECT_EQ(White, surface.At(2, 2));
    EXPECT_EQ(White, surface.At(49, 29));
}

TEST(NFont, AnOpaqueFontFillsTheClipWithTheBackgroundColour) {
    TestSurface surface(60, 40, White);
    NFont font;
    MakeOn(font, surface, false);
    SetBkColor(surface.Dc(), Green);
    const RECT clip = {2, 2, 50, 30};
    font.DrawText(5, 5, L"i", &clip);
    EXPECT_EQ(Green, surface.At(2, 2));
    EXPECT_EQ(Green, surface.At(49, 29));
    const RECT filled = surface.Ink(White);
    EXPECT_TRUE(EqualRect(&clip, &filled));
}

TEST(NFont, AnOpaqueFontWithoutAClipFillsBehindTheText) {
    TestSurface surface(60, 40, White);
    NFont font;
    MakeOn(font, surface, false);
    SetBkColor(surface.Dc(), Green);
    font.DrawText(5, 5, L"i");
    EXPECT_EQ(Green, surface.At(5, 5));
    const RECT filled = surface.Ink(White);
    EXPECT_EQ(5 + font.TextHeight(L"i"), filled.bottom);
}

TEST(NFont, TheClipCutsALine) {
    TestSurface surface(120, 40, White);
    NFont font;
    MakeOn(font, surface);
    const RECT clip = {10, 8, 25, 14};
    font.DrawText(5, 5, L"HHHHHHHH", &clip);
    const RECT ink = surface.Ink(White);
    RECT common = {};
    EXPECT_TRUE(IntersectRect(&common, &clip, &ink));
    EXPECT_TRUE(EqualRect(&common, &ink));
}

TEST(NFont, LinesAreDrawnBelowEachOtherWithTheGapBetween) {
    constexpr int Gap = 4;
    TestSurface surface(120, 80, White);
    NFont font;
    MakeOn(font, surface, true, Gap);
    const int step = font.TextHeight(L"A") + Gap;
    font.DrawText(7, 5, L"Ay\r\nAy", nullptr, true);
    TestSurface first(120, 80, White);
    NFont single;
    MakeOn(single, first);
    single.DrawText(7, 5, L"Ay");
    const RECT ink = first.Ink(White);
    RECT below = ink;
    OffsetRect(&below, 0, step);
    EXPECT_EQ(Drawing(first, ink), Drawing(surface, ink));
    EXPECT_EQ(Drawing(first, ink), Drawing(surface, below));
    const RECT all = surface.Ink(White);
    EXPECT_EQ(below.bottom, all.bottom);
}

TEST(NFont, AnEmptyLineTakesItsHeight) {
    TestSurface surface(120, 80, White);
    NFont font;
    MakeOn(font, surface);
    font.DrawText(0, 0, L"\rH", nullptr, true);
    EXPECT_GE(surface.Ink(White).top, font.TextHeight(L"A"));
}

TEST(NFont, AClipDoesNotHoldForSeveralLines) {
    TestSurface surface(120, 80, White);
    NFont font;
    MakeOn(font, surface);
    const RECT clip = {0, 0, 1, 1};
    font.DrawText(7, 5, L"H\rH", &clip, true);
    const RECT ink = surface.Ink(White);
    EXPECT_FALSE(IsRectEmpty(&ink));
}

TEST(NFont, TabsOfADrawnLineCountFromTheLeftEdgeOfTheSurface) {
    TestSurface surface(200, 40, White);
    NFont font;
    MakeOn(font, surface);
    const int interval = 8 * Measured(font).PlatformAverage();
    TestSurface plain(200, 40, White);
    NFont plainFont;
    MakeOn(plainFont, plain);
    plainFont.DrawText(interval, 0, L"H");
    for (int x : {1, 5, interval - 1}) {
        surface.Clear(White);
        font.DrawText(x, 0, L"\tH", nullptr, true);
        EXPECT_EQ(plain.Ink(White).left, surface.Ink(White).left) << x;
    }
}

TEST(NFont, NothingItMakesOutlivesIt) {
    NMemoryDC memory;
    const auto useAll = [&] {
        NFont font;
        font.Create(memory.dc, nullptr, Height, 0);
        font.Select(memory.dc);
        font.Create(memory.dc, "Arial", Height, 0);
        font.TextWidth(L"a\tb\rc", true, 5);
        font.TextHeight(L"a\rb", true);
        font.DrawText(0, 0, L"a\rb", nullptr, true);
        font.DrawText(0, 0, L"a");
        font.Select(memory.dc);
    };
    useAll();
    const PlatformObjects before = CountPlatformObjects();
    for (int i = 0; i < 50; ++i)
        useAll();
    EXPECT_EQ(before, CountPlatformObjects());
}
