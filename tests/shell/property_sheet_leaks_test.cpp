// Property sheets that are opened and closed again and again.
#include "tests/shell/counted_allocations.h"
#include "tests/shell/page_hand_over.h"
#include "tests/support/leak_counters.h"
#include "toolkit/device_contexts.h"

#include <cstddef>
#include <deque>

namespace {
class ManySheets : public PageHandOver {
protected:
    void OpenAndClose(bool readToTheEnd) {
        PageTaker taker;
        Offer(taker);
        Sheet sheet(taker.GiveUp());
        clAudioPropPage& page = PageMade();
        stillReading_ += WaitForSingleObject(page.Reader.handle, 0) == WAIT_TIMEOUT;
        if (readToTheEnd) {
            ASSERT_EQ(WaitForSingleObject(page.Reader.handle, LongestMs), WAIT_OBJECT_0);
            SendMessageW(page.Hwnd, WM_TIMER, 1, 0);
            sheet.Pump();
        }
        sheet.Close();
        SheetCalls::StartAnew();
    }
    void ShowTagsAndClose() {
        PageTaker taker;
        Offer(taker);
        Sheet sheet(taker.GiveUp());
        clIDTagPage& page = TagPageMade();
        sheet.ShowPage(1);
        ASSERT_EQ(WaitForSingleObject(page.ReadThread.handle, LongestMs), WAIT_OBJECT_0);
        SendMessageW(page.PageWindow, WM_TIMER, 1, 0);
        page.ValueList.Select(1);
        sheet.Pump();
        sheet.Close();
        SheetCalls::StartAnew();
    }
    // Wine keeps as many device contexts as windows ever had at a time, and two
    // threads need one more now and then.
    static void FillContextCache() {
        std::deque<NWindowDC> contexts;
        for (int context = 0; context < 64; ++context)
            contexts.emplace_back();
    }
    template <typename Use>
    void ExpectFlat(int rounds, int handlesOfEach, const PlatformObjects& platform, Use use) {
        CountPlatformObjects(); // what counting makes once
        FillContextCache();
        for (int round = 0; round < 3; ++round)
            use();
        const std::ptrdiff_t allocations = LiveAllocations();
        PlatformObjects expected = CountPlatformObjects();
        for (int round = 0; round < rounds; ++round)
            use();
        const std::ptrdiff_t allocationsAfter = LiveAllocations();
        const PlatformObjects after = CountPlatformObjects();
        // The second event of each thread stays open until the process ends:
        // wanted.
        expected.kernel += rounds * handlesOfEach;
        expected.gdi += rounds * platform.gdi;
        expected.user += rounds * platform.user;
        EXPECT_EQ(after, expected);
        EXPECT_EQ(allocationsAfter, allocations);
    }
    // What the platform leaves behind of one sheet with pages of nobody's:
    // Wine's never frees the icons of the tabs.
    static PlatformObjects LeftByThePlatform(int pages) {
        const auto use = [pages] {
            std::vector<HPROPSHEETPAGE> plain;
            for (int page = 0; page < pages; ++page)
                plain.push_back(PlainPage());
            Sheet sheet(plain);
            SheetCalls::StartAnew();
        };
        constexpr int Rounds = 5;
        CountPlatformObjects(); // what counting makes once
        use();
        const PlatformObjects before = CountPlatformObjects();
        for (int round = 0; round < Rounds; ++round)
            use();
        PlatformObjects left = CountPlatformObjects();
        left.gdi = (left.gdi - before.gdi) / Rounds;
        left.user = (left.user - before.user) / Rounds;
        return left;
    }

    static constexpr int OfTheReaderAndTheTips = 2;
    static constexpr int OfBothReadersAndTheTips = 3;

    int stillReading_ = 0; // sheets that were up before all was read
};
} // namespace

TEST_F(ManySheets, LeaveNothingBehind) {
    SelectSample();
    ExpectFlat(500, OfTheReaderAndTheTips, LeftByThePlatform(2), [this] { OpenAndClose(true); });
}

TEST_F(ManySheets, ThatShowedTheTagsLeaveNothingBehind) {
    SelectSample();
    ExpectFlat(500, OfBothReadersAndTheTips, LeftByThePlatform(2), [this] { ShowTagsAndClose(); });
}

TEST_F(ManySheets, ClosedWhileTheyReadLeaveNothingBehind) {
    constexpr int MoreThanAreReadMeanwhile = 200;
    for (int file = 0; file < MoreThanAreReadMeanwhile; ++file)
        SelectSample();
    ExpectFlat(30, OfTheReaderAndTheTips, LeftByThePlatform(2), [this] { OpenAndClose(false); });
    EXPECT_GT(stillReading_, 0);
}

TEST_F(ManySheets, ThatWereNeverShownLeaveNothingBehind) {
    SelectSample();
    ExpectFlat(30, 0, LeftByThePlatform(3), [this] {
        PageTaker taker;
        Offer(taker);
        const std::vector<HPROPSHEETPAGE> pages = taker.GiveUp();
        Sheet sheet({PlainPage(), pages.at(0), pages.at(1)});
        sheet.Close();
        SheetCalls::StartAnew();
    });
}

TEST_F(ManySheets, ThatWereRefusedLeaveNothingBehind) {
    SelectSample();
    ExpectFlat(100, 0, PlatformObjects(), [this] {
        PageTaker taker;
        taker.refuses = true;
        Offer(taker);
        SheetCalls::StartAnew();
    });
}
