#pragma once

#include "foundation/nlists.h"
#include "foundation/nstring.h"

// The user's genres: `Tonewright\genres.txt` in the folder for application
// data, UTF-16 little-endian without a byte-order mark, a genre a line. It is
// made of the built-in table at the first need and is never rewritten; the user
// may edit it. No lock, and no message when it can't be made or read.

// The built-in table: the 126 genres of ID3v1 with Winamp's extensions
// (https://id3.org/id3v2.3.0, appendix A), indexes 0 to 125, in that order.
inline constexpr int GenreNameRoom = 20; // bytes, terminator included
// Ends at an entry that begins with a zero byte.
extern const char GenreTable[][GenreNameRoom];

// The path of `genres.txt` in the user's own folder for application data.
NString GenreFilePath();

// Makes the file unless it is there, with its folder, and appends its lines to
// `choices`, which then is sorted as a whole without regard to ASCII case.
void AddGenreChoices(NStringList& choices);
// The same for a file elsewhere, whose folder is made with its parents.
void AddGenreChoicesOf(const NString& path, NStringList& choices);

// Appends the line unless the file has it, ASCII case ignored. The file is made
// if it isn't there, without the table: it holds this one genre then.
void AddGenreToFile(const NString& genre);
// The same for a file elsewhere.
void AddGenreToFileOf(const NString& path, const NString& genre);
