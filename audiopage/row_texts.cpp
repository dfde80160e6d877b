#include "audiopage/row_texts.h"

#include "audiopage/display_units.h"
#include "audiopage/file_type.h"
#include "audiopage/locale_numbers.h"
#include "audiopage/merged_tags.h"
#include "audiopage/wrapped_math.h"
#include "foundation/npath.h"

namespace {
// Below this difference the two sizes are taken for the same.
constexpr int64_t SmallDifference = 1024;
// Above this a ratio is shown without its tenths.
constexpr int32_t GreatRatio10 = 50;

NString BytesText(int64_t size, uint32_t fileSizeUnit) {
    if (fileSizeUnit != UnitsFileSizeBytes)
        return FormatFileSize(size, fileSizeUnit == UnitsFileSizeKB);
    NString text = FormatGroupedInt(size);
    text.Append(L" bytes");
    return text;
}

NString RatioText(int32_t ratio10) {
    if (ratio10 > GreatRatio10)
        return NString(ratio10 / 10);
    NString text(ratio10);
    text.Insert(LocaleNumbers::Get().DecimalSep, text.CharCount());
    return text;
}

NString CompressionText(int64_t size, int64_t original) {
    // 1.
    int64_t percent = WrappedQuotient(WrappedProduct(size, 100), original);
    int64_t ratio10 = WrappedQuotient(WrappedProduct(original, 10), size);
    // 2.
    NString text(L"  (");
    text.Append(NString::FromInt(percent));
    text.Append(L"% of original, ");
    // 3. and 4. A file that is smaller than its audio reads "1 to 1": this
    // sense of the test is wanted.
    if (original < size)
        text.Append(RatioText(static_cast<int32_t>(ratio10)));
    else
        text.Append(L"1");
    // 5.
    text.Append(L" to 1 compression)");
    return text;
}

// Empty for a value that isn't known, and the text for one that differs.
bool HasOneValue(uint32_t merged, NString& text) {
    if (merged == MergedFacts::Differs)
        text = DifferentText;
    return merged != MergedFacts::NotKnown && merged != MergedFacts::Differs;
}
} // namespace

NString SizeText(const MergedFacts& facts, uint32_t fileSizeUnit) {
    if (facts.TotalSize == 0)
        return NString();
    NString text = BytesText(facts.TotalSize, fileSizeUnit);
    if (facts.TotalOriginal != 0)
        text.Append(CompressionText(facts.TotalSize, facts.TotalOriginal));
    return text;
}

NString OriginalSizeText(const MergedFacts& facts, uint32_t fileSizeUnit) {
    int64_t shown = facts.TotalOriginal;
    if (shown < facts.TotalSize)
        shown = facts.TotalSize;
    if (WrappedDifference(shown, facts.TotalSize) < SmallDifference)
        shown = facts.TotalSize;
    return BytesText(shown, fileSizeUnit);
}

NString LengthText(const MergedFacts& facts) {
    uint32_t unit = UnitsSettings::Time();
    if (facts.TotalLength == 0)
        return NString();
    return FormatTimeLength(facts.TotalLength, unit == UnitsTimeWholeWords ? UnitsTimeWords : unit);
}

NString ChannelsText(const MergedFacts& facts) {
    NString text;
    if (HasOneValue(facts.MergedChannels, text))
        text = FormatChannels(facts.MergedChannels);
    return text;
}

NString SampleRateText(const MergedFacts& facts) {
    NString text;
    if (!HasOneValue(facts.MergedRate, text))
        return text;
    // The carriage return at the end is wanted: the text for the clipboard
    // shows it.
    if (UnitsSettings::Frequency() != UnitsFrequencyKHz) {
        text = FormatGroupedInt(facts.MergedRate);
        text.Append(L" Hz\r");
    } else {
        text = FormatGroupedDecimal(facts.MergedRate / 1000.0, 1);
        text.Append(L" KHz\r");
    }
    return text;
}

NString SampleSizeText(const MergedFacts& facts) {
    NString text;
    if (!HasOneValue(facts.MergedSampleSize, text))
        return text;
    text = NString::FromUInt(facts.MergedSampleSize);
    text.Append(facts.MergedFloat == MergedFacts::AllFloat ? L" bit floating point" : L" bit");
    return text;
}

NString BitRateText(const MergedFacts& facts, bool onePath) {
    int32_t average = facts.AverageBitRate();
    if (average == 0)
        return NString();
    // The sample size stands in the place of the sample rate, so that no file
    // is marked as that of a CD or a DAT: wanted.
    return FormatBitRate(average, onePath ? facts.MergedChannels : 0,
                         onePath ? facts.MergedSampleSize : 0);
}

NString TypeText(const NString& path) {
    NString text = FileTypeText(path);
    text.Append(L"    [");
    text.Append(NGetFileExt(path));
    text.Append(L"]");
    return text;
}
