#include "tests/faults/hostile_sizes.h"

#include "foundation/nfile.h"
#include "foundation/nfilefind.h"
#include "foundation/npath.h"
#include "foundation/unique_handle.h"
#include "suite/querytrackdata/disk_change.h"
#include "suite/querytrackdata/full_path.h"
#include "suite/querytrackdata/tag_edits.h"
#include "tests/faults/bounded_memory.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cwchar>
#include <new>
#include <thread>
#include <vector>

namespace {

using Bytes = std::vector<uint8_t>;

constexpr unsigned long UsualMemory = 256 * 1024; // KiB
constexpr ULONGLONG TimeLimit = 20000;            // milliseconds for one case
constexpr size_t FrontBytes = 4096;
constexpr size_t BackBytes = 1024;
constexpr int PictureSize = 20000;
constexpr wchar_t NewTitle[] = L"A title that takes more room than the one before it";

// The case at work, for those that end the process.
std::atomic<size_t> caseNumber = 0;
std::atomic<ULONGLONG> caseStart = 0;
char caseText[100];

int64_t largestCopy = 0;
NString workingCopy;

struct Overwrite {
    size_t Offset;
    size_t Size;
    uint64_t Number;
    bool BigEndian;
};

// Largest, largest with a sign, smallest with a sign, none.
std::vector<Overwrite> OverwritesAt(size_t offset, size_t size) {
    const unsigned bits = static_cast<unsigned>(size) * 8;
    const uint64_t top = uint64_t{1} << (bits - 1);
    const uint64_t all = top | (top - 1);
    return {{offset, size, all, false},    {offset, size, top - 1, false},
            {offset, size, top - 1, true}, {offset, size, top, false},
            {offset, size, top, true},     {offset, size, 0, false}};
}

bool HasWideFields(const Bytes& sample) {
    static constexpr uint8_t asf[] = {0x30, 0x26, 0xb2, 0x75};
    static constexpr uint8_t mp4[] = {'f', 't', 'y', 'p'};
    return sample.size() > 8 && (std::equal(asf, asf + 4, sample.begin()) ||
                                 std::equal(mp4, mp4 + 4, sample.begin() + 4));
}

std::vector<Overwrite> AllOverwrites(const Bytes& sample, size_t stride) {
    std::vector<size_t> sizes = {4};
    if (HasWideFields(sample))
        sizes.push_back(8);
    const size_t back = sample.size() > FrontBytes + BackBytes
                            ? sample.size() - BackBytes
                            : std::min(sample.size(), FrontBytes);
    std::vector<Overwrite> all;
    auto add = [&](size_t first, size_t end) {
        for (size_t offset = first; offset < end; offset += stride) {
            for (size_t size : sizes) {
                if (offset + size > sample.size())
                    continue;
                for (const Overwrite& overwrite : OverwritesAt(offset, size))
                    all.push_back(overwrite);
            }
        }
    };
    add(0, std::min(sample.size(), FrontBytes));
    add(back, sample.size());
    return all;
}

Bytes Apply(const Overwrite& overwrite, Bytes sample) {
    for (size_t index = 0; index < overwrite.Size; ++index) {
        size_t place = overwrite.BigEndian ? overwrite.Size - 1 - index : index;
        sample[overwrite.Offset + place] = static_cast<uint8_t>(overwrite.Number >> (8 * index));
    }
    return sample;
}

Bytes Read(const NString& path) {
    NFile file(path, GENERIC_READ, OPEN_EXISTING, false, true);
    bool failed = false;
    Bytes bytes(static_cast<size_t>(file.GetSize(failed)));
    file.Read(bytes.data(), static_cast<uint32_t>(bytes.size()), NFile::NoSeek, failed);
    return bytes;
}

bool Write(const NString& path, const Bytes& bytes) {
    NFile file(path, GENERIC_WRITE, CREATE_ALWAYS, false, true);
    return file.Write(bytes.data(), static_cast<uint32_t>(bytes.size()), NFile::NoSeek);
}

int FilesIn(const NString& folder) {
    NFileFind find(L"*", folder);
    int count = 0;
    while (find.Next())
        ++count;
    return count;
}

// Writes a line on the case at work.
void Tell(const char* what) {
    fprintf(stderr, "case %zu, %s: %s\n", caseNumber.load(), caseText, what);
    fflush(stderr);
}

LONG WINAPI TellOfCrash(EXCEPTION_POINTERS*) {
    Tell("crashed");
    TerminateProcess(GetCurrentProcess(), HostileSizesCrashed);
    return EXCEPTION_EXECUTE_HANDLER;
}

// Ends the process when a case takes too long.
class Watchdog {
public:
    Watchdog() : thread_([this] { Watch(); }) {}
    ~Watchdog() {
        SetEvent(end_.Get());
        thread_.join();
    }
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

private:
    void Watch() {
        constexpr DWORD step = 500;
        while (WaitForSingleObject(end_.Get(), step) == WAIT_TIMEOUT) {
            if (GetTickCount64() - caseStart < TimeLimit)
                continue;
            Tell("took too long");
            TerminateProcess(GetCurrentProcess(), HostileSizesHung);
        }
    }

