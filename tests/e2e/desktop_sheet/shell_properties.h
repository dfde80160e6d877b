#pragma once

#include <string>
#include <vector>

// Runs the desktop shell's own command "properties" on files of one folder, by
// their full paths. Throws std::runtime_error if the shell refuses. Whether the
// sheet is closed by then is up to the shell.
void ShowShellProperties(const std::vector<std::wstring>& files);
