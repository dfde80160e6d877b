#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

// What the ID-Tag page does with tags, told once more without windows and as
// plainly as it can be: the page must show and write just this. Names compare
// without regard to ASCII case, values exactly.
class PageModel {
public:
    using Text = std::wstring;

    struct Element {
        Text name;
        Text value;
        Text data; // of a picture, a byte a character

        bool operator==(const Element&) const = default;
    };
    using Tag = std::vector<Element>;

    enum class Kind { Title, Note, Text, Choice, Spacer, Heading, Picture, AddPicture };
    struct Row {
        Kind kind;
        Text name;
        Text value;

        bool IsText() const { return kind == Kind::Text || kind == Kind::Choice; }
        bool operator==(const Row&) const = default;
    };
    friend void PrintTo(const Row& row, std::ostream* out) {
        *out << static_cast<int>(row.kind) << ' ' << testing::PrintToString(row.name) << ": "
             << testing::PrintToString(row.value) << "\n";
    }

    // The paths in order, each with what the file holds.
    explicit PageModel(std::vector<std::pair<Text, Tag>> files);

    // What the user does. Rows are counted from the top.
    void Select(int row);
    void Type(int row, const Text& value);
    void Pick(int row, const Text& choice);
    void AddElement(const Text& name); // empty: it gets none
    void TypeNewValue(const Text& value);
    void Remove();
    void Clear();
    void ToggleView();
    void ShowFile(int file);
    void Apply();

    bool ShowsOneFile() const { return single || files.size() == 1; }

    std::vector<Row> rows;
    int selection = -1;
    bool canRemove = false;
    std::vector<std::pair<Text, Tag>> files; // on the disk
    int writes = 0;
    bool single = false; // the button is latched
    int file = 0;

private:
    struct Set {
        Tag tag;
        bool deleteAll = false;
        std::vector<Text> deleteNames;
    };

    void Merge(int number);
    void Build();
    void AddTextRow(const Text& name, const Text& value);
    void Store();
    void EndEdit();
    void OnSelected();
    void DeleteRow(int row);
    void ApplyTo(int number);
    Set& View() { return ShowsOneFile() ? sets_[static_cast<size_t>(file)] : combined_; }

    std::vector<Set> sets_; // one for each file
    Set combined_;
    int typedRow_ = -1; // a choice that was typed, and is not yet in its row
    Text typed_;
};
