#include "audiopage/property_rows.h"
#include "foundation/ndisk.h"
#include "foundation/npath.h"
#include "suite/shellhost/change_report.h"
#include "suite/shellhost/command.h"
#include "suite/shellhost/console.h"
#include "suite/shellhost/file_problem.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/png_file.h"
#include "suite/shellhost/program.h"
#include "toolkit/ncanvas.h"

#include <cwchar>

namespace {
// FOLDER\song.mp3-2.png for the second cover of song.mp3.
NString PathOfCover(const NString& folder, const NString& file, int number) {
    NString path(folder);
    if (path.At(path.CharCount()) != L'\\')
        path.Append(L"\\");
    path.Append(NGetFileName(file));
    path.Append(L"-");
    path.Append(NString::FromInt(number));
    path.Append(L".png");
    return path;
}

bool WriteCover(NCanvas& cover, const NString& path) {
    cover.Deselect();
    const bool isWritten = WritePng(cover.handle, path);
    if (!isWritten)
        TellOfFile(path, L"can't be written");
    return isWritten && Console::Line(path);
}
} // namespace

int RunCoversCommand(ModuleHost& module, const Arguments& arguments) {
    if (wcscmp(arguments[1], L"--to") != 0) {
        Console::Error(L"usage: shellhost covers FILE --to FOLDER");
        return ExitUsage;
    }
    NStringList paths;
    paths.Add(FullPath(arguments[0]));
    const NString& file = *paths[0];
    const NString folder = FullPath(arguments[2]);
    if (!module.Select(paths)) {
        Console::Error(module.Problem());
        return ExitFailed;
    }
    const NString problem = ReadProblem(file);
    if (!problem.IsEmpty()) {
        TellOfFile(file, problem);
        return ExitFailed;
    }
    NCreateFolders(folder);
    NKeyedList<clPropRow> rows;
    NKeyedList<NCanvas> covers;
    BuildPropRows(paths, nullptr, rows, &covers);
    if (covers.Count() == 0) {
        TellOfFile(file, L"has no tag that a decoder can read");
        return ExitFailed;
    }
    bool areWritten = true;
    for (int index = 0; index < covers.Count(); ++index)
        areWritten = WriteCover(*covers[index], PathOfCover(folder, file, index + 1)) && areWritten;
    return areWritten ? ExitDone : ExitFailed;
}
