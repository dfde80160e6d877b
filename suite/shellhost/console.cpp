#include "suite/shellhost/console.h"

#include "foundation/windows_lean.h"

#include <string>

namespace {
std::string Utf8Line(const NString& text) {
    int size =
        WideCharToMultiByte(CP_UTF8, 0, text.Text, text.CharCount(), nullptr, 0, nullptr, nullptr);
    std::string line(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.Text, text.CharCount(), line.data(), size, nullptr,
                        nullptr);
    return line + "\n";
}

void Write(DWORD stream, const NString& text) {
    std::string line = Utf8Line(text);
    DWORD written = 0;
    WriteFile(GetStdHandle(stream), line.data(), static_cast<DWORD>(line.size()), &written,
              nullptr);
}
} // namespace

namespace Console {
void Line(const NString& text) {
    Write(STD_OUTPUT_HANDLE, text);
}

void Error(const NString& text) {
    Write(STD_ERROR_HANDLE, text);
}
} // namespace Console
