#pragma once

#include "codec/tag_record.h"
#include "foundation/nbuffer.h"
#include "foundation/nlists.h"

// The three requests to `QueryTrackData.exe`, which lies in the folder of this
// module. Each is one run of that program, and each has a temporary file of its
// own, so requests of several threads don't disturb each other. All block the
// calling thread. None shows a message; the program's exit code isn't read.

// Reads the tag of an audio file. `out` holds the serialised record, for
// clTagRecord::Deserialise, or is empty when there is no reply within 10000 ms
// (and up to 275 ms more).
void RunGetAudioInf(const wchar_t* path, NBuffer& out);

// Writes the elements of `record` to the file's tag. False if the request
// couldn't be written or the program couldn't be started. Waits without limit.
bool RunSetTags(const wchar_t* path, clTagRecord& record);

// Deletes the named elements, or with an empty list the whole tag. Waits
// without limit.
void RunDelTagElements(const wchar_t* path, const NStringList& names);
