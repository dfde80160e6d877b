#pragma once

#include "foundation/nstring.h"
#include "foundation/unique_handle.h"

// Keeps other writers of this program away from one file, for as long as it
// lives. Another machine's writer isn't seen; it is kept out by the sharing of
// the file itself.
class WriterLock {
public:
    // Waits for the present writer, up to `patience` milliseconds. A writer
    // that died counts as gone.
    bool Take(const NString& realPath, unsigned patience);
    ~WriterLock();

    WriterLock() = default;
    WriterLock(const WriterLock&) = delete;
    WriterLock& operator=(const WriterLock&) = delete;

private:
    UniqueKernelHandle mutex_;
    bool taken_ = false;
};

// 16 hexadecimal digits that stand for a text, ASCII case ignored, by the
// FNV-1a hash of its units (http://www.isthe.com/chongo/tech/comp/fnv/).
NString HashDigits(const NString& text);
