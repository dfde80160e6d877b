#pragma once

#include "codec/audio_info.h"

#include <cstdint>

// What the test plug-ins do. A plug-in finds the script of the program that
// loaded it by an environment variable, whose text is the script's address in
// decimal, and hands all calls on to it; without a script it is a plug-in that
// can't make an instance. `plugin` is the name of the plug-in's file, so that
// copies of one plug-in can behave differently.
class PluginScript {
public:
    static constexpr wchar_t Variable[] = L"TONEWRIGHT_PLUGIN_SCRIPT";

    virtual ~PluginScript() = default;
    virtual void Loaded(const wchar_t* plugin) = 0;
    virtual void Unloaded(const wchar_t* plugin) = 0;
    virtual void* Create(const wchar_t* plugin, void* logContext) = 0;
    virtual void Destroy(const wchar_t* plugin, void* instance) = 0;
    virtual int32_t Get(const wchar_t* plugin, void* instance, const wchar_t* what,
                        void* record) = 0;
    virtual int32_t Open(const wchar_t* plugin, void* instance, clAudioInfo* info) = 0;
    // One of the five exports that are never called was called.
    virtual void Misused(const wchar_t* plugin) = 0;
    // The plug-in's next call throws, from its own code.
    virtual bool Throws() const = 0;
};
