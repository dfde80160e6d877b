#pragma once

#include "foundation/nstring.h"

// One bench for each thing that the suite's goals name. Each prints its times
// and its ratios; false if what it measures failed, which standard error tells.

// Where a bench finds what it needs. Folders end in a backslash.
struct BenchPlaces {
    NString suite;   // the module and its companions
    NString samples; // a small audio file of each format
    NString bench;   // this program and its own yardsticks

    NString Module() const { return InFolder(suite, L"tNWShell.DLL"); }

    static NString InFolder(const NString& folder, const wchar_t* name) {
        NString path(folder);
        path.Append(name);
        return path;
    }
};

// Loading the module, against an empty library with the same imports. Comes
// before what keeps the module loaded.
bool BenchLoading(const BenchPlaces& places);
// The menu of 10,000 files, against that of one.
bool BenchMenu(const BenchPlaces& places);
// BuildPropRows, against the library that reads the files beneath it.
bool BenchRows(const BenchPlaces& places);
// Painting the page of one file, against its bare texts; the tick of buttons
// that nobody points at.
bool BenchPage(const BenchPlaces& places);
// The page ID-Tag of 200 files: from its opening to its rows, and a commit that
// changes one of them, against the programs that both can't do without. Its
// rows' building.
bool BenchTagPage(const BenchPlaces& places);
// RunGetAudioInf, against starting a program.
bool BenchExchange(const BenchPlaces& places);
// The serialised form of tag records, against memcpy.
bool BenchRecords();
