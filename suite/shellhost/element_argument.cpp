#include "suite/shellhost/element_argument.h"

#include "foundation/ndisk.h"
#include "foundation/nfile.h"

#include <cstdint>

namespace {
constexpr wchar_t PicturePrefix[] = L"_albumart_";
constexpr int PicturePrefixLength = 10;
constexpr wchar_t PartSeparator[] = L"\r";
// More than a tag holds in any format.
constexpr int64_t LargestFile = 256 * 1024 * 1024;

bool ReadBytes(const NString& path, NBuffer& bytes) {
    bool failed = false;
    int64_t size = NGetFileSize(path, failed);
    if (failed || size <= 0 || size > LargestFile)
        return false;
    bytes.Resize(static_cast<uint32_t>(size));
    return NReadFile(path, bytes.Data, bytes.Size, 0, NFile::FromStart, failed) == bytes.Size &&
           !failed;
}

ArgumentResult TakeFile(const NString& name, const NString& path, clTagRecord& record,
                        NString& problem) {
    NBuffer bytes;
    if (!ReadBytes(path, bytes)) {
        problem = NString(L"shellhost: can't read the file ").Concat(path.Text);
        return ArgumentResult::FileUnreadable;
    }
    record.Remove(name.Text);
    record.AddData(name.Text, bytes.Data, static_cast<int>(bytes.Size));
    return ArgumentResult::Taken;
}

void AddPart(NString& value, const NString& part) {
    if (part.IsEmpty())
        return;
    if (!value.IsEmpty())
        value.Append(PartSeparator);
    value.Append(part);
}
} // namespace

bool IsPictureName(const NString& name) {
    return name.Compare(PicturePrefix, PicturePrefixLength, true) == 0;
}

int PictureNumber(const NString& name) {
    constexpr int64_t Largest = INT32_MAX;
    if (!IsPictureName(name))
        return 0;
    int64_t number = name.From(PicturePrefixLength + 1).ToInt();
    return number > 0 && number <= Largest ? static_cast<int>(number) : 0;
}

bool IsBinaryName(const NString& name) {
    return IsPictureName(name) || name.Compare(L"_cdtoc", 0, true) == 0;
}

ArgumentResult TakeElementArgument(const wchar_t* word, clTagRecord& record, NString& problem) {
    NString text(word);
    int equals = text.FindChar(L'=');
    if (equals < 2) {
        problem = NString(L"shellhost: not of the form NAME=VALUE: ").Concat(word);
        return ArgumentResult::WrongForm;
    }
    NString name = text.Left(equals - 1);
    NString value = text.From(equals + 1);
    if (IsBinaryName(name) && value.At(1) == L'@')
        return TakeFile(name, value.From(2), record, problem);
    if (clTagElement* present = record.Find(name.Text))
        AddPart(present->Value, value);
    else
        record.Add(name.Text, value.Text);
    return ArgumentResult::Taken;
}
