#include "audiopage/property_rows.h"
#include "benchmarks/benches.h"
#include "benchmarks/measuring.h"
#include "benchmarks/music_folder.h"
#include "codec/trace.h"
#include "foundation/nfilefind.h"
#include "foundation/nmutex.h"

#include <audioproperties.h>
#include <fileref.h>
#include <tpropertymap.h>

#include <cstdio>

namespace {
constexpr int Rounds = 9;
constexpr int Files = 500;

bool IsReadByTheLibrary(const NString& path) {
    TagLib::FileRef file(path.Text);
    return !file.isNull() && file.audioProperties();
}

void FindSamples(const NString& folder, NStringList& samples) {
    NFileFind find(L"sample*", folder);
    while (find.Next()) {
        if (!find.IsFolder() && IsReadByTheLibrary(find.Path))
            samples.Add(find.Path);
    }
}

// What a program without plug-ins would do to know some of what the rows show.
void ReadWithTheLibrary(const NStringList& files, int64_t& lengthMs) {
    for (int index = 0; index < files.Count; ++index) {
        TagLib::FileRef file(files[index]->Text);
        if (file.isNull() || !file.audioProperties())
            continue;
        lengthMs += file.audioProperties()->lengthInMilliseconds();
        const TagLib::PropertyMap tags = file.file()->properties();
        lengthMs += tags["TITLE"].size() + tags["ARTIST"].size() == 0 ? 1 : 0;
    }
}

bool BenchFiles(const char* what, const NStringList& files) {
    NKeyedList<clPropRow> rows;
    int64_t lengthMs = 0;
    MedianPair time = MeasurePair(
        Rounds, [&] { BuildPropRows(files, nullptr, rows, nullptr); },
        [&] { ReadWithTheLibrary(files, lengthMs); });
    constexpr int lengthRow = 11;
    if (rows.Count() <= lengthRow || rows[lengthRow]->Value.IsEmpty() || lengthMs == 0) {
        fprintf(stderr, "no facts about the samples\n");
        return false;
    }
    printf("500 files %s: %ls\n", what, rows[lengthRow]->Value.Text);
    PrintTime("BuildPropRows", time.subject);
    PrintTime("TagLib alone", time.yardstick);
    PrintRatio(time.Ratio(), "at most 1.3");
    return true;
}

// A part of BuildPropRows that is wanted, and that costs a call to the platform
// each time: under Wine that is one to another process.
void BenchTrace() {
    constexpr int writesOfAFile = 3;
    NLogContext log = {};
    const auto trace = [&] {
        for (int count = 0; count < Files * writesOfAFile; ++count)
            NTraceWrite(L"Using Existing Decoder", &log);
    };
    const auto lock = [] {
        NMutex mutex;
        for (int count = 0; count < Files * writesOfAFile; ++count)
            NMutexLock turn(mutex);
    };
    const MedianPair time = MeasurePair(Rounds, trace, lock);
    printf("what the search for a decoder traces of 500 files, with nowhere to write it\n");
    PrintTime("NTraceWrite", time.subject);
    PrintTime("its mutex alone, taken and given back", time.yardstick);
    PrintRatio(time.Ratio(), "1");
}
} // namespace

bool BenchRows(const BenchPlaces& places) {
    NStringList samples;
    FindSamples(places.samples, samples);
    if (samples.Count == 0) {
        fprintf(stderr, "no samples\n");
        return false;
    }
    MusicFolder folder;
    NStringList byFormat; // all of a format, then those of the next
    NStringList mixed;    // the next file is of another format
    for (int index = 0; index < Files; ++index)
        byFormat.Add(folder.Copy(*samples[index * samples.Count / Files], index));
    for (int index = 0; index < Files; ++index)
        mixed.Add(folder.Copy(*samples[index % samples.Count], Files + index));
    BenchTrace();
    return BenchFiles("by format", byFormat) && BenchFiles("in turns of format", mixed);
}
