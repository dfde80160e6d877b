#pragma once

#include "foundation/nstring.h"

// A folder of its own for one test, removed with all that is in it at the end
// of the scope. Its name holds the process id, a number and a non-ASCII letter.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // Without a backslash at the end.
    const NString& Path() const { return path_; }
    // The full path of a name in the folder.
    NString File(const wchar_t* name) const;

private:
    NString path_;
};
