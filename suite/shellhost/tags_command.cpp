#include "suite/shellhost/command.h"
#include "suite/shellhost/console.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/program.h"
#include "suite/shellhost/tag_reading.h"
#include "suite/shellhost/tag_text.h"

namespace {
bool ShowTag(const NString& path) {
    clTagRecord tag;
    NString problem;
    if (!ReadTag(path, tag, problem)) {
        Console::Error(problem);
        return false;
    }
    Console::Line(path);
    for (int index = 0; index < tag.Count(); ++index)
        Console::Line(NString(L"  ").Concat(ElementLine(*tag[index]).Text));
    if (tag.Count() == 0)
        Console::Line(L"  (no tag)");
    return true;
}
} // namespace

int RunTagsCommand(ModuleHost& module, const Arguments& arguments) {
    NStringList paths;
    for (int index = 0; index < arguments.count; ++index)
        paths.Add(FullPath(arguments[index]));
    if (!module.Select(paths)) {
        Console::Error(module.Problem());
        return ExitFailed;
    }
    bool allShown = true;
    for (int index = 0; index < paths.Count; ++index)
        allShown = ShowTag(*paths[index]) && allShown;
    return allShown ? ExitDone : ExitFailed;
}
