#include "tests/tagpage/stand_in/tag_script.h"

#include "codec/tag_wire.h"
#include "tests/support/stand_in_program.h"

#include <cstring>

namespace {
// A log entry's kind for the end of a request.
constexpr uint32_t EndKind = 0xFFFFFFFF;

struct LogHeader {
    uint32_t kind;
    uint32_t size; // of the bytes behind it
    int64_t time;
};

int64_t Now() {
    LARGE_INTEGER count;
    QueryPerformanceCounter(&count);
    return count.QuadPart;
}

// By FNV-1a of 64 bits.
std::wstring HashOf(const std::wstring& text) {
    uint64_t hash = 0xCBF29CE484222325;
    for (wchar_t unit : text) {
        for (unsigned byte : {unit & 0xFFu, unsigned{unit} >> 8})
            hash = (hash ^ byte) * 0x100000001B3;
    }
    wchar_t digits[17];
    swprintf(digits, 17, L"%016llx", static_cast<unsigned long long>(hash));
    return digits;
}

std::wstring TextOf(const std::vector<char>& bytes, size_t first = 0) {
    std::wstring text;
    if (first < bytes.size())
        text.resize((bytes.size() - first) / sizeof(wchar_t));
    memcpy(text.data(), bytes.data() + first, text.size() * sizeof(wchar_t));
    return text;
}

void SplitNames(const std::wstring& joined, std::vector<std::wstring>& names) {
    const std::wstring separator = TagNameSeparator;
    size_t start = 0;
    for (size_t next; (next = joined.find(separator, start)) != std::wstring::npos;
         start = next + separator.size())
        names.push_back(joined.substr(start, next - start));
    names.push_back(joined.substr(start));
}

void ParseDeletion(TagRequest& request) {
    const std::wstring text = TextOf(request.bytes);
    const size_t lineEnd = text.find(L"\r\n");
    request.path = text.substr(0, lineEnd);
    const std::wstring rest = lineEnd == std::wstring::npos ? L"" : text.substr(lineEnd + 2);
    request.deletesAll = rest == TagDeleteAll;
    if (!request.deletesAll)
        SplitNames(rest, request.names);
}

// The record of a request to set, or null if it isn't a whole one.
const char* FindRecord(const std::vector<char>& bytes, uint32_t& size) {
    constexpr size_t number = sizeof(uint32_t);
    if (bytes.size() < 2 * number)
        return nullptr;
    memcpy(&size, bytes.data(), number);
    uint32_t marker = 0;
    if (size <= bytes.size() - 2 * number)
        memcpy(&marker, bytes.data() + number + size, number);
    return marker == TagRequestMarker ? bytes.data() + number : nullptr;
}

void ParseSetting(TagRequest& request) {
    uint32_t size = 0;
    const char* start = FindRecord(request.bytes, size);
    if (!start)
        return;
    request.path = TextOf(request.bytes, 2 * sizeof(uint32_t) + size);
    clTagRecord record;
    record.Deserialise(start, static_cast<int>(size));
    for (int index = 0; index < record.Count(); ++index) {
        const clTagElement& element = *record[index];
        const auto* data = reinterpret_cast<const char*>(element.Data.Data);
        request.elements.push_back(
            {element.Name.c_str(), element.Value.c_str(), {data, data + element.Data.Size}});
    }
}

std::vector<char> BytesOf(clTagRecord& record) {
    NBuffer bytes;
    record.Serialise(bytes);
    const auto* start = reinterpret_cast<const char*>(bytes.Data);
    return {start, start + bytes.Size};
}

// Runs `change` on the tag that the answer holds.
template <typename Change>
void ChangeTag(TagAnswer& answer, Change change) {
    if (answer.fixed.reply != TagAnswer::Tag || !answer.fixed.remembers)
        return;
    clTagRecord tag;
    tag.Deserialise(answer.bytes.data(), static_cast<int>(answer.bytes.size()));
    change(tag);
    answer.bytes = BytesOf(tag);
}

void SetElements(TagAnswer& answer, const TagRequest& request) {
    ChangeTag(answer, [&](clTagRecord& tag) {
        uint32_t size = 0;
        const char* start = FindRecord(request.bytes, size);
        clTagRecord changes;
        changes.Deserialise(start, static_cast<int>(size));
        tag.Merge(changes, true);
    });
}

void DeleteElements(TagAnswer& answer, const TagRequest& request) {
    ChangeTag(answer, [&](clTagRecord& tag) {
        if (request.deletesAll)
            tag.Clear();
        for (const std::wstring& name : request.names) {
            while (tag.Remove(name.c_str())) {
            }
        }
    });
}

std::vector<char> ReplyOf(const TagAnswer& answer) {
    if (answer.fixed.reply == TagAnswer::Verbatim)
        return answer.bytes;
    std::vector<char> reply(TagReplyMagic, TagReplyMagic + sizeof(TagReplyMagic));
    const auto length = static_cast<uint32_t>(answer.bytes.size());
    const auto* start = reinterpret_cast<const char*>(&length);
    reply.insert(reply.end(), start, start + sizeof(length));
    reply.insert(reply.end(), answer.bytes.begin(), answer.bytes.end());
    return reply;
}

void WriteReply(const std::wstring& exchange, const TagAnswer& answer, bool isDying) {
    if (answer.fixed.reply == TagAnswer::Nothing)
        return;
    const std::vector<char> reply = ReplyOf(answer);
    WriteWhole(exchange, reply.data(), isDying ? reply.size() / 2 : reply.size(), OPEN_EXISTING);
}

void WaitWhileHeld(const std::wstring& eventName) {
    UniqueKernelHandle release(OpenEventW(SYNCHRONIZE, FALSE, eventName.c_str()));
    if (release)
        WaitForSingleObject(release.Get(), INFINITE);
}
} // namespace

