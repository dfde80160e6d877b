#include "foundation/npath.h"

namespace {
constexpr wchar_t Backslash = L'\\';
constexpr wchar_t Quote = L'"';
constexpr wchar_t LongPathPrefix[] = L"\\\\?\\";
constexpr int LongPathPrefixLength = 4;
// Where the search for the root's backslash starts: behind "C:", and behind
// "\\?\C:".
constexpr int RootSearchFrom = 3;
constexpr int LongRootSearchFrom = 7;

// Units of the root, its backslash and a terminator included, as
// NString::Length counts them; 1 for a path without a root.
int RootLength(const NString& path) {
    bool isLong = path.Compare(LongPathPrefix, LongPathPrefixLength) == 0;
    return path.FindChar(Backslash, isLong ? LongRootSearchFrom : RootSearchFrom) + 1;
}

bool SurvivesNarrowing(const NString& path) {
    NString copy(path);
    return NString(copy.ToNarrow()) == path;
}
} // namespace

NString NGetFileExt(const NString& path) {
    int dot = path.FindLastChar(L'.');
    return dot > path.FindLastChar(Backslash) ? path.From(dot) : NString(L".");
}

NString NGetFileName(const NString& path) {
    return path.From(path.FindLastChar(Backslash) + 1);
}

NString NRemoveExt(const NString& name) {
    int dot = name.FindLastChar(L'.');
    return dot ? name.Left(dot - 1) : name;
}

NString NGetFolder(const NString& path) {
    int backslash = path.FindLastChar(Backslash);
    return backslash ? path.Left(backslash) : path;
}

NString NGetBaseName(const NString& path) {
    return NRemoveExt(NGetFileName(path));
}

NString NAppendBackslash(const NString& path) {
    NString result(path);
    if (result.At(result.CharCount()) != Backslash)
        result.InsertChar(Backslash);
    return result;
}

NString NRemoveBackslashes(const NString& path) {
    int length = path.CharCount();
    while (path.At(length) == Backslash)
        --length;
    return path.Left(length);
}

bool NIsUncPath(const NString& path) {
    return path.At(1) == Backslash && path.At(2) == Backslash;
}

NString NPopPathPart(NString& path) {
    int root = RootLength(path);
    if (root == 1 || path.Length <= root)
        return NString();
    NString trimmed = NRemoveBackslashes(path);
    // Nothing but further backslashes stood behind the root.
    if (trimmed.Length < root)
        return NString();
    int backslash = trimmed.FindLastChar(Backslash);
    path = trimmed.Left(backslash);
    return trimmed.From(backslash + 1);
}

NString NQuote(const NString& text) {
    NString quoted(L"\"");
    quoted.Append(text);
    quoted.InsertChar(Quote);
    return quoted;
}

NString NUnquote(const NString& text) {
    if (text.At(1) != Quote)
        return text;
    int end = text.FindChar(Quote, 2);
    return end ? text.Mid(2, end - 1) : text.From(2);
}

NString NPathForApi(const NString& path, int limit) {
    bool fits = path.CharCount() < limit;
    // 1.
    if (!NIsUncPath(path)) {
        NString longPath(fits ? L"" : LongPathPrefix);
        longPath.Append(path);
        return longPath;
    }
    // 2. What begins with "\\?\" counts as a UNC path too, so a long one gives
    // an empty text. That limit and the code page's are wanted.
    return fits && SurvivesNarrowing(path) ? path : NString();
}
