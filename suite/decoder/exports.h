#pragma once

#include "codec/audio_info.h"

// The exports of the plug-in, under the names that tonewright_decoder.def gives
// them. All take null for any pointer, and answer 0 then. No exception leaves
// them.
//
// The plug-in tells what files are. It decodes no samples and changes no file:
// the last three, and Set, do nothing and answer 0.
extern "C" {
void* TonewrightDecoderCreate(void* logContext); // writes no log
void TonewrightDecoderDestroy(void* instance);
int32_t TonewrightDecoderGet(void* instance, const wchar_t* what, void* record);
int32_t TonewrightDecoderSet(void* instance, const wchar_t* what, const void* record);
int32_t TonewrightDecoderOpen(void* instance, clAudioInfo* info);
// Frees the blobs of the last Open; the file itself is closed already.
int32_t TonewrightDecoderClose(void* instance);
int32_t TonewrightDecoderDecodeBlock(void* instance, void* block);
int32_t TonewrightDecoderSetPosition(void* instance, int64_t position);
int32_t TonewrightDecoderDeleteATag(void* instance, const wchar_t* path);
}
