#pragma once

#include "foundation/nstring.h"
#include "suite/querytrackdata/error_line.h"

// What is to be done to an audio file, and how it is told that it went well.
// None of these may keep a file open when it returns.
class FileEdit {
public:
    virtual ~FileEdit() = default;
    // The file is as it shall be, without a change. Asked again after Apply,
    // when it is known what the file can't take.
    virtual bool IsDone(const wchar_t* file) = 0;
    // Changes `copy`, which belongs to the edit alone.
    virtual bool Apply(const wchar_t* copy, ErrorLine& error) = 0;
    // `copy` is whole, holds what was asked, and sounds as `original` does.
    virtual bool Check(const wchar_t* original, const wchar_t* copy, ErrorLine& error) = 0;
};

// Does `edit` to a copy in the file's own folder, and puts the copy in the
// file's place in one step, with the file's attributes, time of creation,
// access list and further streams. Killed at any instant, it leaves the old
// file or the new one, whole; a copy that was left behind so is removed by the
// next write to the file. A file that is read-only, is open elsewhere so that
// nobody may write it, or changes in the meantime is left as it is.
//
// One writer at a time works on a file: a second one waits for it, and fails
// after WriterPatience. Other names of the file (hard links) keep the old
// content.
bool WriteSafely(const wchar_t* file, FileEdit& edit, ErrorLine& error);

// Milliseconds.
inline constexpr unsigned WriterPatience = 60000;

// The path of the copy that a write to the file works on: hidden, of a fixed
// length whatever the file's name, and with its extension.
NString WorkingCopyPath(const NString& realPath);
