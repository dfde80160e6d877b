// What a commit asks of the tag program, and what it tells.
#include "foundation/nfile.h"
#include "tagpage/combined_set.h"
#include "tagpage/genre_list.h"
#include "tests/audiopage/watched_calls.h"
#include "tests/support/message_box_driver.h"
#include "tests/tagpage/tag_page_fixture.h"
#include "tests/tagpage/watched_shell.h"

#include <shlobj.h>

namespace {
class Commit : public TagPageTest {
protected:
    // Reads all files, and forgets that.
    void Open() {
        window_.OpenAndRead();
        tags_.ForgetRequests();
        TakeShellChanges();
        TakeBoxCalls();
    }
    void OpenOne(std::initializer_list<TagText> elements) {
        AddFile(A, elements);
        Open();
    }
    void OpenTwo(std::initializer_list<TagText> first, std::initializer_list<TagText> second) {
        AddFile(A, first);
        AddFile(B, second);
        Open();
    }
    void Type(const wchar_t* name, const wchar_t* value) { window_.Type(name, value); }
    void Remove(const wchar_t* name) {
        List().Select(window_.RowOf(name));
        Page().cmdRemove.OnClick(false);
    }
    // Lines of `genres.txt`, which has one already.
    void KnowGenre(const wchar_t* genre) {
        NFile file(GenreFilePath(), GENERIC_WRITE, CREATE_ALWAYS, false, true);
        ASSERT_TRUE(file.IsOpen());
        file.WriteString(genre, true);
    }
    static Texts Genres() {
        NFile file(GenreFilePath(), GENERIC_READ, OPEN_EXISTING, false, true);
        Texts lines;
        for (NString line; file.ReadLine(line, true);)
            lines.push_back(line.Text);
        return lines;
    }

    const Texts justRead_ = {L"read"};
};
} // namespace

// What is asked.

TEST_F(Commit, WithoutEditsReadsEachFileOnceAndNothingElse) {
    OpenTwo({{L"Title", L"One"}, {L"rating", L"7"}}, {{L"Album", L"Two"}});
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), justRead_);
    EXPECT_EQ(tags_.Asked(B), justRead_);
    EXPECT_EQ(tags_.Requests().size(), 2u);
    EXPECT_EQ(TakeShellChanges().size(), 0u);
    EXPECT_EQ(TakeBoxCalls().size(), 0u);
}

TEST_F(Commit, AValueForAllIsWrittenWhereItIsNew) {
    AddFile(A, {{L"Album", L"Old"}});
    AddFile(B, {{L"Album", L"New"}});
    AddFile(C);
    Open();
    Type(L"Album", L"New");
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), (Texts{L"read", L"set Album=New"}));
    EXPECT_EQ(tags_.Asked(B), justRead_);
    EXPECT_EQ(tags_.Asked(C), (Texts{L"read", L"set Album=New"}));
    EXPECT_EQ(tags_.Count(TagRequestKind::Set), 2);
    EXPECT_EQ(tags_.ValueOf(C, L"Album"), L"New");
}

TEST_F(Commit, ARowThatReadsDifferentIsWrittenNowhere) {
    OpenTwo({{L"Title", L"One"}}, {{L"Title", L"Two"}, {L"mood", L"glad"}});
    window_.Apply();
    EXPECT_EQ(tags_.Count(TagRequestKind::Set), 0);
    EXPECT_EQ(tags_.ValueOf(A, L"mood"), L"(none)");
}

TEST_F(Commit, AValueInOtherCapitalsIsWritten) {
    OpenOne({{L"Title", L"One"}});
    Type(L"Title", L"one");
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), (Texts{L"read", L"set Title=one"}));
}

TEST_F(Commit, ARatingThatTheFileHasIsNotWritten) {
    OpenOne({{L"Rating", L"7"}});
    Type(L"Rating", L"3.5");
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), justRead_);
}

TEST_F(Commit, ARatingIsWrittenInHalfSteps) {
    OpenOne({{L"Rating", L"7"}});
    Type(L"Rating", L"4");
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), (Texts{L"read", L"set Rating=8"}));
}

TEST_F(Commit, AnEmptiedRowRemovesNothing) {
    OpenTwo({{L"Title", L"Same"}}, {{L"Title", L"Same"}});
    Type(L"Title", L"");
    window_.Apply();
    Page().cmdViewSingle.OnClick(false);
    Type(L"Title", L"");
    window_.Apply();
    EXPECT_EQ(tags_.Count(TagRequestKind::Set), 0);
    EXPECT_EQ(tags_.Count(TagRequestKind::Delete), 0);
    EXPECT_EQ(tags_.ValueOf(A, L"Title"), L"Same");
}

