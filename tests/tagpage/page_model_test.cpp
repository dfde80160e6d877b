// Users who do anything at all, in any order: what the page shows and writes is
// what a plain model of its rules says.
#include "tests/tagpage/page_model.h"
#include "tests/tagpage/tag_page_fixture.h"

#include <algorithm>
#include <cstdlib>
#include <random>
#include <sstream>

namespace {
using Element = PageModel::Element;
using Kind = PageModel::Kind;
using Row = PageModel::Row;
using Text = PageModel::Text;
using Tag = PageModel::Tag;

std::ostream& operator<<(std::ostream& stream, const Text& text) {
    return stream << NString(text.c_str()).ToNarrow();
}

Kind KindOf(const NValueRow& row) {
    if (row.tag == RowTagText)
        return row.kind == ComboEdit ? Kind::Choice : Kind::Text;
    if (row.tag == RowTagArt)
        return Kind::Picture;
    if (row.tag == RowTagNoTags)
        return Kind::Note;
    if (row.kind == Title)
        return Kind::Title;
    if (row.kind == Heading)
        return Kind::Heading;
    return row.buttonText.IsEmpty() ? Kind::Spacer : Kind::AddPicture;
}

// One user with a few files, before whom the page and the model stand.
class User : public TagPageTest {
protected:
    // `steps` actions, the same ones for the same seed.
    void Act(unsigned seed, int steps) {
        random_.seed(seed);
        MakeFiles();
        window_.OpenAndRead();
        // Nobody looks, and so nothing is painted.
        ShowWindow(window_.Sheet(), SW_HIDE);
        ExpectSameView();
        for (int step = 0; step < steps && !HasFailure(); ++step)
            ActOnce();
        Apply();
        if (HasFailure())
            ADD_FAILURE() << "seed " << seed << ":" << log_.str();
    }

private:
    int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
    bool Chance(int percent) { return Below(100) < percent; }
    template <size_t Count>
    Text OneOf(const wchar_t* const (&texts)[Count]) {
        return texts[Below(static_cast<int>(Count))];
    }

    Text AnyName() {
        return OneOf({L"artist", L"Title", L"ALBUM", L"Track", L"year", L"Genre", L"comment",
                      L"rating", L"Mood", L"mood", L"Composer", L"ISRC", L"Tempo", L"A b"});
    }
    Text AnyValue(const Text& name) {
        if (NString(name.c_str()).Compare(L"rating", 0, true) == 0)
            return OneOf({L"", L"0", L"3.5", L"4", L"4.2", L"5"});
        return OneOf({L"", L"x1", L"X1", L"x1; y2", L"y2; ", L"<different>", L"not <different>",
                      L"2019", L"7", L"Rock", L"<edit>", L"Ünal 音"});
    }
    static Text OnDisk(const Text& name, const Text& value) {
        NString stored(value.c_str());
        stored.Replace(L"; ", L"\r");
        const bool isRating = NString(name.c_str()).Compare(L"rating", 0, true) == 0;
        return isRating ? Text(value.empty() ? L"" : L"7") : Text(stored.Text);
    }

    void MakeFiles() {
        std::vector<std::pair<Text, Tag>> files;
        const int count = 2 + Below(4);
        for (int number = 0; number < count; ++number) {
            files.emplace_back(L"C:\\" + Text(1, static_cast<wchar_t>(L'a' + number)) + L".mp3",
                               AnyTag());
            clTagRecord tag;
            for (const Element& element : files.back().second) {
                tag.AddData(element.name.c_str(), nullptr, static_cast<int>(element.data.size()));
                tag.Current()->Value = element.value.c_str();
                std::copy(element.data.begin(), element.data.end(),
                          static_cast<unsigned char*>(tag.Current()->Data.Data));
            }
            AddFile(files.back().first.c_str(), tag);
        }
        model_ = std::make_unique<PageModel>(std::move(files));
    }
    Tag AnyTag() {
        Tag tag;
        for (int count = Below(8); count > 0; --count) {
            const Text name = AnyName();
            const auto isThere = [&](const Element& element) { return element.name == name; };
            if (std::none_of(tag.begin(), tag.end(), isThere))
                tag.push_back({name, OnDisk(name, AnyValue(name)), L""});
        }
        if (Chance(40))
            tag.push_back({L"_albumart_1_Front", L"", L"one"});
        if (Chance(20))
            tag.push_back({L"_ALBUMART_2", L"", L"two"});
        if (Chance(20))
            tag.push_back({L"_cdtoc", L"", L"toc"});
        if (Chance(20))
            tag.push_back({L"_riff_IABC", L"special", L""});
        return tag;
    }

    void Log(const char* what, const Text& text = L"", int row = -1) {
        log_ << "\n  " << what << " " << row << " " << text;
    }

    void ActOnce() {
        const int choice = Below(100);
        if (choice < 34)
            TypeOrPick();
        else if (choice < 46)
            Select(Below(RowCount()));
        else if (choice < 56)
            AddNamed();
        else if (choice < 60)
            AddUnnamed();
        else if (choice < 69)
            Remove();
        else if (choice < 70)
            Clear();
        else if (choice < 79)
            ToggleView();
        else if (choice < 92)
            ShowOther();
        else
            Apply();
        ExpectSameView();
    }

    int RowCount() const { return static_cast<int>(model_->rows.size()); }

