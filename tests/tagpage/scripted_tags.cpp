#include "tests/tagpage/scripted_tags.h"

#include "codec/tag_wire.h"
#include "tests/support/stand_in_program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {
constexpr DWORD LongestWaitMs = 60000;

std::atomic<ScriptedTags*> current;

ScriptedTags::Bytes BytesOf(const NBuffer& buffer) {
    const auto* start = reinterpret_cast<const char*>(buffer.Data);
    return {start, start + buffer.Size};
}

ScriptedTags::Bytes Serialised(clTagRecord& tag) {
    NBuffer bytes;
    tag.Serialise(bytes);
    return BytesOf(bytes);
}

// Something that can be waited for as for a process that has ended.
HANDLE EndedProcess() {
    return CreateEventW(nullptr, TRUE, TRUE, nullptr);
}
} // namespace

extern "C" {
extern decltype(&::CreateProcessW) __real___imp_CreateProcessW;
extern decltype(&::CreateProcessW) __wrap___imp_CreateProcessW;
}

namespace {
BOOL WINAPI ScriptedCreateProcess(const wchar_t* application, wchar_t* commandLine,
                                  SECURITY_ATTRIBUTES* process, SECURITY_ATTRIBUTES* thread,
                                  BOOL inherit, DWORD flags, void* environment,
                                  const wchar_t* folder, STARTUPINFOW* startup,
                                  PROCESS_INFORMATION* started) {
    ScriptedTags* tags = current;
    const auto outcome =
        tags && commandLine ? tags->OnStart(commandLine) : ScriptedTags::Start::OfTheProgram;
    if (outcome == ScriptedTags::Start::OfTheProgram)
        return __real___imp_CreateProcessW(application, commandLine, process, thread, inherit,
                                           flags, environment, folder, startup, started);
    if (outcome == ScriptedTags::Start::Refused) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return FALSE;
    }
    *started = {EndedProcess(), EndedProcess(), 0, 0};
    return TRUE;
}
} // namespace

decltype(&::CreateProcessW) __wrap___imp_CreateProcessW = ScriptedCreateProcess;

ScriptedTags::ScriptedTags()
    : variable_(L"TONEWRIGHT_SCRIPTED_TAGS", folder_.Path().c_str()),
      script_(folder_.Path().c_str()), change_(script_.ChangeEvent()) {
    current = this;
}

ScriptedTags::~ScriptedTags() {
    for (const auto& hold : holds_)
        SetEvent(hold.second.Get());
    EXPECT_TRUE(WaitUntil([this] {
        return script_.EndedCount() == static_cast<int>(script_.Requests().size());
    })) << "a program still runs";
    current = nullptr;
}

void ScriptedTags::SetTag(const NString& path, clTagRecord& tag, Changes changes) {
    TagAnswer answer = script_.AnswerFor(path.c_str());
    answer.fixed.reply = TagAnswer::Tag;
    answer.fixed.remembers = changes == Changes::Remembered;
    answer.bytes = Serialised(tag);
    script_.SetAnswer(path.c_str(), answer);
}

void ScriptedTags::SetTag(const NString& path, std::initializer_list<TextElement> elements,
                          Changes changes) {
    clTagRecord tag;
    for (const TextElement& element : elements)
        tag.Add(element.name, element.value);
    SetTag(path, tag, changes);
}

void ScriptedTags::SetReply(const NString& path, const Bytes& exchangeFile) {
    TagAnswer answer = script_.AnswerFor(path.c_str());
    answer.fixed.reply = TagAnswer::Verbatim;
    answer.bytes = exchangeFile;
    script_.SetAnswer(path.c_str(), answer);
}

void ScriptedTags::SetNoReply(const NString& path) {
    TagAnswer answer = script_.AnswerFor(path.c_str());
    answer.fixed.reply = TagAnswer::Nothing;
    answer.bytes.clear();
    script_.SetAnswer(path.c_str(), answer);
}

ScriptedTags::Bytes ScriptedTags::WholeReply(clTagRecord& tag) {
    const Bytes record = Serialised(tag);
    const auto length = static_cast<uint32_t>(record.size());
    Bytes reply(TagReplyHeaderSize);
    memcpy(reply.data(), TagReplyMagic, sizeof(TagReplyMagic));
    memcpy(reply.data() + sizeof(TagReplyMagic), &length, sizeof(length));
    reply.insert(reply.end(), record.begin(), record.end());
    return reply;
}

ScriptedTags::Bytes ScriptedTags::ReplyOfWrongMagic(clTagRecord& tag) {
    Bytes reply = WholeReply(tag);
    reply[0] = 'X';
    return reply;
}

ScriptedTags::Bytes ScriptedTags::TruncatedReply(clTagRecord& tag, size_t size) {
    Bytes reply = WholeReply(tag);
    reply.resize(std::min(reply.size(), TagReplyHeaderSize + size));
    return reply;
}

