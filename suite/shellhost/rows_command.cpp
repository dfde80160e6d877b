#include "audiopage/property_rows.h"
#include "suite/shellhost/change_report.h"
#include "suite/shellhost/command.h"
#include "suite/shellhost/console.h"
#include "suite/shellhost/file_problem.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/program.h"
#include "suite/shellhost/row_text.h"

namespace {
// The page leaves such a file out without a word.
bool TellOfUnreadable(const NStringList& paths) {
    bool areReadable = true;
    for (int index = 0; index < paths.Count; ++index) {
        const NString problem = ReadProblem(*paths[index]);
        if (problem.IsEmpty())
            continue;
        TellOfFile(*paths[index], problem);
        areReadable = false;
    }
    return areReadable;
}

bool PrintRows(NKeyedList<clPropRow>& rows) {
    for (int index = 0; index < rows.Count(); ++index) {
        if (!Console::Line(RowLine(*rows[index]))) {
            Console::Error(L"shellhost: the output can't be written");
            return false;
        }
    }
    return true;
}
} // namespace

int RunRowsCommand(ModuleHost& module, const Arguments& arguments) {
    NStringList paths;
    for (int index = 0; index < arguments.count; ++index)
        paths.Add(FullPath(arguments[index]));
    if (!module.Select(paths)) {
        Console::Error(module.Problem());
        return ExitFailed;
    }
    const bool areReadable = TellOfUnreadable(paths);
    NKeyedList<clPropRow> rows;
    BuildPropRows(paths, nullptr, rows, nullptr);
    return PrintRows(rows) && areReadable ? ExitDone : ExitFailed;
}
