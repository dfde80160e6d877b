#include "codec/tag_exchange.h"
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

bool Report(const NString& name) {
    Console::Error(NString(L"shellhost: the file still holds ").Concat(name.Text));
    return false;
}

bool NamedAreGone(clTagRecord& before, clTagRecord& after, const NStringList& names) {
    NStringList left;
    FindLeft(before, after, names, left);
    for (int index = 0; index < left.Count; ++index)
        Report(*left[index]);
    return left.Count == 0;
}

bool AllAreGone(clTagRecord& after) {
    bool gone = true;
    for (int index = 0; index < after.Count(); ++index) {
        const NString& name = after[index]->Name;
        if (name.Compare(OutlivesTheTag, 0, true) != 0)
            gone = Report(name);
    }
    return gone;
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
    bool gone = names.Count > 0 ? NamedAreGone(before, after, names) : AllAreGone(after);
    return gone ? ExitDone : ExitFailed;
}
