#pragma once

#include <tiostream.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace decoder {

// A box of an MP4 file (ISO/IEC 14496-12, section 4.2): where its content lies.
struct Mp4Box {
    char Type[4] = {};
    int64_t Begin = 0;
    int64_t End = 0;
    bool Is(std::string_view type) const { return std::string_view(Type, 4) == type; }
    int64_t Size() const { return End - Begin; }
};

// The boxes within a place of the file, one after the other. One that is
// malformed or reaches out of the place ends the walk; so does a number of
// boxes that no file of audio has.
class Mp4Walk {
public:
    Mp4Walk(TagLib::IOStream& stream, int64_t begin, int64_t end)
        : stream_(stream), at_(begin), end_(end) {}
    Mp4Walk(TagLib::IOStream& stream, const Mp4Box& parent)
        : Mp4Walk(stream, parent.Begin, parent.End) {}

    std::optional<Mp4Box> Next();
    // The next one of that type.
    std::optional<Mp4Box> Next(std::string_view type);

private:
    TagLib::IOStream& stream_;
    int64_t at_;
    int64_t end_;
    int seen_ = 0;
};

// The first box that is reached by the types of `path`, four letters each:
// "mdiaminfstbl".
std::optional<Mp4Box> FindMp4Box(TagLib::IOStream& stream, const Mp4Box& parent,
                                 std::string_view path);

} // namespace decoder
