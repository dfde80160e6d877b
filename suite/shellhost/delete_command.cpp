#include "codec/tag_exchange.h"
#include "suite/shellhost/change_report.h"
#include "suite/shellhost/command.h"
#include "suite/shellhost/console.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/program.h"
#include "suite/shellhost/tag_check.h"
#include "suite/shellhost/tag_reading.h"

namespace {
// In some formats the text by which an encoder names itself is no part of the
// tag, and outlives it.
constexpr wchar_t OutlivesTheTag[] = L"encoder";

void FindAllLeft(clTagRecord& after, NStringList& left) {
    for (int index = 0; index < after.Count(); ++index) {
        const NString& name = after[index]->Name;
        if (name.Compare(OutlivesTheTag, 0, true) != 0)
            left.Add(name);
    }
}

void TellOfLeft(const NString& path, const NStringList& left) {
    for (int index = 0; index < left.Count; ++index)
        TellOfFile(path, NString(L"still holds ").Concat(left[index]->Text));
}
} // namespace

int RunDeleteCommand(ModuleHost& module, const Arguments& arguments) {
    NString path = FullPath(arguments[0]);
    NStringList selection;
    selection.Add(path);
    NStringList names;
    for (int index = 1; index < arguments.count; ++index)
        names.Add(arguments[index]);

    clTagRecord before;
    clTagRecord after;
    NString problem;
    if (!module.Select(selection)) {
        Console::Error(module.Problem());
        return ExitFailed;
    }
    if (!ReadTag(path, before, problem)) {
        Console::Error(problem);
        return ExitFailed;
    }
    RunDelTagElements(path.Text, names);
    if (!ReadTag(path, after, problem)) {
        Console::Error(problem);
        return ExitFailed;
    }
    NStringList left;
    if (names.Count > 0)
        FindLeft(before, after, names, left);
    else
        FindAllLeft(after, left);
    if (left.Count == 0)
        return ExitDone;
    if (!TellIfNothingWasWritten(path, before, after))
        TellOfLeft(path, left);
    return ExitFailed;
}
