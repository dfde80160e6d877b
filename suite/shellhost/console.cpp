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

// A pipe may take less at a time than it is given.
bool Write(DWORD stream, std::string_view bytes) noexcept {
    HANDLE handle = GetStdHandle(stream);
    if (!handle || handle == INVALID_HANDLE_VALUE)
        return true;
    while (!bytes.empty()) {
        DWORD written = 0;
        if (!WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) ||
            written == 0)
            return false;
        bytes.remove_prefix(written);
    }
    return true;
}
} // namespace

namespace Console {
bool Line(const NString& text) {
    return Write(STD_OUTPUT_HANDLE, Utf8Line(text));
}

void Error(const NString& text) {
    Write(STD_ERROR_HANDLE, Utf8Line(text));
}

void LastWords(std::string_view text) noexcept {
    Write(STD_ERROR_HANDLE, text);
    Write(STD_ERROR_HANDLE, "\n");
}
} // namespace Console
