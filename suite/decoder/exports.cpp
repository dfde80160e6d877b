#include "suite/decoder/exports.h"

#include "suite/decoder/decoder_instance.h"

namespace {
using decoder::DecoderInstance;

// Calls `action` with the instance. A fault of it, which is memory that a
// hostile file asks for, is a failure.
template <typename Action>
int32_t Guarded(void* instance, Action action) {
    if (!instance)
        return 0;
    try {
        return action(*static_cast<DecoderInstance*>(instance)) ? 1 : 0;
    } catch (...) {
        return 0;
    }
}
} // namespace

void* TonewrightDecoderCreate(void*) {
    try {
        return new DecoderInstance;
    } catch (...) {
        return nullptr;
    }
}

void TonewrightDecoderDestroy(void* instance) {
    delete static_cast<DecoderInstance*>(instance);
}

int32_t TonewrightDecoderGet(void* instance, const wchar_t* what, void* record) {
    return Guarded(instance, [&](DecoderInstance& made) { return made.Get(what, record); });
}

int32_t TonewrightDecoderSet(void*, const wchar_t*, const void*) {
    return 0;
}

int32_t TonewrightDecoderOpen(void* instance, clAudioInfo* info) {
    return Guarded(instance, [&](DecoderInstance& made) { return info && made.Open(*info); });
}

int32_t TonewrightDecoderClose(void* instance) {
    return Guarded(instance, [](DecoderInstance& made) {
        made.Close();
        return true;
    });
}

int32_t TonewrightDecoderDecodeBlock(void*, void*) {
    return 0;
}

int32_t TonewrightDecoderSetPosition(void*, int64_t) {
    return 0;
}

int32_t TonewrightDecoderDeleteATag(void*, const wchar_t*) {
    return 0;
}
