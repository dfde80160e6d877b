#include "tests/audiopage/property_rows_fixture.h"

#include <iterator>
#include <string>

namespace {
struct ExpectedRow {
    const wchar_t* one;
    const wchar_t* many;
    int labelX;
    int y;
    int valueX;
    int valueWidth;
};

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
    ASSERT_EQ(rows_.Count(), RowsOfOne);
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
    EXPECT_EQ(rows_.Count(), RowsOfOne);
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
    AddTagged(L"Artist", L"B");
    EXPECT_EQ(Built(L"Artist"), L"<different>");
}

TEST_F(PropertyRows, NamesInCapitalsCountFromTheFirstFileOn) {
    AddTagged(L"ARTIST", L"A");
    AddTagged(L"Artist", L"A");
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
    ASSERT_EQ(rows_.Count(), RowsOfOne);
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

TEST_F(PropertyRows, TheTechnicalFactsOfSeveralFilesDoNotShow) {
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
    EXPECT_EQ(rows_.Count(), RowsOfOne);
}

TEST_F(PropertyRows, AStopThatIsNotSetChangesNothing) {
    AddTagged(L"artist", L"A");
    NEvent stop;
    stop.Create(L"tonewright-test-stop-3");
    Build(&stop);
    EXPECT_EQ(rows_.Count(), RowsOfOne);
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
