#include "toolkit/combo_completion.h"

#include "toolkit/window_text.h"

namespace {
bool IsBetween(int key, int first, int last) {
    return key >= first && key <= last;
}

bool BeginsWith(const NString& entry, const NString& start) {
    return entry.Left(start.CharCount()).Compare(start, 0, true) == 0;
}
} // namespace

void CompleteCombo(HWND combo) {
    NString typed = TextOfWindow(combo);
    const int count = typed.CharCount();
    if (!count)
        return;
    // The number of entries is asked anew at each turn.
    for (int index = 0; index < SendMessageW(combo, CB_GETCOUNT, 0, 0); ++index) {
        const NString entry = TextOfEntry(combo, index);
        if (!BeginsWith(entry, typed))
            continue;
        typed.Append(entry.From(count + 1));
        SetWindowTextW(combo, typed.Text);
        SendMessageW(combo, CB_SETEDITSEL, 0, MAKELPARAM(count, -1));
        return;
    }
}

bool IsCompletedKey(WPARAM key) {
    const int code = static_cast<int>(key);
    // With the raw results, shift state included, whatever the keyboard's
    // layout makes of them. This is wanted.
    return IsBetween(code, VkKeyScanW(L'a'), VkKeyScanW(L'z')) ||
           IsBetween(code, VkKeyScanW(L'0'), VkKeyScanW(L'9')) || code == VK_SPACE;
}
