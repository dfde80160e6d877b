#pragma once

#include "foundation/nstring.h"

// The path of a temporary file, and the owner of that file: it is made, empty,
// by the constructor, and deleted by the destructor. If it can't be made, the
// path stands all the same, and who opens it finds nothing.
class NTempFile : public NString {
public:
    // The name begins with `prefix` ("TMP" for null; the platform may take its
    // first three characters alone) and ends in `suffix`, if there is one.
    explicit NTempFile(const char* prefix = nullptr, const char* suffix = nullptr);
    NTempFile(const NTempFile&) = delete;
    NTempFile& operator=(const NTempFile&) = delete;
    ~NTempFile();
};
