#include "audiopage/property_rows.h"
#include "tests/audiopage/page_settings.h"
#include "tests/audiopage/scripted_audio.h"
#include "tests/audiopage/test_pictures.h"
#include "tests/support/leak_counters.h"
#include "tests/support/temp_folder.h"
#include "toolkit/ncanvas.h"
#include "toolkit/nthread.h"

namespace {
class ManyRuns : public PageSettings {
public:
    void RunOverMany(NEvent* stop) { BuildPropRows(many_, stop, rows_, nullptr); }

protected:
    void SetUp() override {
        ScriptedAudio audio;
        audio.Tag(L"artist", L"A");
        // One is bordered, one damaged.
        NBuffer cover = PlainBitmapFile(100, 100, 0);
        audio.tags.AddData(L"_albumart_1", cover.Data, static_cast<int>(cover.Size));
        audio.tags.AddData(L"_albumart_2", "no picture", 10);
        NString path = folder_.File(L"good.scripted");
        audio.Write(path);
        one_.Add(path);
        audio.says.refuses = 1;
        NString refused = folder_.File(L"refused.scripted");
        audio.Write(refused);
        many_.Add(path);
        many_.Add(refused);
        many_.Add(folder_.File(L"none.unknown"));
        many_.Add(path);
        CountPlatformObjects(); // what counting makes once
    }

    TempFolder folder_;
    NStringList one_;
    NStringList many_;
    NKeyedList<clPropRow> rows_;
    NKeyedList<NCanvas> art_;
};
} // namespace

TEST_F(ManyRuns, AThousandRunsLeaveNothingBehind) {
    auto run = [this] {
        BuildPropRows(one_, nullptr, rows_, &art_);
        RunOverMany(nullptr);
    };
    for (int round = 0; round < 3; ++round)
        run();
    const PlatformObjects before = CountPlatformObjects();
    for (int round = 0; round < 500; ++round)
        run();
    EXPECT_EQ(CountPlatformObjects(), before);
    EXPECT_EQ(art_.Count(), 2);
}

// The second event of each thread stays open until the process ends: wanted.
TEST_F(ManyRuns, RunsOnAThreadLeaveTheThreadsOwnEventAlone) {
    auto run = [this] {
        NThread thread;
        thread.Start([](NEvent& stop,
                        void* argument) { static_cast<ManyRuns*>(argument)->RunOverMany(&stop); },
                     this);
        WaitForSingleObject(thread.handle, INFINITE);
    };
    run();
    const PlatformObjects before = CountPlatformObjects();
    constexpr int Threads = 100;
    for (int round = 0; round < Threads; ++round)
        run();
    PlatformObjects expected = before;
    expected.kernel += Threads;
    EXPECT_EQ(CountPlatformObjects(), expected);
}
