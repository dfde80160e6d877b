#include "shell/edit_entry.h"

extern "C" void EditIDTags(const wchar_t*) {}
