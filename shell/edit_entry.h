#pragma once

#include "foundation/nlists.h"

// "Edit ID-Tag" of the context menu: the stand-alone tag editor for the
// selected files, which blocks its caller until the user closes it.
//
// The editor is not part of this version of the module: the call has no
// effect.
void EditFiles(const NStringList& selection);

// The stand-alone tag editor for the files that the list file names (UTF-16
// little-endian, one full path a line), open to other programs of the suite.
//
// The editor is not part of this version of the module: the call has no
// effect, and the list file stays where it is.
extern "C" void EditIDTags(const wchar_t* listFile);
