#pragma once

#include "codec/audio_info.h"
#include "codec/tag_record.h"
#include "codec/trace.h"
#include "foundation/ndll.h"
#include "foundation/nstring.h"

// One decoder plug-in, bound, with one live instance at most:
//
//     empty    no library
//     loaded   library and entry points; LoadFor leads here
//     live     an instance too; CreateInstance leads here, DestroyInstance back
//
// Unload leads back to empty. Nothing here shows a message. Owns the library
// and the instance; used by one thread at a time. The order of the fields is
// part of the contract.
//
// What a plug-in returns is not believed: null results end in "false" or 0,
// C++ exceptions that it lets out count as failures, and texts and records are
// read only as far as there is memory to read. A crash in the plug-in's own
// code, one that writes where it should not, or an exception of another
// compiler's, which is no C++ exception here, can't be kept from the process
// that it lives in.
class cltNDecoder : public NDLL {
public:
    // Empty.
    cltNDecoder();
    ~cltNDecoder() override;

    // Binds the nine entry points of the library, and returns `Loaded`. A
    // library that lacks one is refused, and stays loaded all the same. With a
    // library loaded already, nothing is done.
    bool Load(const wchar_t* path) override;
    // Unloads, and loads another. `Extension` and `Path` take the arguments on
    // success, and are empty on failure.
    bool LoadFor(const NString& path, const NString& extension);
    void Unload();

    // Drops the present instance for a new one. False without one.
    bool CreateInstance(NLogContext* logContext);
    void DestroyInstance();

    // The plug-in's results, non-zero on success; 0 without an instance.
    int32_t Get(const wchar_t* what, void* record);
    int32_t Open(clAudioInfo* info);

    NString Extension; // that the library was accepted for, with its dot
    NString Path;      // of the library, in full
    void* Handle = nullptr;
    // A struct, since two of the operations have the names of two of these.
    struct EntryPoints {
        DecoderCreate* Create = nullptr;
        DecoderDestroy* Destroy = nullptr;
        DecoderGet* Get = nullptr;
        DecoderUncalled* Set = nullptr;
        DecoderOpen* Open = nullptr;
        DecoderUncalled* Close = nullptr;
        DecoderUncalled* DecodeBlock = nullptr;
        DecoderUncalled* SetPosition = nullptr;
        DecoderUncalled* DeleteATag = nullptr;
    } Entry;
};

// Takes one of the two records that Open handed out, with its size in bytes:
//
//     TakeDecoderRecord(info.Tags, info.TagsSize, tags);
//
// Without a pointer or a size, the record is empty. A size beyond the memory
// that can be read is cut down to that; one of 2 GiB or more counts as none.
void TakeDecoderRecord(const void* data, uint32_t size, clTagRecord& record);
