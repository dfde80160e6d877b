// The buttons, their places and their states.
#include "tests/support/picture_compare.h"
#include "tests/tagpage/tag_page_fixture.h"

namespace {
class PageControls : public TagPageTest {
protected:
    void OpenFiles(int count) {
        for (int number = 0; number < count; ++number)
            AddFile(
                (L"C:\\" + std::wstring(1, static_cast<wchar_t>(L'a' + number)) + L".mp3").c_str());
        window_.OpenAndRead();
    }
    // Of first, previous, single, next, last, add, remove and clear: a letter
    // for each that is enabled.
    std::string Enabled() {
        constexpr char letters[] = "FPSNLARC";
        std::string enabled;
        for (const NButton* button : Made())
            enabled += IsEnabled(*button) ? letters[enabled.size()] : '-';
        return enabled;
    }
    std::vector<NButton*> Made() {
        return {&Page().cmdSkipFirst, &Page().cmdSkipPrev, &Page().cmdViewSingle,
                &Page().cmdSkipNext,  &Page().cmdSkipLast, &Page().cmdAdd,
                &Page().cmdRemove,    &Page().cmdClear};
    }
    static std::vector<uint32_t> PixelsOf(const NCanvas& strip) {
        return ReadPicture(strip.dc, strip.Width(), strip.Height()).pixels;
    }
    // The lines of its tip.
    static std::wstring TipOf(NButton& button) {
        std::wstring text;
        for (int index = 0; index < button.toolTip.scene.texts.Count(); ++index)
            text += button.toolTip.scene.texts[index]->text.Text;
        return text;
    }
    void Size(int width, int height) {
        SetWindowPos(window_.Dialog(), nullptr, 0, 0, width, height, SWP_NOZORDER);
    }
    // A real press and release of the mouse over the button.
    void ClickAt(const NButton& button, UINT down = WM_LBUTTONDOWN, UINT up = WM_LBUTTONUP) {
        TestCursor::MoveTo(button.window, 3, 3);
        window_.Send(down);
        window_.Send(up);
        TestCursor::MoveTo(FarAway, FarAway);
    }
};
} // namespace

TEST_F(PageControls, AreMadeAsTold) {
    AddFile(A);
    window_.Open();
    struct Expected {
        int x;
        const wchar_t* text;
        const wchar_t* tip;
        int bitmap;
    };
    const Expected expected[] = {
        {7, L"First", L"", 215},
        {19, L"Previous", L"", 216},
        {31, L"Edit Single", L"Edit Single / Multiple ID-Tags", 228},
        {72, L"Next", L"", 219},
        {84, L"Last", L"", 218},
        {98, L"Add", L"Add New Tag Element", 230},
        {136, L"Remove", L"Remove Selected Tag Element", 229},
        {175, L"Clear", L"Clear all ID-Tags", 231},
    };
    const std::vector<NButton*> made = Made();
    ASSERT_EQ(Page().ButtonGroup.buttons.Count, 8);
    for (size_t index = 0; index < made.size(); ++index) {
        NButton& button = *made[index];
        EXPECT_EQ(Page().ButtonGroup.buttons.At(static_cast<int>(index)), &button);
        const RECT place = window_.PlaceOf(button.window);
        EXPECT_EQ(place.left, window_.X(expected[index].x)) << index;
        EXPECT_EQ(place.top, window_.Y(238)) << index;
        wchar_t text[40] = {};
        GetWindowTextW(button.window, text, 40);
        EXPECT_STREQ(text, expected[index].text);
        EXPECT_EQ(TipOf(button), expected[index].tip) << index;
        EXPECT_EQ(button.flags, 139) << index;
        NCanvas strip;
        ASSERT_TRUE(strip.LoadResource(expected[index].bitmap));
        EXPECT_EQ(PixelsOf(button.strip), PixelsOf(strip)) << index;
        EXPECT_EQ(static_cast<const clIDTagPage::PageButton&>(button).Owner, &Page());
        EXPECT_FALSE(IsEnabled(button)) << index;
    }
    EXPECT_EQ(Page().cmdOptMenu.window, nullptr);
}

TEST_F(PageControls, HaveTheGroundOfTheirHost) {
    for (const bool standAlone : {false, true}) {
        TagPageWindow window;
        window.Open(standAlone);
        const int colour = standAlone ? COLOR_BTNFACE : COLOR_WINDOW;
        EXPECT_EQ(window.Page().BackColour, colour);
        EXPECT_EQ(GetPixel(window.Page().cmdAdd.backdrop.dc, 0, 0), GetSysColor(colour));
    }
}

