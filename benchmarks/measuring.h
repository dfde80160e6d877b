#pragma once

#include <functional>

// The median seconds of two pieces of work that were done in turn, so that what
// disturbs the machine disturbs both alike.
struct MedianPair {
    double subject;
    double yardstick;

    double Ratio() const { return subject / yardstick; }
};

// Runs both once to warm up, then each `rounds` times.
MedianPair MeasurePair(int rounds, const std::function<void()>& subject,
                       const std::function<void()>& yardstick);

// The same, for work that takes its own time, in seconds.
MedianPair MeasureTimedPair(int rounds, const std::function<double()>& subject,
                            const std::function<double()>& yardstick);

double SecondsOf(const std::function<void()>& work);

// One line: what was measured, and its milliseconds.
void PrintTime(const char* what, double seconds);
// The line below the times, and an empty one.
void PrintRatio(double ratio, const char* goal);
