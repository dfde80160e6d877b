#include "foundation/nrandom.h"

#include "foundation/nfile.h"
#include "foundation/windows_lean.h"

#include <bit>
#include <cstring>

namespace {
constexpr uint32_t WindowSize = 32768;

constexpr uint32_t Square(uint32_t number) {
    return number * number;
}

// Wraps around in 32 bits at every step, as a seed may.
uint32_t SeedFromClocks() {
    SYSTEMTIME now;
    GetSystemTime(&now);
    uint32_t sum = Square(now.wYear) + Square(now.wHour) + Square(now.wMinute) +
                   Square(now.wSecond) + Square(now.wMilliseconds);
    LARGE_INTEGER counter;
    if (QueryPerformanceCounter(&counter))
        sum = counter.LowPart * sum + static_cast<uint32_t>(counter.HighPart);
    return sum + GetTickCount();
}

// The 32 bits become the top of the fraction of a float from 1.0 to 2.0.
uint32_t ScaleByFraction(uint32_t number, uint32_t limit) {
    constexpr uint64_t exponentOfOne = uint64_t{0x3FF} << 52;
    double oneToTwo = std::bit_cast<double>(exponentOfOne | uint64_t{number} << 20);
    uint32_t scaled = static_cast<uint32_t>((oneToTwo - 1.0) * limit);
    return scaled < limit ? scaled : limit - 1;
}
} // namespace

NRandom::NRandom(ProcessWide) : twister_(SeedFromClocks()) {}

NRandom::NRandom() : twister_(SeedFromClocks() + NProcessRandom().Next()) {}

NRandom::NRandom(uint32_t seed) : twister_(seed) {}

NRandom::~NRandom() = default;

uint32_t NRandom::Next(uint32_t limit) {
    if (file_) {
        uint32_t number = NextFromFile();
        return limit ? static_cast<uint32_t>(uint64_t{number} * limit >> 32) : number;
    }
    uint32_t number = static_cast<uint32_t>(twister_());
    return limit ? ScaleByFraction(number, limit) : number;
}

bool NRandom::UseFile(const wchar_t* path) {
    auto file = std::make_unique<NFile>(path, GENERIC_READ, OPEN_EXISTING, false, true,
                                        FILE_ATTRIBUTE_NORMAL);
    bool failed = false;
    int64_t size = file->GetSize(failed);
    if (failed || size < static_cast<int64_t>(sizeof(uint32_t)))
        return false;
    file_ = std::move(file);
    window_.Resize(WindowSize);
    window_.Used = 0;
    windowUsed_ = 0;
    return true;
}

uint32_t NRandom::NextFromFile() {
    uint8_t bytes[sizeof(uint32_t)] = {};
    for (uint8_t& byte : bytes) {
        if (windowUsed_ == window_.Used && !FillWindow())
            break;
        byte = window_.Data[windowUsed_++];
    }
    uint32_t number;
    memcpy(&number, bytes, sizeof(number));
    return number;
}

bool NRandom::FillWindow() {
    bool failed = false;
    window_.Used = file_->Read(window_.Data, WindowSize, NFile::NoSeek, failed);
    if (window_.Used == 0)
        window_.Used = file_->Read(window_.Data, WindowSize, NFile::FromStart, failed);
    windowUsed_ = 0;
    return window_.Used != 0;
}

NRandom& NProcessRandom() {
    static NRandom instance{NRandom::ProcessWide{}};
    return instance;
}

namespace {
// Made while the module loads, before any thread can ask for it.
[[maybe_unused]] NRandom& madeAtLoad = NProcessRandom();
} // namespace
