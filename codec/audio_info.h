#pragma once

#include <cstddef>
#include <cstdint>

// What crosses the boundary to a decoder plug-in: a library that tells what an
// audio file is. Plug-ins are built apart from the module, so names, offsets
// and sizes are a binary contract. Pointers are 64 bits wide, numbers
// little-endian, texts UTF-16 with a terminator; one instance is used by one
// thread at a time.
//
// A plug-in has nine exports by plain name. One that lacks any is refused; the
// module calls the first three and "Open".
inline constexpr const char* DecoderExportNames[] = {
    "Create", "Destroy", "Get", "Set", "Open", "Close", "DecodeBlock", "SetPosition", "DeleteATag",
};

// A new instance, or null on failure. The log context is the module's.
using DecoderCreate = void*(void* logContext);
using DecoderDestroy = void(void* instance);
// Non-zero on success. `what` names the record (see below).
using DecoderGet = int32_t(void* instance, const wchar_t* what, void* record);
struct clAudioInfo;
// Reads what is asked for. Non-zero on success.
using DecoderOpen = int32_t(void* instance, clAudioInfo* info);
// The other five are bound, and never called by the module.
using DecoderUncalled = void();

// Of Get: the plug-in's extensions, one per call.
inline constexpr wchar_t DecoderGetDecodes[] = L"Decodes";

// The record of "Decodes". The caller zeroes it and sets `Index`.
struct clDecodesInfo {
    uint32_t Index; // of the wanted extension, from 0
    uint8_t Unused4[20];
    // With its leading dot; null means that there are no more. The plug-in
    // keeps it until the next call on the instance.
    const wchar_t* Extension;
    uint8_t Unused32[24];
};
static_assert(sizeof(clDecodesInfo) == 56);
static_assert(offsetof(clDecodesInfo, Index) == 0);
static_assert(offsetof(clDecodesInfo, Extension) == 24);

// What the module asks Open for.
inline constexpr uint32_t AudioInfoRequest = 28;
// The `FormatTag` of floating-point samples. All others count as integers.
inline constexpr uint16_t FormatFloat = 3;

// The record of Open. The caller zeroes it and sets `Path` and `Request`; the
// plug-in fills in the rest. `FormatTag` to `BitsPerSample` lie as they do in
// the platform's WAVEFORMATEX.
//
// `Tags` and `TechInfo` point to serialised clTagRecords, or are null. The
// plug-in owns them, and keeps them until the next call on the instance; the
// caller reads them at once.
#pragma pack(push, 1)
struct clAudioInfo {
    const wchar_t* Path; // of the file to read; the caller's
    uint32_t Request;    // mask of what is wanted
    uint16_t FormatTag;
    uint16_t Channels;
    uint32_t SampleRate;     // samples per second
    uint32_t AvgBytesPerSec; // of the audio uncompressed
    uint16_t BlockAlign;     // not read by the module
    uint16_t BitsPerSample;
    uint8_t Unused28[24];
    uint32_t BitRate; // of the file, average, in bits per second
    int64_t LengthMs;
    int64_t FileSize; // on disk, in bytes
    uint8_t Unused72[8];
    const void* Tags;      // what the file's tag holds
    uint32_t TagsSize;     // bytes
    const void* TechInfo;  // "encoder", "encoder settings", "audio quality", "contains",
                           // "channel mapping"
    uint32_t TechInfoSize; // bytes
    uint8_t Unused104[24];
};
#pragma pack(pop)
static_assert(sizeof(clAudioInfo) == 128);
static_assert(offsetof(clAudioInfo, Path) == 0);
static_assert(offsetof(clAudioInfo, Request) == 8);
static_assert(offsetof(clAudioInfo, FormatTag) == 12);
static_assert(offsetof(clAudioInfo, Channels) == 14);
static_assert(offsetof(clAudioInfo, SampleRate) == 16);
static_assert(offsetof(clAudioInfo, AvgBytesPerSec) == 20);
static_assert(offsetof(clAudioInfo, BlockAlign) == 24);
static_assert(offsetof(clAudioInfo, BitsPerSample) == 26);
static_assert(offsetof(clAudioInfo, BitRate) == 52);
static_assert(offsetof(clAudioInfo, LengthMs) == 56);
static_assert(offsetof(clAudioInfo, FileSize) == 64);
static_assert(offsetof(clAudioInfo, Tags) == 80);
static_assert(offsetof(clAudioInfo, TagsSize) == 88);
static_assert(offsetof(clAudioInfo, TechInfo) == 92);
static_assert(offsetof(clAudioInfo, TechInfoSize) == 100);
