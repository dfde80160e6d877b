#pragma once

#include "foundation/module_instance.h"

// For the time of the scope the module seems to lie where no converter lies.
class WithoutConverter {
public:
    WithoutConverter() { NSetModuleInstance(GetModuleHandleW(L"kernel32.dll")); }
    ~WithoutConverter() { NSetModuleInstance(nullptr); }
    WithoutConverter(const WithoutConverter&) = delete;
    WithoutConverter& operator=(const WithoutConverter&) = delete;
};
