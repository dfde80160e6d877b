#pragma once

#include "codec/tag_record.h"
#include "foundation/nstring.h"

// Writes one line to standard error: the program's name, the path, and what is
// to be said of the file.
void TellOfFile(const NString& path, const NString& what);

// For a change that doesn't show in the file's tag: if the tag is as it was,
// says that nothing was written, and why, as far as that can be looked up.
// False if something was written.
bool TellIfNothingWasWritten(const NString& path, clTagRecord& before, clTagRecord& after);
