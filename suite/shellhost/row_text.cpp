#include "suite/shellhost/row_text.h"

NString RowLine(const clPropRow& row) {
    NString line(row.Label);
    line.Append(L"\t");
    NStringList lines;
    lines.SplitLines(row.Value.c_str());
    if (lines.Count > 0)
        line.Append(*lines[0]);
    if (lines.Count > 1)
        line.Append(L"...");
    return line;
}
