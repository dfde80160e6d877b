// Files of all kinds, whose tags are edited on the page and written by the tag
// program that lies beside the module.
#include "codec/tag_exchange.h"
#include "foundation/module_instance.h"
#include "tagpage/row_texts.h"
#include "tests/shell/loaded_module.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/private_app_data.h"
#include "tests/support/test_cursor.h"
#include "tests/tagpage/tag_page_window.h"
#include "tests/tagpage/tag_texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {
constexpr const wchar_t* Samples[] = {
    L"sample.aiff", L"sample.ape", L"sample.flac", L"sample.m4a",  L"sample.mp3",
    L"sample.mpc",  L"sample.oga", L"sample.ogg",  L"sample.opus", L"sample.spx",
    L"sample.tta",  L"sample.wav", L"sample.wma",  L"sample.wv",
};

class TagPageFiles : public testing::Test {
protected:
    TagPageFiles() {
        NSetModuleInstance(module_.Handle());
        TestCursor::MoveTo(FarAway, FarAway);
    }
    ~TagPageFiles() override {
        window_.Close();
        NSetModuleInstance(nullptr);
    }

    clIDTagPage& Page() { return window_.Page(); }
    NString AddSample(const wchar_t* name) {
        NString source(TONEWRIGHT_SOURCE_DIR "/build/samples/");
        source.Append(name);
        const NString copy = folder_.File(name);
        EXPECT_TRUE(CopyFileW(source.Text, copy.Text, FALSE)) << source.ToNarrow();
        Page().Files.Add(copy);
        return copy;
    }
    // Files spell the names in their own way.
    int RowOf(const wchar_t* name) {
        NKeyedList<NValueRow>& rows = Page().ValueList.rows;
        for (int index = 0; index < rows.Count(); ++index) {
            if (rows[index]->name.Compare(name, 0, true) == 0)
                return index;
        }
        ADD_FAILURE() << "no row " << NString(name).ToNarrow();
        return -1;
    }
    void Type(const wchar_t* name, const wchar_t* value) {
        Page().ValueList.Select(RowOf(name));
        window_.TypeInEditor(value);
    }
    // What a new reader finds.
    static void Read(const NString& path, clTagRecord& tags) {
        NBuffer reply;
        RunGetAudioInf(path.Text, reply);
        tags.Deserialise(reply.Data, static_cast<int>(reply.Size));
    }
    static NString ValueOf(const NString& path, const wchar_t* name) {
        clTagRecord tags;
        Read(path, tags);
        const clTagElement* element = tags.Find(name);
        return element ? element->Value : L"(none)";
    }
    static Texts Without(Texts texts, std::initializer_list<const wchar_t*> names) {
        std::erase_if(texts, [&](const std::wstring& text) {
            const NString name = NString(text.c_str()).Left(static_cast<int>(text.find(L'=')));
            for (const wchar_t* unwanted : names) {
                if (name.Compare(unwanted, 0, true) == 0)
                    return true;
            }
            return false;
        });
        return texts;
    }
    static Texts SortedTexts(clTagRecord& tags) {
        Texts texts = TextsOf(tags);
        std::sort(texts.begin(), texts.end());
        return texts;
    }

    static constexpr int FarAway = 30000;

    LoadedModule module_;
    PrivateAppData appData_;
    TempFolder folder_;
    TestCursor cursor_;
    TagPageWindow window_;
};

class TagPageFile : public TagPageFiles, public testing::WithParamInterface<const wchar_t*> {};
} // namespace

TEST_P(TagPageFile, KeepsWhatWasTypedAndRemovedAndAllElse) {
    const NString path = AddSample(GetParam());
    clTagRecord before;
    Read(path, before);
    window_.OpenAndRead();
    Type(L"Title", L"N\x00FC \x97F3\x6A02");
    Type(L"Artist", L"First; Second");
    Page().ValueList.Select(RowOf(L"Album"));
    Page().cmdRemove.OnClick(false);
    window_.Apply();

    clTagRecord after;
    Read(path, after);
    EXPECT_EQ(ValueOf(path, L"Title"), L"N\x00FC \x97F3\x6A02");
    // Not every kind of file has room for parts.
    EXPECT_EQ(RowValueOf(ValueOf(path, L"Artist")), L"First; Second");
    EXPECT_EQ(ValueOf(path, L"Album"), L"(none)");
    EXPECT_EQ(Without(SortedTexts(after), {L"Title", L"Artist", L"Album"}),
              Without(SortedTexts(before), {L"Title", L"Artist", L"Album"}));
}

INSTANTIATE_TEST_SUITE_P(Of, TagPageFile, testing::ValuesIn(Samples));

TEST_F(TagPageFiles, OfAllKindsAtOnceGetOneValueAndLoseAll) {
    std::vector<NString> paths;
    for (const wchar_t* sample : Samples)
        paths.push_back(AddSample(sample));
    window_.OpenAndRead();
    Type(L"Comment", L"Of all");
    window_.Apply();
    for (const NString& path : paths)
        EXPECT_EQ(ValueOf(path, L"Comment"), L"Of all") << NString(path).ToNarrow();
    Page().cmdClear.OnClick(false);
    window_.Apply();
    for (const NString& path : paths) {
        clTagRecord tags;
        Read(path, tags);
        // What made the file is told of its audio.
        EXPECT_EQ(Without(TextsOf(tags), {L"encoder"}), Texts()) << NString(path).ToNarrow();
    }
}
