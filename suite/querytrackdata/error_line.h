#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

// The one line that a run leaves on standard error, in UTF-8, when something
// didn't go as it was asked. The first failure is the one that is told; what
// follows from it isn't.
class ErrorLine {
public:
    // Both answer false, for `return error.Fail(...)`. `subject` is a path or
    // a name; it stands in quotes. A `systemError` of 0 isn't shown.
    bool Fail(const wchar_t* what);
    bool Fail(const wchar_t* what, const wchar_t* subject, DWORD systemError = 0);

    // Something that the user should know though the request was carried out.
    void Note(const wchar_t* what, const wchar_t* subject) { Fail(what, subject); }

    bool HasText() const { return !text_.IsEmpty(); }
    // The text without a line end; empty after no failure. Control characters
    // of the subject are shown as "?", so that it is one line.
    const NString& Text() const { return text_; }

    // Writes the line, if there is one. A program without a standard error
    // writes nothing.
    void Print() const;

private:
    NString text_;
};
