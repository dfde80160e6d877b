#include "suite/querytrackdata/command_line.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

bool Parse(std::vector<const wchar_t*> arguments, CommandLine& result) {
    arguments.insert(arguments.begin(), L"QueryTrackData.exe");
    return ParseCommandLine(static_cast<int>(arguments.size()), arguments.data(), result);
}

bool IsRefused(std::vector<const wchar_t*> arguments) {
    CommandLine result;
    return !Parse(std::move(arguments), result);
}

} // namespace

TEST(CommandLine, EachOptionNamesItsRequestAndTheExchangeFile) {
    CommandLine result;
    ASSERT_TRUE(Parse({L"--GetAudioInf=C:\\a b\\tNP1.tmp"}, result));
    EXPECT_EQ(result.Kind, RequestKind::Read);
    EXPECT_STREQ(result.ExchangeFile.c_str(), L"C:\\a b\\tNP1.tmp");
    ASSERT_TRUE(Parse({L"--SetTags=x"}, result));
    EXPECT_EQ(result.Kind, RequestKind::Set);
    ASSERT_TRUE(Parse({L"--DelTagElements=y"}, result));
    EXPECT_EQ(result.Kind, RequestKind::Delete);
    EXPECT_STREQ(result.ExchangeFile.c_str(), L"y");
}

TEST(CommandLine, QuotesThatCameThroughAreTakenOff) {
    CommandLine result;
    ASSERT_TRUE(Parse({L"--SetTags=\"C:\\a b\\x\""}, result));
    EXPECT_STREQ(result.ExchangeFile.c_str(), L"C:\\a b\\x");
}

TEST(CommandLine, AnythingButExactlyOneKnownOptionWithAPathIsRefused) {
    EXPECT_TRUE(IsRefused({}));
    EXPECT_TRUE(IsRefused({L"--SetTags=x", L"--SetTags=x"}));
    EXPECT_TRUE(IsRefused({L"--SetTags=x", L"--GetAudioInf=y"}));
    EXPECT_TRUE(IsRefused({L"--SetTags=x", L"y"}));
    EXPECT_TRUE(IsRefused({L"--SetTags="}));
    EXPECT_TRUE(IsRefused({L"--SetTags=\"\""}));
    EXPECT_TRUE(IsRefused({L"--SetTags"}));
    EXPECT_TRUE(IsRefused({L"--settags=x"}));
    EXPECT_TRUE(IsRefused({L"SetTags=x"}));
    EXPECT_TRUE(IsRefused({L""}));
}
