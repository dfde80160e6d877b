#include "benchmarks/benches.h"
#include "benchmarks/measuring.h"
#include "codec/tag_exchange.h"
#include "foundation/nprocess.h"
#include "foundation/windows_lean.h"

#include <cstdio>

namespace {
constexpr int Rounds = 60;
constexpr DWORD LongestRun = 10000; // milliseconds
} // namespace

bool BenchExchange(const BenchPlaces& places) {
    NString audioFile = BenchPlaces::InFolder(places.samples, L"sample.mp3");
    NString emptyProgram = BenchPlaces::InFolder(places.bench, L"empty_program.exe");
    NBuffer out;
    RunGetAudioInf(audioFile.Text, out);
    if (out.Size == 0) {
        fprintf(stderr, "sample.mp3 has no tag to read\n");
        return false;
    }
    MedianPair time = MeasurePair(
        Rounds, [&] { RunGetAudioInf(audioFile.Text, out); },
        [&] {
            NRunProgram(emptyProgram.Text, L"", true, LongestRun, false,
                        CREATE_NO_WINDOW | NORMAL_PRIORITY_CLASS);
        });
    PrintTime("RunGetAudioInf of one file", time.subject);
    PrintTime("starting and waiting for a program", time.yardstick);
    PrintRatio(time.Ratio(), "at most 1.5");
    return true;
}
