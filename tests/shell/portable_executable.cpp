#include "tests/shell/portable_executable.h"

namespace {

template <typename T>
const T* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<const T*>(reinterpret_cast<const BYTE*>(module) + offset);
}

template <typename T>
const T* Directory(HMODULE module, int index) {
    return At<T>(module, HeadersOf(module).OptionalHeader.DataDirectory[index].VirtualAddress);
}

const char* AtName(HMODULE module, ULONGLONG offset) {
    return At<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(offset))->Name;
}

std::string Lower(std::string text) {
    for (char& letter : text)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return text;
}

} // namespace

const IMAGE_NT_HEADERS64& HeadersOf(HMODULE module) {
    DWORD offset = static_cast<DWORD>(At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew);
    return *At<IMAGE_NT_HEADERS64>(module, offset);
}

std::set<std::string> ImportedLibraries(HMODULE module) {
    std::set<std::string> names;
    auto* import = Directory<IMAGE_IMPORT_DESCRIPTOR>(module, IMAGE_DIRECTORY_ENTRY_IMPORT);
    for (; import->Name; ++import)
        names.insert(Lower(At<char>(module, import->Name)));
    return names;
}

std::set<std::string> ImportedNames(HMODULE module) {
    std::set<std::string> names;
    auto* import = Directory<IMAGE_IMPORT_DESCRIPTOR>(module, IMAGE_DIRECTORY_ENTRY_IMPORT);
    for (; import->Name; ++import) {
        auto* entry = At<IMAGE_THUNK_DATA64>(module, import->OriginalFirstThunk);
        for (; entry->u1.AddressOfData; ++entry)
            if (!IMAGE_SNAP_BY_ORDINAL64(entry->u1.Ordinal))
                names.insert(AtName(module, entry->u1.AddressOfData));
    }
    return names;
}

std::set<std::string> ExportedNames(HMODULE module) {
    std::set<std::string> names;
    auto* exports = Directory<IMAGE_EXPORT_DIRECTORY>(module, IMAGE_DIRECTORY_ENTRY_EXPORT);
    auto* offsets = At<DWORD>(module, exports->AddressOfNames);
    for (DWORD index = 0; index < exports->NumberOfNames; ++index)
        names.insert(At<char>(module, offsets[index]));
    return names;
}
