#pragma once

#include "foundation/nstring.h"

// The absolute path in the form without the limit of 260 characters: "\\?\C:\..."
// or "\\?\UNC\server\share\...". A path that has the prefix comes back as it
// is. Empty for a path that can't be made absolute, and for one that leads to
// a device.
NString FullPath(const wchar_t* path);

// The folder of a full path, with its last backslash, and what stands behind.
NString FolderOf(const NString& fullPath);
NString NameOf(const NString& fullPath);
