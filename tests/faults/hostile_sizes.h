#pragma once

// The program hostile_sizes SAMPLE FOLDER STRIDE [FIRST [KIBIBYTES]] writes
// numbers that no file has room for over the fields of an audio file, one at a
// time, and has the tag program's parts read each such file and set a title and
// a picture, with so much memory (256 MB unless it is told).
//
// The fields are those of 4 bytes, and of 8 in the formats that have such, at
// every STRIDEth offset of the first 4 KB and the last 1 KB. FIRST is the case
// to begin with, from 0. It works on a copy of SAMPLE in FOLDER, which is
// empty, and ends with one of these codes. Each case that isn't as it should be
// gets a line on standard error; the last line tells the number of the cases,
// and what they took at most. To try all: STRIDE 1.
inline constexpr int HostileSizesGood = 0;
inline constexpr int HostileSizesFound = 1;   // too much memory, a file lost, a copy left
inline constexpr int HostileSizesCrashed = 2; // the last case has a line
inline constexpr int HostileSizesHung = 4;    // as above; 3 is abort's
