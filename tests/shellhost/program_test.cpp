#include "foundation/nstring.h"
#include "suite/shellhost/program.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

namespace {
int RunWith(std::initializer_list<const wchar_t*> arguments) {
    std::vector<const wchar_t*> all = {L"shellhost"};
    all.insert(all.end(), arguments);
    return RunShellHost(static_cast<int>(all.size()), all.data());
}

const NString Module(TONEWRIGHT_SUITE_DIR "/tNWShell.DLL");
} // namespace

TEST(ShellHost, AnswersWhatIsNoCommandWithItsUsage) {
    EXPECT_EQ(RunWith({}), ExitUsage);
    EXPECT_EQ(RunWith({L"nonsense", L"file"}), ExitUsage);
    EXPECT_EQ(RunWith({L"--module"}), ExitUsage);
    EXPECT_EQ(RunWith({L"--module", Module.Text}), ExitUsage);
}

TEST(ShellHost, AnswersTooFewArgumentsWithItsUsage) {
    EXPECT_EQ(RunWith({L"tags"}), ExitUsage);
    EXPECT_EQ(RunWith({L"delete"}), ExitUsage);
    EXPECT_EQ(RunWith({L"set", L"file"}), ExitUsage);
    EXPECT_EQ(RunWith({L"--module", Module.Text, L"tags"}), ExitUsage);
}

TEST(ShellHost, AnswersAnElementOfTheWrongFormAsAFaultOfUsage) {
    EXPECT_EQ(RunWith({L"--module", Module.Text, L"set", L"C:\\none.mp3", L"title"}), ExitUsage);
}

TEST(ShellHost, FailsOnAModuleThatIsNotThere) {
    EXPECT_EQ(RunWith({L"--module", L"C:\\none.dll", L"tags", L"C:\\none.mp3"}), ExitFailed);
}

TEST(ShellHost, FailsOnAFileThatIsNotThere) {
    EXPECT_EQ(RunWith({L"--module", Module.Text, L"tags", L"C:\\none.mp3"}), ExitFailed);
    EXPECT_EQ(RunWith({L"--module", Module.Text, L"set", L"C:\\none.mp3", L"title=x"}), ExitFailed);
    EXPECT_EQ(RunWith({L"--module", Module.Text, L"delete", L"C:\\none.mp3"}), ExitFailed);
}