std::wstring TagRequest::Text() const {
    std::wstring text = deletesAll ? L"delete all" : L"";
    const auto add = [&text](const wchar_t* first, const std::wstring& part) {
        text += (text.empty() ? first : L"|") + part;
    };
    for (const std::wstring& name : names)
        add(L"delete ", name);
    for (const TagRequestElement& element : elements)
        add(L"set ", element.name + (element.data.empty()
                                         ? L"=" + element.value
                                         : L"[" + std::to_wstring(element.data.size()) + L"]"));
    if (kind == TagRequestKind::Read)
        return L"read";
    return text.empty() ? L"unknown" : text;
}

TagRequestKind KindOfCommandLine(const std::wstring& commandLine) {
    constexpr const wchar_t* options[] = {L" --GetAudioInf=\"", L" --SetTags=\"",
                                          L" --DelTagElements=\""};
    for (uint32_t kind = 0; kind < 3; ++kind) {
        if (commandLine.find(options[kind]) != std::wstring::npos)
            return static_cast<TagRequestKind>(kind);
    }
    return TagRequestKind::Unknown;
}

std::wstring ExchangeFileOf(const std::wstring& commandLine) {
    const size_t last = commandLine.rfind(L'"');
    const size_t first = last == 0 || last == std::wstring::npos
                             ? std::wstring::npos
                             : commandLine.rfind(L'"', last - 1);
    return first == std::wstring::npos ? L"" : commandLine.substr(first + 1, last - first - 1);
}

TagRequest ParseTagRequest(TagRequestKind kind, std::vector<char> bytes) {
    TagRequest request;
    request.kind = kind;
    request.bytes = std::move(bytes);
    if (kind == TagRequestKind::Read)
        request.path = TextOf(request.bytes);
    else if (kind == TagRequestKind::Set)
        ParseSetting(request);
    else if (kind == TagRequestKind::Delete)
        ParseDeletion(request);
    return request;
}

TagScript::TagScript(const std::wstring& folder)
    : folder_(folder), name_(L"Tonewright-" + folder.substr(folder.rfind(L'\\') + 1)) {
    bool alreadyExists;
    lock_.Create((name_ + L"-lock").c_str(), alreadyExists);
}

TagAnswer TagScript::AnswerFor(const std::wstring& path) {
    NMutexLock turn(lock_);
    return Load(path);
}

void TagScript::SetAnswer(const std::wstring& path, const TagAnswer& answer) {
    NMutexLock turn(lock_);
    Save(path, answer);
}

TagAnswer TagScript::Load(const std::wstring& path) const {
    TagAnswer answer;
    std::vector<char> bytes;
    if (!ReadWhole(AnswerFile(path), bytes) || bytes.size() < sizeof(answer.fixed))
        return answer;
    memcpy(&answer.fixed, bytes.data(), sizeof(answer.fixed));
    answer.bytes.assign(bytes.begin() + sizeof(answer.fixed), bytes.end());
    return answer;
}

