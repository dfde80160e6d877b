#include "suite/tagmap/asf_save.h"

#include <tbytevector.h>

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

using namespace std::literals;

namespace tagmap {

namespace {
using TagLib::ByteVector;

constexpr unsigned GuidSize = 16;
constexpr int64_t ObjectHeaderSize = GuidSize + sizeof(uint64_t);
constexpr int64_t FileHeaderSize = ObjectHeaderSize + 6; // a count and two reserved bytes
// Behind the header of the header extension: a GUID, two bytes and a size.
constexpr unsigned ExtensionSizeAt = GuidSize + sizeof(uint16_t);
constexpr unsigned ExtensionHeadSize = ExtensionSizeAt + sizeof(uint32_t);

constexpr auto DescriptionGuid =
    "\x33\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"sv;
constexpr auto ExtendedDescriptionGuid =
    "\x40\xA4\xD0\xD2\x07\xE3\xD2\x11\x97\xF0\x00\xA0\xC9\x5E\xA8\x50"sv;
constexpr auto ExtensionGuid = "\xB5\x03\xBF\x5F\x2E\xA9\xCF\x11\x8E\xE3\x00\xC0\x0C\x20\x53\x65"sv;
constexpr auto MetadataGuid = "\xEA\xCB\xF8\xC5\xAF\x5B\x77\x48\x84\x67\xAA\x8C\x44\xFA\x4C\xCA"sv;
constexpr auto LibraryGuid = "\x94\x1C\x23\x44\x98\x94\xD1\x49\xA1\x41\x1D\x13\x4E\x45\x70\x54"sv;

// Lengths of names and of the description's texts have 16 bits, and a save adds
// a zero of two bytes.
constexpr unsigned LongestShortText = 65532;
// A save counts the attributes of an object in 16 bits, and a change adds some.
constexpr unsigned MostAttributes = 60000;

// Takes fields from the front of an object's content; false from the first that
// isn't there on.
class Fields {
public:
    explicit Fields(const ByteVector& bytes) : bytes_(bytes) {}

    bool Short(unsigned& number) { return Number(sizeof(uint16_t), number); }
    bool Long(unsigned& number) { return Number(sizeof(uint32_t), number); }
    bool Bytes(unsigned size, std::string_view& bytes) {
        if (size > bytes_.size() - at_)
            return false;
        bytes = std::string_view(bytes_.data() + at_, size);
        at_ += size;
        return true;
    }
    bool AtEnd() const { return at_ == bytes_.size(); }

private:
    bool Number(unsigned size, unsigned& number) {
        std::string_view bytes;
        if (!Bytes(size, bytes))
            return false;
        number = 0;
        for (unsigned index = size; index > 0; --index)
            number = number << 8 | static_cast<unsigned char>(bytes[index - 1]);
        return true;
    }

    const ByteVector& bytes_;
    unsigned at_ = 0;
};

// UTF-16 with nothing behind its first zero, where the library ends the text.
bool IsWholeText(std::string_view text) {
    if (text.size() % sizeof(char16_t) != 0)
        return false;
    bool ended = false;
    for (size_t at = 0; at < text.size(); at += sizeof(char16_t)) {
        const bool isZero = text[at] == '\0' && text[at + 1] == '\0';
        if (ended && !isZero)
            return false;
        ended = isZero;
    }
    return true;
}

bool IsShortText(std::string_view text) {
    return text.size() <= LongestShortText && IsWholeText(text);
}

bool DescriptionSurvives(const ByteVector& content) {
    constexpr int texts = 5;
    Fields fields(content);
    unsigned sizes[texts] = {};
    for (unsigned& size : sizes)
        if (!fields.Short(size))
            return false;
    for (const unsigned size : sizes) {
        std::string_view text;
        if (!fields.Bytes(size, text) || !IsShortText(text))
            return false;
    }
    return fields.AtEnd();
}

enum class Place { Description, Metadata, Library };

// The value has the size that its type has there.
bool IsValue(unsigned type, std::string_view value, Place place) {
    enum { Text, Binary, Flag, Long, LongLong, Short, Guid };
    switch (type) {
    case Text:
        return IsWholeText(value);
    case Binary:
        return true;
    case Flag:
        return value.size() == (place == Place::Description ? sizeof(uint32_t) : sizeof(uint16_t));
    case Long:
        return value.size() == sizeof(uint32_t);
    case LongLong:
        return value.size() == sizeof(uint64_t);
    case Short:
        return value.size() == sizeof(uint16_t);
    case Guid:
        return value.size() == GuidSize;
    default:
        return false;
    }
}

bool DescriptionAttributeSurvives(Fields& fields) {
    unsigned nameSize = 0;
    unsigned type = 0;
    unsigned size = 0;
    std::string_view name;
    std::string_view value;
    return fields.Short(nameSize) && fields.Bytes(nameSize, name) && fields.Short(type) &&
           fields.Short(size) && fields.Bytes(size, value) && IsShortText(name) &&
           IsValue(type, value, Place::Description);
}

bool MetadataAttributeSurvives(Fields& fields, Place place) {
    unsigned language = 0;
    unsigned stream = 0;
    unsigned nameSize = 0;
    unsigned type = 0;
    unsigned size = 0;
    std::string_view name;
    std::string_view value;
    // In the metadata object the first field is reserved, and not read.
    return fields.Short(language) && fields.Short(stream) && fields.Short(nameSize) &&
           fields.Short(type) && fields.Long(size) && fields.Bytes(nameSize, name) &&
           fields.Bytes(size, value) && IsShortText(name) && IsValue(type, value, place) &&
           (place == Place::Library || language == 0);
}

// The header's objects, one after the other.
class Header {
public:
    explicit Header(TagLib::IOStream& stream) : stream_(stream) {}

