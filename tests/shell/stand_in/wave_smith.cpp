// Takes the place of WaveSmith.exe beside the module. The folder named by
// TONEWRIGHT_STAND_IN gets what it saw:
//
//     command_line.txt   its whole command line, UTF-16
//     list.bin           the list file, opened and read at once; missing if
//                        that failed
//     started_as.txt     "priority=<class> alone=<0 or 1>", UTF-16; the latter
//                        for whether nobody else has the list file open
//     ended_as.txt       "deleted=<0 or 1>", UTF-16: whether the list file was
//                        the program's to delete
//
// TONEWRIGHT_STAND_IN_HANDLE is the number of an event's handle, which it sets.
// The event named by TONEWRIGHT_STAND_IN_STARTED is set once it has seen all
// that; the one named by TONEWRIGHT_STAND_IN_RELEASE is waited for before it
// deletes the list file. The one named by TONEWRIGHT_STAND_IN_ENDING is set last.
#include "tests/support/stand_in_program.h"

#include <shellapi.h>

#include <string>
#include <vector>

namespace {
constexpr std::wstring_view ListOption = L"-list_to_conv=";

// Out of the arguments, as any program takes its own.
std::wstring ListPath() {
    int count = 0;
    UniqueHandle<LocalMemoryTraits> block(CommandLineToArgvW(GetCommandLineW(), &count));
    auto arguments = static_cast<wchar_t**>(block.Get());
    std::wstring option = count == 2 ? arguments[1] : L"";
    return option.starts_with(ListOption) ? option.substr(ListOption.size()) : L"";
}

std::wstring StartedAs(const std::wstring& list) {
    return L"priority=" + std::to_wstring(GetPriorityClass(GetCurrentProcess())) + L" alone=" +
           std::to_wstring(CanOpenAlone(list));
}
} // namespace

int main() {
    std::wstring folder = Environment(L"TONEWRIGHT_STAND_IN") + L"\\";
    WriteText(folder + L"command_line.txt", GetCommandLineW());
    std::wstring list = ListPath();
    std::vector<char> bytes;
    if (ReadWhole(list, bytes))
        WriteWhole(folder + L"list.bin", bytes.data(), bytes.size(), CREATE_ALWAYS);
    WriteText(folder + L"started_as.txt", StartedAs(list));
    SetEventOfHandle(L"TONEWRIGHT_STAND_IN_HANDLE");

    if (UniqueKernelHandle started = EventNamedBy(L"TONEWRIGHT_STAND_IN_STARTED"))
        SetEvent(started.Get());
    if (UniqueKernelHandle release = EventNamedBy(L"TONEWRIGHT_STAND_IN_RELEASE"))
        WaitForSingleObject(release.Get(), INFINITE);
    bool deleted = DeleteFileW(list.c_str());
    WriteText(folder + L"ended_as.txt", L"deleted=" + std::to_wstring(deleted));
    if (UniqueKernelHandle ending = EventNamedBy(L"TONEWRIGHT_STAND_IN_ENDING"))
        SetEvent(ending.Get());
    return 0;
}
