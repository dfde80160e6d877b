#include "benchmarks/benches.h"
#include "benchmarks/measuring.h"
#include "codec/tag_record.h"

#include <cstdio>
#include <cstring>
#include <vector>

namespace {
constexpr int Rounds = 40;
constexpr uint32_t PictureSize = 10 * 1024 * 1024;
constexpr int SmallRecords = 10000;

void FillRecord(clTagRecord& record) {
    for (const wchar_t* name : {L"artist", L"title", L"album", L"track", L"year", L"genre"})
        record.Add(name, L"a value of a usual length");
}

void PrintRate(const MedianPair& time) {
    printf("  rate against that %.2f (goal: at least 0.5)\n\n", time.yardstick / time.subject);
}

void BenchPicture() {
    clTagRecord record;
    FillRecord(record);
    std::vector<uint8_t> picture(PictureSize, 0xA5);
    record.AddData(L"_albumart_1_front", picture.data(), PictureSize);
    NBuffer serialised;
    std::vector<uint8_t> copy(PictureSize);

    MedianPair write = MeasurePair(
        Rounds, [&] { record.Serialise(serialised); },
        [&] { memcpy(copy.data(), picture.data(), PictureSize); });
    PrintTime("Serialise with a 10 MB picture", write.subject);
    PrintTime("memcpy of the picture", write.yardstick);
    PrintRate(write);

    // A fresh record takes fresh memory, so its yardstick does too.
    MedianPair read = MeasurePair(
        Rounds,
        [&] {
            clTagRecord back;
            back.Deserialise(serialised.Data, static_cast<int>(serialised.Size));
        },
        [&] {
            NBuffer fresh;
            fresh.Resize(PictureSize);
            memcpy(fresh.Data, picture.data(), PictureSize);
        });
    PrintTime("Deserialise with a 10 MB picture", read.subject);
    PrintTime("memcpy into memory of its own", read.yardstick);
    PrintRate(read);
}

void BenchSmallRecords() {
    clTagRecord record;
    FillRecord(record);
    NBuffer serialised;
    double write = SecondsOf([&] {
        for (int count = 0; count < SmallRecords; ++count)
            record.Serialise(serialised);
    });
    clTagRecord back;
    double read = SecondsOf([&] {
        for (int count = 0; count < SmallRecords; ++count)
            back.Deserialise(serialised.Data, static_cast<int>(serialised.Size));
    });
    printf("Serialise of small records        %12.0f a second\n", SmallRecords / write);
    printf("Deserialise of small records      %12.0f a second\n", SmallRecords / read);
}
} // namespace

bool BenchRecords() {
    BenchPicture();
    BenchSmallRecords();
    return true;
}
