#pragma once

#include "foundation/nfolders.h"
#include "foundation/npath.h"
#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

#include <filesystem>

// A folder of copies of samples, gone at the end.
class MusicFolder {
public:
    MusicFolder() : path_(NGetTempFolder()) {
        path_.Append(L"tonewright-bench-");
        path_.Append(NString::FromUInt(GetCurrentProcessId()));
        path_.Append(L"\\");
        std::filesystem::remove_all(path_.Text); // of a run that was broken off
        std::filesystem::create_directories(path_.Text);
    }
    ~MusicFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_.Text, ignored);
    }
    MusicFolder(const MusicFolder&) = delete;
    MusicFolder& operator=(const MusicFolder&) = delete;

    // The path of a new copy.
    NString Copy(const NString& sample, int number) const {
        NString copy(path_);
        copy.Append(NString::FromUInt(static_cast<uint32_t>(number)));
        copy.Append(NGetFileExt(sample));
        std::filesystem::copy_file(sample.Text, copy.Text);
        return copy;
    }

private:
    NString path_;
};
