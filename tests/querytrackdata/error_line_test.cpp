#include "suite/querytrackdata/error_line.h"

#include <gtest/gtest.h>

TEST(ErrorLine, NamesTheProgramTheFailureTheFileAndTheSystemsNumber) {
    ErrorLine error;
    EXPECT_FALSE(error.HasText());
    EXPECT_FALSE(error.Fail(L"cannot open the audio file", L"C:\\a.mp3", 32));
    EXPECT_TRUE(error.HasText());
    EXPECT_STREQ(error.Text().c_str(),
                 L"QueryTrackData: cannot open the audio file: \"C:\\a.mp3\" (system error 32)");
}

TEST(ErrorLine, TheFirstFailureIsTheOneThatIsTold) {
    ErrorLine error;
    error.Fail(L"first");
    error.Fail(L"second", L"x", 5);
    EXPECT_STREQ(error.Text().c_str(), L"QueryTrackData: first");
}

TEST(ErrorLine, LineEndsInAPathDontMakeASecondLine) {
    ErrorLine error;
    error.Fail(L"no file", L"a\r\nb\tc");
    EXPECT_STREQ(error.Text().c_str(), L"QueryTrackData: no file: \"a??b?c\"");
}