TEST_F(PageControls, OfOneFileAreAddAndClearAlone) {
    OpenFiles(1);
    EXPECT_TRUE(Page().SingleView());
    EXPECT_FALSE(Page().cmdViewSingle.latched);
    EXPECT_EQ(Enabled(), "-----A-C");
}

TEST_F(PageControls, OfTwoFilesAtFirst) {
    OpenFiles(2);
    EXPECT_FALSE(Page().SingleView());
    EXPECT_EQ(Enabled(), "--S--A-C");
}

TEST_F(PageControls, StepThroughThreeFiles) {
    OpenFiles(3);
    ClickAt(Page().cmdViewSingle);
    EXPECT_TRUE(Page().SingleView());
    EXPECT_EQ(Enabled(), "--SNLA-C");
    ClickAt(Page().cmdSkipNext);
    EXPECT_EQ(Page().CurrentFile, 1);
    EXPECT_EQ(Enabled(), "FPSNLA-C");
    ClickAt(Page().cmdSkipLast);
    EXPECT_EQ(Page().CurrentFile, 2);
    EXPECT_EQ(Enabled(), "FPS--A-C");
    ClickAt(Page().cmdSkipPrev);
    EXPECT_EQ(Page().CurrentFile, 1);
    ClickAt(Page().cmdSkipFirst);
    EXPECT_EQ(Page().CurrentFile, 0);
    EXPECT_EQ(Enabled(), "--SNLA-C");
}

TEST_F(PageControls, InAllFilesNoneSteps) {
    OpenFiles(3);
    ClickAt(Page().cmdViewSingle);
    ClickAt(Page().cmdSkipNext);
    ClickAt(Page().cmdViewSingle);
    EXPECT_FALSE(Page().SingleView());
    EXPECT_EQ(Enabled(), "--S--A-C");
    // And the same file comes again.
    ClickAt(Page().cmdViewSingle);
    EXPECT_EQ(Page().CurrentFile, 1);
    EXPECT_EQ(Enabled(), "FPSNLA-C");
}

TEST_F(PageControls, TheRightMouseButtonDoesTheSame) {
    OpenFiles(2);
    ClickAt(Page().cmdViewSingle, WM_RBUTTONDOWN, WM_RBUTTONUP);
    EXPECT_TRUE(Page().SingleView());
    ClickAt(Page().cmdSkipNext, WM_RBUTTONDOWN, WM_RBUTTONUP);
    EXPECT_EQ(Page().CurrentFile, 1);
}

TEST_F(PageControls, LatchedOnTwoFilesShowTheFirstWithItsPictures) {
    OpenFiles(2);
    ClickAt(Page().cmdViewSingle);
    EXPECT_EQ(window_.Rows().at(0), L"Tonewright: 'a' ID-Tag [1/2] =");
    EXPECT_EQ(List().rows[List().rows.Count() - 1]->buttonText, L"Add Album Art");
    EXPECT_TRUE(IsEnabled(Page().cmdSkipNext));
    EXPECT_FALSE(IsEnabled(Page().cmdSkipPrev));
}

TEST_F(PageControls, AStepOutOfRangeStaysAtItsFile) {
    OpenFiles(2);
    ShowSingle();
    Page().cmdSkipPrev.OnClick(false);
    EXPECT_EQ(Page().CurrentFile, 0);
    Page().cmdSkipLast.OnClick(false);
    Page().cmdSkipNext.OnClick(false);
    EXPECT_EQ(Page().CurrentFile, 1);
    EXPECT_EQ(window_.Rows().at(0), L"Tonewright: 'b' ID-Tag [2/2] =");
}

TEST_F(PageControls, DoNothingBeforeTheRowsAreThere) {
    AddFile(A);
    AddFile(B);
    tags_.Hold(TagRequestKind::Read, A);
    window_.Open();
    for (NButton* button : Made())
        button->OnClick(false);
    EXPECT_FALSE(Page().cmdViewSingle.latched);
    EXPECT_EQ(Page().CurrentFile, 0);
    EXPECT_EQ(window_.TakeChanges(), 0);
    tags_.Release(TagRequestKind::Read, A);
    window_.WaitForReading();
    EXPECT_EQ(Page().TagSets.Count(), 3);
}

// The state of Remove.

