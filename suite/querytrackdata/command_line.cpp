#include "suite/querytrackdata/command_line.h"

#include <iterator>

namespace {

struct Option {
    const wchar_t* Prefix;
    RequestKind Kind;
};

constexpr Option Options[] = {
    {L"--GetAudioInf=", RequestKind::Read},
    {L"--SetTags=", RequestKind::Set},
    {L"--DelTagElements=", RequestKind::Delete},
};

NString WithoutQuotes(const NString& text) {
    bool quoted = text.CharCount() >= 2 && text.At(1) == L'"' && text.At(text.CharCount()) == L'"';
    return quoted ? text.Mid(2, text.CharCount() - 1) : text;
}

} // namespace

bool ParseCommandLine(int count, const wchar_t* const* arguments, CommandLine& result) {
    if (count != 2)
        return false;
    NString argument(arguments[1]);
    for (const Option& option : Options) {
        NString prefix(option.Prefix);
        if (argument.Compare(prefix, prefix.CharCount()) != 0)
            continue;
        result.Kind = option.Kind;
        result.ExchangeFile = WithoutQuotes(argument.From(prefix.Length));
        return !result.ExchangeFile.IsEmpty();
    }
    return false;
}
