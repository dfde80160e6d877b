// The page's pictures, compared with ones that were looked at. Texts are left
// out of them: their looks are those of the machine's fonts.
#include "tests/tagpage/tag_page_fixture.h"

extern "C" {
extern decltype(&::ExtTextOutW) __wrap___imp_ExtTextOutW;
extern decltype(&::TabbedTextOutW) __real___imp_TabbedTextOutW;
extern decltype(&::TabbedTextOutW) __wrap___imp_TabbedTextOutW;
}
decltype(&::TabbedTextOutW) __wrap___imp_TabbedTextOutW = __real___imp_TabbedTextOutW;

namespace {
// A misplaced edge or mark is more pixels than that.
constexpr PictureTolerance Tolerance = {.colour = 24, .pixels = 8};

BOOL WINAPI DrawNothing(HDC, int, int, UINT, const RECT*, const wchar_t*, UINT, const INT*) {
    return TRUE;
}

LONG WINAPI DrawNoTabs(HDC, int, int, const wchar_t*, int, int, const INT*, int) {
    return 0;
}

// The page's own texts stay away to the end of the scope.
class WithoutTexts {
public:
    WithoutTexts() {
        __wrap___imp_ExtTextOutW = DrawNothing;
        __wrap___imp_TabbedTextOutW = DrawNoTabs;
    }
    ~WithoutTexts() {
        __wrap___imp_ExtTextOutW = before_;
        __wrap___imp_TabbedTextOutW = __real___imp_TabbedTextOutW;
    }
    WithoutTexts(const WithoutTexts&) = delete;
    WithoutTexts& operator=(const WithoutTexts&) = delete;

private:
    decltype(&::ExtTextOutW) before_ = __wrap___imp_ExtTextOutW;
};

class TagPagePictures : public TagPageTest {
protected:
    void OpenOne(int pictures = 0) {
        clTagRecord tag;
        FillTag(tag, {{L"Artist", L"Somebody"}, {L"Mood", L"Calm"}});
        for (int number = 1; number <= pictures; ++number)
            tag.AddData((L"_albumart_" + std::to_wstring(number) + L"_Front").c_str(), "data", 4);
        AddFile(A, tag);
        window_.OpenAndRead();
    }
    void OpenMany() {
        AddFile(A, {{L"Artist", L"Somebody"}});
        AddFile(B, {{L"Artist", L"Somebody"}, {L"Title", L"Else"}});
        AddFile(C, {});
        window_.OpenAndRead();
    }
    // An editor's own text and caret are left out, too.
    void EmptyTheEditor() {
        window_.TypeInEditor(L"");
        HideCaret(nullptr);
    }
    void ExpectLike(const char* name) {
        const WithoutTexts off;
        EXPECT_TRUE(
            LooksLike(window_.Seen(),
                      std::filesystem::path(TONEWRIGHT_SOURCE_DIR) / "tests/tagpage/golden" / name,
                      Tolerance, std::filesystem::path(TONEWRIGHT_BUILD_DIR) / "pictures"));
    }
};
} // namespace

TEST_F(TagPagePictures, OfOneFile) {
    OpenOne(2);
    ExpectLike("page_one_file.bmp");
}

TEST_F(TagPagePictures, OfManyFiles) {
    OpenMany();
    ExpectLike("page_many_files.bmp");
}

TEST_F(TagPagePictures, OfOneOfManyFiles) {
    OpenMany();
    Page().cmdViewSingle.OnClick(false);
    Page().cmdSkipLast.OnClick(false);
    ExpectLike("page_one_of_many.bmp");
}

TEST_F(TagPagePictures, OfReading) {
    AddFile(A, {});
    tags_.Hold(TagRequestKind::Read, A);
    window_.Open();
    ExpectLike("page_reading.bmp");
    tags_.Release(TagRequestKind::Read, A);
    window_.WaitForReading();
}

TEST_F(TagPagePictures, OfAValueInEdit) {
    OpenOne();
    List().Select(window_.RowOf(L"Mood"));
    EmptyTheEditor();
    ExpectLike("page_edit_value.bmp");
}

TEST_F(TagPagePictures, OfAChoiceInEdit) {
    OpenOne();
    List().Select(window_.RowOf(L"Genre"));
    EmptyTheEditor();
    ExpectLike("page_edit_choice.bmp");
}

TEST_F(TagPagePictures, OfANameInEdit) {
    OpenOne();
    Page().cmdAdd.OnClick(false);
    EmptyTheEditor();
    ExpectLike("page_edit_name.bmp");
}

// Its real button has a text of the platform's.
TEST_F(TagPagePictures, OfAPictureRowThatIsSelected) {
    OpenOne(1);
    List().Select(window_.RowOf(L"Art 1"));
    SetWindowTextW(List().control.button, L"");
    ExpectLike("page_art_selected.bmp");
}
