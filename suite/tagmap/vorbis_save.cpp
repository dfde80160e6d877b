#include "suite/tagmap/vorbis_save.h"

#include "suite/tagmap/flac_blocks.h"

#include <algorithm>
#include <string>

namespace tagmap {

namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::Ogg::XiphComment;

constexpr unsigned LengthSize = 4;
constexpr char PictureKey[] = "METADATA_BLOCK_PICTURE";
constexpr char CoverKey[] = "COVERART";

// Takes bytes from the front of a list; once it lacks some, all that follows
// is missing too.
class ListReader {
public:
    explicit ListReader(const ByteVector& bytes) : bytes_(bytes) {}

    unsigned Number() {
        const ByteVector bytes = Take(LengthSize);
        return lacksBytes_ ? 0 : bytes.toUInt(false);
    }
    ByteVector Text() { return Take(Number()); }
    ByteVector Rest() { return Take(bytes_.size() - position_); }
    bool LacksBytes() const { return lacksBytes_; }

private:
    ByteVector Take(unsigned count) {
        if (lacksBytes_ || count > bytes_.size() - position_) {
            lacksBytes_ = true;
            return ByteVector();
        }
        position_ += count;
        return bytes_.mid(position_ - count, count);
    }

    const ByteVector& bytes_;
    unsigned position_ = 0;
    bool lacksBytes_ = false;
};

std::string BytesOf(const ByteVector& bytes) {
    return std::string(bytes.data(), bytes.size());
}

std::string Utf8Of(const String& text) {
    return BytesOf(text.data(String::UTF8));
}

std::string UpperKey(const ByteVector& key) {
    std::string upper = BytesOf(key);
    for (char& letter : upper)
        if (letter >= 'a' && letter <= 'z')
            letter = static_cast<char>(letter - 'a' + 'A');
    return upper;
}

// What a list holds, in an order of its own.
struct Contents {
    std::vector<std::string> Texts; // KEY=value
    unsigned Pictures = 0;
};

// False for an entry that no tag of the library can hold.
bool AddEntry(const ByteVector& entry, Contents& contents) {
    const int separator = entry.find('=');
    if (separator < 1)
        return entry.isEmpty();
    const std::string key = UpperKey(entry.mid(0, static_cast<unsigned>(separator)));
    const ByteVector value = entry.mid(static_cast<unsigned>(separator) + 1);
    if (value.isEmpty())
        return true;
    const bool isPicture = key == PictureKey;
    if (!isPicture && key != CoverKey) {
        contents.Texts.push_back(key + "=" + BytesOf(value));
        return true;
    }
    ++contents.Pictures;
    const ByteVector data = ByteVector::fromBase64(value);
    return !data.isEmpty() && (!isPicture || FlacPictureSurvivesSave(data));
}

std::vector<std::string> TextsOf(const XiphComment& comment) {
    std::vector<std::string> texts;
    for (const auto& [field, values] : comment.fieldListMap())
        for (const String& value : values)
            texts.push_back(Utf8Of(field) + "=" + Utf8Of(value));
    return texts;
}

bool SameTexts(std::vector<std::string> a, std::vector<std::string> b) {
    std::sort(a.begin(), a.end());
    std::sort(b.begin(), b.end());
    return a == b;
}

} // namespace

std::optional<VorbisList> ParseVorbisList(const ByteVector& bytes) {
    ListReader reader(bytes);
    VorbisList list;
    list.Vendor = reader.Text();
    for (unsigned left = reader.Number(); left > 0 && !reader.LacksBytes(); --left)
        list.Entries.push_back(reader.Text());
    if (reader.LacksBytes())
        return std::nullopt;
    list.Behind = reader.Rest();
    return list;
}

bool VorbisSurvivesSave(const VorbisList& list, XiphComment& comment) {
    Contents contents;
    for (const ByteVector& entry : list.Entries)
        if (!AddEntry(entry, contents))
            return false;
    return Utf8Of(comment.vendorID()) == BytesOf(list.Vendor) &&
           contents.Pictures == comment.pictureList().size() &&
           SameTexts(contents.Texts, TextsOf(comment));
}

} // namespace tagmap
