#include "benchmarks/benches.h"
#include "benchmarks/measuring.h"
#include "foundation/unique_handle.h"

#include <cstdio>

namespace {
constexpr int Rounds = 200;
} // namespace

// In a process that has the libraries of the system in memory, as a shell has.
bool BenchLoading(const BenchPlaces& places) {
    NString module = places.Module();
    NString empty = BenchPlaces::InFolder(places.bench, L"empty_module.dll");
    int failures = 0;
    auto load = [&failures](const NString& path) {
        UniqueModule loaded(LoadLibraryW(path.Text));
        failures += loaded ? 0 : 1;
    };
    MedianPair time = MeasurePair(
        Rounds, [&] { load(module); }, [&] { load(empty); });
    if (failures != 0 || GetModuleHandleW(module.Text)) {
        fprintf(stderr, "a module can't be loaded and unloaded\n");
        return false;
    }
    PrintTime("loading and unloading the module", time.subject);
    PrintTime("an empty one with the same imports", time.yardstick);
    PrintRatio(time.Ratio(), "at most 1.5");
    return true;
}
