#include "audiopage/property_rows.h"
#include "tests/audiopage/page_settings.h"
#include "tests/audiopage/scripted_audio.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/temp_folder.h"
#include "toolkit/ncanvas.h"
#include "toolkit/nthread.h"

#include <string>
#include <vector>

namespace {
class PropertyRows : public PageSettings {
protected:
    // The path of a file in the test's folder; nothing is written.
    NString PathOf(const wchar_t* name) { return folder_.File(name); }

    NString Add(const wchar_t* name, ScriptedAudio& audio) {
        NString path = PathOf(name);
        audio.Write(path);
        files_.Add(path);
        return path;
    }
    // A file that is like all others, for the tests of one value.
    void AddTagged(const wchar_t* element, const wchar_t* value) {
        ScriptedAudio audio;
        if (element)
            audio.Tag(element, value);
        AddNumbered(audio);
    }
    void AddNumbered(ScriptedAudio& audio) {
        Add((std::to_wstring(files_.Count) + L".scripted").c_str(), audio);
    }
    void AddUnknown() { files_.Add(PathOf(L"of no decoder.unknown")); }

    void Build(NEvent* stop = nullptr, NKeyedList<NCanvas>* art = nullptr) {
        BuildPropRows(files_, stop, rows_, art);
    }
    // The value of the row, which there is once.
    NString Value(const wchar_t* label) {
        NString value;
        int found = 0;
        for (int index = 0; index < rows_.Count(); ++index) {
            if (rows_[index]->Label == label) {
                value = rows_[index]->Value;
                ++found;
            }
        }
        EXPECT_EQ(found, 1) << NString(label).ToNarrow();
        return value;
    }
    NString Built(const wchar_t* label) {
        Build();
        return Value(label);
    }

    TempFolder folder_;
    NStringList files_;
    NKeyedList<clPropRow> rows_;
};

struct ExpectedRow {
    const wchar_t* one;
    const wchar_t* many;
    int labelX;
    int y;
    int valueX;
    int valueWidth;
};

constexpr int RowsOfMany = 16;
const ExpectedRow AllRows[] = {
    {L"Artist", L"Artist", -103, 7, 108, 119},
    {L"Title", L"Title", -103, 17, 108, 119},
    {L"Album", L"Album", -103, 27, 108, 119},
    {L"Track", L"Track", -103, 37, 108, 100},
    {L"Disc", L"Disc", -178, 37, 183, 44},
    {L"Genre", L"Genre", -103, 47, 108, 119},
    {L"Year", L"Year", -103, 57, 108, 119},
    {L"Rating", L"Rating", 7, 68, 74, 153},
    {L"Composer", L"Composer", 7, 78, 74, 153},
    {L"Size", L"Combined Size", 7, 93, 74, 153},
    {L"Original Size", L"Original Size", 7, 103, 74, 153},
    {L"Length", L"Combined Length", 7, 113, 74, 153},
    {L"Channels", L"Channels", 7, 123, 74, 153},
    {L"Sample Rate", L"Sample Rate", 7, 133, 74, 153},
    {L"Sample Size", L"Sample Size", 7, 143, 74, 153},
    {L"Bit Rate", L"Average Bit Rate", 7, 153, 74, 153},
    {L"Encoder", nullptr, 7, 168, 74, 153},
    {L"Encoder Settings", nullptr, 7, 178, 74, 153},
    {L"Audio Quality", nullptr, 7, 188, 74, 153},
    {L"Contains", nullptr, 7, 198, 74, 153},
    {L"Channel Mapping", nullptr, 7, 208, 74, 153},
    {L"File", nullptr, 7, 218, 74, 153},
    {L"Type", nullptr, 7, 228, 74, 153},
};

void ExpectPlace(const clPropRow& row, const ExpectedRow& expected) {
    EXPECT_EQ(row.LabelX, expected.labelX);
    EXPECT_EQ(row.Y, expected.y);
    EXPECT_EQ(row.ValueX, expected.valueX);
    EXPECT_EQ(row.ValueWidth, expected.valueWidth);
}
} // namespace

TEST_F(PropertyRows, OneFileHas23RowsInTheirPlaces) {
    AddTagged(nullptr, nullptr);
    Build();
    ASSERT_EQ(rows_.Count(), 23);
    for (int index = 0; index < rows_.Count(); ++index) {
        EXPECT_EQ(rows_[index]->Label, AllRows[index].one);
        EXPECT_EQ(*rows_.Keys[index], L"");
        ExpectPlace(*rows_[index], AllRows[index]);
    }
}

