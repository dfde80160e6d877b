#include "tests/querytrackdata/program_runner.h"

#include "codec/tag_wire.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

constexpr DWORD ShareReadWrite = FILE_SHARE_READ | FILE_SHARE_WRITE;

UniqueFileHandle InheritableFile(const std::wstring& path) {
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return UniqueFileHandle(CreateFileW(path.c_str(), GENERIC_WRITE, ShareReadWrite, &inheritable,
                                        CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::wstring Option(const wchar_t* option, const std::wstring& exchangeFile) {
    return std::wstring(L" ") + option + L"=\"" + exchangeFile + L"\"";
}

} // namespace

StartedProgram::StartedProgram(const std::wstring& commandLine, const std::wstring& errorFile)
    : errorFile_(errorFile) {
    UniqueFileHandle error = InheritableFile(errorFile);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdError = error.Get();
    PROCESS_INFORMATION started{};
    std::wstring line = commandLine;
    // Without a console: under Wine the host of one outlives a program that is
    // killed, and keeps the output of this test's process open.
    // Wine's server now and then answers a good request with an internal error.
    constexpr int attempts = 3;
    BOOL done = FALSE;
    for (int attempt = 0; attempt < attempts && !done; ++attempt) {
        done = CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE,
                              DETACHED_PROCESS | NORMAL_PRIORITY_CLASS, nullptr, nullptr, &startup,
                              &started);
        if (!done && GetLastError() != ERROR_INTERNAL_ERROR)
            break;
    }
    EXPECT_TRUE(done) << "error " << GetLastError();
    process_.Reset(started.hProcess);
    UniqueKernelHandle thread(started.hThread);
}

bool StartedProgram::EndsWithin(DWORD milliseconds) const {
    return WaitForSingleObject(process_.Get(), milliseconds) == WAIT_OBJECT_0;
}

void StartedProgram::Kill() const {
    TerminateProcess(process_.Get(), 1);
}

ProgramRun StartedProgram::Finish() const {
    ProgramRun run;
    EndsWithin(INFINITE);
    GetExitCodeProcess(process_.Get(), &run.ExitCode);
    Bytes error = ReadWhole(errorFile_);
    run.Error.assign(error.begin(), error.end());
    return run;
}

TagProgram::TagProgram(const std::wstring& program) : program_(program) {}

std::wstring TagProgram::ShippedProgram() {
    return HostPath(TONEWRIGHT_SUITE_DIR) + L"\\QueryTrackData.exe";
}

std::wstring TagProgram::CommandLine(const std::wstring& arguments) const {
    return L"\"" + program_ + L"\" " + arguments;
}

ProgramRun TagProgram::Run(const std::wstring& arguments) const {
    return StartedProgram(CommandLine(arguments), folder_.File(L"error.txt")).Finish();
}

StartedProgram TagProgram::Start(const wchar_t* option, const Bytes& request) const {
    std::wstring path = folder_.Write(L"exchange.tmp", request);
    return StartedProgram(CommandLine(Option(option, path)), folder_.File(L"error.txt"));
}

ProgramRun TagProgram::Exchange(const wchar_t* option, Bytes& exchange) const {
    std::wstring path = folder_.Write(L"exchange.tmp", exchange);
    UniqueFileHandle maker(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, ShareReadWrite,
                                       nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    EXPECT_TRUE(maker);
    ProgramRun run = Run(Option(option, path));
    exchange = ReadWhole(path);
    return run;
}

ProgramRun TagProgram::Read(const std::wstring& audioFile, clTagRecord& record) const {
    Bytes exchange = BytesOf(audioFile);
    ProgramRun run = Exchange(ReadOption, exchange);
    record.Clear();
    bool isReply = exchange.size() >= TagReplyMinSize &&
                   memcmp(exchange.data(), TagReplyMagic, sizeof(TagReplyMagic)) == 0;
    if (isReply)
        record.Deserialise(exchange.data() + TagReplyHeaderSize,
                           static_cast<int>(exchange.size() - TagReplyHeaderSize));
    return run;
}

ProgramRun TagProgram::Set(const std::wstring& audioFile, clTagRecord& changes) const {
    Bytes exchange = SetRequestOf(changes, audioFile);
    return Exchange(SetOption, exchange);
}

ProgramRun TagProgram::Delete(const std::wstring& audioFile,
                              const std::vector<std::wstring>& names) const {
    Bytes exchange = DeleteRequestOf(names, audioFile);
    return Exchange(DeleteOption, exchange);
}

Bytes SetRequestOf(clTagRecord& changes, const std::wstring& audioFile) {
    NBuffer record;
    changes.Serialise(record);
    return LittleEndian32(record.Size) + Bytes(record.Data, record.Data + record.Size) +
           LittleEndian32(TagRequestMarker) + BytesOf(audioFile);
}

Bytes DeleteRequestOf(const std::vector<std::wstring>& names, const std::wstring& audioFile) {
    std::wstring asked = names.empty() ? TagDeleteAll : L"";
    for (const std::wstring& name : names)
        asked += asked.empty() ? name : TagNameSeparator + name;
    return BytesOf(audioFile + L"\r\n" + asked);
}

std::wstring ValueOf(clTagRecord& record, const wchar_t* name) {
    clTagElement* element = record.Find(name);
    return element ? element->Value.c_str() : L"";
}

std::wstring ValueIn(const std::wstring& audioFile, const wchar_t* name) {
    clTagRecord record;
    EXPECT_EQ(TagProgram().Read(audioFile, record).ExitCode, 0u);
    return ValueOf(record, name);
}

std::wstring SamplePath(const std::string& name) {
    return HostPath((std::string(TONEWRIGHT_SOURCE_DIR) + "/build/samples/" + name).c_str());
}

Bytes Sample(const std::string& name) {
    return ReadWhole(SamplePath(name));
}
