#include "foundation/ndisk.h"

#include "foundation/nfilefind.h"
#include "foundation/nlists.h"
#include "foundation/npath.h"

int64_t NGetFileSize(const NString& path, bool& failed) {
    NFileFind find(path);
    failed = !find.Next();
    if (failed)
        return 0;
    uint64_t high = find.FindData.nFileSizeHigh;
    return static_cast<int64_t>(high << 32 | find.FindData.nFileSizeLow);
}

uint32_t NGetFileAttributes(const NString& path, bool& failed) {
    NFileFind find(path);
    failed = !find.Next();
    return failed ? 0 : find.FindData.dwFileAttributes;
}

bool NSetFileAttributes(const NString& path, uint32_t set, uint32_t clear) {
    bool failed = false;
    uint32_t attributes = NGetFileAttributes(path, failed);
    return !failed && SetFileAttributesW(NPathForApi(path, NFolderPathLimit).Text,
                                         (attributes | set) & ~clear);
}

bool NPathExists(const NString& path, bool& isFolder) {
    isFolder = false;
    // 1.
    if (path.IsEmpty())
        return false;
    // 2.
    NFileFind find(path);
    if (find.Next()) {
        isFolder = find.IsFolder();
        return true;
    }
    // 3. A scan doesn't find the root of a drive.
    NString root = NPathForApi(NAppendBackslash(path), NFolderPathLimit);
    isFolder = !root.IsEmpty() && GetDriveTypeW(root.Text) != DRIVE_NO_ROOT_DIR;
    // 4.
    return isFolder;
}

int NCreateFolders(const NString& path) {
    if (NPathForApi(path, NFolderPathLimit).IsEmpty())
        return 0;
    NStringList parts; // from the last to the first
    NString folder(path);
    for (NString part = NPopPathPart(folder); !part.IsEmpty(); part = NPopPathPart(folder))
        parts.Add(part);
    for (int index = parts.Count - 1; index >= 0; --index) {
        folder = NAppendBackslash(folder);
        folder.Append(*parts[index]);
        if (!CreateDirectoryW(NPathForApi(folder, NFolderPathLimit).Text, nullptr) &&
            GetLastError() != ERROR_ALREADY_EXISTS)
            return 0;
    }
    return 1;
}

bool NDeleteFile(const NString& path, bool noRetry) {
    // 1.
    if (DeleteFileW(NPathForApi(path, NFolderPathLimit).Text))
        return true;
    // 2. and 3.
    if (noRetry || GetLastError() != ERROR_ACCESS_DENIED)
        return false;
    NSetFileAttributes(path, 0, FILE_ATTRIBUTE_READONLY);
    return NDeleteFile(path, true);
}