TEST_F(PropertyRows, TwoFilesHave16RowsInTheSamePlacesAndEndWithTheBitRate) {
    AddTagged(nullptr, nullptr);
    AddTagged(nullptr, nullptr);
    Build();
    ASSERT_EQ(rows_.Count(), RowsOfMany);
    for (int index = 0; index < rows_.Count(); ++index) {
        EXPECT_EQ(rows_[index]->Label, AllRows[index].many);
        ExpectPlace(*rows_[index], AllRows[index]);
    }
    EXPECT_EQ(rows_[RowsOfMany - 1]->Label, L"Average Bit Rate");
}

TEST_F(PropertyRows, EachRowOfOneFileHasItsOwnSource) {
    ScriptedAudio audio;
    audio.says = {.formatTag = 1,
                  .channels = 2,
                  .sampleRate = 44100,
                  .avgBytesPerSec = 176400,
                  .bitsPerSample = 16,
                  .bitRate = 320000,
                  .lengthMs = 125000,
                  .fileSize = 5000000};
    for (const wchar_t* name : {L"Artist", L"TITLE", L"album", L"track", L"disc", L"genre", L"year",
                                L"rating", L"composer"})
        audio.Tag(name, (std::wstring(L"the ") + name).c_str());
    for (const wchar_t* name :
         {L"Encoder", L"ENCODER SETTINGS", L"audio quality", L"contains", L"channel mapping"})
        audio.tech.Add(name, (std::wstring(L"tech ") + name).c_str());
    // What the other record is asked for doesn't count in this one.
    audio.tags.Add(L"encoder", L"of the tag");
    audio.tech.Add(L"artist", L"of the encoder");
    Add(L"A song. Live.scripted", audio);
    Build();
    const wchar_t* values[] = {
        L"the Artist",
        L"the TITLE",
        L"the album",
        L"the track",
        L"the disc",
        L"the genre",
        L"the year",
        L"the rating",
        L"the composer",
        L"4.77 MB  (22% of original, 1 to 1 compression)",
        L"21.03 MB",
        L"2 minutes 5 seconds",
        L"2  (stereo)",
        L"44.1 KHz\r",
        L"16 bit",
        L"320 kbps",
        L"tech Encoder",
        L"tech ENCODER SETTINGS",
        L"tech audio quality",
        L"tech contains",
        L"tech channel mapping",
        L"A song. Live",
        L"scripted File    [.scripted]",
    };
    ASSERT_EQ(rows_.Count(), static_cast<int>(std::size(values)));
    for (int index = 0; index < rows_.Count(); ++index)
        EXPECT_EQ(rows_[index]->Value, values[index]) << rows_[index]->Label.ToNarrow();
}

TEST_F(PropertyRows, RowsThatWereThereAreReplaced) {
    AddTagged(L"artist", L"A");
    Build();
    Build();
    EXPECT_EQ(rows_.Count(), 23);
}

TEST_F(PropertyRows, NoFileAtAllGivesTheRowsOfMany) {
    Build();
    EXPECT_EQ(rows_.Count(), RowsOfMany);
    EXPECT_EQ(Value(L"Original Size"), L"0 bytes");
}

// Tags of several files.

TEST_F(PropertyRows, CommonValuesAreShown) {
    for (int file = 0; file < 3; ++file) {
        ScriptedAudio audio;
        for (const wchar_t* name :
             {L"artist", L"title", L"album", L"track", L"disc", L"genre", L"year", L"rating"})
            audio.Tag(name, name);
        AddNumbered(audio);
    }
    Build();
    EXPECT_EQ(Value(L"Artist"), L"artist");
    EXPECT_EQ(Value(L"Title"), L"title");
    EXPECT_EQ(Value(L"Album"), L"album");
    EXPECT_EQ(Value(L"Track"), L"track");
    EXPECT_EQ(Value(L"Disc"), L"disc");
    EXPECT_EQ(Value(L"Genre"), L"genre");
    EXPECT_EQ(Value(L"Year"), L"year");
    EXPECT_EQ(Value(L"Rating"), L"rating");
}

