#include "suite/shellhost/tag_reading.h"

#include "codec/tag_exchange.h"
#include "foundation/module_instance.h"
#include "foundation/ndisk.h"
#include "foundation/nfolders.h"

namespace {
bool IsFile(const NString& path) {
    bool isFolder = false;
    return NPathExists(path, isFolder) && !isFolder;
}

// The exchange tells no reasons; these are the ones that can be looked up.
NString ReasonForNoReply(const NString& path) {
    NString sibling = NGetModuleFolder(NModuleInstance()).Concat(L"QueryTrackData.exe");
    if (!IsFile(sibling))
        return NString(L"the tag program is missing: ").Concat(sibling.Text);
    if (!IsFile(path))
        return L"no such file";
    return L"the tag program can't read it";
}
} // namespace

bool ReadTag(const NString& path, clTagRecord& tag, NString& problem) {
    NBuffer reply;
    RunGetAudioInf(path.Text, reply);
    tag.Deserialise(reply.Data, static_cast<int>(reply.Size));
    if (reply.Size > 0)
        return true;
    problem = L"shellhost: ";
    problem.Append(path);
    problem.Append(L": ");
    problem.Append(ReasonForNoReply(path));
    return false;
}
