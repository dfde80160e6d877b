#include "suite/shellhost/tag_text.h"

#include <cstring>
#include <string_view>

namespace {
using namespace std::string_view_literals;

struct Signature {
    std::string_view bytes;
    const wchar_t* name;
};
constexpr Signature Signatures[] = {
    {"\x89PNG\r\n\x1A\n"sv, L"PNG picture, "},
    {"\xFF\xD8\xFF"sv, L"JPEG picture, "},
    {"GIF8"sv, L"GIF picture, "},
    {"BM"sv, L"BMP picture, "},
};

const wchar_t* KindOf(const NBuffer& data) {
    for (const Signature& signature : Signatures) {
        if (data.Size >= signature.bytes.size() &&
            memcmp(data.Data, signature.bytes.data(), signature.bytes.size()) == 0)
            return signature.name;
    }
    return L"data, ";
}

void AppendText(NString& line, const NString& value) {
    for (int position = 1; position < value.Length; ++position) {
        wchar_t unit = value.At(position);
        if (unit == L'\r')
            line.Append(L" / ");
        else
            line.InsertChar(unit < L' ' ? L' ' : unit);
    }
}
} // namespace

NString ElementLine(const clTagElement& element) {
    NString line;
    AppendText(line, element.Name);
    line.Append(L": ");
    AppendText(line, element.Value);
    if (element.Data.Size == 0)
        return line;
    if (!element.Value.IsEmpty())
        line.Append(L"; ");
    line.Append(KindOf(element.Data));
    line.Append(NString::FromUInt(element.Data.Size));
    line.Append(L" bytes");
    return line;
}