TEST_F(PropertyRows, ValuesThatDifferInCaseDiffer) {
    AddTagged(L"artist", L"A");
    AddTagged(L"artist", L"a");
    EXPECT_EQ(Built(L"Artist"), L"<different>");
}

TEST_F(PropertyRows, NamesThatDifferInCaseAreTheSame) {
    AddTagged(L"artist", L"A");
    AddTagged(L"ARTIST", L"A");
    EXPECT_EQ(Built(L"Artist"), L"A");
}

TEST_F(PropertyRows, AnElementOfTheSecondFileAloneDiffersAtOnce) {
    AddTagged(nullptr, nullptr);
    AddTagged(L"year", L"1999");
    EXPECT_EQ(Built(L"Year"), L"<different>");
}

TEST_F(PropertyRows, AnElementOfTheFirstFileAloneDiffersWithTheSecond) {
    AddTagged(L"year", L"1999");
    AddTagged(nullptr, nullptr);
    EXPECT_EQ(Built(L"Year"), L"<different>");
}

TEST_F(PropertyRows, AFileWithoutATagMakesWhatIsKnownDiffer) {
    AddTagged(L"year", L"1999");
    ScriptedAudio untagged;
    untagged.says.tagsAreNull = 1;
    AddNumbered(untagged);
    EXPECT_EQ(Built(L"Year"), L"<different>");
}

TEST_F(PropertyRows, AnEmptyValueInTheSecondFileLeavesTheFirstOnesText) {
    AddTagged(L"genre", L"Jazz");
    AddTagged(L"genre", L"");
    EXPECT_EQ(Built(L"Genre"), L"Jazz");
}

TEST_F(PropertyRows, ValuesOnceDifferentStayDifferent) {
    AddTagged(L"artist", L"A");
    AddTagged(L"artist", L"B");
    AddTagged(L"artist", L"A");
    EXPECT_EQ(Built(L"Artist"), L"<different>");
}

TEST_F(PropertyRows, WithSeveralFilesTheComposerIsNeverShown) {
    AddTagged(L"composer", L"C");
    AddTagged(L"composer", L"C");
    EXPECT_EQ(Built(L"Composer"), L"");
}

TEST_F(PropertyRows, TheFirstReadableFileBehindAnotherPathDiffersAtOnce) {
    AddUnknown();
    AddTagged(L"album", L"B");
    EXPECT_EQ(Built(L"Album"), L"<different>");
}

TEST_F(PropertyRows, AFileThatIsNotReadChangesNothing) {
    AddTagged(L"album", L"B");
    AddUnknown();
    ScriptedAudio refused;
    refused.says.refuses = 1;
    AddNumbered(refused);
    EXPECT_EQ(Built(L"Album"), L"B");
}

// Files that can't be read.

TEST_F(PropertyRows, WithoutAReadableFileTheRowsAreThereAndEmptyButForTheOriginalSize) {
    AddUnknown();
    AddUnknown();
    Build();
    ASSERT_EQ(rows_.Count(), RowsOfMany);
    for (int index = 0; index < rows_.Count(); ++index) {
        bool isOriginal = rows_[index]->Label == L"Original Size";
        EXPECT_EQ(rows_[index]->Value, isOriginal ? L"0 bytes" : L"");
    }
}

TEST_F(PropertyRows, OnePathThatFailsHas23Rows) {
    AddUnknown();
    Build();
    ASSERT_EQ(rows_.Count(), 23);
    EXPECT_EQ(Value(L"Encoder"), L"");
    EXPECT_EQ(Value(L"File"), L"of no decoder");
    EXPECT_EQ(Value(L"Type"), L"unknown File    [.unknown]");
}

TEST_F(PropertyRows, TwoPathsOfWhichOneFailsHaveTheRowsAndLabelsOfMany) {
    AddTagged(L"artist", L"A");
    AddUnknown();
    Build();
    EXPECT_EQ(rows_.Count(), RowsOfMany);
    EXPECT_EQ(Value(L"Combined Size"), L"");
    EXPECT_EQ(Value(L"Artist"), L"A");
}

