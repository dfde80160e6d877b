#include "codec/trace.h"

#include "foundation/nmutex.h"
#include "foundation/nstring.h"

namespace {
constexpr wchar_t EnterMark[] = L"->->";
constexpr wchar_t LeaveMark[] = L"<-<-";
constexpr int MarkLength = 4;
constexpr wchar_t IndentStep[] = L"  ";
constexpr int IndentStepLength = 2;

NMutex traceMutex; // held for all that follows
NString indent;
bool lastEndedLine = true; // as before the first line

void WriteUnits(const NString& line, const NLogContext* logContext) {
    if (!logContext || !logContext->File || logContext->File == INVALID_HANDLE_VALUE)
        return;
    DWORD written = 0;
    WriteFile(logContext->File, line.Text,
              static_cast<DWORD>(line.CharCount()) * static_cast<DWORD>(sizeof(wchar_t)), &written,
              nullptr);
}
} // namespace

void NTraceWrite(const wchar_t* text, const NLogContext* logContext, const wchar_t* function,
                 bool endLine, const wchar_t* prefix) {
    NMutexLock lock(traceMutex);
    NString piece(text);
    // 1.
    if (piece.Compare(LeaveMark, MarkLength) == 0)
        indent.RemoveRight(IndentStepLength);
    // 2.
    NString line;
    if (prefix)
        line = prefix;
    else if (lastEndedLine)
        line = indent;
    line.Append(piece);
    // 3.
    if (endLine) {
        if (function) {
            line.Append(L"  [");
            line.Append(function);
            line.Append(L"]");
        }
        line.Append(L"\r\n");
    }
    // 4.
    WriteUnits(line, logContext);
    // 5.
    if (piece.Compare(EnterMark, MarkLength) == 0)
        indent.Append(IndentStep);
    // 6.
    lastEndedLine = endLine;
}
