#include "shell/edit_entry.h"
#include "tests/shell/loaded_module.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

TEST(EditEntry, LeavesTheListFileAsItIs) {
    TemporaryFolder folder;
    std::filesystem::path list = folder.Path() + L"\\list.txt";
    std::ofstream(list, std::ios::binary) << std::string("C\0:\0\\\0a\0\r\0\n\0", 12);

    EditIDTags(list.c_str());

    std::ifstream stream(list, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_EQ(bytes, std::string("C\0:\0\\\0a\0\r\0\n\0", 12));
}

TEST(EditEntry, TakesAMissingListFileAndANullPath) {
    TemporaryFolder folder;
    std::wstring missing = folder.Path() + L"\\missing.txt";

    EditIDTags(missing.c_str());
    EditIDTags(nullptr);

    EXPECT_FALSE(std::filesystem::exists(missing));
}
