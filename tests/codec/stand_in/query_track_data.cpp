// Takes the place of QueryTrackData.exe beside the exchange's tests. The folder
// named by TONEWRIGHT_STAND_IN says what it does and gets what it saw:
//
//     command_line.txt   written: its whole command line, UTF-16
//     request.bin        written: the exchange file as it found it
//     reply.bin          read: if it exists, becomes the exchange file, or with
//                        TONEWRIGHT_STAND_IN_KEEP_REST its start alone
//     started_as.txt     written: how it was started (see StartedAs), UTF-16
//
// TONEWRIGHT_STAND_IN_GROW is a number of GiB that the exchange file grows by,
// behind the reply. TONEWRIGHT_STAND_IN_HANDLE is the number of an event's
// handle, which it sets. With TONEWRIGHT_STAND_IN_HOLD it keeps the exchange file
// open, without sharing for deletion, until it has been released (see below).
//
// The event named by TONEWRIGHT_STAND_IN_STARTED is set once that is done; the
// one named by TONEWRIGHT_STAND_IN_RELEASE is waited for before it sets the one
// named by TONEWRIGHT_STAND_IN_ENDING and exits, with the code 1, which the
// module must not care about.
#include "tests/support/stand_in_program.h"

#include <string>
#include <vector>

namespace {
std::wstring PathInQuotes(const std::wstring& commandLine) {
    size_t last = commandLine.rfind(L'"');
    size_t first = last == 0 || last == std::wstring::npos ? std::wstring::npos
                                                           : commandLine.rfind(L'"', last - 1);
    return first == std::wstring::npos ? std::wstring()
                                       : commandLine.substr(first + 1, last - first - 1);
}

void Grow(const std::wstring& path, long gibibytes) {
    UniqueFileHandle file = OpenShared(path, GENERIC_WRITE, OPEN_EXISTING);
    LARGE_INTEGER distance;
    distance.QuadPart = static_cast<LONGLONG>(gibibytes) << 30;
    SetFilePointerEx(file.Get(), distance, nullptr, FILE_END);
    SetEndOfFile(file.Get());
}

// "priority=<class> console=<programs on it> window=<0 or 1> alone=<0 or 1>",
// the last for whether nobody else has the exchange file open.
std::wstring StartedAs(const std::wstring& exchange) {
    DWORD programs[2];
    std::wstring text = L"priority=" + std::to_wstring(GetPriorityClass(GetCurrentProcess()));
    text += L" console=" + std::to_wstring(GetConsoleProcessList(programs, 2));
    text += L" window=" + std::to_wstring(GetConsoleWindow() != nullptr);
    text += L" alone=" + std::to_wstring(CanOpenAlone(exchange));
    return text;
}
} // namespace

int main() {
    std::wstring folder = Environment(L"TONEWRIGHT_STAND_IN") + L"\\";
    std::wstring commandLine = GetCommandLineW();
    WriteText(folder + L"command_line.txt", commandLine);

    std::wstring exchange = PathInQuotes(commandLine);
    std::vector<char> bytes;
    if (ReadWhole(exchange, bytes))
        WriteWhole(folder + L"request.bin", bytes.data(), bytes.size(), CREATE_ALWAYS);
    if (ReadWhole(folder + L"reply.bin", bytes)) {
        if (Environment(L"TONEWRIGHT_STAND_IN_KEEP_REST").empty())
            WriteWhole(exchange, bytes.data(), bytes.size(), OPEN_EXISTING);
        else
            WriteStart(exchange, bytes.data(), bytes.size(), OPEN_EXISTING);
    }
    std::wstring growth = Environment(L"TONEWRIGHT_STAND_IN_GROW");
    if (!growth.empty())
        Grow(exchange, std::stol(growth));
    SetEventOfHandle(L"TONEWRIGHT_STAND_IN_HANDLE");
    WriteText(folder + L"started_as.txt", StartedAs(exchange));

    UniqueFileHandle held;
    if (!Environment(L"TONEWRIGHT_STAND_IN_HOLD").empty())
        held = OpenShared(exchange, GENERIC_READ, OPEN_EXISTING);
    if (UniqueKernelHandle started = EventNamedBy(L"TONEWRIGHT_STAND_IN_STARTED"))
        SetEvent(started.Get());
    if (UniqueKernelHandle release = EventNamedBy(L"TONEWRIGHT_STAND_IN_RELEASE"))
        WaitForSingleObject(release.Get(), INFINITE);
    held.Reset();
    if (UniqueKernelHandle ending = EventNamedBy(L"TONEWRIGHT_STAND_IN_ENDING"))
        SetEvent(ending.Get());
    return 1;
}
