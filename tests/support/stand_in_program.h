#pragma once

#include "foundation/unique_handle.h"
#include "foundation/windows_lean.h"

#include <string>
#include <vector>

// What the programs that tests put in the place of a sibling have in common.

// A variable's value, empty if there is none.
inline std::wstring Environment(const wchar_t* name) {
    wchar_t value[1024];
    DWORD length = GetEnvironmentVariableW(name, value, 1024);
    return length < 1024 ? std::wstring(value, length) : std::wstring();
}

// The file may be open in the module, which shares reading and writing.
inline UniqueFileHandle OpenShared(const std::wstring& path, DWORD access, DWORD disposition) {
    return UniqueFileHandle(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// True if nobody else has the file open.
inline bool CanOpenAlone(const std::wstring& path) {
    return bool(UniqueFileHandle(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                             FILE_ATTRIBUTE_NORMAL, nullptr)));
}

inline bool ReadWhole(const std::wstring& path, std::vector<char>& bytes) {
    UniqueFileHandle file = OpenShared(path, GENERIC_READ, OPEN_EXISTING);
    if (!file)
        return false;
    bytes.resize(GetFileSize(file.Get(), nullptr));
    DWORD read = 0;
    return ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) &&
           read == bytes.size();
}

// Writes the file's start; what stands behind it stays.
inline UniqueFileHandle WriteStart(const std::wstring& path, const void* bytes, size_t size,
                                   DWORD disposition) {
    UniqueFileHandle file = OpenShared(path, GENERIC_WRITE, disposition);
    DWORD written = 0;
    WriteFile(file.Get(), bytes, static_cast<DWORD>(size), &written, nullptr);
    return file;
}

inline void WriteWhole(const std::wstring& path, const void* bytes, size_t size,
                       DWORD disposition) {
    SetEndOfFile(WriteStart(path, bytes, size, disposition).Get());
}

// A new file of UTF-16 units.
inline void WriteText(const std::wstring& path, const std::wstring& text) {
    WriteWhole(path, text.data(), text.size() * sizeof(wchar_t), CREATE_ALWAYS);
}

// The test's SharedEvent of this variable; null if it has none.
inline UniqueKernelHandle EventNamedBy(const wchar_t* variable) {
    std::wstring name = Environment(variable);
    return UniqueKernelHandle(name.empty() ? nullptr
                                           : OpenEventW(EVENT_ALL_ACCESS, FALSE, name.c_str()));
}

// Sets the event whose handle's number stands in the variable: it is the
// test's own unless handles were inherited, and then nothing is set there.
inline void SetEventOfHandle(const wchar_t* variable) {
    std::wstring handle = Environment(variable);
    if (!handle.empty())
        SetEvent(reinterpret_cast<HANDLE>(std::stoull(handle)));
}
