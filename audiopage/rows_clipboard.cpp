#include "audiopage/rows_clipboard.h"

#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "toolkit/nclipboard.h"
#include "toolkit/nicon.h"
#include "toolkit/ntooltip.h"

namespace {
constexpr int IconSize = 16;
constexpr uint32_t TipDurationMs = 3000;
constexpr int AboveCursor = 10; // pixels

void ShowCopied(NToolTip& tip, POINT cursor) {
    NIcon icon;
    icon.Load(IDI_CLIPBOARD, IconSize, IconSize, NModuleInstance());
    NToolTipText copied;
    copied.text = L"Copied to Clipboard";
    copied.icon = &icon;
    copied.durationMs = TipDurationMs;
    copied.fixedX = cursor.x;
    copied.fixedY = cursor.y - AboveCursor;
    tip.SetText(copied);
}
} // namespace

NString RowsAsText(NKeyedList<clPropRow>& rows) {
    NString text;
    for (int index = 0; index < rows.Count(); ++index) {
        const clPropRow& row = *rows[index];
        if (index > 0)
            text.Append(L"\r\n");
        text.Append(row.Label);
        text.Append(L" ");
        // A value that ends in a carriage return gets its "; " there too, and
        // a line feed behind one stays: wanted.
        NString value = row.Value;
        value.Replace(L"\r", L"; ");
        text.Append(value);
    }
    return text;
}

void CopyRowsToClipboard(NKeyedList<clPropRow>& rows, NToolTip& tip) {
    // 1.
    POINT cursor = {};
    GetCursorPos(&cursor);
    // 2.
    NString text = RowsAsText(rows);
    // 3.
    NClipboard clipboard;
    if (clipboard.Open(nullptr)) {
        clipboard.SetTextA(text.ToNarrow());
        clipboard.SetTextW(text.Text);
    }
    // 4. The clipboard stays open until the tip is up, and the tip shows also
    // if nothing was copied: wanted.
    ShowCopied(tip, cursor);
    clipboard.Close();
}
