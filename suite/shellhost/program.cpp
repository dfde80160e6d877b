#include "suite/shellhost/program.h"

#include "suite/shellhost/command.h"
#include "suite/shellhost/console.h"
#include "suite/shellhost/module_host.h"
#include "suite/shellhost/session.h"

#include <cwchar>

namespace {
constexpr wchar_t ModuleOption[] = L"--module";

// What the command line says, without the program's name.
struct Request {
    const wchar_t* modulePath = nullptr; // null: the registered module
    const wchar_t* command = nullptr;
    Arguments rest;
};

Request ParseArguments(int count, const wchar_t* const* arguments) {
    Request request;
    int next = 1;
    if (count > 2 && wcscmp(arguments[1], ModuleOption) == 0) {
        request.modulePath = arguments[2];
        next = 3;
    }
    if (next < count)
        request.command = arguments[next++];
    request.rest = {arguments + (next < count ? next : count), next < count ? count - next : 0};
    return request;
}

void PrintUsage() {
    Console::Error(L"usage: shellhost [--module PATH] COMMAND ...");
    for (const Command& command : Commands()) {
        NString line(L"  ");
        line.Append(command.usage);
        line.SetLength(line.CharCount() < 36 ? 36 : line.CharCount() + 1, L' ');
        line.Append(command.meaning);
        Console::Error(line);
    }
    Console::Error(L"Without --module the registered module is created, as the shell does it.");
}

const Command* FindCommand(const wchar_t* name) {
    for (const Command& command : Commands()) {
        if (name && wcscmp(name, command.name) == 0)
            return &command;
    }
    return nullptr;
}

int Run(int count, const wchar_t* const* arguments) {
    Request request = ParseArguments(count, arguments);
    const Command* command = FindCommand(request.command);
    if (!command || request.rest.count < command->minimum) {
        PrintUsage();
        return ExitUsage;
    }
    OleSession ole;
    ModuleHost module;
    bool loaded =
        request.modulePath ? module.LoadFrom(request.modulePath) : module.LoadRegistered();
    if (!loaded) {
        Console::Error(module.Problem());
        return ExitFailed;
    }
    return command->run(module, request.rest);
}
} // namespace

int RunShellHost(int count, const wchar_t* const* arguments) noexcept {
    try {
        return Run(count, arguments);
    } catch (...) {
        // Nothing but a lack of memory throws here.
        Console::LastWords("shellhost: out of memory");
        return ExitFailed;
    }
}
