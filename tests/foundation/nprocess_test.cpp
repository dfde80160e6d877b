#include "foundation/nfile.h"
#include "foundation/npath.h"
#include "foundation/nprocess.h"
#include "foundation/unique_handle.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <tlhelp32.h>

#include <chrono>
#include <string>
#include <thread>

// The program that is started is stand_in/child.cpp.
namespace {
constexpr DWORD LongestWaitMs = 60000;
constexpr DWORD Flags = CREATE_NO_WINDOW;

NString ChildProgram() {
    return NGetModuleFolder(GetModuleHandleW(nullptr)).Concat(L"stand_in_child.exe");
}

// Keeps the child waiting until it's told to go on.
class HeldChild {
public:
    HeldChild() : environment_(L"TONEWRIGHT_CHILD_EVENTS", Prefix().c_str()) {}
    ~HeldChild() { LetGo(); }

    void LetGo() { SetEvent(go_.Get()); }
    bool IsUp(DWORD waitMs) { return IsSet(up_, waitMs); }
    bool IsDone(DWORD waitMs) { return IsSet(done_, waitMs); }

private:
    static std::wstring Prefix() {
        return L"tonewright-child-" + std::to_wstring(GetCurrentProcessId()) + L"-";
    }
    static HANDLE Event(const wchar_t* name) {
        return CreateEventW(nullptr, TRUE, FALSE, (Prefix() + name).c_str());
    }
    static bool IsSet(const UniqueKernelHandle& event, DWORD waitMs) {
        return WaitForSingleObject(event.Get(), waitMs) == WAIT_OBJECT_0;
    }

    UniqueKernelHandle up_{Event(L"up")};
    UniqueKernelHandle go_{Event(L"go")};
    UniqueKernelHandle done_{Event(L"done")};
    ScopedEnvironment environment_;
};

int EndChildrenOfThisProcess() {
    UniqueFileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof(entry);
    int count = 0;
    for (BOOL found = Process32FirstW(snapshot.Get(), &entry); found;
         found = Process32NextW(snapshot.Get(), &entry)) {
        if (entry.th32ParentProcessID != GetCurrentProcessId() ||
            NString(entry.szExeFile).Compare(L"stand_in_child.exe", 0, true) != 0)
            continue;
        UniqueKernelHandle process(OpenProcess(PROCESS_TERMINATE, FALSE, entry.th32ProcessID));
        count += TerminateProcess(process.Get(), 0);
    }
    return count;
}

class Processes : public testing::Test {
protected:
    NString LoggedLine() {
        wchar_t text[1000] = {};
        bool failed = false;
        NReadFile(logPath_, text, sizeof(text) - sizeof(wchar_t), 0, NFile::NoSeek, failed);
        return NString(text);
    }

    TempFolder folder_;
    NString logPath_ = folder_.File(L"log");
    ScopedEnvironment log_{L"TONEWRIGHT_CHILD_LOG", logPath_.Text};
};
} // namespace

TEST_F(Processes, ACommandLineReachesTheProgramAsItIs) {
    NString line = NQuote(ChildProgram()).Concat(L"  a \"b c\" \u4E2D");
    EXPECT_TRUE(NRunProcess(line, true, 0, false, Flags));
    EXPECT_EQ(LoggedLine(), line);
}

TEST_F(Processes, AProgramIsQuotedAndABlankStandsBeforeItsParameters) {
    EXPECT_TRUE(NRunProgram(ChildProgram(), L"-x", true, 0, false, Flags));
    EXPECT_EQ(LoggedLine(), NQuote(ChildProgram()).Concat(L" -x"));
}

TEST_F(Processes, ParametersThatBeginWithABlankGiveTwoBlanksInARow) {
    EXPECT_TRUE(NRunProgram(ChildProgram(), L" -x", true, 0, false, Flags));
    EXPECT_EQ(LoggedLine(), NQuote(ChildProgram()).Concat(L"  -x"));
}

TEST_F(Processes, WithoutParametersTheBlankBehindTheProgramStays) {
    EXPECT_TRUE(NRunProgram(ChildProgram(), L"", true, 0, false, Flags));
    EXPECT_EQ(LoggedLine(), NQuote(ChildProgram()).Concat(L" "));
}

TEST_F(Processes, AProgramThatIsntThereGivesFalse) {
    EXPECT_FALSE(NRunProgram(folder_.File(L"missing.exe"), L"", true, 0, false, Flags));
    EXPECT_FALSE(NRunProcess(L"", false, 0, false, Flags));
}

TEST_F(Processes, WithoutWaitingTheProgramRunsOn) {
    HeldChild child;
    EXPECT_TRUE(NRunProgram(ChildProgram(), L"", false, 0, false, Flags));
    EXPECT_FALSE(child.IsDone(0));
    child.LetGo();
    EXPECT_TRUE(child.IsDone(LongestWaitMs));
}

TEST_F(Processes, WithoutATimeOutTheEndIsWaitedFor) {
    HeldChild child;
    std::thread other([&] {
        child.IsUp(LongestWaitMs);
        child.LetGo();
    });
    EXPECT_TRUE(NRunProgram(ChildProgram(), L"", true, 0, false, Flags));
    EXPECT_TRUE(child.IsDone(0));
    other.join();
}

TEST_F(Processes, AProgramThatEndsInTimeGivesTrue) {
    HeldChild child;
    std::thread other([&] {
        child.IsUp(LongestWaitMs);
        child.LetGo();
    });
    EXPECT_TRUE(NRunProgram(ChildProgram(), L"", true, LongestWaitMs, false, Flags));
    EXPECT_TRUE(child.IsDone(0));
    other.join();
}

TEST_F(Processes, AProgramThatRunsPastItsTimeGivesFalseAndIsNotKilled) {
    HeldChild child;
    auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(NRunProgram(ChildProgram(), L"", true, 1, false, Flags));
    auto elapsed = std::chrono::steady_clock::now() - start;
    // The first wait is of 250 ms; a clock tick may be missing of it.
    EXPECT_GE(elapsed, std::chrono::milliseconds(234));
    child.LetGo();
    EXPECT_TRUE(child.IsDone(LongestWaitMs));
}

TEST_F(Processes, ALongerTimeOutIsWaitedOutInSteps) {
    HeldChild child;
    auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(NRunProgram(ChildProgram(), L"", true, 600, false, Flags));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(584));
}

TEST_F(Processes, HandlesAreInheritedOnlyIfAsked) {
    SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), nullptr, TRUE};
    UniqueKernelHandle event(CreateEventW(&inheritable, TRUE, FALSE, nullptr));
    std::wstring number = std::to_wstring(reinterpret_cast<uintptr_t>(event.Get()));
    ScopedEnvironment handle(L"TONEWRIGHT_CHILD_HANDLE", number.c_str());
    EXPECT_TRUE(NRunProgram(ChildProgram(), L"", true, 0, false, Flags));
    EXPECT_EQ(WaitForSingleObject(event.Get(), 0), DWORD{WAIT_TIMEOUT});
    EXPECT_TRUE(NRunProgram(ChildProgram(), L"", true, 0, true, Flags));
    EXPECT_EQ(WaitForSingleObject(event.Get(), 0), DWORD{WAIT_OBJECT_0});
}

TEST_F(Processes, CreationFlagsReachThePlatform) {
    // A program that never starts to run doesn't end either.
    EXPECT_FALSE(NRunProgram(ChildProgram(), L"", true, 1, false, Flags | CREATE_SUSPENDED));
    EXPECT_EQ(LoggedLine(), L"");
    EXPECT_EQ(EndChildrenOfThisProcess(), 1);
}
