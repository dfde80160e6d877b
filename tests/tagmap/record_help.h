#pragma once

#include "codec/tag_record.h"
#include "suite/tagmap/tag_values.h"

#include <cstring>
#include <string>

// Short forms in which the tests of tags ask for records and refusals.
namespace tagmap {

inline constexpr wchar_t Absent[] = L"(absent)";

inline std::wstring ValueOf(clTagRecord& record, const wchar_t* name) {
    const clTagElement* element = record.Find(name);
    return element ? element->Value.c_str() : Absent;
}

inline std::string DataOf(clTagRecord& record, const wchar_t* name) {
    const clTagElement* element = record.Find(name);
    return element
               ? std::string(reinterpret_cast<const char*>(element->Data.Data), element->Data.Size)
               : "(absent)";
}

// With "|" between them.
inline std::wstring RefusedNames(const Refusals& refused) {
    return refused.Names().Join(L"|").c_str();
}

// The names of the elements in their order, with "|" between them.
inline std::wstring NamesOf(clTagRecord& record) {
    std::wstring names;
    for (int index = 0; index < record.Count(); ++index)
        names += (index ? L"|" : L"") + std::wstring(record[index]->Name.c_str());
    return names;
}

inline void AddBytes(clTagRecord& record, const wchar_t* name, const std::string& bytes) {
    record.AddData(name, bytes.data(), static_cast<int>(bytes.size()));
}

} // namespace tagmap