TEST_F(PropertyRows, AFileThatTheDecoderRefusesIsLeftOutOfAllSums) {
    ScriptedAudio good;
    good.says = {.channels = 2, .bitRate = 128000, .lengthMs = 60000, .fileSize = 1024};
    AddNumbered(good);
    good.says.refuses = 1;
    AddNumbered(good);
    Build();
    EXPECT_EQ(Value(L"Combined Size"), L"1 KB");
    EXPECT_EQ(Value(L"Combined Length"), L"1 minute");
    EXPECT_EQ(Value(L"Average Bit Rate"), L"128 kbps");
}

// What decoders say of blobs.

TEST_F(PropertyRows, ABlobWithoutPointerOrSizeHoldsNothing) {
    struct Lie {
        const wchar_t* name;
        bool isNull;
    };
    for (const Lie& lie : {Lie{L"null.scripted", true}, Lie{L"empty.scripted", false}}) {
        ScriptedAudio audio;
        audio.Tag(L"artist", L"A");
        audio.tech.Add(L"encoder", L"E");
        audio.says.tagsAreNull = audio.says.techInfoIsNull = lie.isNull;
        NBuffer bytes;
        audio.tags.Serialise(bytes);
        audio.says.tagsSize = lie.isNull ? 0 : 0 - bytes.Size;
        audio.tech.Serialise(bytes);
        audio.says.techInfoSize = lie.isNull ? 0 : 0 - bytes.Size;
        files_.Clear();
        Add(lie.name, audio);
        Build();
        EXPECT_EQ(Value(L"Artist"), L"");
        EXPECT_EQ(Value(L"Encoder"), L"");
    }
}

TEST_F(PropertyRows, ADamagedBlobYieldsWhatStoodBeforeTheFault) {
    ScriptedAudio audio;
    audio.Tag(L"artist", L"A");
    audio.Tag(L"album", L"B");
    audio.says.tagsSize = static_cast<uint32_t>(-2);
    AddNumbered(audio);
    Build();
    EXPECT_EQ(Value(L"Artist"), L"A");
    EXPECT_EQ(Value(L"Album"), L"");
}

TEST_F(PropertyRows, ABlobThatClaimsMoreThanThereIsIsReadAsFarAsItGoes) {
    ScriptedAudio audio;
    audio.Tag(L"artist", L"A");
    audio.tech.Add(L"encoder", L"E");
    audio.says.tagsSize = 0x40000000;
    audio.says.techInfoSize = 0x40000000;
    AddNumbered(audio);
    Build();
    EXPECT_EQ(Value(L"Artist"), L"A");
    EXPECT_EQ(Value(L"Encoder"), L"E");
}

TEST_F(PropertyRows, TheTechnicalFactsOfSeveralFilesAreNotRead) {
    ScriptedAudio audio;
    audio.tech.Add(L"artist", L"E");
    AddNumbered(audio);
    AddNumbered(audio);
    EXPECT_EQ(Built(L"Artist"), L"");
}

TEST_F(PropertyRows, AValueOfSeveralLinesStaysAsItCame) {
    AddTagged(L"artist", L"A\rB\r\nC");
    EXPECT_EQ(Built(L"Artist"), L"A\rB\r\nC");
}

// Stopping.

TEST_F(PropertyRows, AStopSetBeforehandLeavesNoRows) {
    AddTagged(L"artist", L"A");
    Build();
    NEvent stop;
    stop.Create(L"tonewright-test-stop-1");
    stop.Set();
    NKeyedList<NCanvas> art;
    art.Add();
    Build(&stop, &art);
    EXPECT_EQ(rows_.Count(), 0);
    EXPECT_EQ(art.Count(), 0);
}

TEST_F(PropertyRows, AStopDuringAFileIsSeenBeforeTheNext) {
    std::wstring unique = std::to_wstring(GetCurrentProcessId());
    std::wstring stopName = L"tonewright-test-stop-" + unique;
    std::wstring readName = L"tonewright-test-second-read-" + unique;
    NEvent stop;
    NEvent secondWasRead;
    stop.Create(stopName.c_str());
    secondWasRead.Create(readName.c_str());
    ScriptedAudio audio;
    wcscpy(audio.says.eventToSet, stopName.c_str());
    AddNumbered(audio);
    wcscpy(audio.says.eventToSet, readName.c_str());
    AddNumbered(audio);
    Build(&stop);
    EXPECT_TRUE(stop.IsSet());
    EXPECT_FALSE(secondWasRead.IsSet());
    EXPECT_EQ(rows_.Count(), 0);
}

