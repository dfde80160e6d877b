#include "tests/support/temp_folder.h"

#include "foundation/unique_handle.h"

#include <atomic>

namespace {
std::atomic<int> foldersMade;

NString Joined(const NString& folder, const wchar_t* name) {
    NString path(folder);
    path.Append(L"\\");
    path.Append(name);
    return path;
}

void RemoveTree(const NString& folder) {
    WIN32_FIND_DATAW entry;
    {
        UniqueFindHandle find(FindFirstFileW(Joined(folder, L"*").Text, &entry));
        for (BOOL found = static_cast<bool>(find); found;
             found = FindNextFileW(find.Get(), &entry)) {
            NString name(entry.cFileName);
            if (name == L"." || name == L"..")
                continue;
            NString path = Joined(folder, entry.cFileName);
            if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
                RemoveTree(path);
                continue;
            }
            SetFileAttributesW(path.Text, FILE_ATTRIBUTE_NORMAL);
            DeleteFileW(path.Text);
        }
    }
    RemoveDirectoryW(folder.Text);
}
} // namespace

TempFolder::TempFolder() {
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    // The prefix lets paths be longer than MAX_PATH.
    path_ = L"\\\\?\\";
    path_.Append(temp);
    path_.Append(L"tonewright-t\u00E4st-");
    path_.Append(NString::FromUInt(GetCurrentProcessId()));
    path_.Append(L"-");
    path_.Append(NString::FromInt(++foldersMade));
    RemoveTree(path_);
    CreateDirectoryW(path_.Text, nullptr);
    // Tests see the plain path.
    path_.Delete(1, 4);
}

TempFolder::~TempFolder() {
    NString longPath(L"\\\\?\\");
    longPath.Append(path_);
    RemoveTree(longPath);
}

NString TempFolder::File(const wchar_t* name) const {
    return Joined(path_, name);
}
