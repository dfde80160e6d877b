#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

// One scan of a folder, or a look at one path:
//
//     NFileFind find(L"*.dll", folder);
//     while (find.Next())
//         Use(find.Path);
//
// Used once, on one thread.
class NFileFind {
public:
    // The folder gets a backslash, and the pattern is added.
    NFileFind(const NString& pattern, const NString& folder);
    // Backslashes at the end don't count.
    explicit NFileFind(const NString& path);
    NFileFind(const NFileFind&) = delete;
    NFileFind& operator=(const NFileFind&) = delete;
    ~NFileFind();

    // Non-zero while there is an entry. "." and ".." are passed over.
    int Next();

    bool IsFolder() const { return FindData.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY; }

    NString Path; // of the current entry
    WIN32_FIND_DATAW FindData = {};
    HANDLE Handle = INVALID_HANDLE_VALUE; // -1 before the first Next
    NString Pattern;                      // the folder of the entries, after the first Next
    bool FoldersOnly = false;             // reports directories alone

private:
    bool Advance();
    bool IsWanted() const;
};
