#include "suite/tagmap/ape_save.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace tagmap {

namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::APE::Tag;

constexpr unsigned FooterSize = 32; // and the header's
constexpr unsigned ItemHeaderSize = 8;
constexpr long Id3v1Size = 128;
constexpr unsigned VersionAt = 8;
constexpr unsigned SizeAt = 12;
constexpr unsigned CountAt = 16;
constexpr unsigned FlagsAt = 20;
// More than any tag has. A change can bring all of them into an ID3v2 tag, where
// each is looked for among the others.
constexpr unsigned MostItems = 1000;
constexpr unsigned OldVersion = 1000;
constexpr unsigned NewVersion = 2000;
constexpr unsigned HeaderFlag = 0x80000000;
// Says that there is none, but the format's own program sets it where there is.
constexpr unsigned FooterFlag = 0x40000000;

struct RawTag {
    unsigned Count = 0;
    ByteVector Items;
};

// Empty if there is no tag. `end` is where it would end.
ByteVector ReadFooter(TagLib::File& file, int64_t end) {
    if (end < FooterSize)
        return ByteVector();
    file.seek(static_cast<long>(end - FooterSize));
    const ByteVector footer = file.readBlock(FooterSize);
    return footer.startsWith(Tag::fileIdentifier()) ? footer : ByteVector();
}

// The bytes between header and footer. Nothing if the footer says what is
// wrong, or what the library would not write again.
std::optional<RawTag> ReadRaw(TagLib::File& file, int64_t end, const ByteVector& footer) {
    const unsigned version = footer.toUInt(VersionAt, false);
    const unsigned size = footer.toUInt(SizeAt, false);
    const unsigned flags = footer.toUInt(FlagsAt, false);
    const bool hasHeader = (flags & HeaderFlag) != 0;
    const int64_t begin = end - size - (hasHeader ? FooterSize : 0);
    if (size < FooterSize || begin < 0 || (flags & ~(HeaderFlag | FooterFlag)) != 0 ||
        (version != OldVersion && version != NewVersion))
        return std::nullopt;
    file.seek(static_cast<long>(begin));
    if (hasHeader && !file.readBlock(FooterSize).startsWith(Tag::fileIdentifier()))
        return std::nullopt;
    return RawTag{footer.toUInt(CountAt, false), file.readBlock(size - FooterSize)};
}

// The size of the item at `at`, 0 if it isn't whole.
unsigned ItemSize(const ByteVector& items, unsigned at) {
    if (items.size() - at < ItemHeaderSize)
        return 0;
    const int zero = items.find('\0', at + ItemHeaderSize);
    if (zero < 0)
        return 0;
    const unsigned value = items.toUInt(at, false);
    const unsigned valueAt = static_cast<unsigned>(zero) + 1;
    return value <= items.size() - valueAt ? valueAt + value - at : 0;
}

bool Survives(const ByteVector& item, const Tag& tag) {
    const auto keyEnd = static_cast<unsigned>(item.find('\0', ItemHeaderSize));
    const String key(item.mid(ItemHeaderSize, keyEnd - ItemHeaderSize), String::Latin1);
    const auto found = tag.itemListMap().find(key.upper());
    return found != tag.itemListMap().end() && found->second.render() == item;
}

bool IsPadding(const ByteVector& bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == 0; });
}

} // namespace

bool ApeSurvivesSave(TagLib::File& file, const Tag* tag, bool hasId3v1) {
    const int64_t end = int64_t{file.length()} - (hasId3v1 ? Id3v1Size : 0);
    const ByteVector footer = ReadFooter(file, end);
    if (footer.isEmpty())
        return true;
    const std::optional<RawTag> raw = ReadRaw(file, end, footer);
    // As many different keys as items: none stands twice.
    if (!raw || !tag || raw->Count != tag->itemListMap().size() || raw->Count > MostItems)
        return false;
    unsigned at = 0;
    for (unsigned item = 0; item < raw->Count; ++item) {
        const unsigned size = ItemSize(raw->Items, at);
        if (size == 0 || !Survives(raw->Items.mid(at, size), *tag))
            return false;
        at += size;
    }
    return IsPadding(raw->Items.mid(at));
}

} // namespace tagmap
