#include "suite/shellhost/file_problem.h"

#include "foundation/ndisk.h"
#include "foundation/npath.h"
#include "foundation/unique_handle.h"

namespace {
constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

NString OpenProblem(const NString& path, DWORD access, DWORD sharing) {
    UniqueFileHandle file(CreateFileW(NPathForApi(path, NFilePathLimit).Text, access, sharing,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file)
        return NString();
    DWORD error = GetLastError();
    if (error == ERROR_SHARING_VIOLATION)
        return L"another program has it open";
    if (error == ERROR_ACCESS_DENIED)
        return L"access to it is denied";
    return NString(L"it can't be opened, system error ").Concat(NString::FromUInt(error).Text);
}
} // namespace

NString ReadProblem(const NString& path) {
    bool isFolder = false;
    if (!NPathExists(path, isFolder))
        return L"no such file";
    if (isFolder)
        return L"it is a folder, not a file";
    return OpenProblem(path, GENERIC_READ, ShareAll);
}

NString WriteProblem(const NString& path) {
    NString problem = ReadProblem(path);
    if (!problem.IsEmpty())
        return problem;
    bool failed = false;
    if (NGetFileAttributes(path, failed) & FILE_ATTRIBUTE_READONLY)
        return L"it is read-only";
    // As the tag program opens it: what is written takes the file's place.
    return OpenProblem(path, GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ);
}
