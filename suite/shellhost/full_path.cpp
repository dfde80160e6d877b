#include "suite/shellhost/full_path.h"

#include "foundation/windows_lean.h"

#include <string>

NString FullPath(const wchar_t* path) {
    DWORD size = GetFullPathNameW(path, 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    if (size == 0 || GetFullPathNameW(path, size, full.data(), nullptr) >= size)
        return path;
    return full.c_str();
}
