#pragma once

#include "tests/tagmap/file_to_save.h"

#include <oggfile.h>

#include <string>
#include <vector>

// Vorbis comments as bytes, and the packets of Ogg files that hold them.
namespace tagmap {

inline std::string VorbisListBytes(const std::vector<std::string>& entries,
                                   const std::string& vendor = "vendor") {
    std::string bytes = LittleEndian(vendor.size()) + vendor + LittleEndian(entries.size());
    for (const std::string& entry : entries)
        bytes += LittleEndian(entry.size()) + entry;
    return bytes;
}

// A PICTURE block's data: a front cover without any facts.
inline std::string PictureBytes(const std::string& mimeType, const std::string& image) {
    return BigEndian(3) + BigEndian(mimeType.size()) + mimeType + BigEndian(0) +
           std::string(16, '\0') + BigEndian(image.size()) + image;
}

inline TagLib::ByteVector VectorOf(const std::string& bytes) {
    return TagLib::ByteVector(bytes.data(), static_cast<unsigned>(bytes.size()));
}

inline std::string Base64(const std::string& bytes) {
    const TagLib::ByteVector text = VectorOf(bytes).toBase64();
    return std::string(text.data(), text.size());
}

// An Ogg file of any kind, as its packets.
class OggPackets : public TagLib::Ogg::File {
public:
    explicit OggPackets(const std::wstring& path) : File(path.c_str()) {}
    TagLib::Tag* tag() const override { return nullptr; }
    TagLib::AudioProperties* audioProperties() const override { return nullptr; }

    std::string Bytes(unsigned index) {
        const TagLib::ByteVector bytes = packet(index);
        return std::string(bytes.data(), bytes.size());
    }
};

// A sample whose second packet is another.
inline std::string SampleWithPacket(const char* sample, const std::string& packet) {
    const FileToSave file(SampleContent(sample));
    {
        OggPackets packets(file.Path());
        packets.setPacket(1, VectorOf(packet));
        packets.save();
    }
    return file.Content();
}

inline std::string SecondPacket(const FileToSave& file) {
    OggPackets packets(file.Path());
    return packets.Bytes(1);
}

} // namespace tagmap
