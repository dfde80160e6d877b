#pragma once

#include "foundation/nstring.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temp_folder.h"
#include "tests/tagpage/stand_in/tag_script.h"

#include <atomic>
#include <initializer_list>
#include <map>
#include <mutex>
#include <string>
#include <vector>

// The tests' own QueryTrackData.exe, which lies in the folder of this program:
// what it answers, and what it was asked. Audio files are paths alone, none need
// exist. One at a time in a process; a program that uses it is linked with
// --wrap=__imp_CreateProcessW.
//
// About a path that no test has told it of the program replies nothing.
//
//     ScriptedTags tags;
//     tags.SetTag(L"C:\\a.mp3", {{L"title", L"One"}});
//     ... the page reads, edits and commits ...
//     EXPECT_EQ(tags.Asked(L"C:\\a.mp3"), (Texts{L"read", L"read", L"set title=Two"}));
class ScriptedTags {
public:
    using Texts = std::vector<std::wstring>;
    using Bytes = std::vector<char>;
    struct TextElement {
        const wchar_t* name;
        const wchar_t* value;
    };
    // Whether later reads see what was set and deleted.
    enum class Changes { Remembered, Forgotten };

    ScriptedTags();
    // Lets go what is held, and waits for all programs to end.
    ~ScriptedTags();
    ScriptedTags(const ScriptedTags&) = delete;
    ScriptedTags& operator=(const ScriptedTags&) = delete;

    // The answers to a read. Each replaces the one before it.
    void SetTag(const NString& path, clTagRecord& tag, Changes changes = Changes::Remembered);
    void SetTag(const NString& path, std::initializer_list<TextElement> elements,
                Changes changes = Changes::Remembered);
    void SetReply(const NString& path, const Bytes& exchangeFile);
    void SetNoReply(const NString& path);
    // Exchange files for SetReply.
    static Bytes WholeReply(clTagRecord& tag);
    static Bytes ReplyOfWrongMagic(clTagRecord& tag);
    // Tells the whole length, but holds `size` bytes of the record only.
    static Bytes TruncatedReply(clTagRecord& tag, size_t size);

    // What goes wrong with requests of that kind about that path, from now on.
    // The program isn't there: the system can't start it.
    void RefuseToStart(TagRequestKind kind, const NString& path);
    // It dies half way: a half reply, or nothing set or deleted.
    void Die(TagRequestKind kind, const NString& path);
    // It does nothing, and ends with an exit code.
    void Fail(TagRequestKind kind, const NString& path);
    // It waits, before it replies or changes anything, until Release.
    void Hold(TagRequestKind kind, const NString& path);
    void Release(TagRequestKind kind, const NString& path);

    // Requests that nothing holds and that don't die are carried out in this
    // process from now on, by the same code, which takes a tenth of the time.
    void RunInProcess() { runsInProcess_ = true; }

    // What was asked so far, in turn.
    std::vector<TagRequest> Requests();
    // The texts of the requests about that path.
    Texts Asked(const NString& path);
    int Count(TagRequestKind kind);
    int Count(TagRequestKind kind, const NString& path);
    // Programs that couldn't be started, which are in none of the above.
    int CountRefused() const { return timesRefused_; }
    void ForgetRequests();
    // Waits until there are that many requests; false if it takes a minute.
    bool WaitForRequests(int count);
    // The same for requests that are done with.
    bool WaitForEnds(int count);

    // What the audio file holds by now.
    void GetTag(const NString& path, clTagRecord& tag);
    // The value of its first element of that name; L"(none)" if there is none.
    std::wstring ValueOf(const NString& path, const wchar_t* name);

    // What the start of the program with that command line comes to; for the
    // hook on CreateProcessW alone. On any thread.
    enum class Start { Refused, AnsweredHere, OfTheProgram };
    Start OnStart(const std::wstring& commandLine);

private:
    template <typename Done>
    bool WaitUntil(Done done);
    void AddBit(uint32_t TagAnswer::Fixed::*bits, TagRequestKind kind, const NString& path);
    bool IsRefused(const TagRequest& request);

    TempFolder folder_;
    ScopedEnvironment variable_;
    TagScript script_;
    UniqueKernelHandle change_;
    std::map<std::wstring, UniqueKernelHandle> holds_; // by the event's name
    std::atomic<bool> runsInProcess_ = false;
    std::mutex refusalsLock_;
    std::map<std::wstring, uint32_t> refused_; // sums of TagRequestBits
    std::atomic<int> timesRefused_ = 0;
    int forgottenRequests_ = 0;
    int forgottenEnds_ = 0;
};
