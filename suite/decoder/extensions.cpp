#include "suite/decoder/extensions.h"

#include <iterator>

namespace decoder {

namespace {
constexpr const wchar_t* Extensions[] = {
    L".mp3",  L".mp2", L".mp1", L".mpga",                    // MPEG audio
    L".flac", L".ogg", L".oga", L".opus", L".spx",           // FLAC and Ogg
    L".m4a",  L".m4b", L".m4r", L".mp4",                     // MP4
    L".wma",  L".wav", L".aif", L".aiff", L".aifc",          // ASF, WAV, AIFF
    L".ape",  L".wv",  L".mpc", L".mp+",  L".mpp",  L".tta", // lossless kin and Musepack
    L".it",   L".s3m", L".xm",  L".mod",                     // tracker modules
};
} // namespace

const wchar_t* ExtensionAt(uint32_t index) {
    return index < std::size(Extensions) ? Extensions[index] : nullptr;
}

} // namespace decoder
