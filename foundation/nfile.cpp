#include "foundation/nfile.h"

#include "foundation/npath.h"

namespace {
constexpr DWORD ShareReadWrite = FILE_SHARE_READ | FILE_SHARE_WRITE;
constexpr UINT RetryBox = MB_RETRYCANCEL | MB_ICONINFORMATION;
constexpr UINT PlainBox = MB_OK | MB_ICONINFORMATION;
constexpr wchar_t ReadCaption[] = L"File Read Error";
constexpr wchar_t WriteCaption[] = L"File Write Error";

constexpr wchar_t CarriageReturn = L'\r';
constexpr wchar_t LineFeed = L'\n';

// "<failure> '<path>'", with Retry and Cancel; true for Retry.
bool AskRetry(const wchar_t* failure, const NString& path, const wchar_t* caption) {
    NString text(failure);
    text.Append(L" '");
    text.Append(path);
    text.Append(L"'");
    return MessageBoxW(nullptr, text.Text, caption, RetryBox) == IDRETRY;
}

// The platform's number of an origin; false if there is no such origin.
bool PlatformOrigin(int origin, DWORD& method) {
    switch (origin) {
    case NFile::FromStart:
        method = FILE_BEGIN;
        return true;
    case NFile::FromEnd:
        method = FILE_END;
        return true;
    case NFile::FromCurrent:
        method = FILE_CURRENT;
        return true;
    default:
        return false;
    }
}
} // namespace

NFile::NFile(const NString& path, DWORD access, DWORD disposition, bool showErrors, bool share,
             DWORD attributes)
    : Path(path) {
    Open(access, disposition, showErrors, share, attributes);
}

void NFile::Open(DWORD access, DWORD disposition, bool showErrors, bool share, DWORD attributes) {
    const wchar_t* caption = access & GENERIC_WRITE ? WriteCaption : ReadCaption;
    do {
        OwnsHandle = true;
        ShowErrors = showErrors;
        Handle = CreateFileW(NPathForApi(Path, NFilePathLimit).Text, access,
                             share ? ShareReadWrite : 0, nullptr, disposition, attributes, nullptr);
    } while (!IsOpen() && ShowErrors && AskRetry(L"Unable to open", Path, caption));
}

void NFile::Close() {
    if (IsOpen() && OwnsHandle)
        CloseHandle(Handle);
    Handle = INVALID_HANDLE_VALUE;
}

bool NFile::Seek(int64_t offset, int origin) {
    DWORD method;
    if (!IsOpen() || !PlatformOrigin(origin, method))
        return false;
    LONG high = static_cast<LONG>(offset >> 32);
    // The result alone doesn't tell: its failure value is a position as well.
    SetLastError(ERROR_SUCCESS);
    DWORD low = SetFilePointer(Handle, static_cast<LONG>(offset & 0xFFFFFFFF), &high, method);
    return low != INVALID_SET_FILE_POINTER || GetLastError() == ERROR_SUCCESS;
}

int64_t NFile::GetSize(bool& failed) const {
    failed = true;
    if (!IsOpen())
        return 0;
    DWORD high = 0;
    SetLastError(ERROR_SUCCESS);
    DWORD low = GetFileSize(Handle, &high);
    failed = low == INVALID_FILE_SIZE && GetLastError() != ERROR_SUCCESS;
    return failed ? 0 : static_cast<int64_t>(uint64_t{high} << 32 | low);
}

bool NFile::SeekFor(int seek) {
    return seek == NoSeek || Seek(0, seek);
}

uint32_t NFile::Read(void* buffer, uint32_t count, int seek, bool& failed) {
    uint32_t bytesRead = 0;
    do {
        failed = !TryRead(buffer, count, seek, bytesRead);
    } while (failed && ShowErrors && AskRetry(L"Unable to read from", Path, ReadCaption));
    return bytesRead;
}

bool NFile::TryRead(void* buffer, uint32_t count, int seek, uint32_t& bytesRead) {
    bytesRead = 0;
    if (!IsOpen() || !SeekFor(seek))
        return false;
    // A read that comes up short leaves the last error as it was.
    SetLastError(ERROR_SUCCESS);
    DWORD got = 0;
    BOOL done = ReadFile(Handle, buffer, count, &got, nullptr);
    bytesRead = got;
    if (done && got == count)
        return true;
    DWORD error = GetLastError();
    return error == ERROR_SUCCESS || error == ERROR_HANDLE_EOF;
}

bool NFile::Write(const void* buffer, uint32_t count, int seek) {
    if (!buffer) {
        if (count && ShowErrors)
            MessageBoxW(nullptr, L"Error writing a NULL buffer to file", WriteCaption, PlainBox);
        return count == 0;
    }
    while (!TryWrite(buffer, count, seek)) {
        if (!ShowErrors || !AskRetry(L"Unable to write to", Path, WriteCaption))
            return false;
    }
    return true;
}

bool NFile::TryWrite(const void* buffer, uint32_t count, int seek) {
    DWORD written = 0;
    return IsOpen() && SeekFor(seek) && WriteFile(Handle, buffer, count, &written, nullptr) &&
           written == count;
}

bool NFile::WriteString(const wchar_t* text, bool addLineEnd) {
    static constexpr wchar_t lineEnd[] = {CarriageReturn, LineFeed};
    NString units(text);
    bool done =
        Write(units.Text, static_cast<uint32_t>(units.CharCount()) * sizeof(wchar_t), NoSeek);
    if (addLineEnd)
        Write(lineEnd, sizeof(lineEnd), NoSeek);
    return done;
}

// One unit, or one byte through the narrow code page; false at the end.
bool NFile::ReadUnit(bool wide, NString& unit) {
    wchar_t wideUnit = 0;
    char narrowUnit[2] = {};
    bool failed = false;
    uint32_t size = wide ? sizeof(wideUnit) : 1;
    void* buffer = wide ? static_cast<void*>(&wideUnit) : narrowUnit;
    if (Read(buffer, size, NoSeek, failed) != size)
        return false;
    if (wide)
        unit.Assign(&wideUnit, 1);
    else if (narrowUnit[0])
        unit = NString(narrowUnit);
    else
        unit.Assign(L"", 1); // a zero byte is a unit too
    return true;
}

bool NFile::ReadLine(NString& line, bool wide) {
    line = L"";
    NString unit;
    while (ReadUnit(wide, unit)) {
        if (unit.At(1) == LineFeed)
            return true;
        if (unit.At(1) != CarriageReturn) {
            line.Append(unit);
            continue;
        }
        if (!ReadUnit(wide, unit))
            break;
        // One byte in wide mode too: wanted. Behind a lone carriage return of a
        // wide file the reader stands in the middle of a unit.
        if (unit.At(1) != LineFeed)
            Seek(-1, FromCurrent);
        return true;
    }
    return !line.IsEmpty();
}

uint32_t NReadFile(const NString& path, void* buffer, uint32_t count, int64_t offset, int origin,
                   bool& failed, bool showErrors) {
    NFile file(path, GENERIC_READ, OPEN_EXISTING, showErrors, true);
    failed = true;
    // The user has been asked by now, and gave up.
    if (!file.IsOpen())
        return 0;
    if (origin != NFile::NoSeek && !file.Seek(offset, origin))
        return 0;
    return file.Read(buffer, count, NFile::NoSeek, failed);
}
