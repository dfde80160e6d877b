// tonewright_bench SUITE_FOLDER AUDIO_FILE
// Prints what the exchange and the tag record cost, as ratios to the least that
// the same work could cost, both measured in this one run.
#include "codec/tag_exchange.h"
#include "codec/tag_record.h"
#include "foundation/module_instance.h"
#include "foundation/npath.h"
#include "foundation/nprocess.h"
#include "foundation/unique_handle.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <vector>

namespace {
constexpr int ProcessRounds = 60;
constexpr int CopyRounds = 40;
constexpr uint32_t PictureSize = 10 * 1024 * 1024;
constexpr int SmallRecords = 10000;

double Now() {
    LARGE_INTEGER counter;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&counter);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(counter.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double SecondsOf(const std::function<void()>& work) {
    double begin = Now();
    work();
    return Now() - begin;
}

double MedianOf(std::vector<double> seconds) {
    std::nth_element(seconds.begin(), seconds.begin() + static_cast<ptrdiff_t>(seconds.size() / 2),
                     seconds.end());
    return seconds[seconds.size() / 2];
}

// Runs both in turn, so that what disturbs the machine disturbs both alike.
struct Pair {
    double subject;
    double yardstick;
};
Pair MedianPair(int rounds, const std::function<void()>& subject,
                const std::function<void()>& yardstick) {
    std::vector<double> subjects;
    std::vector<double> yardsticks;
    subject();
    yardstick();
    for (int round = 0; round < rounds; ++round) {
        subjects.push_back(SecondsOf(subject));
        yardsticks.push_back(SecondsOf(yardstick));
    }
    return {MedianOf(subjects), MedianOf(yardsticks)};
}

int BenchExchange(const NString& suiteFolder, const wchar_t* audioFile) {
    NString modulePath(suiteFolder);
    modulePath.Append(L"tNWShell.DLL");
    UniqueModule module(LoadLibraryW(modulePath.Text));
    if (!module) {
        fprintf(stderr, "the module can't be loaded\n");
        return 1;
    }
    NSetModuleInstance(module.Get());
    NString empty = NGetModuleFolder(GetModuleHandleW(nullptr));
    empty.Append(L"empty_program.exe");

    NBuffer out;
    RunGetAudioInf(audioFile, out);
    if (out.Size == 0) {
        fprintf(stderr, "the file has no tag to read\n");
        return 1;
    }
    Pair time = MedianPair(
        ProcessRounds, [&] { RunGetAudioInf(audioFile, out); },
        [&] {
            NRunProgram(empty.Text, L"", true, 10000, false,
                        CREATE_NO_WINDOW | NORMAL_PRIORITY_CLASS);
        });
    printf("RunGetAudioInf of one file              %8.2f ms\n", time.subject * 1e3);
    printf("starting and waiting for a program      %8.2f ms\n", time.yardstick * 1e3);
    printf("  ratio %.2f (goal: at most 1.5)\n\n", time.subject / time.yardstick);
    return 0;
}

void FillRecord(clTagRecord& record) {
    for (const wchar_t* name : {L"artist", L"title", L"album", L"track", L"year", L"genre"})
        record.Add(name, L"a value of a usual length");
}

void BenchPicture() {
    clTagRecord record;
    FillRecord(record);
    std::vector<uint8_t> picture(PictureSize, 0xA5);
    record.AddData(L"_albumart_1_front", picture.data(), PictureSize);
    NBuffer serialised;
    std::vector<uint8_t> copy(PictureSize);
    auto copyOnce = [&] { memcpy(copy.data(), picture.data(), PictureSize); };

    Pair write = MedianPair(
        CopyRounds, [&] { record.Serialise(serialised); }, copyOnce);
    printf("Serialise with a 10 MB picture          %8.2f ms\n", write.subject * 1e3);
    printf("memcpy of the picture                   %8.2f ms\n", write.yardstick * 1e3);
    printf("  rate against memcpy %.2f (goal: at least 0.5)\n\n", write.yardstick / write.subject);

    // A fresh record takes fresh memory, so its yardstick does too.
    Pair read = MedianPair(
        CopyRounds,
        [&] {
            clTagRecord back;
            back.Deserialise(serialised.Data, static_cast<int>(serialised.Size));
        },
        [&] {
            NBuffer fresh;
            fresh.Resize(PictureSize);
            memcpy(fresh.Data, picture.data(), PictureSize);
        });
    printf("Deserialise with a 10 MB picture        %8.2f ms\n", read.subject * 1e3);
    printf("memcpy into memory of its own           %8.2f ms\n", read.yardstick * 1e3);
    printf("  rate against that memcpy %.2f (goal: at least 0.5)\n\n",
           read.yardstick / read.subject);
}

void BenchSmallRecords() {
    clTagRecord record;
    FillRecord(record);
    NBuffer serialised;
    double write = SecondsOf([&] {
        for (int count = 0; count < SmallRecords; ++count)
            record.Serialise(serialised);
    });
    clTagRecord back;
    double read = SecondsOf([&] {
        for (int count = 0; count < SmallRecords; ++count)
            back.Deserialise(serialised.Data, static_cast<int>(serialised.Size));
    });
    printf("Serialise of small records        %12.0f a second\n", SmallRecords / write);
    printf("Deserialise of small records      %12.0f a second\n", SmallRecords / read);
}
} // namespace

extern "C" int wmain(int count, wchar_t** arguments);
int wmain(int count, wchar_t** arguments) {
    if (count != 3) {
        fprintf(stderr, "usage: tonewright_bench SUITE_FOLDER AUDIO_FILE\n");
        return 2;
    }
    if (int failed = BenchExchange(NAppendBackslash(arguments[1]), arguments[2]))
        return failed;
    BenchPicture();
    BenchSmallRecords();
    return 0;
}
