#pragma once

#include <id3v2tag.h>
#include <tstringlist.h>

// The frames of an ID3v2 tag that are more than a text: comments, genres and
// ratings.
namespace tagmap {

inline constexpr char RatingFrame[] = "POPM";

// The comments without a description.
TagLib::StringList ReadComments(const TagLib::ID3v2::Tag& tag);
// There has to be a value.
void WriteComments(TagLib::ID3v2::Tag& tag, const TagLib::StringList& values, int version);
void RemoveComments(TagLib::ID3v2::Tag& tag);

// Numbers of the format's list are read as the names.
TagLib::StringList ReadGenres(const TagLib::ID3v2::Tag& tag);
// False if one of them would be read as another genre.
bool CanBeGenres(const TagLib::StringList& values);

// The element's text, or nothing.
TagLib::StringList ReadRating(const TagLib::ID3v2::Tag& tag);
void WriteRating(TagLib::ID3v2::Tag& tag, int halfSteps);
void RemoveRating(TagLib::ID3v2::Tag& tag);

} // namespace tagmap
