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
#include "foundation/unique_handle.h"
#include "foundation/windows_lean.h"

#include <string>
#include <vector>

namespace {
std::wstring Environment(const wchar_t* name) {
    wchar_t value[1024];
    DWORD length = GetEnvironmentVariableW(name, value, 1024);
    return length < 1024 ? std::wstring(value, length) : std::wstring();
}

// The exchange file is open in the module, which shares reading and writing.
UniqueFileHandle Open(const std::wstring& path, DWORD access, DWORD disposition) {
    return UniqueFileHandle(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool ReadWhole(const std::wstring& path, std::vector<char>& bytes) {
    UniqueFileHandle file = Open(path, GENERIC_READ, OPEN_EXISTING);
    if (!file)
        return false;
    bytes.resize(GetFileSize(file.Get(), nullptr));
    DWORD read = 0;
    return ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) &&
           read == bytes.size();
}

UniqueFileHandle WriteStart(const std::wstring& path, const void* bytes, size_t size,
                            DWORD disposition) {
    UniqueFileHandle file = Open(path, GENERIC_WRITE, disposition);
    DWORD written = 0;
    WriteFile(file.Get(), bytes, static_cast<DWORD>(size), &written, nullptr);
    return file;
}

void WriteWhole(const std::wstring& path, const void* bytes, size_t size, DWORD disposition) {
    SetEndOfFile(WriteStart(path, bytes, size, disposition).Get());
}

std::wstring PathInQuotes(const std::wstring& commandLine) {
    size_t last = commandLine.rfind(L'"');
    size_t first = last == 0 || last == std::wstring::npos ? std::wstring::npos
                                                           : commandLine.rfind(L'"', last - 1);
    return first == std::wstring::npos ? std::wstring()
                                       : commandLine.substr(first + 1, last - first - 1);
}

void Grow(const std::wstring& path, long gibibytes) {
    UniqueFileHandle file = Open(path, GENERIC_WRITE, OPEN_EXISTING);
    LARGE_INTEGER distance;
    distance.QuadPart = static_cast<LONGLONG>(gibibytes) << 30;
    SetFilePointerEx(file.Get(), distance, nullptr, FILE_END);
    SetEndOfFile(file.Get());
}

// "priority=<class> console=<programs on it> window=<0 or 1> alone=<0 or 1>",
// the last for whether nobody else has the exchange file open.
std::wstring StartedAs(const std::wstring& exchange) {
    DWORD programs[2];
    UniqueFileHandle alone(CreateFileW(exchange.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, nullptr));
    std::wstring text = L"priority=" + std::to_wstring(GetPriorityClass(GetCurrentProcess()));
    text += L" console=" + std::to_wstring(GetConsoleProcessList(programs, 2));
    text += L" window=" + std::to_wstring(GetConsoleWindow() != nullptr);
    text += L" alone=" + std::to_wstring(static_cast<bool>(alone));
    return text;
}

UniqueKernelHandle EventNamedBy(const wchar_t* variable) {
    std::wstring name = Environment(variable);
    return UniqueKernelHandle(name.empty() ? nullptr
                                           : OpenEventW(EVENT_ALL_ACCESS, FALSE, name.c_str()));
}
} // namespace

int main() {
    std::wstring folder = Environment(L"TONEWRIGHT_STAND_IN") + L"\\";
    std::wstring commandLine = GetCommandLineW();
    WriteWhole(folder + L"command_line.txt", commandLine.data(),
               commandLine.size() * sizeof(wchar_t), CREATE_ALWAYS);

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
    std::wstring handle = Environment(L"TONEWRIGHT_STAND_IN_HANDLE");
    if (!handle.empty())
        SetEvent(reinterpret_cast<HANDLE>(std::stoull(handle)));
    std::wstring startedAs = StartedAs(exchange);
    WriteWhole(folder + L"started_as.txt", startedAs.data(), startedAs.size() * sizeof(wchar_t),
               CREATE_ALWAYS);

    UniqueFileHandle held;
    if (!Environment(L"TONEWRIGHT_STAND_IN_HOLD").empty())
        held = Open(exchange, GENERIC_READ, OPEN_EXISTING);
    if (UniqueKernelHandle started = EventNamedBy(L"TONEWRIGHT_STAND_IN_STARTED"))
        SetEvent(started.Get());
    if (UniqueKernelHandle release = EventNamedBy(L"TONEWRIGHT_STAND_IN_RELEASE"))
        WaitForSingleObject(release.Get(), INFINITE);
    held.Reset();
    if (UniqueKernelHandle ending = EventNamedBy(L"TONEWRIGHT_STAND_IN_ENDING"))
        SetEvent(ending.Get());
    return 1;
}
