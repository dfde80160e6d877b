// A program for the tests of starting programs. What it does stands in its
// environment, all of it optional:
//
//   TONEWRIGHT_CHILD_LOG     a file that it writes its command line to
//   TONEWRIGHT_CHILD_EVENTS  the prefix of three events: it sets "<prefix>up",
//                            waits for "<prefix>go", and sets "<prefix>done"
//   TONEWRIGHT_CHILD_HANDLE  the number of an event's handle, which it sets
#include "foundation/unique_handle.h"

#include <string>

namespace {
constexpr DWORD LongestWaitMs = 60000;

std::wstring Variable(const wchar_t* name) {
    wchar_t value[1000] = {};
    GetEnvironmentVariableW(name, value, 1000);
    return value;
}

UniqueKernelHandle Event(const std::wstring& name) {
    return UniqueKernelHandle(OpenEventW(EVENT_ALL_ACCESS, FALSE, name.c_str()));
}

void WriteLog(const std::wstring& path) {
    UniqueFileHandle file(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    std::wstring text = GetCommandLineW();
    DWORD written;
    WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)), &written,
              nullptr);
}

void WaitForGo(const std::wstring& prefix) {
    SetEvent(Event(prefix + L"up").Get());
    if (WaitForSingleObject(Event(prefix + L"go").Get(), LongestWaitMs) == WAIT_OBJECT_0)
        SetEvent(Event(prefix + L"done").Get());
}
} // namespace

int main() {
    std::wstring log = Variable(L"TONEWRIGHT_CHILD_LOG");
    std::wstring events = Variable(L"TONEWRIGHT_CHILD_EVENTS");
    std::wstring handle = Variable(L"TONEWRIGHT_CHILD_HANDLE");
    if (!log.empty())
        WriteLog(log);
    if (!handle.empty())
        SetEvent(reinterpret_cast<HANDLE>(std::stoull(handle)));
    if (!events.empty())
        WaitForGo(events);
    return 0;
}