TEST_F(PropertyRows, AStopDuringTheLastFileComesTooLate) {
    std::wstring stopName = L"tonewright-test-stop-" + std::to_wstring(GetCurrentProcessId());
    NEvent stop;
    stop.Create(stopName.c_str());
    ScriptedAudio audio;
    wcscpy(audio.says.eventToSet, stopName.c_str());
    AddNumbered(audio);
    Build(&stop);
    EXPECT_EQ(rows_.Count(), 23);
}

TEST_F(PropertyRows, AStopThatIsNotSetChangesNothing) {
    AddTagged(L"artist", L"A");
    NEvent stop;
    stop.Create(L"tonewright-test-stop-3");
    Build(&stop);
    EXPECT_EQ(rows_.Count(), 23);
}

// Sizes.

namespace {
class SizeRows : public PropertyRows {
protected:
    // One file of a size, and of so many uncompressed bytes.
    void BuildFile(int64_t size, int64_t original) {
        ScriptedAudio audio;
        audio.says.fileSize = size;
        audio.says.avgBytesPerSec = 1;
        audio.says.lengthMs = original * 1000;
        files_.Clear();
        AddNumbered(audio);
        Build();
    }
};
} // namespace

TEST_F(SizeRows, AFileSmallerThanItsAudioReadsOneToOne) {
    BuildFile(4000000, 40000000);
    EXPECT_EQ(Value(L"Size"), L"3.81 MB  (10% of original, 1 to 1 compression)");
    EXPECT_EQ(Value(L"Original Size"), L"38.15 MB");
}

TEST_F(SizeRows, AFileAlittleLargerThanItsAudioReadsTenthsWithoutAZero) {
    BuildFile(1000100, 1000000);
    EXPECT_EQ(Value(L"Size"), L"977 KB  (100% of original, .9 to 1 compression)");
    EXPECT_EQ(Value(L"Original Size"), L"977 KB");
}

TEST_F(SizeRows, TheTenthsHaveTheDecimalSeparatorOfTheLocale) {
    ChangeLocale(L"sDecimal", L",");
    SetUnit(L"UnitsFileSize", 3);
    SetLocale(L"sThousand", L"'");
    BuildFile(1000100, 1000000);
    EXPECT_EQ(Value(L"Size"), L"1'000'100 bytes  (100% of original, ,9 to 1 compression)");
}

TEST_F(SizeRows, PercentAndRatioAreNeverGrouped) {
    BuildFile(1000000, 100);
    EXPECT_EQ(Value(L"Size"), L"977 KB  (1000000% of original, .0 to 1 compression)");
}

TEST_F(SizeRows, WithoutTheAudiosSizeThereIsNoCompression) {
    BuildFile(5000, 0);
    EXPECT_EQ(Value(L"Size"), L"5 KB");
    EXPECT_EQ(Value(L"Original Size"), L"5 KB");
}

TEST_F(SizeRows, WithoutASizeTheRowIsEmpty) {
    BuildFile(0, 2048);
    EXPECT_EQ(Value(L"Size"), L"");
    EXPECT_EQ(Value(L"Original Size"), L"2 KB");
}

TEST_F(SizeRows, ASmallDifferenceShowsTheFilesOwnSize) {
    SetUnit(L"UnitsFileSize", 3);
    BuildFile(5000, 5800);
    EXPECT_EQ(Value(L"Original Size"), L"5,000 bytes");
    BuildFile(5000, 6023);
    EXPECT_EQ(Value(L"Original Size"), L"5,000 bytes");
    BuildFile(5000, 6024);
    EXPECT_EQ(Value(L"Original Size"), L"6,024 bytes");
}

TEST_F(SizeRows, TheOriginalIsNeverShownSmallerThanTheFile) {
    SetUnit(L"UnitsFileSize", 3);
    BuildFile(50000, 6000);
    EXPECT_EQ(Value(L"Original Size"), L"50,000 bytes");
}

