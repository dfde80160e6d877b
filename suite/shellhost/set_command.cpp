#include "codec/tag_exchange.h"
#include "suite/shellhost/change_report.h"
#include "suite/shellhost/command.h"
#include "suite/shellhost/console.h"
#include "suite/shellhost/element_argument.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/program.h"
#include "suite/shellhost/tag_check.h"
#include "suite/shellhost/tag_reading.h"
#include "suite/shellhost/tag_text.h"

namespace {
// Appends to `missing` the elements of `changes` that the tag doesn't hold.
void FindMissing(clTagRecord& tag, clTagRecord& changes, clTagRecord& missing) {
    for (int index = 0; index < changes.Count(); ++index) {
        const clTagElement& wanted = *changes[index];
        if (!HoldsElement(tag, wanted))
            missing.AddCopy(wanted);
    }
}

void TellOfMissing(const NString& path, clTagRecord& missing) {
    for (int index = 0; index < missing.Count(); ++index) {
        const clTagElement& element = *missing[index];
        if (element.Value.IsEmpty() && element.Data.Size == 0)
            TellOfFile(path, NString(L"still holds ").Concat(element.Name.Text));
        else
            TellOfFile(path,
                       NString(L"the value was not taken: ").Concat(ElementLine(element).Text));
    }
}

// The exchange reports no failure of the tag program, so the file is asked.
int ChangeAndCheck(const NString& path, clTagRecord& changes) {
    clTagRecord before;
    clTagRecord after;
    clTagRecord missing;
    NString problem;
    if (!ReadTag(path, before, problem)) {
        Console::Error(problem);
        return ExitFailed;
    }
    if (!RunSetTags(path.Text, changes)) {
        TellOfFile(path, L"the tag program can't be started");
        return ExitFailed;
    }
    if (!ReadTag(path, after, problem)) {
        Console::Error(problem);
        return ExitFailed;
    }
    FindMissing(after, changes, missing);
    if (missing.Count() == 0)
        return ExitDone;
    if (!TellIfNothingWasWritten(path, before, after))
        TellOfMissing(path, missing);
    return ExitFailed;
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
    return ChangeAndCheck(path, changes);
}
