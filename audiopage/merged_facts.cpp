#include "audiopage/merged_facts.h"

#include "audiopage/wrapped_math.h"

namespace {
constexpr int64_t MsOfSecond = 1000;

void MergeValue(uint32_t& merged, uint32_t value) {
    if (merged == MergedFacts::NotKnown)
        merged = value;
    else if (merged != value)
        merged = MergedFacts::Differs;
}

void MergeFormat(uint32_t& merged, bool isFloat) {
    if (!isFloat)
        merged = MergedFacts::Differs;
    else if (merged == MergedFacts::NotKnown)
        merged = MergedFacts::AllFloat;
}

// Truncated for each file on its own.
int64_t OriginalSize(const clAudioInfo& info) {
    return WrappedProduct(info.AvgBytesPerSec, info.LengthMs) / MsOfSecond;
}
} // namespace

void MergedFacts::Add(const clAudioInfo& info) {
    ++GoodFiles;
    TotalOriginal = WrappedSum(TotalOriginal, OriginalSize(info));
    TotalSize = WrappedSum(TotalSize, info.FileSize);
    TotalLength = WrappedSum(TotalLength, info.LengthMs);
    TotalBitRate = static_cast<int32_t>(static_cast<uint32_t>(TotalBitRate) + info.BitRate);
    MergeValue(MergedChannels, info.Channels);
    MergeValue(MergedRate, info.SampleRate);
    MergeValue(MergedSampleSize, info.BitsPerSample);
    MergeFormat(MergedFloat, info.FormatTag == FormatFloat);
}

int32_t MergedFacts::AverageBitRate() const {
    return TotalBitRate / (GoodFiles ? GoodFiles : 1);
}
