#include "suite/tagmap/mp4_boxes.h"

#include <algorithm>
#include <cstdint>

namespace tagmap {

namespace {
using TagLib::MP4::Atom;

// Size, name, version and flags stand before the count, the count before the
// entries.
constexpr long CountAt = 12;
constexpr int64_t EntriesAt = 16;

bool TablesFit(TagLib::MP4::File& file, Atom& movie, const char* name, int64_t entrySize) {
    const TagLib::MP4::AtomList tables = movie.findall(name, true);
    return std::all_of(tables.begin(), tables.end(), [&](const Atom* table) {
        file.seek(table->offset + CountAt);
        const int64_t count = file.readBlock(sizeof(uint32_t)).toUInt();
        return EntriesAt + count * entrySize <= table->length;
    });
}

bool EndsWithin(const Atom& box, int64_t end) {
    return int64_t{box.offset} + box.length <= end;
}

bool ListFits(TagLib::MP4::File& file, Atom& movie) {
    const Atom* meta = movie.find("udta", "meta");
    if (!meta)
        return true;
    const int64_t end = int64_t{meta->offset} + meta->length;
    return end <= file.length() &&
           std::all_of(meta->children.begin(), meta->children.end(), [&](const Atom* box) {
               return (box->name != "ilst" && box->name != "free") || EndsWithin(*box, end);
           });
}
} // namespace

bool Mp4BoxesFit(TagLib::MP4::File& file) {
    TagLib::MP4::Atoms boxes(&file);
    Atom* movie = boxes.find("moov");
    return movie && ListFits(file, *movie) && TablesFit(file, *movie, "stco", sizeof(uint32_t)) &&
           TablesFit(file, *movie, "co64", sizeof(uint64_t));
}

} // namespace tagmap
