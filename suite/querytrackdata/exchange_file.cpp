#include "suite/querytrackdata/exchange_file.h"

#include "codec/tag_wire.h"
#include "suite/querytrackdata/disk_change.h"
#include "suite/querytrackdata/full_path.h"

#include <cstring>

namespace {

bool SeekTo(HANDLE file, int64_t offset) {
    LARGE_INTEGER position;
    position.QuadPart = offset;
    return SetFilePointerEx(file, position, nullptr, FILE_BEGIN) != FALSE;
}

} // namespace

bool ExchangeFile::Open(const wchar_t* path, Use use, ErrorLine& error) {
    constexpr wchar_t what[] = L"cannot open the exchange file";
    path_ = path;
    NString full = FullPath(path);
    if (full.IsEmpty())
        return error.Fail(what, path);
    DWORD access = use == Use::Read ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
    file_.Reset(CreateFileW(full.c_str(), access,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file_)
        return error.Fail(what, path, GetLastError());
    // A pipe or a console could keep a reader waiting for ever.
    if (GetFileType(file_.Get()) != FILE_TYPE_DISK)
        return error.Fail(what, path);
    return true;
}

bool ExchangeFile::ReadAll(NBuffer& request, uint32_t limit, ErrorLine& error) {
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file_.Get(), &size))
        return error.Fail(L"cannot read the exchange file", path_.c_str(), GetLastError());
    if (size.QuadPart > limit)
        return error.Fail(L"the request is too large", path_.c_str());
    request.Resize(static_cast<uint32_t>(size.QuadPart));
    if (request.Size != size.QuadPart)
        return error.Fail(L"not enough memory for the request", path_.c_str());
    DWORD read = 0;
    if (request.Size > 0 &&
        (!ReadFile(file_.Get(), request.Data, request.Size, &read, nullptr) || read < request.Size))
        return error.Fail(L"cannot read the exchange file", path_.c_str(), GetLastError());
    return true;
}

bool ExchangeFile::WriteReply(const NBuffer& record, ErrorLine& error) {
    uint8_t header[TagReplyHeaderSize];
    memcpy(header, TagReplyMagic, sizeof(TagReplyMagic));
    memcpy(header + sizeof(TagReplyMagic), &record.Size, sizeof(record.Size));
    bool complete = WriteAt(TagReplyHeaderSize, record.Data, record.Size) &&
                    SetEndOfFile(file_.Get()) && WriteAt(0, header, sizeof(header));
    if (!complete)
        return error.Fail(L"cannot write the reply", path_.c_str(), GetLastError());
    return true;
}

bool ExchangeFile::WriteAt(int64_t offset, const void* bytes, uint32_t size) {
    DWORD written = 0;
    if (!SeekTo(file_.Get(), offset) || !WriteFile(file_.Get(), bytes, size, &written, nullptr) ||
        written != size)
        return false;
    AfterDiskChange();
    return true;
}
