#pragma once

#include "foundation/nfile.h"
#include "foundation/nlists.h"

// "Convert To": writes the paths, in their order, to a list file and starts
// WaveSmith.exe of the module's folder with it. Returns once that has started;
// the list file is the converter's to delete then. On failure the user gets a
// message box, which blocks the caller, and the list file is deleted. An empty
// selection does nothing.
void ConvertFiles(const NStringList& selection);

// The second half of it, for a list file that the caller has tried to open for
// writing. The file is closed at the end.
void NHandToConverter(NFile& listFile, const NStringList& selection);
