#include "benchmarks/measuring.h"

#include "foundation/windows_lean.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {
double Now() {
    LARGE_INTEGER counter;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&counter);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(counter.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double MedianOf(std::vector<double> seconds) {
    std::nth_element(seconds.begin(), seconds.begin() + static_cast<ptrdiff_t>(seconds.size() / 2),
                     seconds.end());
    return seconds[seconds.size() / 2];
}
} // namespace

double SecondsOf(const std::function<void()>& work) {
    double begin = Now();
    work();
    return Now() - begin;
}

MedianPair MeasurePair(int rounds, const std::function<void()>& subject,
                       const std::function<void()>& yardstick) {
    return MeasureTimedPair(
        rounds, [&] { return SecondsOf(subject); }, [&] { return SecondsOf(yardstick); });
}

MedianPair MeasureTimedPair(int rounds, const std::function<double()>& subject,
                            const std::function<double()>& yardstick) {
    std::vector<double> subjects;
    std::vector<double> yardsticks;
    subject();
    yardstick();
    for (int round = 0; round < rounds; ++round) {
        subjects.push_back(subject());
        yardsticks.push_back(yardstick());
    }
    return {MedianOf(subjects), MedianOf(yardsticks)};
}

void PrintTime(const char* what, double seconds) {
    printf("%-50s%10.3f ms\n", what, seconds * 1e3);
}

void PrintRatio(double ratio, const char* goal) {
    printf("  ratio %.2f (goal: %s)\n\n", ratio, goal);
    fflush(stdout);
}
