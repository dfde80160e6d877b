#include "tests/support/nstring_printer.h"
#include "toolkit/device_contexts.h"
#include "toolkit/fit_text.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {
class FitTextTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(font_.Create(memory_.dc, nullptr, 16, 0)); }

    // By the platform's own measure.
    int Width(const std::wstring& text) const {
        const HGDIOBJ before = SelectObject(memory_.dc, font_.handle);
        SIZE size = {};
        GetTextExtentPoint32W(memory_.dc, text.c_str(), static_cast<int>(text.size()), &size);
        SelectObject(memory_.dc, before);
        return size.cx;
    }

    // The longest text that is narrower, by trying all.
    std::wstring Expected(const std::wstring& text, int maxWidth) const {
        if (Width(text) < maxWidth)
            return text;
        for (size_t kept = text.size() - 1; kept > 0; --kept)
            if (Width(text.substr(0, kept) + L"...") < maxWidth)
                return text.substr(0, kept) + L"...";
        return L"";
    }

    NMemoryDC memory_;
    NFont font_;
};
} // namespace

TEST_F(FitTextTest, ATextThatIsNarrowerStaysAsItIs) {
    NString text = L"Overture";
    EXPECT_FALSE(FitText(font_, Width(L"Overture") + 1, text));
    EXPECT_EQ(NString(L"Overture"), text);
}

TEST_F(FitTextTest, ATextThatIsJustAsWideIsCut) {
    NString text = L"Overture";
    EXPECT_TRUE(FitText(font_, Width(L"Overture"), text));
    EXPECT_EQ(NString(Expected(L"Overture", Width(L"Overture")).c_str()), text);
    EXPECT_GT(Width(L"Overture"), Width(text.Text));
    EXPECT_EQ(NString(L"..."), text.Right(3));
}

TEST_F(FitTextTest, AsMuchIsKeptAsIsNarrowerWithTheDots) {
    const std::wstring whole = L"Will it fit";
    for (int maxWidth = Width(whole) + 2; maxWidth >= -1; --maxWidth) {
        SCOPED_TRACE(maxWidth);
        const std::wstring expected = Expected(whole, maxWidth);
        NString text = whole.c_str();
        EXPECT_EQ(expected != whole, FitText(font_, maxWidth, text));
        EXPECT_EQ(NString(expected.c_str()), text);
    }
}

TEST_F(FitTextTest, TabsAndCarriageReturnsAreCharactersOfTheOneLine) {
    for (const std::wstring whole : {L"One\tTwo", L"One\rTwo", L"A\tlonger\rone\r\tstill"}) {
        ASSERT_NE(Width(whole), font_.TextWidth(NString(whole.c_str()), true));
        for (int maxWidth = Width(whole) + 2; maxWidth > 0; --maxWidth) {
            SCOPED_TRACE(maxWidth);
            const std::wstring expected = Expected(whole, maxWidth);
            NString text = whole.c_str();
            EXPECT_EQ(expected != whole, FitText(font_, maxWidth, text));
            EXPECT_EQ(NString(expected.c_str()), text);
        }
    }
}

TEST_F(FitTextTest, ALongTextIsCutAsAShortOne) {
    const std::wstring start = L"Will it fit";
    std::wstring whole;
    for (int i = 0; i < 300; ++i)
        whole += start;
    for (int maxWidth : {Width(L"..."), Width(L"Will..."), Width(start), 5 * Width(start)}) {
        // What is further away is cut in any case.
        const std::wstring expected = Expected(whole.substr(0, 20 * start.size()), maxWidth);
        NString text = whole.c_str();
        EXPECT_TRUE(FitText(font_, maxWidth, text));
        EXPECT_EQ(NString(expected.c_str()), text);
    }
    NString text = whole.c_str();
    EXPECT_FALSE(FitText(font_, Width(whole) + 1, text));
    EXPECT_TRUE(FitText(font_, Width(whole), text));
    text = whole.c_str();
    EXPECT_FALSE(FitText(font_, INT_MAX, text));
    EXPECT_EQ(NString(whole.c_str()), text);
}

TEST_F(FitTextTest, WithoutRoomForTheDotsTheTextIsEmptiedAndCountsAsCut) {
    for (int maxWidth : {Width(L"..."), 1, 0, -1, -12345}) {
        NString text = L"Overture";
        EXPECT_TRUE(FitText(font_, maxWidth, text));
        EXPECT_EQ(NString(), text);
    }
}

TEST_F(FitTextTest, ASingleCharacterThatIsTooWideIsCutToNothing) {
    NString text = L"W";
    EXPECT_TRUE(FitText(font_, Width(L"W"), text));
    EXPECT_EQ(NString(), text);
}

TEST_F(FitTextTest, AnEmptyTextIsNeverCut) {
    NString text;
    EXPECT_FALSE(FitText(font_, 0, text));
    EXPECT_FALSE(FitText(font_, -1, text));
    EXPECT_FALSE(FitText(font_, 100, text));
    EXPECT_TRUE(text.IsEmpty());
}

TEST_F(FitTextTest, AFontWithoutADeviceContextTakesAnyTextForOneOfNoWidth) {
    NFont lost;
    ASSERT_TRUE(lost.Create(nullptr, nullptr, 16, 0));
    NString text = L"Overture";
    EXPECT_FALSE(FitText(lost, 1, text));
    EXPECT_EQ(NString(L"Overture"), text);
    EXPECT_TRUE(FitText(lost, 0, text));
    EXPECT_TRUE(text.IsEmpty());
}