TEST_F(Commit, ClearDeletesTheWholeTagOfEachFile) {
    OpenTwo({{L"Title", L"One"}}, {{L"Album", L"Two"}});
    Page().cmdClear.OnClick(false);
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), (Texts{L"delete all", L"read"}));
    EXPECT_EQ(tags_.Asked(B), (Texts{L"delete all", L"read"}));
    EXPECT_EQ(tags_.ValueOf(A, L"Title"), L"(none)");
}

TEST_F(Commit, DeletesBeforeItReadsAndWrites) {
    OpenOne({{L"Title", L"One"}, {L"Album", L"Two"}});
    Page().cmdClear.OnClick(false);
    Type(L"Title", L"New");
    Type(L"Album", L"x");
    Remove(L"Album");
    Remove(L"Year");
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A),
              (Texts{L"delete all", L"delete Album|Year", L"read", L"set Title=New"}));
}

TEST_F(Commit, RemoveForAllDeletesInEachFile) {
    OpenTwo({{L"Album", L"One"}}, {{L"Title", L"Two"}});
    Remove(L"Album");
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), (Texts{L"delete Album", L"read"}));
    EXPECT_EQ(tags_.Asked(B), (Texts{L"delete Album", L"read"}));
}

TEST_F(Commit, AnElementThatWasRemovedAndTypedAgainIsWritten) {
    OpenOne({{L"Title", L"One"}});
    Remove(L"Title");
    Page().RefreshView();
    Page().StoreEdits();
    Page().RefreshView();
    Type(L"Title", L"One");
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), (Texts{L"delete Title", L"read", L"set Title=One"}));
}

TEST_F(Commit, ASecondOneWritesNothing) {
    OpenTwo({{L"Title", L"One"}}, {{L"Title", L"Two"}, {L"rating", L"7"}});
    Type(L"Title", L"New");
    Remove(L"rating");
    window_.Apply();
    tags_.ForgetRequests();
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), justRead_);
    EXPECT_EQ(tags_.Asked(B), justRead_);
}

TEST_F(Commit, LeavesTheRowsAsTheyAre) {
    OpenTwo({{L"Title", L"One"}}, {{L"Title", L"Two"}});
    Type(L"Album", L"New");
    window_.Apply();
    EXPECT_EQ(window_.Row(L"Album").value, L"New");
    EXPECT_EQ(window_.Row(L"Title").value, L"<different>");
}

TEST_F(Commit, AValueThatIsStillTypedIsWritten) {
    OpenOne({});
    Type(L"Genre", L"Zydeco");
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), (Texts{L"read", L"set Genre=Zydeco"}));
}

TEST_F(Commit, WritesEditsOfFilesThatAreNotShown) {
    OpenTwo({{L"Title", L"One"}}, {{L"Title", L"Two"}});
    Page().cmdViewSingle.OnClick(false);
    Type(L"Title", L"1");
    Page().cmdSkipNext.OnClick(false);
    Type(L"Title", L"2");
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), (Texts{L"read", L"set Title=1"}));
    EXPECT_EQ(tags_.Asked(B), (Texts{L"read", L"set Title=2"}));
}

TEST_F(Commit, AnUntouchedPictureIsNotWritten) {
    clTagRecord tag;
    tag.AddData(L"_albumart_1_Front", "bytes", 5);
    AddFile(A, tag);
    Open();
    Type(L"Title", L"New");
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), (Texts{L"read", L"set Title=New"}));
}

TEST_F(Commit, APictureUnderANewNameIsWritten) {
    clTagRecord tag;
    tag.AddData(L"_albumart_2", "bytes", 5);
    AddFile(A, tag);
    Open();
    TagsOf(A)[0]->Name = L"_albumart_1";
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), (Texts{L"read", L"set _albumart_1[5]"}));
}

TEST_F(Commit, TheFramesOkAsksForIt) {
    OpenOne({});
    Type(L"Title", L"One");
    window_.Send(WM_COMMAND, MAKEWPARAM(IDOK, 0x1234));
    EXPECT_EQ(tags_.Asked(A), (Texts{L"read", L"set Title=One"}));
}

TEST_F(Commit, OtherCommandsDoNotAskForIt) {
    OpenOne({});
    window_.Send(WM_COMMAND, IDCANCEL);
    window_.Send(WM_COMMAND, MAKEWPARAM(2, IDOK));
    window_.Send(WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(List().listBox));
    window_.Notify(static_cast<UINT>(PSN_SETACTIVE));
    window_.Notify(static_cast<UINT>(PSN_RESET));
    EXPECT_EQ(tags_.Requests().size(), 0u);
}

// What goes wrong.

