#pragma once

#include "audiopage/property_rows.h"
#include "tests/audiopage/page_settings.h"
#include "tests/audiopage/scripted_audio.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/temp_folder.h"
#include "toolkit/ncanvas.h"
#include "toolkit/nthread.h"

#include <string>

constexpr int RowsOfOne = 23;
constexpr int RowsOfMany = 16;

// Files that the tests' decoder reads, and the rows that the page makes of them.
class PropertyRows : public PageSettings {
protected:
    // The path of a file in the test's folder; nothing is written.
    NString PathOf(const wchar_t* name) { return folder_.File(name); }

    NString Add(const wchar_t* name, ScriptedAudio& audio) {
        NString path = PathOf(name);
        audio.Write(path);
        files_.Add(path);
        return path;
    }
    // A file that is like all others, for the tests of one value.
    void AddTagged(const wchar_t* element, const wchar_t* value) {
        ScriptedAudio audio;
        if (element)
            audio.Tag(element, value);
        AddNumbered(audio);
    }
    void AddNumbered(ScriptedAudio& audio) {
        Add((std::to_wstring(files_.Count) + L".scripted").c_str(), audio);
    }
    void AddUnknown() { files_.Add(PathOf(L"of no decoder.unknown")); }

    void Build(NEvent* stop = nullptr, NKeyedList<NCanvas>* art = nullptr) {
        BuildPropRows(files_, stop, rows_, art);
    }
    // The value of the row, which there is once.
    NString Value(const wchar_t* label) {
        NString value;
        int found = 0;
        for (int index = 0; index < rows_.Count(); ++index) {
            if (rows_[index]->Label == label) {
                value = rows_[index]->Value;
                ++found;
            }
        }
        EXPECT_EQ(found, 1) << NString(label).ToNarrow();
        return value;
    }
    NString Built(const wchar_t* label) {
        Build();
        return Value(label);
    }

    TempFolder folder_;
    NStringList files_;
    NKeyedList<clPropRow> rows_;
};
