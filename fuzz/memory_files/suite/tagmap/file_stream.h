// Stands in for the header of this name in the native build, where there is no
// file of the platform's: the bytes that are fuzzed are every file there is. It
// answers as the real stream does; a write fails.
#pragma once

#include <tiostream.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

// FileStream::name hides the library's.
#pragma clang diagnostic ignored "-Woverloaded-virtual"

namespace tagmap {

// What every file holds. The bytes are the fuzzer's.
struct MemoryFile {
    const char* Bytes = nullptr;
    int64_t Size = 0;
};
inline MemoryFile TheFile;

// Has the library's name, which is narrow in this build.
class MemoryStream : public TagLib::IOStream {
public:
    TagLib::FileName name() const override { return "fuzzed.mp3"; }
};

class FileStream : public MemoryStream {
public:
    enum class Mode { Read, ReadAndWrite };
    using DiskChanged = void (*)();

    FileStream(const wchar_t*, Mode, DiskChanged = nullptr) {}

    bool Failed() const { return failed_; }
    bool IsTooLarge() const { return false; }
    // In place of the library's, as it is on Windows.
    const wchar_t* name(int = 0) const { return L"C:\\fuzzed.mp3"; }

    TagLib::ByteVector readBlock(unsigned long length) override {
        const int64_t left = std::max<int64_t>(TheFile.Size - position_, 0);
        // The library counts in 32 bits on Windows.
        const auto count =
            static_cast<unsigned>(std::min<int64_t>(static_cast<uint32_t>(length), left));
        const TagLib::ByteVector bytes(TheFile.Bytes + std::min(position_, TheFile.Size), count);
        position_ += count;
        return bytes;
    }
    void writeBlock(const TagLib::ByteVector&) override { failed_ = true; }
    void insert(const TagLib::ByteVector&, unsigned long, unsigned long) override {
        failed_ = true;
    }
    void removeBlock(unsigned long, unsigned long) override { failed_ = true; }
    bool readOnly() const override { return true; }
    bool isOpen() const override { return true; }
    void seek(long offset, Position from) override {
        const int64_t origin = from == Beginning ? 0 : from == Current ? position_ : TheFile.Size;
        const int64_t place = std::max<int64_t>(origin + offset, 0);
        const bool overflowed = (from == Beginning && offset < 0) || place > INT32_MAX;
        position_ = overflowed ? TheFile.Size : place;
    }
    void clear() override {}
    long tell() const override { return static_cast<long>(position_); }
    long length() override { return static_cast<long>(TheFile.Size); }
    void truncate(long) override { failed_ = true; }

private:
    int64_t position_ = 0;
    bool failed_ = false;
};

} // namespace tagmap
