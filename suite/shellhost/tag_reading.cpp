#include "suite/shellhost/tag_reading.h"

#include "codec/tag_exchange.h"
#include "foundation/module_instance.h"
#include "foundation/ndisk.h"
#include "foundation/nfolders.h"
#include "suite/shellhost/file_problem.h"

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
    NString problem = ReadProblem(path);
    return problem.IsEmpty() ? L"it isn't audio that the tag program can read" : problem;
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
