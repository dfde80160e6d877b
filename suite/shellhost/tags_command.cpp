#include "suite/shellhost/command.h"
#include "suite/shellhost/console.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/program.h"
#include "suite/shellhost/tag_reading.h"
#include "suite/shellhost/tag_text.h"

namespace {
// The whole of one file's text, or as much as can be written.
bool PrintTag(const NString& path, clTagRecord& tag) {
    bool written = Console::Line(path);
    for (int index = 0; index < tag.Count() && written; ++index)
        written = Console::Line(NString(L"  ").Concat(ElementLine(*tag[index]).Text));
    if (tag.Count() == 0 && written)
        written = Console::Line(L"  (no tag)");
    if (!written)
        Console::Error(L"shellhost: the output can't be written");
    return written;
}

bool ShowTag(const NString& path) {
    clTagRecord tag;
    NString problem;
    if (!ReadTag(path, tag, problem)) {
        Console::Error(problem);
        return false;
    }
    return PrintTag(path, tag);
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
