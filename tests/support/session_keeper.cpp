// Waits for the end of its input, and keeps Wine's services and its desktop
// alive meanwhile. The desktop starts with the first window of all, and would
// hold on to the output of the test that happened to open it.
#include "foundation/windows_lean.h"

#include <cstdio>

int main() {
    CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    puts("ready");
    fflush(stdout);
    while (getchar() != EOF) {
    }
    return 0;
}
