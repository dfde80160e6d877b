#pragma once

#include <ostream>

// What this process holds of the platform's objects. Counts of before and
// after are comparable once everything that is made only once has been made:
// run what is to be counted at least once before the first count. Exact also
// under Wine, whose own counting calls answer 0.
struct PlatformObjects {
    int gdi = 0;    // device contexts, bitmaps, fonts, brushes, pens, regions
    int user = 0;   // windows, menus, icons
    int kernel = 0; // handles of all kinds
    int threads = 0;

    bool operator==(const PlatformObjects&) const = default;
};

PlatformObjects CountPlatformObjects();

int CountGdiObjects();
int CountUserObjects();
int CountKernelHandles();
// Those that run, or are held.
int CountThreads();

inline void PrintTo(const PlatformObjects& objects, std::ostream* out) {
    *out << objects.gdi << " GDI, " << objects.user << " user objects, " << objects.kernel
         << " handles, " << objects.threads << " threads";
}
