// tonewright_bench SUITE_FOLDER SAMPLES_FOLDER
// Prints what the module costs, as ratios to the least that the same work could
// cost, both measured in this one run.
#include "benchmarks/benches.h"
#include "foundation/module_instance.h"
#include "foundation/nfolders.h"
#include "foundation/npath.h"
#include "foundation/unique_handle.h"
#include "suite/shellhost/session.h"

#include <cstdio>
#include <exception>

namespace {
int RunBenches(const BenchPlaces& places) {
    // Nothing of the module is in memory yet.
    if (!BenchLoading(places))
        return 1;
    UniqueModule module(LoadLibraryW(places.Module().Text));
    if (!module) {
        fprintf(stderr, "the module can't be loaded\n");
        return 1;
    }
    if (!BenchMenu(places)) // which forgets its module at the end
        return 1;
    // Its companions lie beside it, not beside this program.
    NSetModuleInstance(module.Get());
    const bool done = BenchPage(places) && BenchRows(places) && BenchExchange(places) &&
                      BenchTagPage(places) && BenchRecords();
    return done ? 0 : 1;
}
} // namespace

extern "C" int wmain(int count, wchar_t** arguments);
int wmain(int count, wchar_t** arguments) {
    if (count != 3) {
        fprintf(stderr, "usage: tonewright_bench SUITE_FOLDER SAMPLES_FOLDER\n");
        return 2;
    }
    try {
        OleSession ole;
        return RunBenches({NAppendBackslash(arguments[1]), NAppendBackslash(arguments[2]),
                           NGetModuleFolder(GetModuleHandleW(nullptr))});
    } catch (const std::exception& fault) {
        fprintf(stderr, "%s\n", fault.what());
        return 1;
    }
}
