#pragma once

#include "suite/shellhost/module_host.h"

#include <span>

// The words behind a command's name, as they were typed.
struct Arguments {
    const wchar_t* const* words = nullptr;
    int count = 0;

    const wchar_t* operator[](int index) const { return words[index]; }
};

// One command of the program. Each stands in a file of its own.
struct Command {
    const wchar_t* name;
    const wchar_t* usage;   // the name and its arguments
    const wchar_t* meaning; // for the usage text
    int minimum;            // fewer arguments are answered with the usage text
    int (*run)(ModuleHost& module, const Arguments& arguments); // the exit code
};

// All of them, in the order of the usage text.
std::span<const Command> Commands();

// Shows the module's items in the context menu of the files, each with its
// offset, the size of its picture, its verb and its help text.
int RunMenuCommand(ModuleHost& module, const Arguments& arguments);
// Runs a command of that menu on the files: a verb, or an offset.
int RunInvokeCommand(ModuleHost& module, const Arguments& arguments);
// Shows what the page Audio Properties says of the files, a row on a line.
int RunRowsCommand(ModuleHost& module, const Arguments& arguments);
// Writes the framed covers of one file.
int RunCoversCommand(ModuleHost& module, const Arguments& arguments);
// Opens a property sheet with the module's pages for the files; or writes a
// picture of it.
int RunPropertiesCommand(ModuleHost& module, const Arguments& arguments);
// Shows the tag of each file as the module's exchange brings it.
int RunTagsCommand(ModuleHost& module, const Arguments& arguments);
// Sets elements of one file's tag, and looks whether the file holds them.
int RunSetCommand(ModuleHost& module, const Arguments& arguments);
// Deletes elements, or the whole tag, and looks whether they are gone.
int RunDeleteCommand(ModuleHost& module, const Arguments& arguments);