void ScriptedTags::AddBit(uint32_t TagAnswer::Fixed::*bits, TagRequestKind kind,
                          const NString& path) {
    script_.ChangeAnswer(path.c_str(),
                         [&](TagAnswer& answer) { answer.fixed.*bits |= TagRequestBit(kind); });
}

void ScriptedTags::RefuseToStart(TagRequestKind kind, const NString& path) {
    std::lock_guard turn(refusalsLock_);
    refused_[path.c_str()] |= TagRequestBit(kind);
}

void ScriptedTags::Die(TagRequestKind kind, const NString& path) {
    AddBit(&TagAnswer::Fixed::dying, kind, path);
}

void ScriptedTags::Fail(TagRequestKind kind, const NString& path) {
    AddBit(&TagAnswer::Fixed::failing, kind, path);
}

void ScriptedTags::Hold(TagRequestKind kind, const NString& path) {
    const std::wstring name = script_.HoldEventName(path.c_str(), kind);
    holds_[name].Reset(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
    ResetEvent(holds_[name].Get());
    AddBit(&TagAnswer::Fixed::held, kind, path);
}

void ScriptedTags::Release(TagRequestKind kind, const NString& path) {
    script_.ChangeAnswer(path.c_str(),
                         [&](TagAnswer& answer) { answer.fixed.held &= ~TagRequestBit(kind); });
    const auto hold = holds_.find(script_.HoldEventName(path.c_str(), kind));
    if (hold != holds_.end())
        SetEvent(hold->second.Get());
}

std::vector<TagRequest> ScriptedTags::Requests() {
    std::vector<TagRequest> requests = script_.Requests();
    requests.erase(requests.begin(), requests.begin() + forgottenRequests_);
    return requests;
}

ScriptedTags::Texts ScriptedTags::Asked(const NString& path) {
    Texts texts;
    for (const TagRequest& request : Requests()) {
        if (request.path == path.c_str())
            texts.push_back(request.Text());
    }
    return texts;
}

int ScriptedTags::Count(TagRequestKind kind) {
    const std::vector<TagRequest> requests = Requests();
    return static_cast<int>(
        std::count_if(requests.begin(), requests.end(),
                      [kind](const TagRequest& request) { return request.kind == kind; }));
}

int ScriptedTags::Count(TagRequestKind kind, const NString& path) {
    const std::vector<TagRequest> requests = Requests();
    return static_cast<int>(
        std::count_if(requests.begin(), requests.end(), [&](const TagRequest& request) {
            return request.kind == kind && request.path == path.c_str();
        }));
}

void ScriptedTags::ForgetRequests() {
    timesRefused_ = 0;
    forgottenRequests_ = static_cast<int>(script_.Requests().size());
    forgottenEnds_ = script_.EndedCount();
}

template <typename Done>
bool ScriptedTags::WaitUntil(Done done) {
    while (!done()) {
        if (WaitForSingleObject(change_.Get(), LongestWaitMs) != WAIT_OBJECT_0)
            return false;
    }
    return true;
}

bool ScriptedTags::WaitForRequests(int count) {
    return WaitUntil([&] { return static_cast<int>(Requests().size()) >= count; });
}

bool ScriptedTags::WaitForEnds(int count) {
    return WaitUntil([&] { return script_.EndedCount() - forgottenEnds_ >= count; });
}

void ScriptedTags::GetTag(const NString& path, clTagRecord& tag) {
    const TagAnswer answer = script_.AnswerFor(path.c_str());
    tag.Clear();
    if (answer.fixed.reply == TagAnswer::Tag)
        tag.Deserialise(answer.bytes.data(), static_cast<int>(answer.bytes.size()));
}

std::wstring ScriptedTags::ValueOf(const NString& path, const wchar_t* name) {
    clTagRecord tag;
    GetTag(path, tag);
    const clTagElement* element = tag.Find(name);
    return element ? element->Value.c_str() : L"(none)";
}

bool ScriptedTags::IsRefused(const TagRequest& request) {
    std::lock_guard turn(refusalsLock_);
    const auto found = refused_.find(request.path);
    return found != refused_.end() && (found->second & TagRequestBit(request.kind)) != 0;
}

ScriptedTags::Start ScriptedTags::OnStart(const std::wstring& commandLine) {
    const TagRequestKind kind = KindOfCommandLine(commandLine);
    if (kind == TagRequestKind::Unknown)
        return Start::OfTheProgram;
    Bytes bytes;
    ReadWhole(ExchangeFileOf(commandLine), bytes);
    const TagRequest request = ParseTagRequest(kind, std::move(bytes));
    if (IsRefused(request)) {
        ++timesRefused_;
        return Start::Refused;
    }
    const TagAnswer::Fixed says = script_.AnswerFor(request.path).fixed;
    if (!runsInProcess_ || ((says.held | says.dying) & TagRequestBit(kind)) != 0)
        return Start::OfTheProgram;
    AnswerTagRequest(folder_.Path().c_str(), commandLine);
    return Start::AnsweredHere;
}