    bool Survives() {
        const ByteVector head = BytesAt(0, FileHeaderSize);
        if (head.size() != FileHeaderSize)
            return false;
        const int64_t size = head.mid(GuidSize).toLongLong(false);
        const unsigned count = head.mid(static_cast<unsigned>(ObjectHeaderSize)).toUInt(false);
        return size >= FileHeaderSize && size <= stream_.length() &&
               ObjectsSurvive(FileHeaderSize, size) && objects_ == count + nested_ &&
               attributes_ <= MostAttributes;
    }

private:
    ByteVector BytesAt(int64_t offset, int64_t count) {
        stream_.seek(static_cast<long>(offset), TagLib::IOStream::Beginning);
        return stream_.readBlock(static_cast<unsigned long>(count));
    }

    // The objects fill the place exactly.
    bool ObjectsSurvive(int64_t begin, int64_t end) {
        while (begin < end) {
            if (end - begin < ObjectHeaderSize)
                return false;
            const ByteVector header = BytesAt(begin, ObjectHeaderSize);
            const int64_t size = header.mid(GuidSize).toLongLong(false);
            if (size < ObjectHeaderSize || size > end - begin ||
                !ObjectSurvives(std::string(header.data(), GuidSize), begin + ObjectHeaderSize,
                                size - ObjectHeaderSize))
                return false;
            ++objects_;
            begin += size;
        }
        return true;
    }

    bool ObjectSurvives(const std::string& guid, int64_t at, int64_t size) {
        if (guid == ExtensionGuid)
            return IsOnlyOne(guid) && ExtensionSurvives(at, size);
        if (guid == DescriptionGuid)
            return IsOnlyOne(guid) && DescriptionSurvives(BytesAt(at, size));
        if (guid == ExtendedDescriptionGuid)
            return IsOnlyOne(guid) && AttributesSurvive(BytesAt(at, size), Place::Description);
        if (guid == MetadataGuid)
            return IsOnlyOne(guid) && AttributesSurvive(BytesAt(at, size), Place::Metadata);
        if (guid == LibraryGuid)
            return IsOnlyOne(guid) && AttributesSurvive(BytesAt(at, size), Place::Library);
        return true;
    }

    // Of two objects with texts the library would fill one.
    bool IsOnlyOne(const std::string& guid) { return seen_.insert(guid).second; }

    bool ExtensionSurvives(int64_t at, int64_t size) {
        if (isInExtension_ || size < int64_t{ExtensionHeadSize})
            return false;
        isInExtension_ = true;
        const ByteVector head = BytesAt(at, ExtensionHeadSize);
        const unsigned before = objects_;
        if (int64_t{head.toUInt(ExtensionSizeAt, false)} != size - ExtensionHeadSize ||
            !ObjectsSurvive(at + ExtensionHeadSize, at + size))
            return false;
        nested_ = objects_ - before;
        isInExtension_ = false;
        return true;
    }

    bool AttributesSurvive(const ByteVector& content, Place place) {
        Fields fields(content);
        unsigned count = 0;
        if (!fields.Short(count))
            return false;
        attributes_ += count;
        for (; count > 0; --count) {
            if (place == Place::Description ? !DescriptionAttributeSurvives(fields)
                                            : !MetadataAttributeSurvives(fields, place))
                return false;
        }
        return fields.AtEnd();
    }

    TagLib::IOStream& stream_;
    std::set<std::string> seen_;
    unsigned objects_ = 0; // those in the header extension too
    unsigned nested_ = 0;  // in the header extension
    unsigned attributes_ = 0;
    bool isInExtension_ = false;
};

} // namespace

bool AsfSurvivesSave(TagLib::IOStream& stream) {
    return Header(stream).Survives();
}

} // namespace tagmap
