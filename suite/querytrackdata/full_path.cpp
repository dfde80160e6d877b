#include "suite/querytrackdata/full_path.h"

#include "foundation/windows_lean.h"

namespace {

constexpr wchar_t LongPrefix[] = L"\\\\?\\";
constexpr wchar_t DevicePrefix[] = L"\\\\.\\";
constexpr wchar_t UncPrefix[] = L"\\\\";
constexpr int LongPrefixLength = 4;
constexpr int UncPrefixLength = 2;

bool StartsWith(const NString& text, const wchar_t* start, int length) {
    return text.Compare(start, length) == 0;
}

NString Absolute(const wchar_t* path) {
    NString result;
    DWORD units = GetFullPathNameW(path, 0, nullptr, nullptr);
    if (units == 0)
        return result;
    result.SetLength(static_cast<int>(units), L' ');
    DWORD length = GetFullPathNameW(path, units + 1, result.Text, nullptr);
    result.SetLength(length <= units ? static_cast<int>(length) : 0, L' ');
    return result;
}

} // namespace

NString FullPath(const wchar_t* path) {
    NString given(path);
    if (StartsWith(given, LongPrefix, LongPrefixLength))
        return given;
    NString absolute = Absolute(path);
    if (absolute.IsEmpty() || StartsWith(absolute, DevicePrefix, LongPrefixLength))
        return NString();
    if (StartsWith(absolute, LongPrefix, LongPrefixLength))
        return absolute;
    NString result(LongPrefix);
    if (StartsWith(absolute, UncPrefix, UncPrefixLength)) {
        result.Append(L"UNC\\");
        result.Append(absolute.From(UncPrefixLength + 1));
    } else {
        result.Append(absolute);
    }
    return result;
}

NString FolderOf(const NString& fullPath) {
    return fullPath.Left(fullPath.FindLastChar(L'\\'));
}

NString NameOf(const NString& fullPath) {
    return fullPath.From(fullPath.FindLastChar(L'\\') + 1);
}
