#pragma once

#include "foundation/nstring.h"
#include "foundation/unique_handle.h"
#include "suite/querytrackdata/error_line.h"

// Opens the file that a request names, whatever the form of its path, with the
// given access and sharing. Fails for a folder and for what isn't a disk file.
// `realPath` gets the full path of the file itself, where the path goes over
// symbolic links; all further work is done on that one.
UniqueFileHandle OpenAudioFile(const wchar_t* path, DWORD access, DWORD sharing, NString& realPath,
                               ErrorLine& error);

// The same for a path that is known to be a file's real one.
UniqueFileHandle OpenRealFile(const NString& realPath, DWORD access, DWORD sharing);
