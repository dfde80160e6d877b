#pragma once

#include "codec/trace.h"
#include "foundation/nfile.h"
#include "tests/support/temp_folder.h"

#include <string>

// A file that takes trace output.
class TraceFile {
public:
    TraceFile()
        : file_(folder_.File(L"trace.txt"), GENERIC_READ | GENERIC_WRITE, CREATE_ALWAYS, false,
                true) {
        context_.File = file_.Handle;
    }

    NLogContext* Context() { return &context_; }

    // All that was written so far. Leaves the file's position at its end.
    std::wstring Text() {
        bool failed = false;
        std::wstring text(static_cast<size_t>(file_.GetSize(failed)) / sizeof(wchar_t), L'?');
        file_.Read(text.data(), static_cast<uint32_t>(text.size() * sizeof(wchar_t)),
                   NFile::FromStart, failed);
        return text;
    }

private:
    TempFolder folder_;
    NFile file_;
    NLogContext context_ = {};
};
