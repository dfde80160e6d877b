#include "tests/shell/private_classes_root.h"

#include <atomic>
#include <stdexcept>

namespace {

using Entries = std::map<std::wstring, std::wstring>;

constexpr DWORD NameRoom = 1024; // units
constexpr DWORD DataRoom = 8192; // bytes

void Require(LSTATUS status, const char* what) {
    if (status != ERROR_SUCCESS)
        throw std::runtime_error(what);
}

void AddValues(HKEY key, const std::wstring& path, Entries& entries) {
    wchar_t name[NameRoom];
    wchar_t data[DataRoom / sizeof(wchar_t)];
    for (DWORD index = 0;; ++index) {
        DWORD nameLength = NameRoom;
        DWORD bytes = DataRoom - sizeof(wchar_t);
        DWORD type = REG_NONE;
        if (RegEnumValueW(key, index, name, &nameLength, nullptr, &type,
                          reinterpret_cast<BYTE*>(data), &bytes) != ERROR_SUCCESS)
            return;
        data[bytes / sizeof(wchar_t)] = 0;
        entries[path + L"|" + name] = type == REG_SZ ? data : L"(not a text)";
    }
}

std::vector<std::wstring> SubKeys(HKEY key) {
    std::vector<std::wstring> names;
    wchar_t name[NameRoom];
    DWORD length = NameRoom;
    while (RegEnumKeyExW(key, static_cast<DWORD>(names.size()), name, &length, nullptr, nullptr,
                         nullptr, nullptr) == ERROR_SUCCESS) {
        names.push_back(name);
        length = NameRoom;
    }
    return names;
}

// Key names are compared without regard to case: Wine writes "Typelib".
bool BelongsToLibrary(const std::wstring& key) {
    return _wcsicmp(key.c_str(), L"TypeLib") == 0 || _wcsicmp(key.c_str(), L"Interface") == 0;
}

UniqueRegKey OpenKey(HKEY parent, const std::wstring& path) {
    UniqueRegKey key;
    Require(RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, key.Put()), "RegOpenKeyEx");
    return key;
}

void AddKeys(HKEY key, const std::wstring& path, Entries& entries) {
    for (const std::wstring& name : SubKeys(key)) {
        if (path.empty() && BelongsToLibrary(name))
            continue;
        std::wstring below = path.empty() ? name : path + L"\\" + name;
        UniqueRegKey subKey = OpenKey(key, name);
        entries[below] = L"(key)";
        AddValues(subKey.Get(), below, entries);
        AddKeys(subKey.Get(), below, entries);
    }
}

} // namespace

PrivateClassesRoot::PrivateClassesRoot(Kind kind) {
    static std::atomic<int> count = 0;
    path_ = L"Software\\TonewrightTests-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
            std::to_wstring(++count);
    DWORD options = kind == Kind::Unwritable ? REG_OPTION_VOLATILE : REG_OPTION_NON_VOLATILE;
    RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
    Require(RegCreateKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, nullptr, options, KEY_ALL_ACCESS,
                            nullptr, key_.Put(), nullptr),
            "RegCreateKeyEx");
    Require(RegOverridePredefKey(HKEY_CLASSES_ROOT, key_.Get()), "RegOverridePredefKey");
}

PrivateClassesRoot::~PrivateClassesRoot() {
    RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
    key_.Reset();
    RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
}

Entries PrivateClassesRoot::Content() const {
    Entries entries;
    AddKeys(key_.Get(), L"", entries);
    return entries;
}

bool PrivateClassesRoot::HasKey(const std::wstring& path) const {
    UniqueRegKey key;
    return RegOpenKeyExW(key_.Get(), path.c_str(), 0, KEY_READ, key.Put()) == ERROR_SUCCESS;
}

std::vector<std::wstring> PrivateClassesRoot::KeysBelow(const std::wstring& path) const {
    return SubKeys(OpenKey(key_.Get(), path).Get());
}

std::wstring PrivateClassesRoot::Text(const std::wstring& path) const {
    wchar_t text[DataRoom / sizeof(wchar_t)] = {};
    DWORD bytes = DataRoom;
    LSTATUS status =
        RegGetValueW(key_.Get(), path.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &bytes);
    return status == ERROR_SUCCESS ? text : L"";
}

void PrivateClassesRoot::Write(const std::wstring& path, const wchar_t* name,
                               const std::wstring& text) const {
    DWORD bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    Require(RegSetKeyValueW(key_.Get(), path.c_str(), name, REG_SZ, text.c_str(), bytes),
            "RegSetKeyValue");
}