TEST_F(SizeRows, SizesByTheSetting) {
    const struct {
        uint32_t unit;
        const wchar_t* size;
        const wchar_t* original;
    } cases[] = {
        {0, L"1.5 MB", L"3 MB"},       {1, L"1.5 MB", L"3 MB"},
        {2, L"1,536 KB", L"3,072 KB"}, {3, L"1,572,864 bytes", L"3,145,728 bytes"},
        {4, L"1.5 MB", L"3 MB"},       {0xFFFFFFFF, L"1.5 MB", L"3 MB"},
    };
    for (const auto& expected : cases) {
        SetUnit(L"UnitsFileSize", expected.unit);
        BuildFile(1572864, 3145728);
        NString size(expected.size);
        size.Append(L"  (50% of original, 1 to 1 compression)");
        EXPECT_EQ(Value(L"Size"), size) << expected.unit;
        EXPECT_EQ(Value(L"Original Size"), expected.original) << expected.unit;
    }
}

TEST_F(SizeRows, WithNothingKnownTheOriginalSizeReadsZero) {
    const struct {
        uint32_t unit;
        const wchar_t* text;
    } cases[] = {{0, L"0 bytes"}, {1, L"0 bytes"}, {2, L"0 KB"}, {3, L"0 bytes"}, {4, L"0 bytes"}};
    for (const auto& expected : cases) {
        SetUnit(L"UnitsFileSize", expected.unit);
        BuildFile(0, 0);
        EXPECT_EQ(Value(L"Original Size"), expected.text) << expected.unit;
    }
}

TEST_F(SizeRows, OneByteIsOneByteByTheUnitThatFits) {
    BuildFile(1, 0);
    EXPECT_EQ(Value(L"Size"), L"1 byte");
    SetUnit(L"UnitsFileSize", 3);
    BuildFile(1, 0);
    EXPECT_EQ(Value(L"Size"), L"1 bytes");
}

// Only a decoder that says nonsense gets here.
TEST_F(SizeRows, ANegativeSizeMayHaveAGreatRatioWhichHasNoTenths) {
    BuildFile(-10, -1000);
    EXPECT_EQ(Value(L"Size"), L"-10 bytes  (1% of original, 100 to 1 compression)");
    BuildFile(-10, -51);
    EXPECT_EQ(Value(L"Size"), L"-10 bytes  (19% of original, 5 to 1 compression)");
    BuildFile(-10, -50);
    EXPECT_EQ(Value(L"Size"), L"-10 bytes  (20% of original, 5.0 to 1 compression)");
}

TEST_F(SizeRows, NumbersBeyondAllSenseDoNoHarm) {
    for (int64_t size : {INT64_MIN, int64_t{-1}, INT64_MAX}) {
        for (int64_t length : {INT64_MIN, int64_t{-1}, INT64_MAX}) {
            ScriptedAudio audio;
            audio.says.fileSize = size;
            audio.says.lengthMs = length;
            audio.says.avgBytesPerSec = 0xFFFFFFFF;
            audio.says.bitRate = 0x80000000;
            audio.says.channels = 0xFFFF;
            audio.says.sampleRate = 0xFFFFFFFF;
            audio.says.bitsPerSample = 0xFFFF;
            AddNumbered(audio);
            Build();
            EXPECT_GE(rows_.Count(), RowsOfMany);
        }
    }
}

TEST_F(PropertyRows, SizesLengthsAndOriginalSizesAreSummed) {
    SetUnit(L"UnitsFileSize", 3);
    ScriptedAudio audio;
    // Of 1.5 bytes each, which are cut to 1 file by file.
    audio.says = {.avgBytesPerSec = 1, .lengthMs = 1500, .fileSize = 3000};
    for (int file = 0; file < 4; ++file)
        AddNumbered(audio);
    Build();
    EXPECT_EQ(Value(L"Combined Size"), L"12,000 bytes  (300000% of original, .0 to 1 compression)");
    EXPECT_EQ(Value(L"Combined Length"), L"6 seconds");
}

// Technical values.

TEST_F(PropertyRows, LengthsByTheSetting) {
    ScriptedAudio audio;
    audio.says.lengthMs = 3723000;
    AddNumbered(audio);
    const wchar_t* texts[] = {L"1 hour 2 minutes", L"1:02:03",          L"01:02:03",
                              L"01:02:03.000",     L"1 hour 2 minutes", L""};
    for (uint32_t unit = 0; unit < std::size(texts); ++unit) {
        SetUnit(L"UnitsTime", unit);
        EXPECT_EQ(Built(L"Length"), texts[unit]) << unit;
    }
}

