#include "suite/querytrackdata/writer_lock.h"

#include <cstdint>

bool WriterLock::Take(const NString& realPath, unsigned patience) {
    NString name(L"Global\\TonewrightTagWriter-");
    name.Append(HashDigits(realPath));
    mutex_.Reset(CreateMutexW(nullptr, FALSE, name.c_str()));
    if (!mutex_)
        return false;
    DWORD answer = WaitForSingleObject(mutex_.Get(), patience);
    taken_ = answer == WAIT_OBJECT_0 || answer == WAIT_ABANDONED;
    return taken_;
}

WriterLock::~WriterLock() {
    if (taken_)
        ReleaseMutex(mutex_.Get());
}

NString HashDigits(const NString& text) {
    constexpr uint64_t offsetBasis = 0xcbf29ce484222325;
    constexpr uint64_t prime = 0x100000001b3;
    constexpr int digitCount = 16;
    uint64_t hash = offsetBasis;
    for (int index = 0; index < text.CharCount(); ++index) {
        auto unit = static_cast<uint16_t>(NLowerUnit(text.Text[index]));
        hash = (hash ^ (unit & 0xff)) * prime;
        hash = (hash ^ (unit >> 8)) * prime;
    }
    NString digits;
    for (int shift = 4 * (digitCount - 1); shift >= 0; shift -= 4)
        digits.InsertChar(L"0123456789abcdef"[hash >> shift & 0xf]);
    return digits;
}
