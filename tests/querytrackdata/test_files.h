#pragma once

#include "foundation/unique_handle.h"

#include <cstdint>
#include <string>
#include <vector>

using Bytes = std::vector<uint8_t>;

// A folder of its own below the temporary one, removed with all in it.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    // Without a backslash at its end.
    const std::wstring& Path() const { return path_; }
    std::wstring File(const std::wstring& name) const { return path_ + L"\\" + name; }
    // Makes the file, and returns its path.
    std::wstring Write(const std::wstring& name, const Bytes& content) const;
    // Names of all that is in it, sorted.
    std::vector<std::wstring> Names() const;

private:
    std::wstring path_;
};

// A folder that is reached by the path of a share on a server.
class TestShare {
public:
    TestShare();
    ~TestShare();
    TestShare(const TestShare&) = delete;
    TestShare& operator=(const TestShare&) = delete;

    // "\\\\server\\share", without a backslash at its end.
    const std::wstring& Path() const { return path_; }

private:
    std::wstring folder_; // what is to be removed
    std::wstring path_;
};

// All take paths beyond 260 characters too, and fail the test on an error.
void WriteWhole(const std::wstring& path, const Bytes& content);
Bytes ReadWhole(const std::wstring& path);
void MakeFolder(const std::wstring& path);
std::vector<std::wstring> NamesIn(const std::wstring& folder);
// The target is relative to the link's folder.
void MakeSymbolicLink(const std::wstring& target, const std::wstring& link);
void RemoveTree(const std::wstring& folder);

Bytes BytesOf(const std::string& text);
Bytes BytesOf(const std::wstring& text);
Bytes operator+(Bytes first, const Bytes& second);
Bytes LittleEndian32(uint32_t number);

// The path of a file of the source tree or of the build, as Windows sees it.
std::wstring HostPath(const char* unixPath);