TEST_F(PropertyRows, LengthsInWordsHaveTheirFractionsWithUnit4Too) {
    SetUnit(L"UnitsTime", 4);
    ScriptedAudio audio;
    audio.says.lengthMs = 4500;
    AddNumbered(audio);
    EXPECT_EQ(Built(L"Length"), L"4.5 seconds");
}

TEST_F(PropertyRows, WithoutALengthTheRowIsEmpty) {
    SetUnit(L"UnitsTime", 2);
    AddTagged(nullptr, nullptr);
    EXPECT_EQ(Built(L"Length"), L"");
}

namespace {
class MergedRows : public PropertyRows {
protected:
    void AddChannels(uint16_t channels) {
        ScriptedAudio audio;
        audio.says.channels = channels;
        AddNumbered(audio);
    }
    void AddRate(uint32_t rate) {
        ScriptedAudio audio;
        audio.says.sampleRate = rate;
        AddNumbered(audio);
    }
    void AddSampleSize(uint16_t bits, uint16_t formatTag) {
        ScriptedAudio audio;
        audio.says.bitsPerSample = bits;
        audio.says.formatTag = formatTag;
        AddNumbered(audio);
    }
};
} // namespace

TEST_F(MergedRows, CommonChannels) {
    AddChannels(2);
    AddChannels(2);
    EXPECT_EQ(Built(L"Channels"), L"2  (stereo)");
}

TEST_F(MergedRows, ChannelsOnceDifferentStayDifferent) {
    AddChannels(2);
    AddChannels(1);
    AddChannels(2);
    EXPECT_EQ(Built(L"Channels"), L"<different>");
}

TEST_F(MergedRows, AFirstFileOfNoChannelsLeavesThemOpen) {
    AddChannels(0);
    AddChannels(2);
    EXPECT_EQ(Built(L"Channels"), L"2  (stereo)");
}

TEST_F(MergedRows, ALaterFileOfNoChannelsDiffers) {
    AddChannels(2);
    AddChannels(0);
    EXPECT_EQ(Built(L"Channels"), L"<different>");
}

TEST_F(MergedRows, NothingKnownGivesEmptyRows) {
    AddChannels(0);
    Build();
    for (const wchar_t* label : {L"Channels", L"Sample Rate", L"Sample Size", L"Bit Rate"})
        EXPECT_EQ(Value(label), L"");
}

TEST_F(MergedRows, SampleRatesByTheSettingEndInACarriageReturn) {
    const struct {
        uint32_t rate;
        const wchar_t* kilohertz;
        const wchar_t* hertz;
    } cases[] = {
        {44100, L"44.1 KHz\r", L"44,100 Hz\r"}, {48000, L"48 KHz\r", L"48,000 Hz\r"},
        {22050, L"22 KHz\r", L"22,050 Hz\r"},   {11025, L"11 KHz\r", L"11,025 Hz\r"},
        {800, L"0.8 KHz\r", L"800 Hz\r"},       {2822400, L"2,822.4 KHz\r", L"2,822,400 Hz\r"},
    };
    for (const auto& expected : cases) {
        files_.Clear();
        AddRate(expected.rate);
        SetUnit(L"UnitsFreq", 0);
        EXPECT_EQ(Built(L"Sample Rate"), expected.kilohertz);
        for (uint32_t unit : {1u, 2u, 3u, 4u, 0xFFFFFFFFu}) {
            SetUnit(L"UnitsFreq", unit);
            EXPECT_EQ(Built(L"Sample Rate"), expected.hertz) << unit;
        }
    }
}

TEST_F(MergedRows, SampleRatesThatDiffer) {
    AddRate(44100);
    AddRate(48000);
    EXPECT_EQ(Built(L"Sample Rate"), L"<different>");
}

TEST_F(MergedRows, SampleSizes) {
    AddSampleSize(16, 1);
    EXPECT_EQ(Built(L"Sample Size"), L"16 bit");
    AddSampleSize(16, 1);
    EXPECT_EQ(Built(L"Sample Size"), L"16 bit");
    AddSampleSize(24, 1);
    EXPECT_EQ(Built(L"Sample Size"), L"<different>");
}

TEST_F(MergedRows, OnlyFormat3IsFloatingPoint) {
    for (int format : {0, 1, 2, 4, 0xFFFE}) {
        files_.Clear();
        AddSampleSize(32, static_cast<uint16_t>(format));
        EXPECT_EQ(Built(L"Sample Size"), L"32 bit") << format;
    }
    files_.Clear();
    AddSampleSize(32, 3);
    EXPECT_EQ(Built(L"Sample Size"), L"32 bit floating point");
}

