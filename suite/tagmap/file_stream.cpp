#include "suite/tagmap/file_stream.h"

#include "foundation/npath.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tagmap {

namespace {
constexpr uint32_t CacheSize = 64 * 1024;
constexpr uint32_t MoveSize = 1024 * 1024;

// The library counts in `long`, which has 32 bits here.
constexpr int64_t LargestSize = INT32_MAX;

OVERLAPPED At(int64_t offset) {
    OVERLAPPED place = {};
    place.Offset = static_cast<DWORD>(offset & 0xFFFFFFFF);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

UniqueFileHandle Open(const std::wstring& path, FileStream::Mode mode) {
    const bool writes = mode == FileStream::Mode::ReadAndWrite;
    const DWORD access = writes ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ;
    const DWORD share =
        writes ? FILE_SHARE_READ : FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return UniqueFileHandle(CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
}
} // namespace

FileStream::FileStream(const wchar_t* path, Mode mode, DiskChanged diskChanged)
    : path_(NPathForApi(NString(path), NFilePathLimit).c_str()), mode_(mode),
      diskChanged_(diskChanged) {
    // A path that already has its prefix goes to the platform as it is.
    if (path_.empty())
        path_ = path;
    file_ = Open(path_, mode);
    LARGE_INTEGER size;
    if (!file_ || !GetFileSizeEx(file_.Get(), &size)) {
        failed_ = true;
        return;
    }
    size_ = size.QuadPart;
    if (size_ > LargestSize) {
        file_.Reset();
        tooLarge_ = true;
    }
}

TagLib::ByteVector FileStream::readBlock(unsigned long length) {
    const int64_t left = std::max<int64_t>(size_ - position_, 0);
    const auto count = static_cast<uint32_t>(std::min<int64_t>(length, left));
    TagLib::ByteVector bytes(count, 0);
    if (!ReadCached(position_, bytes.data(), count))
        return TagLib::ByteVector();
    position_ += count;
    return bytes;
}

void FileStream::writeBlock(const TagLib::ByteVector& data) {
    if (WriteAt(position_, data.data(), data.size())) {
        position_ += data.size();
        size_ = std::max(size_, position_);
    }
}

void FileStream::insert(const TagLib::ByteVector& data, unsigned long start,
                        unsigned long replace) {
    const int64_t from = std::min<int64_t>(int64_t{start} + replace, size_);
    const int64_t to = int64_t{start} + data.size();
    if (from != to && !MoveTail(from, to))
        return;
    WriteAt(start, data.data(), data.size());
    position_ = to;
    size_ = std::max(size_, to);
}

void FileStream::removeBlock(unsigned long start, unsigned long length) {
    const int64_t from = std::min<int64_t>(int64_t{start} + length, size_);
    if (from > int64_t{start})
        MoveTail(from, start);
}

void FileStream::seek(long offset, Position from) {
    const int64_t origin = from == Beginning ? 0 : from == Current ? position_ : size_;
    const int64_t place = std::max<int64_t>(origin + offset, 0);
    // A place behind a box whose size is damaged overflows the library's 32
    // bits. It counts as the end: from the start on, the library would read the
    // same boxes for ever.
    const bool overflowed = (from == Beginning && offset < 0) || place > LargestSize;
    position_ = overflowed ? size_ : place;
}

void FileStream::truncate(long length) {
    SetSize(length);
}

bool FileStream::ReadCached(int64_t offset, char* bytes, uint32_t count) {
    while (count > 0) {
        const CachedBlock* block = FindBlock(offset);
        if (!block) {
            // What is larger than a block goes past the cache.
            if (count >= CacheSize)
                return ReadAt(offset, bytes, count);
            block = ReadBlock(offset);
            if (!block)
                return false;
        }
        const int64_t inBlock = offset - block->at;
        const auto part = static_cast<uint32_t>(
            std::min<int64_t>(count, static_cast<int64_t>(block->bytes.size()) - inBlock));
        memcpy(bytes, block->bytes.data() + inBlock, part);
        bytes += part;
        offset += part;
        count -= part;
    }
    return true;
}

// The block that holds the byte at `offset`, if it is there.
const FileStream::CachedBlock* FileStream::FindBlock(int64_t offset) {
    if (cache_[1].Holds(offset))
        std::swap(cache_[0], cache_[1]);
    return cache_[0].Holds(offset) ? &cache_[0] : nullptr;
}

// Reads the block that holds it, in place of the one used longer ago. Blocks
// begin at multiples of their size, so that a way back finds the one it is in.
const FileStream::CachedBlock* FileStream::ReadBlock(int64_t offset) {
    std::swap(cache_[0], cache_[1]);
    CachedBlock& block = cache_[0];
    block.at = offset / CacheSize * CacheSize;
    const auto count = static_cast<uint32_t>(std::min<int64_t>(CacheSize, size_ - block.at));
    block.bytes.resize(count);
    if (block.Holds(offset) && ReadAt(block.at, block.bytes.data(), count))
        return &block;
    block.bytes.clear();
    return nullptr;
}

bool FileStream::ReadAt(int64_t offset, char* bytes, uint32_t count) {
    OVERLAPPED place = At(offset);
    DWORD done = 0;
    if (ReadFile(file_.Get(), bytes, count, &done, &place) && done == count)
        return true;
    failed_ = true;
    return false;
}

bool FileStream::WriteAt(int64_t offset, const char* bytes, uint32_t count) {
    // After a failure the file isn't made worse.
    if (failed_ || mode_ == Mode::Read) {
        failed_ = true;
        return false;
    }
    if (count == 0)
        return true;
    OVERLAPPED place = At(offset);
    DWORD done = 0;
    failed_ = !WriteFile(file_.Get(), bytes, count, &done, &place) || done != count;
    Changed();
    return !failed_;
}

// Moves all from `from` on to begin at `to`; the file ends behind it.
bool FileStream::MoveTail(int64_t from, int64_t to) {
    const int64_t count = size_ - from;
    if (to + count > LargestSize) {
        failed_ = true;
        return false;
    }
    std::vector<char> block(static_cast<size_t>(std::min<int64_t>(count, MoveSize)));
    for (int64_t moved = 0; moved < count;) {
        const auto part = static_cast<uint32_t>(std::min<int64_t>(count - moved, MoveSize));
        // From the end when it grows, so that nothing is overwritten unread.
        const int64_t at = to > from ? count - moved - part : moved;
        if (!ReadAt(from + at, block.data(), part) || !WriteAt(to + at, block.data(), part))
            return false;
        moved += part;
    }
    if (to < from)
        SetSize(to + count);
    else
        size_ = to + count;
    return !failed_;
}

void FileStream::SetSize(int64_t size) {
    if (failed_ || mode_ == Mode::Read) {
        failed_ = true;
        return;
    }
    LARGE_INTEGER end;
    end.QuadPart = size;
    failed_ =
        !SetFilePointerEx(file_.Get(), end, nullptr, FILE_BEGIN) || !SetEndOfFile(file_.Get());
    if (!failed_)
        size_ = size;
    Changed();
}

void FileStream::Changed() {
    cache_ = {};
    if (diskChanged_)
        diskChanged_();
}

} // namespace tagmap
