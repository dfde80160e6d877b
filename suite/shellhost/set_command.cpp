#include "codec/tag_exchange.h"
#include "suite/shellhost/command.h"
#include "suite/shellhost/console.h"
#include "suite/shellhost/element_argument.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/program.h"
#include "suite/shellhost/tag_check.h"
#include "suite/shellhost/tag_reading.h"
#include "suite/shellhost/tag_text.h"

namespace {
// The exchange reports no failure of the tag program, so the file is asked.
int CheckChanges(const NString& path, clTagRecord& changes) {
    clTagRecord now;
    NString problem;
    if (!ReadTag(path, now, problem)) {
        Console::Error(problem);
        return ExitFailed;
    }
    int result = ExitDone;
    for (int index = 0; index < changes.Count(); ++index) {
        if (HoldsElement(now, *changes[index]))
            continue;
        Console::Error(NString(L"shellhost: the file doesn't hold ")
                           .Concat(ElementLine(*changes[index]).Text));
        result = ExitFailed;
    }
    return result;
}
} // namespace

int RunSetCommand(ModuleHost& module, const Arguments& arguments) {
    clTagRecord changes;
    NString problem;
    for (int index = 1; index < arguments.count; ++index) {
        ArgumentResult result = TakeElementArgument(arguments[index], changes, problem);
        if (result == ArgumentResult::Taken)
            continue;
        Console::Error(problem);
        return result == ArgumentResult::WrongForm ? ExitUsage : ExitFailed;
    }
    NString path = FullPath(arguments[0]);
    NStringList selection;
    selection.Add(path);
    if (!module.Select(selection)) {
        Console::Error(module.Problem());
        return ExitFailed;
    }
    if (!RunSetTags(path.Text, changes)) {
        Console::Error(L"shellhost: the tag program can't be started");
        return ExitFailed;
    }
    return CheckChanges(path, changes);
}
