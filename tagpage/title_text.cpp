#include "tagpage/title_text.h"

#include "foundation/npath.h"

namespace {
constexpr int LongestName = 33; // characters

NString ShortName(const NString& path) {
    NString name = NGetBaseName(path);
    if (name.CharCount() > LongestName) {
        name = name.Left(LongestName);
        name.Append(L"...");
    }
    return name;
}
} // namespace

// The blank at its end is wanted, as below.
NString TitleOfFile(const NString& path, int index, int count) {
    NString title(L"Tonewright: '");
    title.Append(ShortName(path));
    title.Append(L"' ID-Tag ");
    if (count > 1) {
        title.Append(L"[");
        title.Append(NString::FromInt(int64_t{index} + 1));
        title.Append(L"/");
        title.Append(NString::FromInt(count));
        title.Append(L"] ");
    }
    return title;
}

// The blank at its end is wanted.
NString TitleOfFiles(int count) {
    NString title(L"Tonewright: ID-Tags From ");
    title.Append(NString::FromInt(count));
    title.Append(L" Files ");
    return title;
}
