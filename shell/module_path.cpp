#include "shell/module_path.h"

#include "foundation/module_instance.h"

namespace {
constexpr int FirstCapacity = MAX_PATH;
constexpr int LongestPath = 32768; // units, terminator included
} // namespace

NString NRunningModulePath() {
    for (int capacity = FirstCapacity;; capacity *= 2) {
        NString path;
        path.SetLength(capacity, L' ');
        DWORD length =
            GetModuleFileNameW(NModuleInstance(), path.Text, static_cast<DWORD>(capacity));
        // A text that fills the buffer is cut, without an error on old systems.
        bool whole = length < static_cast<DWORD>(capacity);
        if (whole || capacity > LongestPath)
            return whole ? path.Left(static_cast<int>(length)) : NString();
    }
}
