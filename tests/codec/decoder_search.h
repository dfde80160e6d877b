#pragma once

#include "codec/codec_handler.h"
#include "foundation/nreg.h"
#include "tests/codec/plugins/plugin_folder.h"
#include "tests/codec/plugins/recording_script.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/private_current_user.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

// What the tests of the search share: a `decoder` folder, a registry, and one
// decoder and one handler, as a loop over a list of files has them.
class DecoderSearch : public testing::Test {
protected:
    explicit DecoderSearch(PrivateCurrentUser::Kind kind = PrivateCurrentUser::Kind::Ordinary)
        : user_(kind) {}

    // Adds a plug-in that claims the extensions; returns its path.
    NString AddPlugin(const wchar_t* name, std::vector<std::wstring> extensions) {
        script_.claims[name] = std::move(extensions);
        return folder_.Add(name);
    }
    bool Find(const wchar_t* path) {
        return handler_.FindDecoder(path, decoder_, &context_, folder_.Module());
    }
    // The calls that the plug-ins got for this file.
    std::vector<std::wstring> CallsOfFind(const wchar_t* path) {
        script_.calls.clear();
        found_ = Find(path);
        return script_.calls;
    }
    static NString Cached(const wchar_t* extension) {
        return NRegReadString(extension, HKEY_CURRENT_USER, DecoderCacheKey);
    }
    static bool IsCached(const wchar_t* extension) {
        return NRegValueExists(extension, HKEY_CURRENT_USER, DecoderCacheKey);
    }
    static void SetCached(const wchar_t* extension, const NString& library) {
        NRegWriteString(library.Text, extension, HKEY_CURRENT_USER, DecoderCacheKey);
    }
    static void ForgetCached(const wchar_t* extension) {
        NRegDeleteValue(extension, HKEY_CURRENT_USER, DecoderCacheKey);
    }
    void ExpectNothingFound() {
        EXPECT_FALSE(found_);
        EXPECT_EQ(handler_.Extension, L"");
        EXPECT_EQ(handler_.DecoderPath, L"");
    }

    PrivateCurrentUser user_;
    PluginFolder folder_;
    RecordingScript script_;
    NLogContext context_ = {};
    cltNDecoder decoder_;
    cltNCodecHandler handler_;
    bool found_ = false; // by the last CallsOfFind
};
