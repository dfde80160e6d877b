#include "codec/tag_exchange.h"

#include "codec/tag_wire.h"
#include "foundation/module_instance.h"
#include "foundation/nfile.h"
#include "foundation/nprocess.h"

#include <algorithm>
#include <cstring>

namespace {
constexpr wchar_t SiblingProgram[] = L"QueryTrackData.exe";
constexpr char TempPrefix[] = "tNP";
constexpr DWORD SiblingFlags = CREATE_NO_WINDOW | NORMAL_PRIORITY_CLASS;
constexpr uint32_t ReadTimeoutMs = 10000;
constexpr uint32_t WaitWithoutLimit = 0;

// One request: a temporary file, and the handle on it that stays open while
// the sibling runs. The file is closed, then deleted, at the end.
class ExchangeFile {
public:
    ExchangeFile()
        : path_(TempPrefix, nullptr), file_(path_.Text, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING,
                                            false, true, FILE_ATTRIBUTE_NORMAL) {}

    NFile& File() { return file_; }

    // False if the sibling couldn't be started, or ran past the time-out.
    bool RunSibling(const wchar_t* option, uint32_t timeoutMs) {
        NString program = NGetModuleFolder(NModuleInstance());
        program.Append(SiblingProgram);
        // The leading blank is wanted: with the one that NRunProgram adds, two
        // stand between the program and its option.
        NString parameters(L" ");
        parameters.Append(option);
        parameters.Append(L"=\"");
        parameters.Append(path_);
        parameters.Append(L"\"");
        return NRunProgram(program.Text, parameters.Text, true, timeoutMs, false, SiblingFlags);
    }

private:
    NTempFile path_;
    NFile file_; // behind path_, so that it's closed before the file goes
};

// Takes the payload of a reply; a reply that isn't one leaves `out` empty. The
// length that it claims isn't compared with its size: what it doesn't hold of
// its payload is zero.
void TakeReply(const NBuffer& reply, NBuffer& out) {
    if (reply.Size < TagReplyMinSize ||
        memcmp(reply.Data, TagReplyMagic, sizeof(TagReplyMagic)) != 0)
        return;
    int32_t claimed;
    memcpy(&claimed, reply.Data + sizeof(TagReplyMagic), sizeof(claimed));
    if (claimed <= 0)
        return;
    uint32_t length = static_cast<uint32_t>(claimed);
    out.Resize(length, false, true);
    if (!out.Data)
        return;
    memcpy(out.Data, reply.Data + TagReplyHeaderSize,
           std::min(out.Size, reply.Size - TagReplyHeaderSize));
}

// Reads the file into `reply`; false if the read comes up short. Wanted: of a
// file of 4 GiB or more the low 32 bits of its size are what counts.
bool ReadWhole(NFile& file, NBuffer& reply) {
    if (!file.Seek(0, NFile::FromStart))
        return false;
    bool failed = false;
    reply.Resize(static_cast<uint32_t>(file.GetSize(failed)));
    return !failed && reply.Data &&
           file.Read(reply.Data, reply.Size, NFile::NoSeek, failed) == reply.Size;
}

bool WriteSetRequest(NFile& file, const NBuffer& record, const wchar_t* path) {
    return file.Write(&record.Size, sizeof(record.Size), NFile::NoSeek) &&
           file.Write(record.Data, record.Size, NFile::NoSeek) &&
           file.Write(&TagRequestMarker, sizeof(TagRequestMarker), NFile::NoSeek) &&
           file.WriteString(path, false);
}
} // namespace

void RunGetAudioInf(const wchar_t* path, NBuffer& out) {
    // 1. Whatever happens, no former answer stays.
    out.Free();
    // 2. to 5.
    ExchangeFile exchange;
    exchange.File().WriteString(path, false);
    if (!exchange.RunSibling(L"--GetAudioInf", ReadTimeoutMs))
        return;
    // 6. to 8.
    NBuffer reply;
    if (ReadWhole(exchange.File(), reply))
        TakeReply(reply, out);
}

bool RunSetTags(const wchar_t* path, clTagRecord& record) {
    // 1. and 2.
    NBuffer serialised;
    record.Serialise(serialised);
    if (serialised.Size == 0)
        return true;
    // 3. to 6.
    ExchangeFile exchange;
    return WriteSetRequest(exchange.File(), serialised, path) &&
           exchange.RunSibling(L"--SetTags", WaitWithoutLimit);
}

void RunDelTagElements(const wchar_t* path, const NStringList& names) {
    ExchangeFile exchange;
    exchange.File().WriteString(path, true);
    if (names.Count > 0)
        exchange.File().WriteString(names.Join(TagNameSeparator).Text, false);
    else
        exchange.File().WriteString(TagDeleteAll, false);
    exchange.RunSibling(L"--DelTagElements", WaitWithoutLimit);
}