TEST_F(MergedRows, FloatingPointIsNamedOnlyIfAllFilesAreOfThatKind) {
    AddSampleSize(32, 3);
    AddSampleSize(32, 3);
    EXPECT_EQ(Built(L"Sample Size"), L"32 bit floating point");
    AddSampleSize(32, 1);
    EXPECT_EQ(Built(L"Sample Size"), L"32 bit");
    AddSampleSize(32, 3);
    EXPECT_EQ(Built(L"Sample Size"), L"32 bit");
}

TEST_F(MergedRows, AFirstFileOfIntegersRulesFloatingPointOut) {
    AddSampleSize(32, 1);
    AddSampleSize(32, 3);
    EXPECT_EQ(Built(L"Sample Size"), L"32 bit");
}

namespace {
class BitRateRows : public PropertyRows {
protected:
    void AddBitRate(uint32_t bitRate, uint16_t channels = 2, uint16_t bits = 16) {
        ScriptedAudio audio;
        audio.says.bitRate = bitRate;
        audio.says.channels = channels;
        audio.says.sampleRate = 44100;
        audio.says.bitsPerSample = bits;
        AddNumbered(audio);
    }
};
} // namespace

// The sample size stands in the place of the sample rate: wanted.
TEST_F(BitRateRows, TheRateOfADiscIsNotMarked) {
    AddBitRate(1411200);
    EXPECT_EQ(Built(L"Bit Rate"), L"1,411 kbps");
}

TEST_F(BitRateRows, AGreatRateIsMarked) {
    AddBitRate(4608000, 2, 24);
    EXPECT_EQ(Built(L"Bit Rate"), L"4,608 kbps  (DVD)");
}

TEST_F(BitRateRows, WithoutASampleSizeOrChannelsThereIsNoMark) {
    AddBitRate(4608000, 2, 0);
    EXPECT_EQ(Built(L"Bit Rate"), L"4,608 kbps");
    files_.Clear();
    AddBitRate(4608000, 0, 24);
    EXPECT_EQ(Built(L"Bit Rate"), L"4,608 kbps");
}

TEST_F(BitRateRows, SeveralFilesHaveTheirAverageWithoutAMark) {
    AddBitRate(4608000, 2, 24);
    AddBitRate(4608000, 2, 24);
    AddBitRate(4608002, 2, 24);
    SetUnit(L"UnitsBitRate", 2);
    EXPECT_EQ(Built(L"Average Bit Rate"), L"4,608,000 bps");
    SetUnit(L"UnitsBitRate", 0);
    EXPECT_EQ(Built(L"Average Bit Rate"), L"4,608 kbps");
}

TEST_F(BitRateRows, OnlyGoodFilesCountForTheAverage) {
    AddBitRate(128000);
    AddUnknown();
    EXPECT_EQ(Built(L"Average Bit Rate"), L"128 kbps");
}

TEST_F(BitRateRows, TheSumIsOf32BitsSigned) {
    AddBitRate(0x7FFFFFFF);
    AddBitRate(1);
    SetUnit(L"UnitsBitRate", 2);
    EXPECT_EQ(Built(L"Average Bit Rate"), L"-1,073,741,824 bps");
}

// File and type.

TEST_F(PropertyRows, TheFilesNameHasNeitherFolderNorExtension) {
    const struct {
        const wchar_t* path;
        const wchar_t* file;
        const wchar_t* type;
    } cases[] = {
        {L"C:\\nowhere\\song.two.unk1", L"song.two", L"unk1 File    [.unk1]"},
        {L"C:\\no.where\\song", L"song", L"File    [.]"},
        {L"song.UNK2", L"song", L"unk2 File    [.UNK2]"},
        {L"C:\\nowhere\\.unk3", L"", L"unk3 File    [.unk3]"},
        {L"C:\\nowhere\\song.", L"song", L"File    [.]"},
    };
    for (const auto& expected : cases) {
        files_.Clear();
        files_.Add(expected.path);
        Build();
        EXPECT_EQ(Value(L"File"), expected.file);
        EXPECT_EQ(Value(L"Type"), expected.type);
    }
}