void TagScript::Save(const std::wstring& path, const TagAnswer& answer) const {
    const auto* fixed = reinterpret_cast<const char*>(&answer.fixed);
    std::vector<char> bytes(fixed, fixed + sizeof(answer.fixed));
    bytes.insert(bytes.end(), answer.bytes.begin(), answer.bytes.end());
    WriteWhole(AnswerFile(path), bytes.data(), bytes.size(), CREATE_ALWAYS);
}

std::wstring TagScript::AnswerFile(const std::wstring& path) const {
    return folder_ + L"\\" + HashOf(path) + L".answer";
}

void TagScript::LogRequest(const TagRequest& request) {
    Log(static_cast<uint32_t>(request.kind), request.bytes);
}

void TagScript::LogEnd() {
    Log(EndKind, {});
}

void TagScript::Log(uint32_t kind, const std::vector<char>& bytes) {
    const LogHeader header = {kind, static_cast<uint32_t>(bytes.size()), Now()};
    {
        NMutexLock turn(lock_);
        UniqueFileHandle file = OpenShared(LogFile(), GENERIC_WRITE, OPEN_ALWAYS);
        SetFilePointer(file.Get(), 0, nullptr, FILE_END);
        DWORD written = 0;
        WriteFile(file.Get(), &header, sizeof(header), &written, nullptr);
        WriteFile(file.Get(), bytes.data(), header.size, &written, nullptr);
    }
    SetEvent(ChangeEvent().Get());
}

template <typename Visit>
void TagScript::ReadLog(Visit visit) {
    std::vector<char> log;
    {
        NMutexLock turn(lock_);
        ReadWhole(LogFile(), log);
    }
    LogHeader header;
    for (size_t place = 0; place + sizeof(header) <= log.size(); place += header.size) {
        memcpy(&header, log.data() + place, sizeof(header));
        place += sizeof(header);
        visit(header, std::vector<char>(log.begin() + static_cast<ptrdiff_t>(place),
                                        log.begin() + static_cast<ptrdiff_t>(place + header.size)));
    }
}

std::vector<TagRequest> TagScript::Requests() {
    std::vector<TagRequest> requests;
    ReadLog([&](const LogHeader& header, std::vector<char> bytes) {
        if (header.kind == EndKind)
            return;
        requests.push_back(
            ParseTagRequest(static_cast<TagRequestKind>(header.kind), std::move(bytes)));
        requests.back().time = header.time;
    });
    return requests;
}

int TagScript::EndedCount() {
    int count = 0;
    ReadLog([&](const LogHeader& header, const std::vector<char>&) {
        count += header.kind == EndKind ? 1 : 0;
    });
    return count;
}

UniqueKernelHandle TagScript::ChangeEvent() const {
    return UniqueKernelHandle(CreateEventW(nullptr, FALSE, FALSE, (name_ + L"-change").c_str()));
}

std::wstring TagScript::HoldEventName(const std::wstring& path, TagRequestKind kind) const {
    return name_ + L"-hold-" + HashOf(path) + std::to_wstring(TagRequestBit(kind));
}

unsigned AnswerTagRequest(const std::wstring& folder, const std::wstring& commandLine) {
    const std::wstring exchange = ExchangeFileOf(commandLine);
    const TagRequestKind kind = KindOfCommandLine(commandLine);
    std::vector<char> bytes;
    ReadWhole(exchange, bytes);
    const TagRequest request = ParseTagRequest(kind, std::move(bytes));

    TagScript script(folder);
    script.LogRequest(request);
    const uint32_t bit = TagRequestBit(kind);
    if (script.AnswerFor(request.path).fixed.held & bit)
        WaitWhileHeld(script.HoldEventName(request.path, kind));

    const TagAnswer answer = script.AnswerFor(request.path);
    const bool isDying = (answer.fixed.dying & bit) != 0;
    const bool isFailing = (answer.fixed.failing & bit) != 0;
    if (kind == TagRequestKind::Read && !isFailing)
        WriteReply(exchange, answer, isDying);
    else if (kind == TagRequestKind::Set && !isDying && !isFailing)
        script.ChangeAnswer(request.path, [&](TagAnswer& one) { SetElements(one, request); });
    else if (kind == TagRequestKind::Delete && !isDying && !isFailing)
        script.ChangeAnswer(request.path, [&](TagAnswer& one) { DeleteElements(one, request); });
    script.LogEnd();
    return isDying ? TagScriptDied : isFailing ? 1 : 0;
}
