// What the system has to load before the program runs. Each library more is
// paid for at every file whose tag is read.

#include "tests/querytrackdata/program_runner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstring>

namespace {

// The parts of a program file that its imports take, by Microsoft's "PE
// Format" (learn.microsoft.com/windows/win32/debug/pe-format).
class ProgramFile {
public:
    explicit ProgramFile(const std::wstring& path) : bytes_(ReadWhole(path)) {
        auto dos = At<IMAGE_DOS_HEADER>(0);
        headers_ = static_cast<size_t>(dos.e_lfanew);
        header_ = At<IMAGE_NT_HEADERS64>(headers_);
    }

    std::vector<std::string> Imports() const {
        std::vector<std::string> names;
        const auto& table = header_.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        for (size_t place = Place(table.VirtualAddress);;
             place += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
            auto entry = At<IMAGE_IMPORT_DESCRIPTOR>(place);
            if (entry.Name == 0)
                return names;
            std::string name = reinterpret_cast<const char*>(&bytes_.at(Place(entry.Name)));
            std::transform(name.begin(), name.end(), name.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
            names.push_back(name);
        }
    }

    WORD Subsystem() const { return header_.OptionalHeader.Subsystem; }
    WORD Characteristics() const { return header_.OptionalHeader.DllCharacteristics; }

private:
    template <typename T>
    T At(size_t place) const {
        T value;
        memcpy(&value, &bytes_.at(place + sizeof(T) - 1) - (sizeof(T) - 1), sizeof(T));
        return value;
    }

    // Where in the file an address of the loaded program lies.
    size_t Place(DWORD address) const {
        size_t sections = headers_ + offsetof(IMAGE_NT_HEADERS64, OptionalHeader) +
                          header_.FileHeader.SizeOfOptionalHeader;
        for (WORD index = 0; index < header_.FileHeader.NumberOfSections; ++index) {
            auto section =
                At<IMAGE_SECTION_HEADER>(sections + index * sizeof(IMAGE_SECTION_HEADER));
            if (address >= section.VirtualAddress &&
                address - section.VirtualAddress < section.SizeOfRawData)
                return address - section.VirtualAddress + section.PointerToRawData;
        }
        throw std::out_of_range("no section holds the address");
    }

    Bytes bytes_;
    size_t headers_ = 0;
    IMAGE_NT_HEADERS64 header_{};
};

} // namespace

TEST(ProgramFile, ImportsTheKernelTheRunTimeAndTheAccessListsAlone) {
    std::vector<std::string> imports = ProgramFile(TagProgram::ShippedProgram()).Imports();
    EXPECT_FALSE(imports.empty());
    for (const std::string& name : imports)
        EXPECT_TRUE(name == "kernel32.dll" || name == "msvcrt.dll" || name == "advapi32.dll")
            << name;
}

TEST(ProgramFile, IsAConsoleProgramWithAllThatMakesAttacksHarder) {
    ProgramFile program(TagProgram::ShippedProgram());
    EXPECT_EQ(program.Subsystem(), IMAGE_SUBSYSTEM_WINDOWS_CUI);
    for (int wanted : {IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE, IMAGE_DLLCHARACTERISTICS_NX_COMPAT,
                       IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA})
        EXPECT_NE(program.Characteristics() & wanted, 0) << wanted;
}