    UniqueKernelHandle end_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::thread thread_;
};

void FillChanges(clTagRecord& changes) {
    Bytes picture(PictureSize, 0x55);
    static constexpr uint8_t start[] = {0xff, 0xd8, 0xff, 0xe0};
    std::copy(start, start + sizeof(start), picture.begin());
    changes.Add(L"title", NewTitle);
    changes.AddData(L"_albumart_1", picture.data(), PictureSize);
}

NString TitleOf(const NString& path) {
    NBuffer reply;
    ErrorLine error;
    clTagRecord record;
    if (ReadTagsOf(path, reply, error))
        record.Deserialise(reply.Data, static_cast<int>(reply.Size));
    return record.TakeValue(L"title");
}

// False, and a line, if the file isn't left as it has to be.
bool ReadAndSet(const NString& path, const Bytes& content) {
    TitleOf(path);
    clTagRecord changes;
    FillChanges(changes);
    ErrorLine error;
    SetEdit edit(path, changes);
    const bool done = WriteSafely(path.c_str(), edit, error);
    bool good = true;
    auto expect = [&](bool condition, const char* what) {
        if (!condition)
            Tell(what);
        good = good && condition;
    };
    if (done)
        expect(edit.Refused().Contains(L"title", true) || TitleOf(path) == NewTitle,
               "the title was not set");
    else
        expect(Read(path) == content, "the file has changed");
    expect(FilesIn(NGetFolder(path)) == 1, "a copy was left behind");
    return good;
}

bool RunCase(const NString& path, const Bytes& content) {
    if (!Write(path, content)) {
        Tell("the file can't be written");
        return false;
    }
    StartMeasuring();
    bool good = false;
    try {
        good = ReadAndSet(path, content);
    } catch (const std::bad_alloc&) {
        Tell("out of memory");
    }
    if (MemoryWasRefused())
        Tell("asked for more memory than there is");
    return good && !MemoryWasRefused();
}

int RunAll(const NString& samplePath, const NString& folder, size_t stride, size_t first) {
    const Bytes sample = Read(samplePath);
    const std::vector<Overwrite> all = AllOverwrites(sample, stride);
    NString path = NAppendBackslash(folder);
    path.Append(NGetFileName(samplePath));
    workingCopy = WorkingCopyPath(FullPath(path.c_str()));
    caseStart = GetTickCount64();
    Watchdog watchdog;
    int found = 0;
    size_t largestPeak = 0, peakCase = 0, copyCase = 0;
    for (size_t number = first; number < all.size(); ++number) {
        const Overwrite& overwrite = all[number];
        snprintf(caseText, sizeof(caseText), "offset %zu, %zu bytes of %016llx, %s endian",
                 overwrite.Offset, overwrite.Size,
                 static_cast<unsigned long long>(overwrite.Number),
                 overwrite.BigEndian ? "big" : "little");
        caseNumber = number;
        caseStart = GetTickCount64();
        const size_t before = LiveMemory();
        const int64_t copyBefore = largestCopy;
        found += !RunCase(path, Apply(overwrite, sample));
        if (PeakMemory() - before > largestPeak) {
            largestPeak = PeakMemory() - before;
            peakCase = number;
        }
        if (largestCopy > copyBefore)
            copyCase = number;
    }
    fprintf(
        stderr, "%zu cases; at most %zu bytes of memory (case %zu), a copy of %lld (case %zu)\n",
        all.size() - first, largestPeak, peakCase, static_cast<long long>(largestCopy), copyCase);
    return found == 0 && first < all.size() ? HostileSizesGood : HostileSizesFound;
}

} // namespace

void AfterDiskChange() {
    DWORD lastError = GetLastError();
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (GetFileAttributesExW(workingCopy.c_str(), GetFileExInfoStandard, &data))
        largestCopy = std::max(largestCopy,
                               static_cast<int64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow);
    SetLastError(lastError);
}

void BeforeMoveRetry() {}

extern "C" int wmain(int count, wchar_t** arguments);
int wmain(int count, wchar_t** arguments) {
    if (count < 4)
        return HostileSizesFound;
    SetUnhandledExceptionFilter(TellOfCrash);
    const size_t first = count > 4 ? wcstoul(arguments[4], nullptr, 10) : 0;
    const unsigned long memory = count > 5 ? wcstoul(arguments[5], nullptr, 10) : UsualMemory;
    LimitMemory(LiveMemory() + size_t{memory} * 1024);
    return RunAll(arguments[1], arguments[2], wcstoul(arguments[3], nullptr, 10), first);
}
