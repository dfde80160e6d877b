#pragma once

#include "foundation/unique_handle.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

// The clipboard is one for all programs of the desktop. A test that uses it has
// its turn first, and waits for those of other programs.
class ClipboardTurn {
public:
    ClipboardTurn() : mutex_(CreateMutexW(nullptr, FALSE, L"TonewrightTestsClipboard")) {
        constexpr DWORD longestMs = 60000;
        const DWORD result = WaitForSingleObject(mutex_.Get(), longestMs);
        EXPECT_TRUE(result == WAIT_OBJECT_0 || result == WAIT_ABANDONED)
            << "another test keeps the clipboard";
    }
    ~ClipboardTurn() { ReleaseMutex(mutex_.Get()); }
    ClipboardTurn(const ClipboardTurn&) = delete;
    ClipboardTurn& operator=(const ClipboardTurn&) = delete;

    // What is there in that format, as many bytes as its memory has; empty for
    // nothing.
    static std::string Bytes(UINT format) {
        std::string bytes;
        if (!OpenClipboard(nullptr))
            return bytes;
        if (HANDLE data = GetClipboardData(format)) {
            bytes.resize(GlobalSize(data));
            memcpy(bytes.data(), GlobalLock(data), bytes.size());
            GlobalUnlock(data);
        }
        CloseClipboard();
        return bytes;
    }
    static std::wstring WideText() {
        const std::string bytes = Bytes(CF_UNICODETEXT);
        std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
        memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
        return text.substr(0, text.find(L'\0'));
    }

private:
    UniqueKernelHandle mutex_;
};
