#include "suite/shellhost/change_report.h"

#include "suite/shellhost/console.h"
#include "suite/shellhost/file_problem.h"

namespace {
bool AreAlike(clTagRecord& first, clTagRecord& second) {
    NBuffer a;
    NBuffer b;
    first.Serialise(a);
    second.Serialise(b);
    return a.Equals(b);
}
} // namespace

void TellOfFile(const NString& path, const NString& what) {
    NString line(L"shellhost: ");
    line.Append(path);
    line.Append(L": ");
    line.Append(what);
    Console::Error(line);
}

bool TellIfNothingWasWritten(const NString& path, clTagRecord& before, clTagRecord& after) {
    if (!AreAlike(before, after))
        return false;
    NString reason = WriteProblem(path);
    if (reason.IsEmpty())
        reason = L"the tag program refuses the change, or its format can't hold it";
    TellOfFile(path, NString(L"nothing was written: ").Concat(reason.Text));
    return true;
}
