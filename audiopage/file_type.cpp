#include "audiopage/file_type.h"

#include "foundation/npath.h"
#include "foundation/nreg.h"
#include "foundation/windows_lean.h"

namespace {
struct RememberedType {
    NString extension;
    NString text;
};

RememberedType& LastType() {
    static RememberedType last;
    return last;
}

NString DefaultValue(const NString& key) {
    return NRegReadString(L"", HKEY_CLASSES_ROOT, key.Text);
}

// The key of an extension names the key of its type, which holds the name.
NString RegisteredType(const NString& extension) {
    NString typeKey = DefaultValue(extension);
    return typeKey.IsEmpty() ? NString() : DefaultValue(typeKey);
}

NString LookUpType(const NString& extension) {
    bool hasMoreThanDot = extension.CharCount() > 1;
    NString text;
    if (hasMoreThanDot)
        text = RegisteredType(extension);
    if (!text.IsEmpty())
        return text;
    if (hasMoreThanDot) {
        text = extension.From(2).ToLower();
        text.Append(L" ");
    }
    text.Append(L"File");
    return text;
}
} // namespace

NString FileTypeText(const NString& path) {
    NString extension = NGetFileExt(path);
    RememberedType& last = LastType();
    if (extension.Compare(last.extension, 0, true) != 0) {
        last.text = LookUpType(extension);
        last.extension = extension;
    }
    return last.text;
}
