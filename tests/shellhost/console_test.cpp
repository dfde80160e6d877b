#include "suite/shellhost/console.h"
#include "tests/shellhost/caught_stream.h"

#include <gtest/gtest.h>

namespace {
// A process without that stream.
class NoStream {
public:
    explicit NoStream(DWORD stream) : stream_(stream), old_(GetStdHandle(stream)) {
        SetStdHandle(stream_, nullptr);
    }
    ~NoStream() { SetStdHandle(stream_, old_); }
    NoStream(const NoStream&) = delete;
    NoStream& operator=(const NoStream&) = delete;

private:
    DWORD stream_;
    HANDLE old_;
};
} // namespace

TEST(Console, WritesALineInUtf8) {
    CaughtStream output(STD_OUTPUT_HANDLE);
    EXPECT_TRUE(Console::Line(L"Größe 音 \xD83C\xDFB5"));
    EXPECT_EQ(output.Text(), "Gr\xC3\xB6\xC3\x9F"
                             "e \xE9\x9F\xB3 \xF0\x9F\x8E\xB5\n");
}

TEST(Console, WritesAnEmptyLine) {
    CaughtStream output(STD_OUTPUT_HANDLE);
    EXPECT_TRUE(Console::Line(L""));
    EXPECT_EQ(output.Text(), "\n");
}

TEST(Console, WritesErrorsToTheirOwnStream) {
    CaughtStream output(STD_OUTPUT_HANDLE);
    CaughtStream errors(STD_ERROR_HANDLE);
    Console::Error(L"für sich");
    Console::LastWords("at last");
    EXPECT_EQ(errors.Text(), "f\xC3\xBCr sich\nat last\n");
    EXPECT_EQ(output.Text(), "");
}

TEST(Console, TellsOfALineThatIsLost) {
    CaughtStream output(STD_OUTPUT_HANDLE);
    output.Break();
    EXPECT_FALSE(Console::Line(L"lost"));
}

TEST(Console, TellsOfALineWhoseEndIsLost) {
    CaughtStream output(STD_OUTPUT_HANDLE);
    output.TakeNoMoreThanFits();
    NString line;
    line.SetLength(4 * static_cast<int>(CaughtStream::Room), L'x');
    EXPECT_FALSE(Console::Line(line));
}

TEST(Console, PassesOverAStreamThatIsNotThere) {
    NoStream output(STD_OUTPUT_HANDLE);
    NoStream errors(STD_ERROR_HANDLE);
    EXPECT_TRUE(Console::Line(L"nowhere"));
    Console::Error(L"nowhere");
    Console::LastWords("nowhere");
}

TEST(Console, ThrowsNothingWhereNothingCouldCatchIt) {
    static_assert(noexcept(Console::LastWords("")));
}