TEST_F(Commit, FailedWritesAreToldInOneBox) {
    AddFile(A);
    AddFile(B);
    AddFile(C);
    Open();
    tags_.RefuseToStart(TagRequestKind::Set, A);
    tags_.RefuseToStart(TagRequestKind::Set, C);
    Type(L"Title", L"New");
    MessageBoxDriver driver;
    window_.Apply();
    ASSERT_EQ(driver.Boxes().size(), 1u);
    EXPECT_EQ(driver.Boxes()[0].text,
              L"Unable to write ID Tags for:\r\n\r\n  C:\\a.mp3\r\n  C:\\c.mp3");
    EXPECT_EQ(driver.Boxes()[0].caption, L"Tonewright");
    EXPECT_EQ(driver.Boxes()[0].type, UINT{MB_ICONERROR});
    const std::vector<BoxCall> calls = TakeBoxCalls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].owner, nullptr);
    EXPECT_EQ(calls[0].type, UINT{MB_ICONERROR | MB_TOPMOST});
    EXPECT_EQ(tags_.Asked(B), (Texts{L"read", L"set Title=New"}));
}

TEST_F(Commit, WhatIsRemovedWhileTheBoxIsUpIsDeletedAtTheNext) {
    AddFile(A, {{L"Artist", L"Old"}, {L"Title", L"One"}});
    window_.OpenAndRead();
    tags_.RefuseToStart(TagRequestKind::Set, A);
    window_.Type(L"Title", L"New");
    MessageBoxDriver driver;
    driver.beforeAnswer = [this](size_t) {
        List().Select(window_.RowOf(L"Artist"));
        Page().cmdRemove.OnClick(false);
    };
    window_.Apply();
    ASSERT_EQ(driver.Boxes().size(), 1u);
    EXPECT_EQ(tags_.Count(TagRequestKind::Delete), 0);
    driver.beforeAnswer = [](size_t) {};
    window_.Apply();
    EXPECT_EQ(tags_.Count(TagRequestKind::Delete), 1);
    EXPECT_EQ(tags_.ValueOf(A, L"Artist"), L"(none)");
}

TEST_F(Commit, AFileThatCannotBeReadGetsAllElements) {
    OpenOne({{L"Title", L"One"}, {L"mood", L"glad"}});
    tags_.SetNoReply(A);
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), (Texts{L"read", L"set Title=One|mood=glad"}));
}

TEST_F(Commit, ADeletionThatFailsIsNotTold) {
    OpenOne({{L"Title", L"One"}});
    tags_.Fail(TagRequestKind::Delete, A);
    Remove(L"Title");
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), (Texts{L"delete Title", L"read"}));
    EXPECT_EQ(tags_.ValueOf(A, L"Title"), L"One");
    EXPECT_EQ(TakeBoxCalls().size(), 0u);
}

TEST_F(Commit, ADeletionThatCannotStartIsNotTold) {
    OpenOne({{L"Title", L"One"}});
    tags_.RefuseToStart(TagRequestKind::Delete, A);
    Remove(L"Title");
    window_.Apply();
    EXPECT_EQ(tags_.CountRefused(), 1);
    EXPECT_EQ(TakeBoxCalls().size(), 0u);
}

// The exit code is not looked at.
TEST_F(Commit, AProgramThatStartsAndFailsIsNotTold) {
    OpenOne({});
    tags_.Fail(TagRequestKind::Set, A);
    Type(L"Title", L"One");
    window_.Apply();
    EXPECT_EQ(TakeBoxCalls().size(), 0u);
    EXPECT_EQ(TakeShellChanges().size(), 1u);
}

TEST_F(Commit, DeletionsAreNotTriedAgain) {
    OpenTwo({{L"Title", L"One"}}, {{L"Title", L"Two"}});
    tags_.Fail(TagRequestKind::Delete, A);
    Page().cmdClear.OnClick(false);
    Remove(L"Title");
    window_.Apply();
    for (int index = 0; index < Page().TagSets.Count(); ++index) {
        EXPECT_EQ(Page().TagSets[index]->DeleteAll, 0) << index;
        EXPECT_EQ(Page().TagSets[index]->DeleteNames.Count, 0) << index;
    }
    tags_.ForgetRequests();
    window_.Apply();
    EXPECT_EQ(tags_.Count(TagRequestKind::Delete), 0);
}

TEST_F(Commit, GarbageInPlaceOfTheTagIsAnEmptyFile) {
    OpenOne({{L"Title", L"One"}});
    tags_.SetReply(A, {'x', 'y', 'z'});
    window_.Apply();
    EXPECT_EQ(tags_.Asked(A), (Texts{L"read", L"set Title=One"}));
}

// Whom it tells.

