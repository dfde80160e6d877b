#include "codec/trace.h"
#include "foundation/unique_handle.h"
#include "tests/codec/trace_file.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {
// The indent and the end of the line are the process's, and each of these tests
// leaves them as it found them.
class Trace : public testing::Test {
protected:
    const NLogContext* To() { return file_.Context(); }
    std::wstring Text() { return file_.Text(); }

private:
    TraceFile file_;
};
} // namespace

TEST_F(Trace, WritesUnitsWithoutATerminatorOrAMark) {
    NTraceWrite(L"a\u00E9\u4E2D", To());
    EXPECT_EQ(Text(), L"a\u00E9\u4E2D");
    NTraceWrite(L"", To(), nullptr, true);
    EXPECT_EQ(Text(), L"a\u00E9\u4E2D\r\n");
}

TEST_F(Trace, EndsALineIfAsked) {
    NTraceWrite(L"one", To(), nullptr, true);
    NTraceWrite(L"two", To(), nullptr, true);
    EXPECT_EQ(Text(), L"one\r\ntwo\r\n");
}

TEST_F(Trace, NamesTheFunctionAtTheEndOfALineAlone) {
    NTraceWrite(L"one", To(), L"Function");
    NTraceWrite(L" two", To(), L"Other", true);
    EXPECT_EQ(Text(), L"one two  [Other]\r\n");
}

TEST_F(Trace, IndentsTheLinesBetweenTheMarks) {
    NTraceWrite(L"->-> in", To(), nullptr, true);
    NTraceWrite(L"text", To(), nullptr, true);
    NTraceWrite(L"->->", To(), nullptr, true);
    NTraceWrite(L"deep", To(), nullptr, true);
    NTraceWrite(L"<-<-", To(), nullptr, true);
    NTraceWrite(L"<-<- out", To(), nullptr, true);
    NTraceWrite(L"text", To(), nullptr, true);
    EXPECT_EQ(Text(), L"->-> in\r\n"
                      L"  text\r\n"
                      L"  ->->\r\n"
                      L"    deep\r\n"
                      L"  <-<-\r\n"
                      L"<-<- out\r\n"
                      L"text\r\n");
}

TEST_F(Trace, TakesNoMarkInTheMiddleOfATextForOne) {
    NTraceWrite(L" ->->", To(), nullptr, true);
    NTraceWrite(L"->-", To(), nullptr, true);
    NTraceWrite(L"text", To(), nullptr, true);
    EXPECT_EQ(Text(), L" ->->\r\n->-\r\ntext\r\n");
}

TEST_F(Trace, StaysAtNoIndentWhenMoreIsTakenBackThanWasGiven) {
    NTraceWrite(L"<-<-", To(), nullptr, true);
    NTraceWrite(L"->->", To(), nullptr, true);
    NTraceWrite(L"text", To(), nullptr, true);
    NTraceWrite(L"<-<-", To(), nullptr, true);
    EXPECT_EQ(Text(), L"<-<-\r\n->->\r\n  text\r\n<-<-\r\n");
}

TEST_F(Trace, PutsTheIndentBeforeTheFirstPieceOfALineAlone) {
    NTraceWrite(L"->->", To(), nullptr, true);
    NTraceWrite(L"a", To());
    NTraceWrite(L"b", To(), nullptr, true);
    NTraceWrite(L"<-<-", To(), nullptr, true);
    EXPECT_EQ(Text(), L"->->\r\n  ab\r\n<-<-\r\n");
}

TEST_F(Trace, PutsAPrefixInPlaceOfTheIndentAndInTheMiddleOfALineToo) {
    NTraceWrite(L"->->", To(), nullptr, true);
    NTraceWrite(L"a", To(), nullptr, false, L"<1>");
    NTraceWrite(L"b", To(), nullptr, true, L"<2>");
    NTraceWrite(L"c", To(), nullptr, true, L"");
    NTraceWrite(L"<-<-", To(), nullptr, true);
    EXPECT_EQ(Text(), L"->->\r\n<1>a<2>b\r\nc\r\n<-<-\r\n");
}

TEST_F(Trace, KeepsIndentAndLineWithoutOutput) {
    NLogContext off = {};
    NLogContext invalid = {{}, INVALID_HANDLE_VALUE};
    NTraceWrite(L"->->", &off, nullptr, true);
    NTraceWrite(L"->->", &invalid, nullptr, true);
    NTraceWrite(L"->->", nullptr, nullptr, true);
    NTraceWrite(L"deep", To(), nullptr, true);
    NTraceWrite(L"unended", nullptr);
    NTraceWrite(L"behind", To(), nullptr, true);
    for (int step = 0; step < 3; ++step)
        NTraceWrite(L"<-<-", &off, nullptr, true);
    EXPECT_EQ(Text(), L"      deep\r\nbehind\r\n");
}

TEST_F(Trace, HoldsOtherThreadsForTheWholeOfAPiece) {
    UniqueKernelHandle out;
    UniqueKernelHandle in;
    ASSERT_TRUE(CreatePipe(out.Put(), in.Put(), nullptr, 0));
    NLogContext pipe = {{}, in.Get()};
    // More than a pipe takes at once, so that this thread stays in its call.
    std::wstring longText(size_t{1} << 20, L'x');
    std::thread writer([&] {
        NTraceWrite(longText.c_str(), &pipe, nullptr, true);
        in.Reset();
    });
    wchar_t units[4096];
    DWORD read = 0;
    ASSERT_TRUE(ReadFile(out.Get(), units, sizeof(wchar_t), &read, nullptr));

    UniqueKernelHandle passed(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    std::thread other([&] {
        NTraceWrite(L"", nullptr, nullptr, true);
        SetEvent(passed.Get());
    });
    EXPECT_EQ(WaitForSingleObject(passed.Get(), 100), static_cast<DWORD>(WAIT_TIMEOUT));
    while (ReadFile(out.Get(), units, sizeof(units), &read, nullptr) && read)
        continue;
    EXPECT_EQ(WaitForSingleObject(passed.Get(), 30000), static_cast<DWORD>(WAIT_OBJECT_0));
    writer.join();
    other.join();
}
