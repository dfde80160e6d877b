#pragma once

#include "suite/tagmap/id3v2_tags.h"

#include <id3v2framefactory.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <tbytevectorstream.h>

#include <string>
#include <utility>
#include <vector>

// ID3v2 tags as bytes, made and taken apart without the library.
namespace tagmap {

using RawFrame = std::pair<std::string, std::string>; // id, and what follows the frame's header
using RawFrames = std::vector<RawFrame>;

// "\1", the mark of the byte order, and little-endian units.
inline std::string Utf16(const std::wstring& text) {
    std::string bytes("\xff\xfe");
    for (const wchar_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}
inline std::string Utf16Text(const std::wstring& text) {
    return std::string("\1") + Utf16(text);
}
inline std::string Latin1Text(const std::string& text) {
    return std::string(1, '\0') + text;
}
inline std::string Utf8Text(const std::string& text) {
    return std::string("\3") + text;
}

inline std::string BigEndian(uint32_t number, int bits) {
    std::string bytes;
    const uint32_t mask = (1u << bits) - 1;
    for (int place = 3; place >= 0; --place)
        bytes += static_cast<char>((number >> (bits * place)) & mask);
    return bytes;
}

inline constexpr int PlainBits = 8;
inline constexpr int SynchSafeBits = 7;

// `flags` are the two bytes of every frame.
inline std::string TagBytes(int version, const RawFrames& frames,
                            const std::string& flags = std::string(2, '\0')) {
    std::string body;
    for (const auto& [id, fields] : frames) {
        const auto size = static_cast<uint32_t>(fields.size());
        if (version == 2)
            body += id + BigEndian(size, PlainBits).substr(1) + fields;
        else
            body += id + BigEndian(size, version == 4 ? SynchSafeBits : PlainBits) + flags + fields;
    }
    body += std::string(32, '\0');
    return std::string("ID3") + static_cast<char>(version) + std::string(2, '\0') +
           BigEndian(static_cast<uint32_t>(body.size()), SynchSafeBits) + body;
}

inline uint32_t Number(const std::string& bytes, int bits) {
    uint32_t number = 0;
    for (const char byte : bytes)
        number = (number << bits) | static_cast<unsigned char>(byte);
    return number;
}

// The frames of a tag of version 3 or 4.
inline RawFrames FramesIn(const std::string& tag) {
    const int bits = tag[3] == 4 ? SynchSafeBits : PlainBits;
    RawFrames frames;
    for (size_t at = 10; at + 10 <= tag.size() && tag[at] != 0;) {
        const uint32_t size = Number(tag.substr(at + 4, 4), bits);
        frames.emplace_back(tag.substr(at, 4), tag.substr(at + 10, size));
        at += 10 + size;
    }
    return frames;
}

// The frames of one id, with "|" between what they hold.
inline std::string FramesIn(const std::string& tag, const std::string& wanted) {
    std::string found;
    for (const auto& [id, fields] : FramesIn(tag))
        if (id == wanted)
            found += (found.empty() ? "" : "|") + fields;
    return found;
}

inline std::string FrameIdsIn(const std::string& tag) {
    std::string ids;
    for (const auto& [id, fields] : FramesIn(tag))
        ids += (ids.empty() ? "" : "|") + id;
    return ids;
}

// A tag as the library reads it from the bytes of a file; without bytes a new
// one.
class TagInFile {
public:
    explicit TagInFile(const std::string& bytes = std::string())
        : stream_(TagLib::ByteVector(bytes.data(), static_cast<unsigned>(bytes.size()))),
          file_(&stream_, TagLib::ID3v2::FrameFactory::instance(), false) {}
    TagInFile(int version, const RawFrames& frames) : TagInFile(TagBytes(version, frames)) {}

    TagLib::ID3v2::Tag& Tag() { return *file_.ID3v2Tag(true); }
    std::string Saved(int version) {
        PrepareId3v2Save(Tag(), version);
        const TagLib::ByteVector bytes =
            Tag().render(version == 3 ? TagLib::ID3v2::v3 : TagLib::ID3v2::v4);
        return std::string(bytes.data(), bytes.size());
    }

private:
    TagLib::ByteVectorStream stream_;
    TagLib::MPEG::File file_;
};

} // namespace tagmap
