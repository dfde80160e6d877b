#pragma once

#include "foundation/nbuffer.h"
#include "foundation/unique_handle.h"
#include "suite/querytrackdata/error_line.h"

// The temporary file through which a request comes and its reply goes. Its
// maker keeps it open for reading and writing all the while, so it is opened
// with all sharing; it may even be deleted by its maker in the middle.
class ExchangeFile {
public:
    enum class Use { Read, ReadAndReply };

    bool Open(const wchar_t* path, Use use, ErrorLine& error);
    // Fails on a file above `limit` bytes, before memory is taken for it.
    bool ReadAll(NBuffer& request, uint32_t limit, ErrorLine& error);
    // Writes magic, length and payload in place of the request. The magic is
    // written last of all: until the reply is complete, and after a failure,
    // its reader sees no reply.
    bool WriteReply(const NBuffer& record, ErrorLine& error);

private:
    bool WriteAt(int64_t offset, const void* bytes, uint32_t size);

    UniqueFileHandle file_;
    NString path_;
};
