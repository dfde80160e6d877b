#include "suite/tagmap/pictures.h"

#include <algorithm>
#include <cstring>

namespace tagmap {

namespace {

struct NamedType {
    const wchar_t* Description;
    int Type;
};

// The descriptions that the tag editor offers.
constexpr NamedType NamedTypes[] = {
    {L"Front Album Cover", PictureTypeFrontCover},
    {L"Back Album Cover", 4},
    {L"Leaflet Page", 5},
    {L"Media", 6},
    {L"Lead Artist", 7},
    {L"Conductor", 9},
    {L"Band", 10},
    {L"Composer", 11},
    {L"Writer", 12},
    {L"Performance", 15},
    {L"Artist Logo", 19},
    {L"Publisher Logo", 20},
};

const NamedType* FindDescription(const NString& description) {
    for (const NamedType& named : NamedTypes)
        if (description.Compare(named.Description, 0, true) == 0)
            return &named;
    return nullptr;
}

// The bytes that a picture of the type begins with.
struct Signature {
    const char* MimeType;
    const char* Bytes;
    size_t Size;
};

constexpr Signature Signatures[] = {
    {"image/png", "\x89PNG\r\n\x1a\n", 8},
    {"image/jpeg", "\xff\xd8\xff", 3},
    {"image/gif", "GIF87a", 6},
    {"image/gif", "GIF89a", 6},
    {"image/bmp", "BM", 2},
    {"image/tiff", "II*\0", 4},
    {"image/tiff", "MM\0*", 4},
};

bool HasBytes(const char* data, size_t size, size_t offset, const char* bytes, size_t count) {
    return size >= offset + count && memcmp(data + offset, bytes, count) == 0;
}

// A RIFF container whose form is WEBP; its size stands between the two.
bool IsWebP(const char* data, size_t size) {
    return HasBytes(data, size, 0, "RIFF", 4) && HasBytes(data, size, 8, "WEBP", 4);
}

// The digits from `position` on as a number, moving `position` behind them.
// Nine digits fit; more of them are no picture's number.
int TakeNumber(const NString& name, int& position) {
    constexpr int MostDigits = 9;
    int number = 0;
    const int first = position;
    while (name.At(position) >= L'0' && name.At(position) <= L'9' &&
           position - first <= MostDigits) {
        if (position - first == MostDigits)
            return 0;
        number = number * 10 + (name.At(position) - L'0');
        ++position;
    }
    return number;
}

} // namespace

int PictureTypeOf(const NString& description) {
    if (description.IsEmpty())
        return PictureTypeFrontCover;
    const NamedType* named = FindDescription(description);
    return named ? named->Type : PictureTypeOther;
}

NString NativeDescriptionOf(const NString& description) {
    return FindDescription(description) ? NString() : description;
}

NString DescriptionOf(int type, const NString& nativeDescription) {
    if (!nativeDescription.IsEmpty())
        return nativeDescription;
    for (const NamedType& named : NamedTypes)
        if (named.Type == type)
            return named.Description;
    return NString();
}

const char* MimeTypeOf(const void* data, size_t size) {
    const char* bytes = static_cast<const char*>(data);
    for (const Signature& signature : Signatures)
        if (HasBytes(bytes, size, 0, signature.Bytes, signature.Size))
            return signature.MimeType;
    return IsWebP(bytes, size) ? "image/webp" : "image/";
}

bool IsArtName(const NString& name) {
    return name.Compare(ArtPrefix, static_cast<int>(wcslen(ArtPrefix)), true) == 0;
}

bool ParseArtName(const NString& name, int& number, NString& description) {
    if (!IsArtName(name))
        return false;
    int position = static_cast<int>(wcslen(ArtPrefix)) + 1;
    const int found = TakeNumber(name, position);
    const wchar_t separator = name.At(position);
    if (found < 1 || (separator != 0 && separator != L'_'))
        return false;
    number = found;
    description = name.From(position + 1);
    return true;
}

NString FormatArtName(int number, const NString& description) {
    NString name(ArtPrefix);
    name.Append(NString::FromInt(number));
    if (!description.IsEmpty()) {
        name.Append(L"_");
        name.Append(description);
    }
    return name;
}

void AddArt(clTagRecord& record, int number, const NString& description, const void* data,
            size_t size) {
    record.AddData(FormatArtName(number, description).c_str(), data, static_cast<int>(size));
}

bool IsUnusableArt(const clTagElement& element) {
    int number = 0;
    NString description;
    if (!IsArtName(element.Name))
        return false;
    if (!ParseArtName(element.Name, number, description))
        return true;
    return element.Data.Size == 0 && !element.Value.IsEmpty();
}

std::vector<clArtRequest> ArtRequestsOf(clTagRecord& changes) {
    std::vector<clArtRequest> requests;
    for (int index = 0; index < changes.Count(); ++index) {
        clTagElement* element = changes[index];
        clArtRequest request;
        if (IsUnusableArt(*element) ||
            !ParseArtName(element->Name, request.Number, request.Description))
            continue;
        if (element->Data.Size > 0)
            request.Data = &element->Data;
        std::erase_if(requests, [&](const clArtRequest& earlier) {
            return earlier.Number == request.Number;
        });
        requests.push_back(request);
    }
    std::sort(requests.begin(), requests.end(),
              [](const clArtRequest& a, const clArtRequest& b) { return a.Number < b.Number; });
    return requests;
}

std::vector<int> ArtNumbersOf(const NStringList& names) {
    std::vector<int> numbers;
    for (int index = 0; index < names.Count; ++index) {
        int number = 0;
        NString description;
        if (ParseArtName(*names[index], number, description))
            numbers.push_back(number);
    }
    std::sort(numbers.rbegin(), numbers.rend());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

clArtLabel LabelFor(const clArtRequest& request) {
    return {PictureTypeOf(request.Description), NativeDescriptionOf(request.Description)};
}

clArtLabel LabelFor(const clArtRequest& request, int oldType, const NString& oldDescription) {
    if (DescriptionOf(oldType, oldDescription) == request.Description)
        return {oldType, oldDescription};
    return LabelFor(request);
}

} // namespace tagmap
