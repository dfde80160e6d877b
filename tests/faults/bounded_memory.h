#pragma once

#include <cstddef>

// The program's own operator new counts what it gives, and can be told to give
// no more than so many bytes at a time: beyond it throws std::bad_alloc.
void LimitMemory(std::size_t bytes);

// Bytes taken by operator new and not freed yet.
std::size_t LiveMemory();
// Forgets what came before.
void StartMeasuring();
// The most that was taken at a time, and whether more than the limit was asked
// for, since then.
std::size_t PeakMemory();
bool MemoryWasRefused();
