#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "foundation/nstring.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// The elements `_albumart_<n>` and `_albumart_<n>_<description>`, and what they
// are in a file. Type numbers are those of ID3v2's APIC frame, which FLAC, the
// Vorbis comment METADATA_BLOCK_PICTURE and WM/Picture share. The readers and
// writers of the single formats stand in the files of these formats;
// flac_pictures.h has the blocks of FLAC.
namespace tagmap {

inline constexpr wchar_t ArtPrefix[] = L"_albumart_";
inline constexpr int PictureTypeOther = 0;
inline constexpr int PictureTypeFrontCover = 3;

// The type for a description: one of the twelve that the tag editor offers
// (without regard to ASCII case, since it is part of a name) has its own; none
// is a front cover; any other is PictureTypeOther.
int PictureTypeOf(const NString& description);

// The text to store beside that type: empty for the twelve and for none.
NString NativeDescriptionOf(const NString& description);

// The description to show: the native one unless it is empty, else the text of
// the type if it is one of the twelve, else none.
NString DescriptionOf(int type, const NString& nativeDescription);

// The MIME type by the first bytes: PNG, JPEG, GIF, BMP, WebP or TIFF;
// "image/", which stands for a picture of unknown kind, for all others.
const char* MimeTypeOf(const void* data, size_t size);

// True if the name begins as that of a picture does, well-formed or not.
bool IsArtName(const NString& name);
// Takes a picture's name apart; false, with the outputs untouched, if it isn't
// one: the number is decimal, from 1 on, followed by nothing or by "_".
bool ParseArtName(const NString& name, int& number, NString& description);
NString FormatArtName(int number, const NString& description);

// Appends the picture as an element.
void AddArt(clTagRecord& record, int number, const NString& description, const void* data,
            size_t size);

// One picture of a request: `Data` replaces the picture of that number, or is
// appended if the file has fewer; null removes it.
struct clArtRequest {
    int Number = 0; // counts the pictures as they stand before the request
    NString Description;
    const NBuffer* Data = nullptr; // the request's own; null to remove
};

// True for an element that is a picture's but asks for nothing that can be
// done: a malformed name, or text where the bytes should be.
bool IsUnusableArt(const clTagElement& element);

// The pictures that `changes` names, by rising number. Of several elements of
// one number the last counts; unusable ones are left out.
std::vector<clArtRequest> ArtRequestsOf(clTagRecord& changes);

// The numbers of the pictures that `names` holds, falling, each once.
std::vector<int> ArtNumbersOf(const NStringList& names);

// Does the requests to a list of native pictures. `make(old, request)` gives
// the new native picture in place of `*old`, or behind the list for null.
template <typename Native, typename Make>
void ApplyArtRequests(std::vector<Native>& pictures, const std::vector<clArtRequest>& requests,
                      Make make) {
    const int before = static_cast<int>(pictures.size());
    for (const clArtRequest& request : requests) {
        if (!request.Data)
            continue;
        if (request.Number <= before)
            pictures[request.Number - 1] = make(&pictures[request.Number - 1], request);
        else
            pictures.push_back(make(static_cast<const Native*>(nullptr), request));
    }
    for (auto request = requests.rbegin(); request != requests.rend(); ++request)
        if (!request->Data && request->Number <= before)
            pictures.erase(pictures.begin() + (request->Number - 1));
}

// Takes the pictures of these numbers (as ArtNumbersOf gives them) off a list
// of native pictures.
template <typename Native>
void RemoveArtNumbers(std::vector<Native>& pictures, const std::vector<int>& numbers) {
    for (int number : numbers)
        if (number <= static_cast<int>(pictures.size()))
            pictures.erase(pictures.begin() + (number - 1));
}

// Type and native description that a picture takes. One that replaces a
// picture without changing its description keeps that picture's, so a type
// that isn't among the twelve lasts.
struct clArtLabel {
    int Type = PictureTypeFrontCover;
    NString Description;
};
clArtLabel LabelFor(const clArtRequest& request);
clArtLabel LabelFor(const clArtRequest& request, int oldType, const NString& oldDescription);

} // namespace tagmap
