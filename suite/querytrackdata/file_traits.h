#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

// What a file is besides its content. All paths are full ones; all of it is
// about files that stay on one volume.

// Identity and state of a file, to notice that someone else changed it.
struct FileState {
    DWORD Volume;
    uint64_t Id;
    uint64_t Size;
    uint64_t LastWrite;
    uint64_t Creation;
    DWORD Attributes;
};
bool GetFileState(HANDLE file, FileState& state);
bool GetFileState(const NString& path, FileState& state);
// False as soon as another file stands at the path, or other content in it.
bool IsSameContent(const FileState& before, const FileState& now);

// Each answers false when the copy can't take it.
bool CarryAttributes(const FileState& original, const NString& copy);
bool CarryCreationTime(const FileState& original, HANDLE copy);
// The access list as it stands, inherited entries and protection included;
// the owner too, where the user may give it.
bool CarryAccessList(const NString& original, const NString& copy);