TEST_F(Commit, TheShellHearsOfWrittenFilesAlone) {
    OpenTwo({{L"Title", L"New"}}, {});
    Type(L"Title", L"New");
    window_.Apply();
    const std::vector<ShellChange> changes = TakeShellChanges();
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_EQ(changes[0].event, SHCNE_UPDATEITEM);
    EXPECT_EQ(changes[0].flags, UINT{SHCNF_PATHW});
    EXPECT_EQ(changes[0].path, B);
    EXPECT_EQ(changes[0].second, nullptr);
}

TEST_F(Commit, TheShellHearsOfFailedWritesToo) {
    OpenOne({});
    tags_.RefuseToStart(TagRequestKind::Set, A);
    Type(L"Title", L"New");
    MessageBoxDriver driver;
    window_.Apply();
    EXPECT_EQ(TakeShellChanges().size(), 1u);
}

TEST_F(Commit, TheCursorWaits) {
    OpenOne({});
    TakeShownCursors();
    Page().Commit();
    const std::vector<HCURSOR> shown = TakeShownCursors();
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0], LoadCursorW(nullptr, IDC_WAIT));
    EXPECT_EQ(shown[1], LoadCursorW(nullptr, IDC_ARROW));
}

// Genres.

TEST_F(Commit, ATypedGenreIsLearned) {
    OpenOne({});
    KnowGenre(L"Rock");
    Type(L"Genre", L"Zydeco");
    window_.Apply();
    EXPECT_EQ(Genres(), (Texts{L"Rock", L"Zydeco"}));
}

TEST_F(Commit, ALearnedGenreIsOfferedOnceTheRowsAreBuiltAnew) {
    OpenOne({});
    Type(L"Genre", L"Zydeco");
    window_.Apply();
    Page().BuildRows();
    EXPECT_TRUE(window_.Row(L"Genre").choices.Contains(L"Zydeco"));
}

TEST_F(Commit, AGenreThatIsKnownInOtherCapitalsIsNotLearned) {
    OpenOne({{L"GENRE", L"rOCK"}});
    KnowGenre(L"Rock");
    window_.Apply();
    EXPECT_EQ(Genres(), Texts{L"Rock"});
}

TEST_F(Commit, TheMarkIsLearnedOnce) {
    OpenTwo({{L"Genre", L"Rock"}}, {{L"Genre", L"Pop"}});
    KnowGenre(L"Rock");
    window_.Apply();
    window_.Apply();
    EXPECT_EQ(Genres(), (Texts{L"Rock", L"<different>"}));
}

TEST_F(Commit, AGenreOfPartsIsOneLine) {
    OpenOne({{L"Genre", L"Zydeco\rCajun"}});
    KnowGenre(L"Rock");
    window_.Apply();
    EXPECT_EQ(Genres(), (Texts{L"Rock", L"Zydeco; Cajun"}));
}

TEST_F(Commit, AnEmptyGenreIsNotLearned) {
    OpenOne({{L"Title", L"One"}});
    KnowGenre(L"Rock");
    window_.Apply();
    EXPECT_EQ(Genres(), Texts{L"Rock"});
}

TEST_F(Commit, AGenreOfAnotherFileIsNotLearned) {
    OpenTwo({}, {});
    KnowGenre(L"Rock");
    Page().cmdViewSingle.OnClick(false);
    Type(L"Genre", L"Zydeco");
    Page().cmdSkipNext.OnClick(false);
    window_.Apply();
    EXPECT_EQ(tags_.ValueOf(A, L"Genre"), L"Zydeco");
    EXPECT_EQ(Genres(), Texts{L"Rock"});
}

TEST_F(Commit, AGenreInAnAddedRowIsNotLearned) {
    OpenOne({});
    KnowGenre(L"Rock");
    Remove(L"Genre");
    Page().cmdAdd.OnClick(false);
    window_.TypeInEditor(L"Genre");
    List().EndEdit(true);
    window_.TypeInEditor(L"Zydeco");
    window_.Apply();
    EXPECT_EQ(window_.Row(L"Genre").value, L"Zydeco");
    EXPECT_EQ(Genres(), Texts{L"Rock"});
}

TEST_F(Commit, GenresThatCannotBeOpenedAreNotTold) {
    OpenOne({});
    KnowGenre(L"Rock");
    Type(L"Genre", L"Zydeco");
    {
        NFile held(GenreFilePath(), GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING, false, false);
        ASSERT_TRUE(held.IsOpen());
        window_.Apply();
    }
    EXPECT_EQ(Genres(), Texts{L"Rock"});
    EXPECT_EQ(TakeBoxCalls().size(), 0u);
    EXPECT_EQ(tags_.ValueOf(A, L"Genre"), L"Zydeco");
}
