#pragma once

#include "foundation/nstring.h"
#include "foundation/unique_handle.h"
#include "foundation/windows_lean.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/shared_event.h"
#include "tests/support/stand_in_program.h"
#include "tests/support/temp_folder.h"

#include <string>
#include <vector>

// A converter that records what it is started with (shell/stand_in/
// wave_smith.cpp), and a temporary folder of the test's own, where the list
// files are made. It is let go, and waited for, at the end of the scope if it
// was started.
class ConverterStandIn {
public:
    ~ConverterStandIn() {
        if (WasRun())
            LetEnd();
    }

    // The program itself, to be copied beside a module.
    static std::wstring ProgramPath() {
        NString path(TONEWRIGHT_BUILD_DIR "/tests/shell/WaveSmith.exe", true);
        path.Replace(L"/", L"\\");
        return path.At(1) == L'\\' ? L"Z:" + std::wstring(path.c_str()) : path.c_str();
    }

    // False if it hasn't started within a minute.
    bool HasStarted() { return started_.WaitFor(LongestMs); }
    bool HasEnded() { return ending_.WaitFor(0); }
    // Lets it delete its list file and end. False if that takes a minute.
    bool LetEnd() {
        release_.Set();
        return ending_.WaitFor(LongestMs);
    }
    // What it recorded is forgotten; it may be started again.
    void StartAnew() {
        for (const wchar_t* name :
             {L"command_line.txt", L"list.bin", L"started_as.txt", L"ended_as.txt"})
            DeleteFileW(folder_.File(name).Text);
        started_.Reset();
        release_.Reset();
        ending_.Reset();
    }

    bool WasRun() const {
        return GetFileAttributesW(folder_.File(L"command_line.txt").Text) !=
               INVALID_FILE_ATTRIBUTES;
    }
    std::wstring CommandLine() const { return Text(L"command_line.txt"); }
    std::vector<char> List() const { return Bytes(L"list.bin"); }
    std::wstring StartedAs() const { return Text(L"started_as.txt"); }
    std::wstring EndedAs() const { return Text(L"ended_as.txt"); }

    const NString& Temp() const { return temp_.Path(); }
    // The paths of all files and folders in the temporary folder.
    std::vector<std::wstring> TemporaryFiles() const {
        std::vector<std::wstring> paths;
        WIN32_FIND_DATAW entry;
        UniqueFindHandle find(FindFirstFileW(temp_.File(L"*").Text, &entry));
        for (BOOL found = bool(find); found; found = FindNextFileW(find.Get(), &entry)) {
            if (entry.cFileName[0] != L'.')
                paths.push_back(temp_.File(entry.cFileName).c_str());
        }
        return paths;
    }

private:
    static constexpr DWORD LongestMs = 60000;

    std::vector<char> Bytes(const wchar_t* name) const {
        std::vector<char> bytes;
        ReadWhole(folder_.File(name).c_str(), bytes);
        return bytes;
    }
    std::wstring Text(const wchar_t* name) const {
        std::vector<char> bytes = Bytes(name);
        return std::wstring(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / 2);
    }

    TempFolder folder_;
    TempFolder temp_;
    ScopedEnvironment standIn_{L"TONEWRIGHT_STAND_IN", folder_.Path().Text};
    ScopedEnvironment tmp_{L"TMP", temp_.Path().Text};
    SharedEvent started_{L"TONEWRIGHT_STAND_IN_STARTED"};
    SharedEvent release_{L"TONEWRIGHT_STAND_IN_RELEASE"};
    SharedEvent ending_{L"TONEWRIGHT_STAND_IN_ENDING"};
};

// The bytes of a list file of these paths.
inline std::vector<char> ListFileOf(const std::vector<std::wstring>& paths) {
    std::vector<char> bytes;
    for (const std::wstring& path : paths) {
        for (wchar_t unit : path + L"\r\n") {
            bytes.push_back(static_cast<char>(unit & 0xFF));
            bytes.push_back(static_cast<char>(unit >> 8));
        }
    }
    return bytes;
}
