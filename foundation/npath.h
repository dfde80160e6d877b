#pragma once

#include "foundation/nstring.h"

// Splitting and joining paths. Nothing here touches the disk, and only the
// backslash separates.

// Limits for NPathForApi, in characters.
inline constexpr int NFilePathLimit = 260;   // opening a file
inline constexpr int NFolderPathLimit = 248; // folders, deletion, scanning, attributes

// From the last "." to the end, the dot included, if it stands behind the last
// backslash; otherwise ".".
NString NGetFileExt(const NString& path);
// Behind the last backslash, or the whole path.
NString NGetFileName(const NString& path);
// Before the last ".", wherever it stands; the whole text if there is none.
NString NRemoveExt(const NString& name);
// Up to the last backslash, which is included; the whole path if there is none.
NString NGetFolder(const NString& path);
// The file's name without its extension.
NString NGetBaseName(const NString& path);
// With one backslash added unless the last character is one.
NString NAppendBackslash(const NString& path);
// Without all backslashes at the end.
NString NRemoveBackslashes(const NString& path);
// True if the first two characters are backslashes.
bool NIsUncPath(const NString& path);
// Removes the last component in place and returns it; the path ends in a
// backslash then. At the root it returns an empty text, and changes nothing.
NString NPopPathPart(NString& path);
// Between two double quotes.
NString NQuote(const NString& text);
// A text that begins with a double quote gives what stands up to the next one;
// any other is returned as it is.
NString NUnquote(const NString& text);
// The text to hand to the platform in place of `path`; empty, which makes the
// operation fail, if a UNC path has `limit` characters or more, or a character
// outside the narrow code page. Other paths of `limit` characters or more get
// "\\?\" in front.
NString NPathForApi(const NString& path, int limit);