    void Select(int row) {
        Log("select", L"", row);
        model_->Select(row);
        List().Select(row);
    }
    void TypeOrPick() {
        const int row = Below(RowCount());
        const Row& record = model_->rows[static_cast<size_t>(row)];
        if (!record.IsText()) {
            Select(row);
        } else if (record.kind == Kind::Choice && Chance(40)) {
            Pick(row);
        } else {
            const Text value = AnyValue(record.name);
            Log("type", value, row);
            model_->Type(row, value);
            List().Select(row);
            window_.TypeInEditor(value.c_str());
        }
    }
    void Pick(int row) {
        List().Select(row);
        const HWND combo = List().control.editor;
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(Below(20)), 0);
        wchar_t choice[100] = {};
        GetWindowTextW(combo, choice, static_cast<int>(std::size(choice)));
        Log("pick", choice, row);
        SendMessageW(List().listBox, WM_COMMAND, MAKEWPARAM(0, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(combo));
        model_->Pick(row, choice);
    }
    // A name that no row has: one that is there twice doubles its rows each time
    // that the view is built.
    void AddNamed() {
        const Text name = AnyName();
        if (std::any_of(model_->rows.begin(), model_->rows.end(),
                        [&](const Row& row) { return row.name == name; }))
            return;
        Log("add", name);
        model_->AddElement(name);
        Page().cmdAdd.OnClick(false);
        window_.TypeInEditor(name.c_str());
        PressReturnInName();
        if (Chance(70)) {
            const Text value = AnyValue(name);
            Log("with value", value);
            model_->TypeNewValue(value);
            window_.TypeInEditor(value.c_str());
        }
    }
    void AddUnnamed() {
        Log("add nothing");
        model_->AddElement(L"");
        Page().cmdAdd.OnClick(false);
        if (Chance(50))
            window_.TypeInEditor(L"");
        PressReturnInName();
    }
    void PressReturnInName() {
        ASSERT_NE(List().control.nameMode, 0);
        SendMessageW(GetWindow(List().control.editor, GW_CHILD), WM_KEYUP, VK_RETURN, 0);
    }
    void Remove() {
        if (!model_->canRemove)
            return;
        Log("remove");
        model_->Remove();
        Page().cmdRemove.OnClick(false);
    }
    void Clear() {
        Log("clear");
        model_->Clear();
        Page().cmdClear.OnClick(false);
    }
    void ToggleView() {
        Log("toggle");
        model_->ToggleView();
        Page().cmdViewSingle.OnClick(false);
    }
    void ShowOther() {
        NButton* const buttons[] = {&Page().cmdSkipFirst, &Page().cmdSkipPrev, &Page().cmdSkipNext,
                                    &Page().cmdSkipLast};
        const int last = static_cast<int>(model_->files.size()) - 1;
        const int targets[] = {0, model_->file - 1, model_->file + 1, last};
        const int which = Below(4);
        const bool isOffered =
            model_->single && (which < 2 ? model_->file != 0 : model_->file != last);
        EXPECT_EQ(IsEnabled(*buttons[which]), isOffered);
        if (!isOffered)
            return;
        Log("show", L"", targets[which]);
        model_->ShowFile(targets[which]);
        buttons[which]->OnClick(false);
    }
    void Apply() {
        Log("apply");
        tags_.ForgetRequests();
        model_->writes = 0;
        model_->Apply();
        window_.Apply();
        EXPECT_EQ(tags_.Count(TagRequestKind::Set), model_->writes);
        for (const auto& [path, tag] : model_->files)
            EXPECT_EQ(Held(path), TextsOf(tag)) << path;
    }

    static Texts TextsOf(const Tag& tag) {
        Texts texts;
        for (const Element& element : tag)
            texts.push_back(element.name + L"=" + element.value +
                            (element.data.empty() ? L"" : L":" + element.data));
        return texts;
    }
    Texts Held(const Text& path) {
        clTagRecord tag;
        tags_.GetTag(path.c_str(), tag);
        return ::TextsOf(tag);
    }

    void ExpectSameView() {
        std::vector<Row> shown;
        for (int row = 0; row < List().rows.Count(); ++row) {
            const NValueRow& record = *List().rows[row];
            shown.push_back({KindOf(record), record.name.Text, record.value.Text});
        }
        ASSERT_EQ(shown, model_->rows);
        ASSERT_EQ(List().GetSelection(), model_->selection);
        ASSERT_EQ(IsEnabled(Page().cmdRemove), model_->canRemove);
    }

    std::mt19937 random_;
    std::unique_ptr<PageModel> model_;
    std::ostringstream log_;
};

// Each user has as many, with files of their own.
constexpr int StepsOfAUser = 100;
constexpr int Users = 200;

// The same users in each run, so that what one of them finds is found again;
// others by TONEWRIGHT_SEED.
unsigned FirstSeed() {
    const char* given = std::getenv("TONEWRIGHT_SEED");
    return given ? std::strtoul(given, nullptr, 10) : 1;
}

class AnyUser : public User, public testing::WithParamInterface<int> {};
} // namespace

TEST_P(AnyUser, SeeAndWriteWhatTheRulesSay) {
    const unsigned seed = FirstSeed() + static_cast<unsigned>(GetParam());
    printf("seed %u\n", seed);
    Act(seed, StepsOfAUser);
}

INSTANTIATE_TEST_SUITE_P(TagPage, AnyUser, testing::Range(0, Users));
