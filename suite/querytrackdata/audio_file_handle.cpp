#include "suite/querytrackdata/audio_file_handle.h"

#include "suite/querytrackdata/full_path.h"

namespace {

bool IsFile(HANDLE file) {
    BY_HANDLE_FILE_INFORMATION information;
    return GetFileType(file) == FILE_TYPE_DISK && GetFileInformationByHandle(file, &information) &&
           (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// A volume without a letter has a path by its GUID alone; a network drive
// whose server can't tell has none, and is used as it was given.
NString RealPathOf(HANDLE file, const NString& fullPath) {
    for (DWORD form : {VOLUME_NAME_DOS, VOLUME_NAME_GUID}) {
        DWORD units = GetFinalPathNameByHandleW(file, nullptr, 0, form);
        if (units == 0)
            continue;
        NString result;
        result.SetLength(static_cast<int>(units), L' ');
        DWORD length = GetFinalPathNameByHandleW(file, result.Text, units + 1, form);
        result.SetLength(length <= units ? static_cast<int>(length) : 0, L' ');
        if (!result.IsEmpty())
            return result;
    }
    return fullPath;
}

} // namespace

UniqueFileHandle OpenAudioFile(const wchar_t* path, DWORD access, DWORD sharing, NString& realPath,
                               ErrorLine& error) {
    constexpr wchar_t what[] = L"cannot open the audio file";
    NString full = FullPath(path);
    if (full.IsEmpty()) {
        error.Fail(what, path);
        return UniqueFileHandle();
    }
    UniqueFileHandle file = OpenRealFile(full, access, sharing);
    if (!file) {
        error.Fail(what, path, GetLastError());
        return UniqueFileHandle();
    }
    if (!IsFile(file.Get())) {
        error.Fail(L"not a file", path);
        return UniqueFileHandle();
    }
    realPath = RealPathOf(file.Get(), full);
    return file;
}

UniqueFileHandle OpenRealFile(const NString& realPath, DWORD access, DWORD sharing) {
    return UniqueFileHandle(CreateFileW(realPath.c_str(), access, sharing, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
}
