#include "tagpage/genre_list.h"

#include "foundation/ndisk.h"
#include "foundation/nfile.h"
#include "foundation/nfolders.h"
#include "foundation/npath.h"

#include <shlobj.h>

namespace {
void WriteTable(const NString& path) {
    NFile file(path, GENERIC_WRITE, CREATE_ALWAYS, false, true);
    for (const auto* genre = GenreTable; (*genre)[0] != 0; ++genre)
        file.WriteString(NString(*genre).Text, true);
}

void ReadLines(NFile& file, NStringList& lines) {
    NString line;
    while (file.ReadLine(line, true))
        lines.Add(line);
}
} // namespace

NString GenreFilePath() {
    NString path = NGetSpecialFolder(CSIDL_APPDATA);
    path.Append(L"Tonewright\\genres.txt");
    return path;
}

void AddGenreChoices(NStringList& choices) {
    AddGenreChoicesOf(GenreFilePath(), choices);
}

void AddGenreChoicesOf(const NString& path, NStringList& choices) {
    // 1. and 2. If the folder can't be made the file can't either.
    NCreateFolders(NGetFolder(path));
    // 3.
    bool isFolder = false;
    if (!NPathExists(path, isFolder))
        WriteTable(path);
    // 4. to 6.
    NFile file(path, GENERIC_READ, OPEN_EXISTING, false, true);
    ReadLines(file, choices);
    choices.SortByText(true);
}

void AddGenreToFile(const NString& genre) {
    AddGenreToFileOf(GenreFilePath(), genre);
}

void AddGenreToFileOf(const NString& path, const NString& genre) {
    // 1.
    NCreateFolders(NGetFolder(path));
    NFile file(path, GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS, false, true);
    // 2.
    NStringList lines;
    ReadLines(file, lines);
    // 3. A last line that the user left without its end grows by it: wanted.
    if (!lines.Contains(genre.Text, true)) {
        file.Seek(0, NFile::FromEnd);
        file.WriteString(genre.Text, true);
    }
}
