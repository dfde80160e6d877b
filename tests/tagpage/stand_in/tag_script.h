#pragma once

#include "codec/tag_record.h"
#include "foundation/nmutex.h"
#include "foundation/unique_handle.h"

#include <cstdint>
#include <string>
#include <vector>

// What the tests' QueryTrackData.exe and the tests that script it share: files
// in a folder that TONEWRIGHT_SCRIPTED_TAGS names.
//
//     <hash>.answer   for one audio path: a TagAnswer
//     requests.log    what was asked, in turn, and what has ended

enum class TagRequestKind : uint32_t { Read, Set, Delete, Unknown };

constexpr uint32_t TagRequestBit(TagRequestKind kind) {
    return 1u << static_cast<uint32_t>(kind);
}

// What the program does when it is asked about one audio file. Of the sets of
// requests each is a sum of TagRequestBits.
struct TagAnswer {
    enum Reply : uint32_t {
        Nothing, // the exchange file stays as it is
        Tag,     // `bytes` is a serialised record
        Verbatim // `bytes` becomes the exchange file
    };
    struct Fixed {
        uint32_t reply = Nothing;
        uint32_t remembers = 0; // whether a set and a deletion change the tag
        uint32_t held = 0;      // wait for HoldEventName
        uint32_t dying = 0;     // end in the middle of the work
        uint32_t failing = 0;   // do nothing, and end with an error
    };
    Fixed fixed;
    std::vector<char> bytes;
};

// One element of a request to set.
struct TagRequestElement {
    std::wstring name;
    std::wstring value;
    std::vector<char> data;
};

struct TagRequest {
    TagRequestKind kind = TagRequestKind::Unknown;
    std::vector<char> bytes;                 // the exchange file as it was handed in
    int64_t time = 0;                        // of its start; one clock for all programs
    std::wstring path;                       // of the audio file
    std::vector<TagRequestElement> elements; // to set
    std::vector<std::wstring> names;         // to delete
    bool deletesAll = false;

    // "read", "set title=New|rating=8", "delete title|artist", "delete all";
    // of an element with data its size stands in brackets: "set cover[1234]".
    std::wstring Text() const;
};

// A request out of a command line and its exchange file. Unknown if it is none.
TagRequestKind KindOfCommandLine(const std::wstring& commandLine);
// The path in quotes at its end, empty if there is none.
std::wstring ExchangeFileOf(const std::wstring& commandLine);
TagRequest ParseTagRequest(TagRequestKind kind, std::vector<char> bytes);

// The folder. Each of the operations may be called in several programs at a
// time.
class TagScript {
public:
    explicit TagScript(const std::wstring& folder);

    TagAnswer AnswerFor(const std::wstring& path);
    void SetAnswer(const std::wstring& path, const TagAnswer& answer);
    // Changes the answer while nobody else does.
    template <typename Change>
    void ChangeAnswer(const std::wstring& path, Change change) {
        NMutexLock turn(lock_);
        TagAnswer answer = Load(path);
        change(answer);
        Save(path, answer);
    }

    void LogRequest(const TagRequest& request);
    // For each request, when the program has done with it.
    void LogEnd();
    std::vector<TagRequest> Requests();
    int EndedCount();

    // Set by the program at each LogRequest and LogEnd.
    UniqueKernelHandle ChangeEvent() const;
    // Made by the test; a held request waits for it.
    std::wstring HoldEventName(const std::wstring& path, TagRequestKind kind) const;

private:
    template <typename Visit>
    void ReadLog(Visit visit);
    void Log(uint32_t kind, const std::vector<char>& bytes);
    TagAnswer Load(const std::wstring& path) const;
    void Save(const std::wstring& path, const TagAnswer& answer) const;
    std::wstring AnswerFile(const std::wstring& path) const;
    std::wstring LogFile() const { return folder_ + L"\\requests.log"; }

    std::wstring folder_;
    std::wstring name_; // of the folder, for what has a name in the whole system
    NMutex lock_;
};

// Does what the program is started for; its exit code.
constexpr unsigned TagScriptDied = 0xDEAD;
unsigned AnswerTagRequest(const std::wstring& folder, const std::wstring& commandLine);
