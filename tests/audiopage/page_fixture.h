#pragma once

#include "foundation/unique_handle.h"
#include "tests/audiopage/page_settings.h"
#include "tests/audiopage/page_window.h"
#include "tests/audiopage/scripted_audio.h"
#include "tests/audiopage/test_pictures.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/temp_folder.h"
#include "tests/support/test_cursor.h"

#include <cwchar>
#include <string>

// An event that the tests' decoder opens by its name.
class DecoderEvent {
public:
    explicit DecoderEvent(const wchar_t* name)
        : name_(name + std::to_wstring(GetCurrentProcessId())),
          handle_(CreateEventW(nullptr, TRUE, FALSE, name_.c_str())) {}

    void PutInto(wchar_t (&place)[64]) const { wcscpy(place, name_.c_str()); }
    void Set() { SetEvent(handle_.Get()); }
    bool IsSet() const { return WaitFor(0); }
    bool WaitFor(DWORD milliseconds) const {
        return WaitForSingleObject(handle_.Get(), milliseconds) == WAIT_OBJECT_0;
    }

private:
    std::wstring name_;
    UniqueKernelHandle handle_;
};

// The page with files that the tests' decoder reads. The cursor is far from
// everything until a test moves it.
class PageTest : public PageSettings {
protected:
    PageTest() { TestCursor::MoveTo(FarAway, FarAway); }

    clAudioPropPage& Page() { return window_.Page(); }
    // A file with that title; the page steps through them in this order.
    void AddFile(const wchar_t* title) {
        ScriptedAudio audio;
        audio.Tag(L"title", title);
        AddScripted(audio);
    }
    void AddFiles(int count) {
        for (int number = 1; number <= count; ++number)
            AddFile((L"Title " + std::to_wstring(number)).c_str());
    }
    void AddFileWithCovers(int count, const wchar_t* title = L"With covers") {
        ScriptedAudio audio;
        audio.Tag(L"title", title);
        constexpr uint32_t colours[] = {0xC83232, 0x32A050, 0x3250C8};
        for (int number = 1; number <= count; ++number) {
            const NBuffer cover = PlainBitmapFile(88, 88, colours[number - 1]);
            audio.tags.AddData((L"_albumart_" + std::to_wstring(number)).c_str(), cover.Data,
                               static_cast<int>(cover.Size));
        }
        AddScripted(audio);
    }
    void AddScripted(ScriptedAudio& audio) {
        const NString path = folder_.File((std::to_wstring(Page().Count) + L".scripted").c_str());
        audio.Write(path);
        Page().Add(path);
    }

    static NString ValueOf(NKeyedList<clPropRow>& rows, const wchar_t* label) {
        for (int index = 0; index < rows.Count(); ++index) {
            if (rows[index]->Label == label)
                return rows[index]->Value;
        }
        ADD_FAILURE() << "no row " << NString(label).ToNarrow();
        return NString();
    }
    NString TitleOfOne() { return ValueOf(Page().PageRowsOne, L"Title"); }

    static constexpr int FarAway = 30000;

    TempFolder folder_;
    TestCursor cursor_;
    PageWindow window_;
};
