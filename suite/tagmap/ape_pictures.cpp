#include "suite/tagmap/ape_pictures.h"

#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/pictures.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

namespace tagmap {

namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::APE::Item;
using TagLib::APE::Tag;

constexpr wchar_t KeyPrefix[] = L"Cover Art (";
constexpr wchar_t KeyEnd[] = L")";
constexpr int PictureTypeUnnamed = 21; // a key that no table has

// Taggers agree on the first ones; of the names of one type the first is
// written.
struct TypeName {
    int Type;
    const wchar_t* Name;
};
constexpr TypeName TypeNames[] = {
    {0, L"Other"},
    {1, L"Icon"},
    {1, L"Png Icon"},
    {1, L"File Icon"},
    {2, L"Other Icon"},
    {2, L"Other File Icon"},
    {3, L"Front"},
    {3, L"Front Cover"},
    {4, L"Back"},
    {4, L"Back Cover"},
    {5, L"Leaflet"},
    {5, L"Leaflet Page"},
    {6, L"Media"},
    {7, L"Lead Artist"},
    {7, L"Lead"},
    {8, L"Artist"},
    {9, L"Conductor"},
    {10, L"Band"},
    {11, L"Composer"},
    {12, L"Lyricist"},
    {13, L"Recording Location"},
    {13, L"Location"},
    {14, L"During Recording"},
    {15, L"During Performance"},
    {15, L"Performance"},
    {16, L"Video Capture"},
    {16, L"Movie Screen Capture"},
    {17, L"Fish"},
    {17, L"Colored Fish"},
    {18, L"Illustration"},
    {19, L"Band Logo"},
    {19, L"Artist Logo"},
    {20, L"Publisher Logo"},
};

struct ApePicture {
    String Key;
    int Type = PictureTypeOther;
    ByteVector Text; // UTF-8, what stands in front of the zero byte
    ByteVector Bytes;
    bool IsReadOnly = false;
    int Request = 0; // the number of the request that made it, or 0
};
using ApePictures = std::vector<ApePicture>;

// Of a key that begins as a picture's. Without copies, since a damaged file can have
// a million of them.
int TypeOfKey(const String& key) {
    const std::wstring_view units = NameView(key).Units();
    if (!units.ends_with(KeyEnd))
        return PictureTypeUnnamed;
    const size_t from = std::size(KeyPrefix) - 1;
    const size_t behind = std::size(KeyEnd) - 1;
    const std::wstring_view name = units.substr(from, units.size() - from - behind);
    for (const TypeName& type : TypeNames)
        if (SameName(name, type.Name))
            return type.Type;
    return PictureTypeUnnamed;
}

String KeyOfType(int type) {
    for (const TypeName& name : TypeNames)
        if (name.Type == type)
            return String(KeyPrefix) + name.Name + KeyEnd;
    return String();
}

// Nothing if the item holds no picture.
std::optional<ApePicture> PictureOf(const Item& item) {
    const ByteVector data = item.binaryData();
    const int zero = data.find('\0');
    if (item.type() != Item::Binary || !IsApePictureKey(item.key()) || zero < 0)
        return std::nullopt;
    ApePicture picture;
    picture.Key = item.key();
    picture.Type = TypeOfKey(item.key());
    picture.Text = data.mid(0, static_cast<unsigned>(zero));
    picture.Bytes = data.mid(static_cast<unsigned>(zero) + 1);
    picture.IsReadOnly = item.isReadOnly();
    if (picture.Bytes.isEmpty())
        return std::nullopt;
    return picture;
}

// By type; unknown ones stand behind, in the order of their keys.
ApePictures PicturesOf(const Tag& tag) {
    ApePictures pictures;
    for (const auto& [key, item] : tag.itemListMap())
        if (std::optional<ApePicture> picture = PictureOf(item))
            pictures.push_back(*picture);
    std::stable_sort(pictures.begin(), pictures.end(),
                     [](const ApePicture& a, const ApePicture& b) { return a.Type < b.Type; });
    return pictures;
}

// Where the type says what the picture is, the text is a mere file name.
NString TextToShow(const ApePicture& picture) {
    const bool saysNothing = picture.Type == PictureTypeOther || picture.Type == PictureTypeUnnamed;
    return saysNothing ? ToNString(String(picture.Text, String::UTF8)) : NString();
}

String FileNameFor(const String& key, const NBuffer& bytes) {
    const String mimeType(MimeTypeOf(bytes.Data, bytes.Size));
    const String extension = mimeType.substr(static_cast<unsigned>(mimeType.find("/")) + 1);
    if (extension.isEmpty())
        return key;
    return key + "." + (extension == "jpeg" ? String("jpg") : extension);
}

// A picture that keeps its description keeps its key and text.
ApePicture MakePicture(const ApePicture* old, const clArtRequest& request) {
    ApePicture picture;
    const bool keeps = old && DescriptionOf(old->Type, TextToShow(*old)) == request.Description;
    if (keeps) {
        picture = *old;
    } else {
        const clArtLabel label = LabelFor(request);
        picture.Type = label.Type;
        picture.Key = KeyOfType(label.Type);
        const String text = label.Description.IsEmpty() ? FileNameFor(picture.Key, *request.Data)
                                                        : ToTagLib(label.Description);
        picture.Text = text.data(String::UTF8);
    }
    picture.Bytes =
        ByteVector(reinterpret_cast<const char*>(request.Data->Data), request.Data->Size);
    picture.Request = request.Number;
    return picture;
}

ApePictures WithRequests(ApePictures pictures, const std::vector<clArtRequest>& requests) {
    ApplyArtRequests(pictures, requests, MakePicture);
    return pictures;
}

// The number of a request whose picture has the key of another, or 0. Of two
// requests for one key the later gives way.
int FirstClash(const ApePictures& pictures) {
    for (size_t second = 0; second < pictures.size(); ++second)
        for (size_t first = 0; first < second; ++first)
            if (SameName(pictures[first].Key, pictures[second].Key))
                return std::max(pictures[first].Request, pictures[second].Request);
    return 0;
}

// The element that asks for the picture of that number.
NString NameOfRequest(clTagRecord& changes, int wanted) {
    NString name;
    for (int index = 0; index < changes.Count(); ++index) {
        int number = 0;
        NString description;
        const clTagElement& element = *changes[index];
        if (!IsUnusableArt(element) && ParseArtName(element.Name, number, description) &&
            number == wanted)
            name = element.Name;
    }
    return name;
}

// Leaves out what asks for a second picture of one type.
std::vector<clArtRequest> RequestsOf(const ApePictures& before, clTagRecord& changes,
                                     Refusals& refused) {
    for (int index = 0; index < changes.Count(); ++index)
        if (IsUnusableArt(*changes[index]))
            refused.Add(changes[index]->Name);
    std::vector<clArtRequest> requests = ArtRequestsOf(changes);
    while (const int clash = FirstClash(WithRequests(before, requests))) {
        refused.Add(NameOfRequest(changes, clash));
        std::erase_if(requests,
                      [clash](const clArtRequest& request) { return request.Number == clash; });
    }
    return requests;
}

void PutPictures(Tag& tag, const ApePictures& before, const ApePictures& after) {
    for (const ApePicture& picture : before)
        tag.removeItem(picture.Key);
    for (const ApePicture& picture : after) {
        Item item(picture.Key, picture.Text + ByteVector('\0') + picture.Bytes, true);
        item.setReadOnly(picture.IsReadOnly);
        tag.setItem(picture.Key, item);
    }
}

} // namespace

bool IsApePictureKey(const String& key) {
    return BeginsWithName(key, KeyPrefix);
}

void ReadApePictures(const Tag& tag, clTagRecord& record) {
    int number = 1;
    for (const ApePicture& picture : PicturesOf(tag)) {
        AddArt(record, number, DescriptionOf(picture.Type, TextToShow(picture)),
               picture.Bytes.data(), picture.Bytes.size());
        ++number;
    }
}

void SetApePictures(Tag& tag, clTagRecord& changes, Refusals& refused) {
    const ApePictures before = PicturesOf(tag);
    const std::vector<clArtRequest> requests = RequestsOf(before, changes, refused);
    if (!requests.empty())
        PutPictures(tag, before, WithRequests(before, requests));
}

void DeleteApePictures(Tag& tag, const NStringList& names) {
    const ApePictures before = PicturesOf(tag);
    ApePictures after;
    if (names.Count > 0) {
        after = before;
        RemoveArtNumbers(after, ArtNumbersOf(names));
    }
    PutPictures(tag, before, after);
}

} // namespace tagmap