TEST_F(PageControls, RemoveIsEnabledOnRowsOfElements) {
    clTagRecord tag;
    tag.AddData(L"_albumart_1", "x", 1);
    tag.Add(L"Title", L"One");
    AddFile(A, tag);
    window_.OpenAndRead();
    for (int index = 0; index < List().rows.Count(); ++index) {
        const int64_t rowTag = List().rows[index]->tag;
        List().Select(index);
        EXPECT_EQ(IsEnabled(Page().cmdRemove), rowTag == RowTagText || rowTag == RowTagArt)
            << index;
    }
    List().Select(window_.RowOf(L"Title"));
    EXPECT_TRUE(IsEnabled(Page().cmdRemove));
    List().Select(-1);
    EXPECT_FALSE(IsEnabled(Page().cmdRemove));
}

TEST_F(PageControls, RemoveIsDisabledOnTheWordsOfAnEmptyTag) {
    OpenFiles(1);
    List().Select(1);
    ASSERT_EQ(List().rows[1]->tag, RowTagNoTags);
    EXPECT_FALSE(IsEnabled(Page().cmdRemove));
}

TEST_F(PageControls, RemoveStandsAsItWasBehindAStepAndThenDoesNothing) {
    OpenFiles(2);
    List().Select(window_.RowOf(L"Title"));
    ShowSingle();
    EXPECT_EQ(List().GetSelection(), -1);
    EXPECT_TRUE(IsEnabled(Page().cmdRemove));
    window_.TakeChanges();
    const Texts rows = window_.Rows();
    Page().cmdRemove.OnClick(false);
    EXPECT_EQ(window_.Rows(), rows);
    EXPECT_EQ(window_.TakeChanges(), 0);
}

// Places.

TEST_F(PageControls, AtAHeightOf200TheButtonsStandAt180) {
    OpenFiles(1);
    Size(300, 200);
    for (const NButton* button : Made()) {
        const RECT place = window_.PlaceOf(button->window);
        EXPECT_EQ(place.top, 180);
        EXPECT_EQ(place.bottom - place.top, button->frameHeight);
        EXPECT_EQ(place.right - place.left, button->frameWidth);
    }
    EXPECT_EQ(window_.PlaceOf(Page().cmdAdd.window).left, window_.X(98));
    const RECT list = window_.PlaceOf(List().listBox);
    EXPECT_EQ(list.left, window_.X(7));
    EXPECT_EQ(list.top, window_.Y(6));
    EXPECT_EQ(list.right - list.left, 300 - window_.X(14));
    EXPECT_EQ(list.bottom, 200 - 23);
}

TEST_F(PageControls, AreLaidOutWhenTheRowsCome) {
    OpenFiles(1);
    RECT client = {};
    GetClientRect(window_.Dialog(), &client);
    EXPECT_EQ(window_.PlaceOf(Page().cmdAdd.window).top, client.bottom - 20);
    EXPECT_EQ(window_.PlaceOf(List().listBox).bottom, client.bottom - 23);
}

TEST_F(PageControls, AreLaidOutBeforeThereIsAList) {
    AddFile(A);
    window_.Open();
    Size(300, 200);
    EXPECT_EQ(window_.PlaceOf(Page().cmdAdd.window).top, 180);
    EXPECT_EQ(List().listBox, nullptr);
}

TEST_F(PageControls, TheValuesStandFurtherInOnAWidePage) {
    constexpr struct {
        int width;
        uint32_t valueX;
    } forms[] = {{500, 80}, {501, 150}};
    for (const auto& form : forms) {
        TagPageWindow window;
        window.Open();
        SetWindowPos(window.Dialog(), nullptr, 0, 0, form.width, 300, SWP_NOZORDER);
        window.WaitForReading();
        window.Tick();
        EXPECT_EQ(window.Page().ValueList.defaultValueX, form.valueX);
    }
}

TEST_F(PageControls, TheListIsMadeAsTold) {
    OpenFiles(1);
    EXPECT_EQ(List().parent, window_.Dialog());
    EXPECT_EQ(List().owner, &Page());
    EXPECT_EQ(Page().ValueList.Owner, &Page());
    EXPECT_EQ(List().defaultNameX, 28u);
    EXPECT_EQ(List().defaultValueX, 80u);
    EXPECT_EQ(List().rowHeight, 21);
    EXPECT_EQ(List().nameFontSize, 13);
    EXPECT_EQ(List().valueFontSize, 13);
    EXPECT_FALSE(List().pixelMode);
}
