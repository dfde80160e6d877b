#include "suite/tagmap/mp4_boxes.h"

#include <algorithm>
#include <cstdint>

namespace tagmap {

namespace {
using TagLib::MP4::Atom;
using TagLib::MP4::AtomList;
using TagLib::MP4::Atoms;

// Size, name, version and flags stand before the count, the count before the
// entries.
constexpr long CountAt = 12;
constexpr int64_t EntriesAt = 16;

// What stands in the place of a short size.
constexpr unsigned UpToTheFilesEnd = 0;
constexpr unsigned LongSizeFollows = 1;

unsigned StoredSize(TagLib::MP4::File& file, const Atom& box) {
    file.seek(box.offset);
    return file.readBlock(sizeof(uint32_t)).toUInt();
}

bool TablesFit(TagLib::MP4::File& file, Atom& movie, const char* name, int64_t entrySize) {
    const AtomList tables = movie.findall(name, true);
    return std::all_of(tables.begin(), tables.end(), [&](const Atom* table) {
        file.seek(table->offset + CountAt);
        const int64_t count = file.readBlock(sizeof(uint32_t)).toUInt();
        return StoredSize(file, *table) != LongSizeFollows &&
               EntriesAt + count * entrySize <= table->length;
    });
}

int64_t EndOf(const Atom& box) {
    return int64_t{box.offset} + box.length;
}

// The box and all within it. Of one that reaches further than what is around it,
// or up to the file's end, the library hides what follows: a zero at the end of
// user data, which QuickTime writes, is such a box.
bool BoxFits(TagLib::MP4::File& file, const Atom& box, int64_t end) {
    return StoredSize(file, box) != UpToTheFilesEnd && EndOf(box) <= end &&
           std::all_of(box.children.begin(), box.children.end(),
                       [&](const Atom* child) { return BoxFits(file, *child, EndOf(box)); });
}

// A new list goes right behind the short head of the user data, or of the movie.
bool ListHasAPlace(TagLib::MP4::File& file, Atom& movie) {
    Atom* const list = movie.find("udta", "meta", "ilst");
    Atom* const userData = movie.find("udta");
    const Atom* place = list ? list : userData ? userData : &movie;
    return StoredSize(file, *place) != LongSizeFollows;
}

// The movie's own tables are mended, these are not.
bool HoldsOtherPlaces(const Atoms& boxes) {
    return std::any_of(boxes.atoms.begin(), boxes.atoms.end(), [](Atom* box) {
        return !box->findall("saio", true).isEmpty() || !box->findall("iloc", true).isEmpty() ||
               !box->findall("cmov", true).isEmpty();
    });
}
} // namespace

bool Mp4BoxesFit(TagLib::MP4::File& file) {
    Atoms boxes(&file);
    const auto movies = std::count_if(boxes.atoms.begin(), boxes.atoms.end(),
                                      [](const Atom* box) { return box->name == "moov"; });
    if (movies != 1 || HoldsOtherPlaces(boxes))
        return false;
    Atom& movie = *boxes.find("moov");
    return BoxFits(file, movie, file.length()) && ListHasAPlace(file, movie) &&
           TablesFit(file, movie, "stco", sizeof(uint32_t)) &&
           TablesFit(file, movie, "co64", sizeof(uint64_t));
}

} // namespace tagmap
