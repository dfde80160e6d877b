#pragma once

#include "suite/tagmap/tag_file.h"
#include "tests/querytrackdata/test_files.h"
#include "tests/tagmap/record_help.h"

#include <string>

namespace tagmap {

inline std::string ContentOf(const std::wstring& path) {
    const Bytes bytes = ReadWhole(path);
    return std::string(bytes.begin(), bytes.end());
}

inline std::string SampleContent(const char* name) {
    return ContentOf(
        HostPath((std::string(TONEWRIGHT_SOURCE_DIR "/build/samples/") + name).c_str()));
}

// A file on the disk with a content that the test makes up, and requests to it.
class FileToSave {
public:
    explicit FileToSave(const std::string& content)
        : path_(folder_.Write(L"file.bin", ::BytesOf(content))) {}

    const std::wstring& Path() const { return path_; }
    std::string Content() const { return ContentOf(path_); }
    bool Contains(const std::string& bytes) const {
        return Content().find(bytes) != std::string::npos;
    }

    Outcome Set(clTagRecord& changes) {
        Refusals refused;
        const Outcome outcome = SetTags(path_.c_str(), changes, refused);
        refused_ = RefusedNames(refused);
        return outcome;
    }
    Outcome Set(const wchar_t* name, const wchar_t* value) {
        clTagRecord changes;
        changes.Add(name, value);
        return Set(changes);
    }
    // The names that the last request could not set.
    const std::wstring& Refused() const { return refused_; }

    std::wstring Value(const wchar_t* name) const {
        clTagRecord record;
        ReadTags(path_.c_str(), record);
        return ValueOf(record, name);
    }

    // The file is not to be changed, whatever is asked, and isn't.
    bool IsRefused() {
        const std::string before = Content();
        return Set(L"album", L"another") == Outcome::Refused &&
               DeleteTags(path_.c_str(), NStringList()) == Outcome::Refused && Content() == before;
    }

private:
    TestFolder folder_;
    std::wstring path_;
    std::wstring refused_;
};

inline std::string LittleEndian(size_t number) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>((number >> shift) & 0xFF);
    return bytes;
}

inline std::string BigEndian(size_t number) {
    const std::string bytes = LittleEndian(number);
    return std::string(bytes.rbegin(), bytes.rend());
}

} // namespace tagmap
