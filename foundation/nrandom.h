#pragma once

#include "foundation/nbuffer.h"

#include <cstdint>
#include <memory>
#include <random>

class NFile;

// A generator of 32-bit numbers by MT19937 (M. Matsumoto and T. Nishimura,
// "Mersenne Twister", ACM TOMACS 8, 1998), or, once UseFile is called, from a
// file of random bytes. Not for secrets. No lock: an instance belongs to one
// thread at a time, and so does the process-wide one.
class NRandom {
public:
    // Seeds from the clocks and, for all instances but the process-wide one,
    // from the next number of that one.
    NRandom();
    // Starts the published sequence for `seed`.
    explicit NRandom(uint32_t seed);
    ~NRandom();

    // A number from 0 to `limit` - 1; with `limit` 0 any 32-bit number.
    uint32_t Next(uint32_t limit = 0);

    // Draws from the bytes of a file from now on, 4 at a time, and from its
    // start again at its end. False, and no change, if the file can't be
    // opened or holds less than 4 bytes.
    bool UseFile(const wchar_t* path);

private:
    friend NRandom& NProcessRandom();
    struct ProcessWide {};
    explicit NRandom(ProcessWide);

    uint32_t NextFromFile();
    bool FillWindow();

    std::mt19937 twister_;
    std::unique_ptr<NFile> file_;
    NBuffer window_;          // the bytes of the file in hand
    uint32_t windowUsed_ = 0; // bytes of them that are drawn
};

// The one instance of the process.
NRandom& NProcessRandom();
