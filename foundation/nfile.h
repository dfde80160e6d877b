#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

#include <cstdint>

// One open file with its path. With `ShowErrors` set, an operation that fails
// puts a box with Retry and Cancel to the user, without an owner window, and
// blocks until it is answered; otherwise the results alone tell. Belongs to
// one thread at a time.
class NFile {
public:
    // Origins of Seek, which are the system's own and not the platform's. As
    // the `seek` argument of Read and Write the first two go there first.
    static constexpr int FromStart = 0;
    static constexpr int FromEnd = 1;
    static constexpr int FromCurrent = 2;
    static constexpr int NoSeek = 2;

    NFile() = default;
    // Stores the path, and opens it.
    NFile(const NString& path, DWORD access, DWORD disposition, bool showErrors, bool share,
          DWORD attributes = FILE_ATTRIBUTE_NORMAL);
    NFile(const NFile&) = delete;
    NFile& operator=(const NFile&) = delete;
    ~NFile() { Close(); }

    // Opens `Path` with CreateFileW's access, disposition and attributes.
    // `share` lets others read and write the file meanwhile. A handle that is
    // open already is not closed by this.
    void Open(DWORD access, DWORD disposition, bool showErrors, bool share,
              DWORD attributes = FILE_ATTRIBUTE_NORMAL);
    // `Handle` is -1 after it; it is closed only if it is owned.
    void Close();
    bool IsOpen() const { return Handle != INVALID_HANDLE_VALUE; }

    // Bytes from an origin. False if the file isn't open or the move fails.
    bool Seek(int64_t offset, int origin);
    // Bytes; 0 with `failed` set if the file isn't open or has no size.
    int64_t GetSize(bool& failed) const;
    // Bytes read. To come to the end of the file before `count` is no failure.
    uint32_t Read(void* buffer, uint32_t count, int seek, bool& failed);
    // True if all bytes were written. No buffer at all counts as written if
    // `count` is 0.
    bool Write(const void* buffer, uint32_t count, int seek);
    // Writes the units without terminator at the current position, and a
    // carriage return and line feed if asked. The result is that of the text.
    bool WriteString(const wchar_t* text, bool addLineEnd);
    // Takes the units (wide) or the bytes, through the narrow code page, up to
    // a line feed, a carriage return with or without one, or the end of the
    // file. False at the end of the file if nothing was taken.
    bool ReadLine(NString& line, bool wide);

    NString Path;
    HANDLE Handle = INVALID_HANDLE_VALUE;
    bool ShowErrors = false;
    bool OwnsHandle = false; // set by Open

private:
    bool SeekFor(int seek);
    bool TryRead(void* buffer, uint32_t count, int seek, uint32_t& bytesRead);
    bool TryWrite(const void* buffer, uint32_t count, int seek);
    bool ReadUnit(bool wide, NString& unit);
};

// Opens the path for reading, and reads `count` bytes at `offset` from `origin`
// (NFile::NoSeek: from the start, whatever the offset). Returns the bytes read.
uint32_t NReadFile(const NString& path, void* buffer, uint32_t count, int64_t offset, int origin,
                   bool& failed, bool showErrors = false);
