#include "foundation/nreg.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/program.h"
#include "tests/shellhost/caught_stream.h"
#include "tests/support/converter_stand_in.h"
#include "tests/support/private_current_user.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace {
// The commands about the context menu, with a copy of the module that has a
// converter beside it.
class MenuCommands : public testing::Test {
protected:
    MenuCommands() {
        NString built(TONEWRIGHT_SUITE_DIR "/tNWShell.DLL");
        EXPECT_TRUE(CopyFileW(built.Text, module_.Text, TRUE));
        EXPECT_TRUE(CopyFileW(ConverterStandIn::ProgramPath().c_str(),
                              folder_.File(L"WaveSmith.exe").Text, TRUE));
    }

    int Run(std::initializer_list<const wchar_t*> arguments) {
        std::vector<const wchar_t*> all = {L"shellhost", L"--module", module_.Text};
        all.insert(all.end(), arguments);
        return RunShellHost(static_cast<int>(all.size()), all.data());
    }

    TempFolder folder_;
    NString module_ = folder_.File(L"tNWShell.DLL");
    PrivateCurrentUser user_;
    ConverterStandIn converter_;
    CaughtStream output_{STD_OUTPUT_HANDLE};
    CaughtStream errors_{STD_ERROR_HANDLE};
};

const char ConvertTo[] = "0 Convert To\n"
                         "  picture: 16 x 16\n"
                         "  verb: Convert_To\n"
                         "  help: Tonewright: Convert Selected File(s) to...\n";
const char EditIdTag[] = "1 Edit ID-Tag\n"
                         "  picture: 16 x 16\n"
                         "  verb: Edit_IDTag\n"
                         "  help: Tonewright: Edit Audio ID Tag(s)\n";
} // namespace

TEST_F(MenuCommands, MenuShowsEachItemWithItsPictureVerbAndHelpText) {
    EXPECT_EQ(Run({L"menu", L"C:\\a.mp3", L"C:\\b.mp3"}), ExitDone);
    EXPECT_EQ(output_.Text(), std::string(ConvertTo) + EditIdTag);
    EXPECT_EQ(errors_.Text(), "");
}

TEST_F(MenuCommands, MenuShowsWhatTheUsersSettingLeaves) {
    NRegWriteDword(1, L"tNWNoEditTag", HKEY_CURRENT_USER, L"Software\\Quillmarsh\\Tonewright");
    EXPECT_EQ(Run({L"menu", L"C:\\a.mp3"}), ExitDone);
    EXPECT_EQ(output_.Text(), ConvertTo);
}

TEST_F(MenuCommands, MenuFailsIfItsOutputIsLost) {
    output_.Break();
    EXPECT_EQ(Run({L"menu", L"C:\\a.mp3"}), ExitFailed);
    EXPECT_EQ(errors_.Text(), "shellhost: the output can't be written\n");
}

TEST_F(MenuCommands, InvokeHandsTheConverterTheFullPathsByVerbAndByNumber) {
    for (const wchar_t* command : {L"Convert_To", L"0"}) {
        EXPECT_EQ(Run({L"invoke", command, L"C:\\\u97f3.mp3", L"b.mp3"}), ExitDone);
        ASSERT_TRUE(converter_.HasStarted());
        EXPECT_EQ(converter_.List(), ListFileOf({L"C:\\\u97f3.mp3", FullPath(L"b.mp3").c_str()}));
        ASSERT_TRUE(converter_.LetEnd());
        converter_.StartAnew();
    }
    EXPECT_EQ(errors_.Text(), "");
}

TEST_F(MenuCommands, InvokeFailsForWhatTheModuleDoesNotKnow) {
    for (const char* command : {"convert_to", "2", "65536", "-1", "00"}) {
        EXPECT_EQ(Run({L"invoke", NString(command).Text, L"C:\\a.mp3"}), ExitFailed);
        EXPECT_EQ(errors_.Text(),
                  std::string("shellhost: the module has no command ") + command + "\n");
    }
    EXPECT_FALSE(converter_.WasRun());
}

TEST_F(MenuCommands, InvokeTakesTheSecondCommand) {
    EXPECT_EQ(Run({L"invoke", L"Edit_IDTag", L"C:\\a.mp3"}), ExitDone);
    EXPECT_EQ(Run({L"invoke", L"1", L"C:\\a.mp3"}), ExitDone);
}

TEST_F(MenuCommands, TooFewArgumentsAreAnsweredWithTheUsage) {
    EXPECT_EQ(Run({L"menu"}), ExitUsage);
    EXPECT_EQ(Run({L"invoke"}), ExitUsage);
    EXPECT_EQ(Run({L"invoke", L"Convert_To"}), ExitUsage);
    EXPECT_NE(errors_.Text().find("invoke VERB FILE..."), std::string::npos);
}
