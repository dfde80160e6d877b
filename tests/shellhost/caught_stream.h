#pragma once

#include "foundation/unique_handle.h"

#include <string>

// Takes one of this process's standard streams (STD_OUTPUT_HANDLE or
// STD_ERROR_HANDLE) for the time of the scope. At most as much as a pipe holds
// may be written to it.
class CaughtStream {
public:
    static constexpr DWORD Room = 65536;

    explicit CaughtStream(DWORD stream) : stream_(stream), old_(GetStdHandle(stream)) {
        CreatePipe(reader_.Put(), writer_.Put(), nullptr, Room);
        SetStdHandle(stream_, writer_.Get());
    }
    ~CaughtStream() { SetStdHandle(stream_, old_); }
    CaughtStream(const CaughtStream&) = delete;
    CaughtStream& operator=(const CaughtStream&) = delete;

    // What was written since the last call.
    std::string Text() {
        DWORD size = 0;
        PeekNamedPipe(reader_.Get(), nullptr, 0, nullptr, &size, nullptr);
        std::string text(size, '\0');
        if (size > 0)
            ReadFile(reader_.Get(), text.data(), size, &size, nullptr);
        text.resize(size);
        return text;
    }

    // From here on writing fails, as it does when the other end is gone.
    void Break() { reader_.Reset(); }

    // From here on the stream takes no more than it has room for, and says so.
    void TakeNoMoreThanFits() {
        DWORD mode = PIPE_READMODE_BYTE | PIPE_NOWAIT;
        SetNamedPipeHandleState(writer_.Get(), &mode, nullptr, nullptr);
    }

private:
    DWORD stream_;
    HANDLE old_;
    UniqueKernelHandle reader_;
    UniqueKernelHandle writer_;
};
