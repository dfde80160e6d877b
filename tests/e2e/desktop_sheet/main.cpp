// desktop_sheet FILE... -- ACTION...
// Opens the desktop shell's own Properties of the files, all of one folder, as
// its menu does, and acts on that sheet from a second thread as a user would.
// The actions, in turn:
//
//     tabs            prints the titles of the pages, one a line
//     page TITLE      turns to the page of that title
//     rows            prints the rows that the shown page's options menu copies
//     select ROW      of the shown page's list: clicks the row, from 0
//     type TEXT       in place of what the editor with the focus holds
//     pick TEXT       from the list of that editor
//     key NAME        strikes return, tab, up or down, which has to end the edit
//     press BUTTON    of the shown page: clicks the button of that text
//     apply           presses Apply, which has to be enabled
//     unchanged       Apply has to be disabled
//     ok, cancel      presses that button; the sheet has to close
//
// Exit code 1 if one fails, which standard error tells; 2 for a wrong call.
#include "foundation/unique_handle.h"
#include "suite/shellhost/console.h"
#include "suite/shellhost/session.h"
#include "tests/e2e/desktop_sheet/sheet_actions.h"
#include "tests/e2e/desktop_sheet/shell_properties.h"

#include <cstdlib>
#include <exception>
#include <string>
#include <thread>
#include <vector>

namespace {
constexpr int WrongCall = 2;
using Words = std::vector<std::wstring>;

void Act(DWORD sheetThread, const Words& actions, HANDLE done) {
    try {
        SheetActions sheet(sheetThread);
        for (auto action = actions.begin(); action != actions.end();)
            action = sheet.Do(action, actions.end());
        SetEvent(done);
    } catch (const std::exception& fault) {
        Console::Error(NString(fault.what(), true));
        // Nothing says that the sheet's own loop can still be left.
        TerminateProcess(GetCurrentProcess(), EXIT_FAILURE);
    }
}

// Messages of this thread's windows, until the event is set.
void PumpUntil(HANDLE done) {
    MSG message;
    while (MsgWaitForMultipleObjects(1, &done, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

int Run(const Words& words) {
    Words files;
    auto word = words.begin();
    for (; word != words.end() && *word != L"--"; ++word)
        files.push_back(*word);
    if (files.empty() || word == words.end())
        return WrongCall;
    OleSession ole;
    const UniqueKernelHandle done(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    std::thread acting(Act, GetCurrentThreadId(), Words(word + 1, words.end()), done.Get());
    try {
        ShowShellProperties(files); // for some shells until the sheet has closed
    } catch (...) {
        acting.detach(); // it waits for a sheet that won't come
        throw;
    }
    PumpUntil(done.Get());
    acting.join();
    return EXIT_SUCCESS;
}
} // namespace

extern "C" int wmain(int count, wchar_t** arguments);
int wmain(int count, wchar_t** arguments) {
    try {
        return Run(Words(arguments + 1, arguments + count));
    } catch (const std::exception& fault) {
        Console::Error(NString(fault.what(), true));
        TerminateProcess(GetCurrentProcess(), EXIT_FAILURE); // without waiting for other threads
        return EXIT_FAILURE;
    }
}
