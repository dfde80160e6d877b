#pragma once

#include "tests/support/nstring_printer.h"
#include "tests/support/private_app_data.h"
#include "tests/support/test_cursor.h"
#include "tests/tagpage/scripted_tags.h"
#include "tests/tagpage/tag_page_window.h"
#include "tests/tagpage/tag_texts.h"

#include <gtest/gtest.h>

// The page with files that the tests' tag program knows. The user's genres are
// the test's own; the cursor is far from everything until a test moves
// it.
class TagPageTest : public testing::Test {
protected:
    TagPageTest() {
        TestCursor::MoveTo(FarAway, FarAway);
        tags_.RunInProcess();
    }

    clIDTagPage& Page() { return window_.Page(); }
    NValueList& List() { return Page().ValueList; }
    // Adds the path to the page's, and tells the tag program of it.
    void AddFile(const wchar_t* path, std::initializer_list<TagText> elements = {}) {
        clTagRecord tag;
        FillTag(tag, elements);
        AddFile(path, tag);
    }
    void AddFile(const wchar_t* path, clTagRecord& tag) {
        tags_.SetTag(path, tag);
        Page().Files.Add(path);
    }
    void ShowSingle() { Page().cmdViewSingle.OnClick(false); }
    clTagRecord& TagsOf(const wchar_t* set) {
        for (int index = 0; index < Page().TagSets.Count(); ++index) {
            if (Page().TagSets[index]->Name == set)
                return Page().TagSets[index]->Tags;
        }
        throw std::runtime_error("no such set");
    }
    Texts SetTexts(const wchar_t* set) { return TextsOf(TagsOf(set)); }
    static bool IsEnabled(const NButton& button) { return IsWindowEnabled(button.window) != FALSE; }

    static constexpr int FarAway = 30000;
    static constexpr const wchar_t* A = L"C:\\a.mp3";
    static constexpr const wchar_t* B = L"C:\\b.mp3";
    static constexpr const wchar_t* C = L"C:\\c.mp3";

    PrivateAppData appData_;
    TestCursor cursor_;
    ScriptedTags tags_;
    TagPageWindow window_;
};
