#include "suite/shellhost/command.h"
#include "suite/shellhost/console.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/program.h"
#include "suite/shellhost/property_sheet.h"

#include <shlobj.h>

#include <cwchar>

namespace {
constexpr wchar_t PageOption[] = L"--page";
constexpr wchar_t PictureOption[] = L"--picture";
constexpr int OptionWords = 2; // the option and its value

struct PropertiesRequest {
    NStringList paths;
    int64_t page = 1; // that is shown first
    NString picture;  // empty to show the sheet until it is closed
};

// Takes the option off the end of the first `words` arguments; null if it isn't
// there.
const wchar_t* TakeOption(const Arguments& arguments, const wchar_t* option, int& words) {
    if (words < OptionWords || wcscmp(arguments[words - OptionWords], option) != 0)
        return nullptr;
    words -= OptionWords;
    return arguments[words + 1];
}

void Parse(const Arguments& arguments, PropertiesRequest& request) {
    int files = arguments.count;
    if (const wchar_t* picture = TakeOption(arguments, PictureOption, files))
        request.picture = FullPath(picture);
    if (const wchar_t* page = TakeOption(arguments, PageOption, files))
        request.page = NString(page).ToInt();
    for (int index = 0; index < files; ++index)
        request.paths.Add(FullPath(arguments[index]));
}

int Fail(const wchar_t* problem) {
    Console::Error(problem);
    return ExitFailed;
}

int ShowPages(IShellPropSheetExt& extension, const PropertiesRequest& request) {
    SheetPages pages;
    const HRESULT result = extension.AddPages(SheetPages::Add, pages.Parameter());
    if (FAILED(result) || pages.Count() == 0)
        return Fail(L"shellhost: the module offers no page");
    if (request.page < 1 || request.page > pages.Count())
        return Fail(L"shellhost: the sheet has no such page");
    const NString title = SheetTitle(request.paths);
    const int shown = static_cast<int>(request.page) - 1;
    if (request.picture.IsEmpty())
        return ShowSheet(pages, title, shown) ? ExitDone
                                              : Fail(L"shellhost: the sheet can't be shown");
    const wchar_t* problem = PictureSheet(pages, title, shown, request.picture);
    return problem ? Fail(problem) : ExitDone;
}
} // namespace

int RunPropertiesCommand(ModuleHost& module, const Arguments& arguments) {
    PropertiesRequest request;
    Parse(arguments, request);
    if (request.paths.Count == 0) {
        Console::Error(L"usage: shellhost properties FILE... [--page NUMBER] [--picture PNG]");
        return ExitUsage;
    }
    ComPtr<IShellPropSheetExt> extension;
    if (!module.Select(request.paths) ||
        !module.GetInterface(IID_IShellPropSheetExt, extension.PutVoid())) {
        Console::Error(module.Problem());
        return ExitFailed;
    }
    return ShowPages(*extension.Get(), request);
}
