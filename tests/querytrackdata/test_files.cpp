#include "tests/querytrackdata/test_files.h"

#include "suite/querytrackdata/full_path.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::wstring Full(const std::wstring& path) {
    return FullPath(path.c_str()).c_str();
}

std::wstring UniqueName() {
    static int count = 0;
    return L"tnw-test-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
           std::to_wstring(GetTickCount64()) + L"-" + std::to_wstring(++count);
}

std::wstring UniqueFolder() {
    wchar_t temp[MAX_PATH + 1];
    GetTempPathW(MAX_PATH + 1, temp);
    return temp + UniqueName();
}

// Where Wine looks for servers: a folder of its prefix. Empty on Windows.
std::wstring WineServersFolder() {
    wchar_t prefix[MAX_PATH] = L"";
    GetEnvironmentVariableW(L"WINECONFIGDIR", prefix, MAX_PATH);
    std::wstring folder = prefix;
    if (folder.rfind(L"\\??\\", 0) == 0)
        folder.replace(0, 4, L"\\\\?\\");
    return folder.empty() ? folder : folder + L"\\dosdevices\\unc";
}

} // namespace

TestFolder::TestFolder() : path_(UniqueFolder()) {
    MakeFolder(path_);
}

TestFolder::~TestFolder() {
    RemoveTree(path_);
}

std::wstring TestFolder::Write(const std::wstring& name, const Bytes& content) const {
    WriteWhole(File(name), content);
    return File(name);
}

std::vector<std::wstring> TestFolder::Names() const {
    return NamesIn(path_);
}

TestShare::TestShare() {
    std::wstring servers = WineServersFolder();
    std::wstring name = UniqueName();
    if (servers.empty()) {
        wchar_t temp[MAX_PATH + 1];
        GetTempPathW(MAX_PATH + 1, temp);
        std::wstring rest = temp;
        folder_ = L"\\\\localhost\\" + rest.substr(0, 1) + L"$" + rest.substr(2) + name;
        path_ = folder_;
        MakeFolder(folder_);
        return;
    }
    CreateDirectoryW(servers.c_str(), nullptr);
    folder_ = servers + L"\\" + name;
    path_ = L"\\\\" + name + L"\\share";
    MakeFolder(folder_);
    MakeFolder(folder_ + L"\\share");
}

TestShare::~TestShare() {
    RemoveTree(folder_);
}

void WriteWhole(const std::wstring& path, const Bytes& content) {
    UniqueFileHandle file(CreateFileW(Full(path).c_str(), GENERIC_WRITE, ShareAll, nullptr,
                                      CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(file) << "error " << GetLastError();
    DWORD written = 0;
    if (!content.empty())
        WriteFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &written,
                  nullptr);
    ASSERT_EQ(written, content.size());
}

Bytes ReadWhole(const std::wstring& path) {
    UniqueFileHandle file(CreateFileW(Full(path).c_str(), GENERIC_READ, ShareAll, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    EXPECT_TRUE(file) << "error " << GetLastError();
    LARGE_INTEGER size{};
    GetFileSizeEx(file.Get(), &size);
    Bytes content(static_cast<size_t>(size.QuadPart));
    DWORD read = 0;
    if (!content.empty())
        ReadFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &read, nullptr);
    EXPECT_EQ(read, content.size());
    return content;
}

void MakeFolder(const std::wstring& path) {
    ASSERT_TRUE(CreateDirectoryW(Full(path).c_str(), nullptr)) << "error " << GetLastError();
}

void MakeSymbolicLink(const std::wstring& target, const std::wstring& link) {
    CreateSymbolicLinkW(link.c_str(), target.c_str(), 0);
    if (GetFileAttributesW(link.c_str()) != INVALID_FILE_ATTRIBUTES)
        return;
    // Wine makes none that programs of the host's know; the host does.
    wchar_t program[] = L"Z:\\bin\\ln";
    std::wstring folder = link.substr(0, link.rfind(L'\\'));
    std::wstring name = link.substr(folder.size() + 1);
    std::wstring line = L"ln -s " + target + L" " + name;
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started{};
    ASSERT_TRUE(CreateProcessW(program, line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                               folder.c_str(), &startup, &started));
    UniqueKernelHandle process(started.hProcess), thread(started.hThread);
    // The handle of a host's program tells nothing of its end.
    for (int tries = 0; tries < 5000; ++tries) {
        if (GetFileAttributesW(link.c_str()) != INVALID_FILE_ATTRIBUTES)
            return;
        Sleep(1);
    }
    FAIL() << "no symbolic link was made";
}

std::vector<std::wstring> NamesIn(const std::wstring& folder) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found;
    UniqueFindHandle scan(FindFirstFileW((Full(folder) + L"\\*").c_str(), &found));
    for (bool more = static_cast<bool>(scan); more; more = FindNextFileW(scan.Get(), &found)) {
        std::wstring name = found.cFileName;
        if (name != L"." && name != L"..")
            names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

void RemoveTree(const std::wstring& folder) {
    for (const std::wstring& name : NamesIn(folder)) {
        std::wstring path = Full(folder + L"\\" + name);
        DWORD attributes = GetFileAttributesW(path.c_str());
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        bool isLink = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
        bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (isFolder && !isLink)
            RemoveTree(folder + L"\\" + name);
        else if (isFolder)
            RemoveDirectoryW(path.c_str());
        else
            DeleteFileW(path.c_str());
    }
    RemoveDirectoryW(Full(folder).c_str());
}

Bytes BytesOf(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

Bytes BytesOf(const std::wstring& text) {
    Bytes bytes;
    for (wchar_t unit : text) {
        bytes.push_back(static_cast<uint8_t>(unit & 0xff));
        bytes.push_back(static_cast<uint8_t>(unit >> 8));
    }
    return bytes;
}

Bytes operator+(Bytes first, const Bytes& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Bytes LittleEndian32(uint32_t number) {
    Bytes bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<uint8_t>(number >> shift));
    return bytes;
}

std::wstring HostPath(const char* unixPath) {
    std::wstring path = L"Z:";
    for (const char* c = unixPath; *c; ++c)
        path += *c == '/' ? L'\\' : static_cast<wchar_t>(*c);
    return path;
}
