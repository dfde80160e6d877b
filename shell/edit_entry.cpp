#include "shell/edit_entry.h"

void EditFiles(const NStringList&) {}

extern "C" void EditIDTags(const wchar_t*) {}
