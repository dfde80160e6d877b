#pragma once

#include "codec/decoder.h"
#include "codec/trace.h"
#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

// Finds the decoder plug-in for a file by its extension. Loading libraries and
// asking each for its extensions is slow, so three caches come first: the
// library that the decoder has loaded, the pair below, and a table in the
// registry that outlives the process, with one value for each extension:
//
//     HKEY_CURRENT_USER\Software\Quillmarsh\Tonewright\DecoderCache
//         ".flac"   REG_SZ   full path of the library
//
// A local object of a loop over a list of files, on that loop's thread.
class cltNCodecHandler {
public:
    // True if the decoder holds a live instance for the extension of `path`
    // ("." for a path without one). Plug-ins are the `decoder\*.dll` below the
    // folder of the module instance; the first one that claims the extension is
    // taken, in the order in which the system lists them. Blocks while
    // libraries load. No failure shows a message.
    //
    // On false the decoder may all the same hold a library, and an instance,
    // that doesn't claim the extension.
    //
    // A plug-in that claims 65536 other extensions and has no end, and one whose
    // extension can't be read as far as it would have to be compared, doesn't
    // claim the wanted one.
    bool FindDecoder(const NString& path, cltNDecoder& decoder, NLogContext* logContext,
                     HINSTANCE moduleInstance);

    NString DecoderPath; // of the library last found, in full
    NString Extension;   // that it was found for, with its dot

private:
    NString FindLibrary(const NString& extension, cltNDecoder& decoder, NLogContext* logContext,
                        HINSTANCE moduleInstance, bool& scanned);
};

// The table's key, below HKEY_CURRENT_USER.
inline constexpr wchar_t DecoderCacheKey[] = L"Software\\Quillmarsh\\Tonewright\\DecoderCache";
