#include "suite/shellhost/command.h"
#include "suite/shellhost/console.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/program.h"
#include "suite/shellhost/property_sheet.h"

#include <shlobj.h>

#include <cwchar>

namespace {
constexpr wchar_t PictureOption[] = L"--picture";
constexpr int PictureWords = 2; // the option and its file

struct PropertiesRequest {
    NStringList paths;
    NString picture; // empty to show the sheet until it is closed
};

void Parse(const Arguments& arguments, PropertiesRequest& request) {
    int files = arguments.count;
    if (files >= PictureWords && wcscmp(arguments[files - PictureWords], PictureOption) == 0) {
        request.picture = FullPath(arguments[files - 1]);
        files -= PictureWords;
    }
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
    const NString title = SheetTitle(request.paths);
    if (request.picture.IsEmpty())
        return ShowSheet(pages, title) ? ExitDone : Fail(L"shellhost: the sheet can't be shown");
    const wchar_t* problem = PictureSheet(pages, title, request.picture);
    return problem ? Fail(problem) : ExitDone;
}
} // namespace

int RunPropertiesCommand(ModuleHost& module, const Arguments& arguments) {
    PropertiesRequest request;
    Parse(arguments, request);
    if (request.paths.Count == 0) {
        Console::Error(L"usage: shellhost properties FILE... [--picture PNG]");
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
