#include "suite/querytrackdata/error_line.h"

#include "foundation/nbuffer.h"

namespace {

// A path has at most 32767 units; what is longer isn't one, and is cut.
constexpr int MaxSubjectUnits = 32767;

NString OnOneLine(const wchar_t* subject) {
    NString shown(subject);
    if (shown.CharCount() > MaxSubjectUnits)
        shown.SetLength(MaxSubjectUnits, L' ');
    for (int index = 0; index < shown.CharCount(); ++index) {
        if (shown.Text[index] < L' ')
            shown.Text[index] = L'?';
    }
    return shown;
}

} // namespace

bool ErrorLine::Fail(const wchar_t* what) {
    if (!HasText()) {
        text_ = L"QueryTrackData: ";
        text_.Append(what);
    }
    return false;
}

bool ErrorLine::Fail(const wchar_t* what, const wchar_t* subject, DWORD systemError) {
    if (HasText())
        return false;
    Fail(what);
    text_.Append(L": \"");
    text_.Append(OnOneLine(subject));
    text_.Append(L"\"");
    if (systemError != 0) {
        text_.Append(L" (system error ");
        text_.Append(NString::FromUInt(systemError));
        text_.Append(L")");
    }
    return false;
}

void ErrorLine::Print() const {
    if (!HasText())
        return;
    NString line(text_);
    line.Append(L"\r\n");
    int size =
        WideCharToMultiByte(CP_UTF8, 0, line.Text, line.CharCount(), nullptr, 0, nullptr, nullptr);
    NBuffer bytes;
    bytes.Resize(static_cast<uint32_t>(size));
    if (!bytes.Data)
        return;
    WideCharToMultiByte(CP_UTF8, 0, line.Text, line.CharCount(),
                        reinterpret_cast<char*>(bytes.Data), size, nullptr, nullptr);
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), bytes.Data, bytes.Size, &written, nullptr);
}
