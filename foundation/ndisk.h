#pragma once

#include "foundation/nstring.h"

#include <cstdint>

// Questions and changes that name a file or folder by its path. Thread-safe;
// nothing here shows a message.

// Bytes; 0 with `failed` set if there is no such entry.
int64_t NGetFileSize(const NString& path, bool& failed);
// FILE_ATTRIBUTE_ flags; 0 with `failed` set if there is no such entry.
uint32_t NGetFileAttributes(const NString& path, bool& failed);
// The present attributes with `set` added, then without `clear`.
bool NSetFileAttributes(const NString& path, uint32_t set, uint32_t clear);
// True for files, folders and the roots of drives.
bool NPathExists(const NString& path, bool& isFolder);
// Makes all folders of the path that are missing. 0 if one couldn't be made.
// What NPopPathPart takes for the path's root isn't made: of a relative path
// that is its first part, or as many as reach the third character.
int NCreateFolders(const NString& path);
// A file that is read-only is made writable and tried again, unless `noRetry`
// is set.
bool NDeleteFile(const NString& path, bool noRetry = false);
