#include "suite/querytrackdata/program.h"

#include "suite/querytrackdata/audio_file_handle.h"
#include "suite/querytrackdata/command_line.h"
#include "suite/querytrackdata/error_line.h"
#include "suite/querytrackdata/exchange_file.h"
#include "suite/querytrackdata/requests.h"
#include "suite/querytrackdata/safe_write.h"
#include "suite/querytrackdata/tag_edits.h"

namespace {

constexpr wchar_t NoRequest[] = L"the exchange file holds no request of this kind";

bool ReadRequest(const NString& exchangePath, ExchangeFile::Use use, uint32_t limit,
                 ExchangeFile& exchange, NBuffer& request, ErrorLine& error) {
    return exchange.Open(exchangePath.c_str(), use, error) &&
           exchange.ReadAll(request, limit, error);
}

bool ReplyWithTags(const NString& exchangePath, ErrorLine& error) {
    ExchangeFile exchange;
    NBuffer request, reply;
    NString audioFile;
    if (!ReadRequest(exchangePath, ExchangeFile::Use::ReadAndReply, MaxReadRequestSize, exchange,
                     request, error))
        return false;
    if (!ParseReadRequest(request, audioFile))
        return error.Fail(NoRequest, exchangePath.c_str());
    return ReadTagsOf(audioFile, reply, error) && exchange.WriteReply(reply, error);
}

bool ChangeTags(const NString& exchangePath, ErrorLine& error) {
    ExchangeFile exchange;
    NBuffer request;
    NString audioFile;
    clTagRecord changes;
    if (!ReadRequest(exchangePath, ExchangeFile::Use::Read, MaxSetRequestSize, exchange, request,
                     error))
        return false;
    if (!ParseSetRequest(request, audioFile, changes))
        return error.Fail(NoRequest, exchangePath.c_str());
    SetEdit edit(audioFile, changes);
    if (!WriteSafely(audioFile.c_str(), edit, error))
        return false;
    if (edit.Refused().Count > 0)
        error.Note(L"the file's format cannot hold", edit.Refused().Join(L", ").c_str());
    return true;
}

bool DeleteElements(const NString& exchangePath, ErrorLine& error) {
    ExchangeFile exchange;
    NBuffer request;
    NString audioFile;
    NStringList names;
    if (!ReadRequest(exchangePath, ExchangeFile::Use::Read, MaxDeleteRequestSize, exchange, request,
                     error))
        return false;
    if (!ParseDeleteRequest(request, audioFile, names))
        return error.Fail(NoRequest, exchangePath.c_str());
    DeleteEdit edit(audioFile, names);
    return WriteSafely(audioFile.c_str(), edit, error);
}

bool CarryOut(const CommandLine& request, ErrorLine& error) {
    switch (request.Kind) {
    case RequestKind::Read:
        return ReplyWithTags(request.ExchangeFile, error);
    case RequestKind::Set:
        return ChangeTags(request.ExchangeFile, error);
    case RequestKind::Delete:
        return DeleteElements(request.ExchangeFile, error);
    }
    return false;
}

bool Run(int count, const wchar_t* const* arguments, ErrorLine& error) {
    CommandLine request;
    if (!ParseCommandLine(count, arguments, request))
        return error.Fail(L"usage: QueryTrackData --GetAudioInf=FILE | --SetTags=FILE | "
                          L"--DelTagElements=FILE");
    return CarryOut(request, error);
}

// Takes no memory: there may be none.
void PrintLastWords() noexcept {
    static constexpr char words[] =
        "QueryTrackData: the request needs more than the system gives\r\n";
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), words, sizeof(words) - 1, &written, nullptr);
}

} // namespace

int RunQueryTrackData(int count, const wchar_t* const* arguments) noexcept {
    try {
        ErrorLine error;
        const bool done = Run(count, arguments, error);
        error.Print();
        return done ? 0 : 1;
    } catch (...) {
        PrintLastWords();
        return 1;
    }
}
