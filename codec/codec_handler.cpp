#include "codec/codec_handler.h"

#include "foundation/nfilefind.h"
#include "foundation/nfolders.h"
#include "foundation/nmemory.h"
#include "foundation/npath.h"
#include "foundation/nreg.h"

#include <cstring>

namespace {
constexpr wchar_t FunctionName[] = L"cltNCodecHandler::FindDecoder";
constexpr wchar_t PluginPattern[] = L"decoder\\*.dll";
// A plug-in that claims more than this never stops; it is taken for one that
// doesn't claim the extension.
constexpr uint32_t MostExtensions = 65536;

enum class Claim { Same, Other, Unreadable };

// A piece of a line, and the end of a line.
void TracePiece(const NString& text, const NLogContext* logContext) {
    NTraceWrite(text.Text, logContext);
}
void TraceLine(const NString& text, const NLogContext* logContext,
               const wchar_t* function = nullptr) {
    NTraceWrite(text.Text, logContext, function, true);
}

bool IsSameExtension(const NString& a, const NString& b) {
    return a.Compare(b, 0, true) == 0;
}

// Compares the plug-in's text as far as the wanted one goes, and so needs no
// end of it. Unreadable if the memory ends before the two differ.
Claim CompareClaim(const wchar_t* claimed, const NString& wanted) {
    size_t bytes = static_cast<size_t>(wanted.Length) * sizeof(wchar_t);
    int units = static_cast<int>(NReadableBytes(claimed, bytes) / sizeof(wchar_t));
    for (int index = 0; index < units; ++index) {
        wchar_t unit; // may lie at an odd address
        memcpy(&unit, reinterpret_cast<const char*>(claimed) + index * sizeof(wchar_t),
               sizeof(unit));
        if (NUpperUnit(unit) != NUpperUnit(wanted.Text[index]))
            return Claim::Other;
    }
    return units == wanted.Length ? Claim::Same : Claim::Unreadable;
}

// True if the live instance claims the extension.
bool ClaimsExtension(cltNDecoder& decoder, const NString& extension) {
    for (uint32_t i = 0; i < MostExtensions; ++i) {
        clDecodesInfo record = {};
        record.Index = i;
        if (!decoder.Get(DecoderGetDecodes, &record) || !record.Extension)
            return false;
        Claim claim = CompareClaim(record.Extension, extension);
        if (claim != Claim::Other)
            return claim == Claim::Same;
    }
    return false;
}

// Tests one library. On false the decoder stays as it is then, loaded and
// possibly live.
bool CheckDecoder(const NString& libraryPath, const NString& extension, cltNDecoder& decoder,
                  NLogContext* logContext) {
    // 1.
    TracePiece(L"  Checking Decoder '", logContext);
    TracePiece(libraryPath, logContext);
    TracePiece(L"' for extension '", logContext);
    TracePiece(extension, logContext);
    TraceLine(L"'", logContext);
    // 2.
    if (!decoder.LoadFor(libraryPath, extension))
        return false;
    // 3.
    if (!decoder.CreateInstance(logContext))
        return false;
    // 4.
    if (!ClaimsExtension(decoder, extension))
        return false;
    TraceLine(L"<<< Match, using decoder", logContext);
    return true;
}

// The path of the first plug-in below the folder that claims the extension, or
// empty.
NString ScanFolder(const NString& folder, const NString& extension, cltNDecoder& decoder,
                   NLogContext* logContext) {
    NFileFind find(PluginPattern, folder);
    while (find.Next()) {
        if (!find.IsFolder() && CheckDecoder(find.Path, extension, decoder, logContext))
            return find.Path;
    }
    return NString();
}
} // namespace

// Steps 7 to 10 of the search: the library's path, or empty. `scanned` tells
// that the folder gave it, and that it is loaded and live.
NString cltNCodecHandler::FindLibrary(const NString& extension, cltNDecoder& decoder,
                                      NLogContext* logContext, HINSTANCE moduleInstance,
                                      bool& scanned) {
    // 7.
    if (!Extension.IsEmpty() && IsSameExtension(Extension, extension)) {
        TracePiece(L"Using Cached Decoder: ", logContext);
        TraceLine(DecoderPath, logContext);
        return DecoderPath;
    }
    // 8.
    NString library = NRegReadString(extension.Text, HKEY_CURRENT_USER, DecoderCacheKey);
    if (!library.IsEmpty() && CheckDecoder(library, extension, decoder, logContext)) {
        TracePiece(L"Using Registry Cached Decoder: ", logContext);
        TraceLine(library, logContext);
        return library;
    }
    // 9. and 10.
    NString found = ScanFolder(NGetModuleFolder(moduleInstance), extension, decoder, logContext);
    scanned = !found.IsEmpty();
    // Wanted: where the scan finds nothing, a value of the registry that failed
    // its test is what is left, and goes on to step 11.
    return scanned ? found : library;
}

bool cltNCodecHandler::FindDecoder(const NString& path, cltNDecoder& decoder,
                                   NLogContext* logContext, HINSTANCE moduleInstance) {
    // 1.
    TraceLine(L"->->", logContext, FunctionName);
    // 2.
    NString ext = NGetFileExt(path);
    // 3.
    decoder.DestroyInstance();
    // 4.
    if (!decoder.Module)
        decoder.Extension = L"";
    // 5. Wanted: this holds as well for a library that an earlier search left
    // loaded and that didn't claim the extension. The text doesn't end its line.
    if (IsSameExtension(ext, decoder.Extension)) {
        TracePiece(L"Using Existing Decoder", logContext);
        TraceLine(L"<-<-", logContext, FunctionName);
        return decoder.CreateInstance(logContext);
    }
    // 6. to 10.
    bool scanned = false;
    NString library = FindLibrary(ext, decoder, logContext, moduleInstance, scanned);
    bool found = scanned;
    // 11.
    if (!library.IsEmpty()) {
        // 11.1. Wanted: a library that has just passed the registry's check is
        // loaded a second time, and one that failed it is tried once more
        // without being asked for its extensions.
        if (!scanned && decoder.LoadFor(library, ext) && decoder.CreateInstance(logContext))
            found = true;
        // 11.2.
        DecoderPath = library;
        Extension = ext;
        // 11.3. Wanted: this writes a stale value back, too.
        NRegWriteString(library.Text, ext.Text, HKEY_CURRENT_USER, DecoderCacheKey);
    }
    // 12.
    TraceLine(L"<-<-", logContext, FunctionName);
    return found;
}
