#include "foundation/nfilefind.h"

#include "foundation/npath.h"

NFileFind::NFileFind(const NString& pattern, const NString& folder)
    : Pattern(NAppendBackslash(folder)) {
    Pattern.Append(pattern);
}

NFileFind::NFileFind(const NString& path) : Pattern(NRemoveBackslashes(path)) {}

NFileFind::~NFileFind() {
    if (Handle != INVALID_HANDLE_VALUE)
        FindClose(Handle);
}

int NFileFind::Next() {
    // 1. to 3.
    do {
        if (!Advance())
            return 0;
    } while (!IsWanted());
    // 4. and 5.
    Path = Pattern;
    Path.Append(FindData.cFileName);
    return FindData.cFileName[0] != 0;
}

// To the next entry of any kind.
bool NFileFind::Advance() {
    if (Handle != INVALID_HANDLE_VALUE)
        return FindNextFileW(Handle, &FindData);
    Handle = FindFirstFileW(NPathForApi(Pattern, NFolderPathLimit).Text, &FindData);
    // A pattern without a folder is looked up in the current one, so that the
    // bare names are the paths.
    Pattern = Pattern.FindLastChar(L'\\') ? NGetFolder(Pattern) : NString();
    return Handle != INVALID_HANDLE_VALUE;
}

bool NFileFind::IsWanted() const {
    if (FoldersOnly && !IsFolder())
        return false;
    NString name(FindData.cFileName);
    return !(name == L".") && !(name == L"..");
}
