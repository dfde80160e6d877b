#pragma once

#include "foundation/windows_lean.h"

#include <set>
#include <string>

// What the headers of a loaded module say about it.
std::set<std::string> ImportedLibraries(HMODULE module); // in lower case
std::set<std::string> ImportedNames(HMODULE module);     // of their functions
std::set<std::string> ExportedNames(HMODULE module);
const IMAGE_NT_HEADERS64& HeadersOf(HMODULE module);
