#include "suite/shellhost/command.h"
#include "suite/shellhost/console.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/program.h"

#include <shlobj.h>

namespace {
constexpr int64_t LargestIndex = 0xFFFF;

// The number that the word is, or -1.
int64_t IndexOf(const NString& word) {
    int64_t number = word.ToInt();
    bool plain = NString::FromInt(number) == word;
    return plain && number >= 0 && number <= LargestIndex ? number : -1;
}

// A number is handed over as an index, anything else as a verb.
HRESULT Invoke(IContextMenu& menu, const wchar_t* word) {
    NString verb(word);
    int64_t index = IndexOf(verb);
    CMINVOKECOMMANDINFO command = {};
    command.cbSize = sizeof(command);
    command.lpVerb = index < 0 ? verb.ToNarrow() : MAKEINTRESOURCEA(index);
    command.nShow = SW_SHOWNORMAL;
    return menu.InvokeCommand(&command);
}
} // namespace

int RunInvokeCommand(ModuleHost& module, const Arguments& arguments) {
    NStringList paths;
    for (int index = 1; index < arguments.count; ++index)
        paths.Add(FullPath(arguments[index]));
    ComPtr<IContextMenu> menu;
    if (!module.Select(paths) || !module.GetInterface(IID_IContextMenu, menu.PutVoid())) {
        Console::Error(module.Problem());
        return ExitFailed;
    }
    if (FAILED(Invoke(*menu.Get(), arguments[0]))) {
        Console::Error(NString(L"shellhost: the module has no command ").Concat(arguments[0]));
        return ExitFailed;
    }
    return ExitDone;
}
