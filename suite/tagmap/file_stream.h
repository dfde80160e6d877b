#pragma once

#include "foundation/unique_handle.h"

#include <tiostream.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

// The library's view of a file on the disk, through a handle of our own: with
// the sharing that the caller wants, with paths of any length, and with a block
// kept in memory, since the library reads in small pieces. Writing goes to the
// disk at once.
//
// The library doesn't look at failures of writing; Failed() tells of them
// afterwards. One thread.
namespace tagmap {

class FileStream : public TagLib::IOStream {
public:
    enum class Mode { Read, ReadAndWrite };
    // Called behind each call that changes the disk.
    using DiskChanged = void (*)();

    // `path` is absolute. A stream for reading lets others read, write and
    // delete the file; one for writing shares reading alone.
    FileStream(const wchar_t* path, Mode mode, DiskChanged diskChanged = nullptr);

    // A call that was to read or change the disk failed. Never cleared.
    bool Failed() const { return failed_; }
    // The file is larger than the library can count, 2 GiB, and isn't open.
    bool IsTooLarge() const { return tooLarge_; }

    TagLib::FileName name() const override { return path_.c_str(); }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector& data) override;
    void insert(const TagLib::ByteVector& data, unsigned long start,
                unsigned long replace) override;
    void removeBlock(unsigned long start, unsigned long length) override;
    bool readOnly() const override { return mode_ == Mode::Read; }
    bool isOpen() const override { return static_cast<bool>(file_); }
    void seek(long offset, Position from) override;
    void clear() override {}
    long tell() const override { return static_cast<long>(position_); }
    long length() override { return static_cast<long>(size_); }
    void truncate(long length) override;

private:
    bool ReadCached(int64_t offset, char* bytes, uint32_t count);
    bool ReadAt(int64_t offset, char* bytes, uint32_t count);
    bool WriteAt(int64_t offset, const char* bytes, uint32_t count);
    bool MoveTail(int64_t from, int64_t to);
    void SetSize(int64_t size);
    void Changed();

    // Bytes of the file, from `at` on.
    struct CachedBlock {
        int64_t at = 0;
        std::vector<char> bytes;

        bool Holds(int64_t offset) const {
            return offset >= at && offset - at < static_cast<int64_t>(bytes.size());
        }
    };
    const CachedBlock* FindBlock(int64_t offset);
    const CachedBlock* ReadBlock(int64_t offset);

    std::wstring path_;
    Mode mode_;
    DiskChanged diskChanged_;
    UniqueFileHandle file_;
    int64_t position_ = 0;
    int64_t size_ = 0;
    bool failed_ = false;
    bool tooLarge_ = false;
    // Two, for the library goes to and fro between a file's head and its end.
    // The one used last comes first.
    std::array<CachedBlock, 2> cache_;
};

} // namespace tagmap
