#pragma once

#include "foundation/nstring.h"

// What the system calls files of this path's extension, "MP3 audio"; without a
// registered name "mp3 File", and "File" where there is no extension. The last
// answer is remembered for as long as the process lives and given again while
// the extension stays the same. Without a lock.
NString FileTypeText(const NString& path);
