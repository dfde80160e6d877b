#include "suite/tagmap/mp4_save.h"

#include "suite/tagmap/mp4_boxes.h"

#include <tbytevectorstream.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tagmap {

namespace {
using TagLib::ByteVector;
using TagLib::MP4::Atom;
using TagLib::MP4::Atoms;

constexpr unsigned BoxHeader = 8;
constexpr char FreeForm[] = "----";
constexpr char GenreByNumber[] = "gnre";
constexpr char GenreByName[] = "\251gen";

struct Box {
    std::string Name;
    ByteVector Content;
};

// The boxes that fill these bytes; nothing if they don't fit.
std::optional<std::vector<Box>> BoxesIn(const ByteVector& bytes) {
    std::vector<Box> boxes;
    for (unsigned at = 0; at < bytes.size();) {
        if (bytes.size() - at < BoxHeader)
            return std::nullopt;
        const unsigned size = bytes.toUInt(at);
        if (size < BoxHeader || size > bytes.size() - at)
            return std::nullopt;
        boxes.push_back({std::string(bytes.data() + at + sizeof(uint32_t), 4),
                         bytes.mid(at + BoxHeader, size - BoxHeader)});
        at += size;
    }
    return boxes;
}

// A "data" box.
struct Value {
    unsigned Type;
    unsigned Locale;
    ByteVector Bytes;
};
using Values = std::vector<Value>;

bool AddValue(const Box& box, Values& values) {
    constexpr unsigned localeAt = 4;
    constexpr unsigned bytesAt = 8;
    const ByteVector& content = box.Content;
    if (box.Name != "data" || content.size() < bytesAt)
        return false;
    values.push_back({content.toUInt(), content.toUInt(localeAt), content.mid(bytesAt)});
    return true;
}

// By the item's name; a free-form one's is followed by its owner and own name.
using Items = std::map<std::string, Values>;

// Behind their version and flags.
bool AddNames(const std::vector<Box>& boxes, std::string& name) {
    constexpr unsigned versionAndFlags = sizeof(uint32_t);
    if (boxes.size() < 2 || boxes[0].Name != "mean" || boxes[1].Name != "name")
        return false;
    for (const Box& box : {boxes[0], boxes[1]}) {
        if (box.Content.size() < versionAndFlags)
            return false;
        const ByteVector text = box.Content.mid(versionAndFlags);
        name += ':';
        name.append(text.data(), text.size());
    }
    return true;
}

bool AddItem(const Box& item, Items& items) {
    const std::optional<std::vector<Box>> boxes = BoxesIn(item.Content);
    std::string name = item.Name;
    const bool isFreeForm = name == FreeForm;
    if (!boxes || (isFreeForm && !AddNames(*boxes, name)))
        return false;
    Values values;
    const bool areValues = std::all_of(boxes->begin() + (isFreeForm ? 2 : 0), boxes->end(),
                                       [&](const Box& box) { return AddValue(box, values); });
    return areValues && items.emplace(name, values).second;
}

// Nothing if an item stands twice, or holds something beside its values.
std::optional<Items> ItemsIn(const ByteVector& list) {
    const std::optional<std::vector<Box>> boxes = BoxesIn(list);
    if (!boxes)
        return std::nullopt;
    Items items;
    for (const Box& box : *boxes) {
        const bool isFiller = box.Name == "free" || box.Name == "skip";
        if (!isFiller && !AddItem(box, items))
            return std::nullopt;
    }
    return items;
}

ByteVector MakeBox(const char* name, const ByteVector& content) {
    return ByteVector::fromUInt(content.size() + BoxHeader) + ByteVector(name, 4) + content;
}

ByteVector FileWith(const ByteVector& items) {
    const ByteVector versionAndFlags(4, '\0');
    const ByteVector handler =
        MakeBox("hdlr", ByteVector(8, '\0') + ByteVector("mdirappl") + ByteVector(9, '\0'));
    const ByteVector meta = MakeBox("meta", versionAndFlags + handler + MakeBox("ilst", items));
    return MakeBox("ftyp", ByteVector("M4A ") + versionAndFlags) +
           MakeBox("moov", MakeBox("udta", meta));
}

ByteVector ContentOf(TagLib::MP4::File& file, const Atom& box) {
    file.seek(box.offset + static_cast<long>(BoxHeader));
    return file.readBlock(static_cast<unsigned long>(box.length) - BoxHeader);
}

ByteVector SavedItems(const ByteVector& items) {
    TagLib::ByteVectorStream stream(FileWith(items));
    TagLib::MP4::File file(&stream, false);
    if (!file.isValid() || !file.save())
        return ByteVector();
    Atoms boxes(&file);
    Atom* list = boxes.find("moov", "udta", "meta", "ilst");
    return list ? ContentOf(file, *list) : ByteVector();
}

// "trkn" and "disk".
bool IsPair(const std::string& name) {
    return name == "trkn" || name == "disk";
}

ByteVector WithoutZerosBehind(ByteVector bytes) {
    while (!bytes.isEmpty() && bytes[static_cast<int>(bytes.size()) - 1] == '\0')
        bytes.resize(bytes.size() - 1);
    return bytes;
}

bool IsNumber(const Value& value) {
    constexpr unsigned implicit = 0;
    constexpr unsigned integer = 21;
    constexpr unsigned unsignedInteger = 22;
    const unsigned size = value.Bytes.size();
    return (value.Type == implicit || value.Type == integer || value.Type == unsignedInteger) &&
           (size == 1 || size == 2 || size == 4 || size == 8);
}

bool IsSameNumber(const Value& before, const Value& after) {
    constexpr unsigned widest = 8;
    const auto widened = [](const ByteVector& bytes) {
        return ByteVector(widest - bytes.size(), '\0') + bytes;
    };
    return IsNumber(before) && IsNumber(after) && widened(before.Bytes) == widened(after.Bytes);
}

bool IsSame(const std::string& name, const Value& before, const Value& after) {
    if (before.Locale != after.Locale || (name[0] == '-' && before.Type != after.Type))
        return false;
    if (IsPair(name))
        return WithoutZerosBehind(before.Bytes) == WithoutZerosBehind(after.Bytes);
    return before.Bytes == after.Bytes || IsSameNumber(before, after);
}

// It has become the name, where the library knows one.
bool IsNamedGenre(const Values& before, const Values* after) {
    return before.size() == 1 && after && after->size() == 1 && !after->front().Bytes.isEmpty();
}

const Values* Find(const Items& items, const std::string& name) {
    const auto found = items.find(name);
    return found == items.end() ? nullptr : &found->second;
}

bool ItemSurvives(const std::string& name, const Values& before, const Items& saved) {
    const Values* after = Find(saved, name);
    if (!after)
        return name == GenreByNumber && IsNamedGenre(before, Find(saved, GenreByName));
    return std::equal(before.begin(), before.end(), after->begin(), after->end(),
                      [&](const Value& a, const Value& b) { return IsSame(name, a, b); });
}

// Of another handler is what QuickTime keeps under numbered keys, for one; the
// library writes items as if it were its list.
bool IsItemListOrNone(TagLib::MP4::File& file, const Atom& meta) {
    constexpr unsigned handlerAt = 8;
    return std::all_of(meta.children.begin(), meta.children.end(), [&](const Atom* box) {
        return box->name != "hdlr" || ContentOf(file, *box).mid(handlerAt, 4) == "mdir";
    });
}

} // namespace

bool Mp4ItemsSurviveSave(const ByteVector& items) {
    const std::optional<Items> before = ItemsIn(items);
    if (!before)
        return false;
    const std::optional<Items> after = ItemsIn(SavedItems(items));
    return after && after->size() == before->size() &&
           std::all_of(before->begin(), before->end(), [&](const auto& item) {
               return ItemSurvives(item.first, item.second, *after);
           });
}

bool Mp4SurvivesSave(TagLib::MP4::File& file) {
    if (!Mp4BoxesFit(file))
        return false;
    Atoms boxes(&file);
    const Atom* meta = boxes.find("moov", "udta", "meta");
    if (meta && !IsItemListOrNone(file, *meta))
        return false;
    const Atom* list = boxes.find("moov", "udta", "meta", "ilst");
    return !list || Mp4ItemsSurviveSave(ContentOf(file, *list));
}

} // namespace tagmap
