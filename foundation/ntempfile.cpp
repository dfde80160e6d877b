#include "foundation/ntempfile.h"

#include "foundation/ndisk.h"
#include "foundation/nfile.h"
#include "foundation/nfolders.h"
#include "foundation/nrandom.h"

namespace {
constexpr uint32_t RandomNameLimit = 9999;

// A name of the platform's making, whose file exists then, or empty.
NString PlatformTempName(const NString& folder, const NString& prefix) {
    wchar_t name[MAX_PATH + 1] = {};
    return GetTempFileNameW(folder.Text, prefix.Text, 0, name) ? NString(name) : NString();
}

// "%s%s%d.tmp"
NString RandomTempName(const NString& folder, const NString& prefix) {
    NString name(folder);
    name.Append(prefix);
    name.Append(NString::FromUInt(NProcessRandom().Next(RandomNameLimit)));
    name.Append(L".tmp");
    return name;
}

bool MakeEmptyFile(const NString& path) {
    NFile file(path, GENERIC_WRITE, CREATE_ALWAYS, false, true);
    return file.IsOpen();
}
} // namespace

NTempFile::NTempFile(const char* prefix, const char* suffix) {
    // 1.
    NString start(prefix ? prefix : "TMP");
    // 2.
    NString folder = NGetTempFolder();
    Assign(PlatformTempName(folder, start).Text);
    const bool wasMade = !IsEmpty();
    if (!wasMade)
        Assign(RandomTempName(folder, start).Text);
    // 3. A file of a random name that is there is somebody else's.
    if (suffix) {
        if (wasMade)
            NDeleteFile(*this);
        Append(NString(suffix));
    }
    // 4. and 5. The folder may be missing.
    if (!MakeEmptyFile(*this)) {
        NCreateFolders(folder);
        MakeEmptyFile(*this);
    }
}

NTempFile::~NTempFile() {
    if (!IsEmpty())
        NDeleteFile(*this);
}
