#include "suite/tagmap/wav_file_tags.h"
#include "tests/tagmap/file_to_save.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace tagmap {
namespace {

using Entries = std::vector<std::pair<std::string, std::string>>; // id and bytes

std::string Chunk(const std::string& id, const std::string& data) {
    return id + LittleEndian(data.size()) + data + std::string(data.size() % 2, '\0');
}

// Texts with their zero byte.
std::string Info(const Entries& entries) {
    std::string list = "INFO";
    for (const auto& [id, text] : entries)
        list += Chunk(id, text + std::string(1, '\0'));
    return Chunk("LIST", list);
}

// A chunk with a title in ID3v2.3, Latin-1.
std::string Id3(const std::string& title) {
    const std::string frame = "TIT2" + BigEndian(title.size() + 1) + std::string(3, '\0') + title;
    return Chunk("id3 ", std::string("ID3\3\0\0", 6) + BigEndian(frame.size()) + frame);
}

// 1 channel of 16 bits at 44100 Hz, and some silence.
std::string WavWith(const std::string& chunks) {
    const std::string format("\1\0\1\0\104\254\0\0\210\130\1\0\2\0\20\0", 16);
    const std::string body =
        "WAVE" + Chunk("fmt ", format) + Chunk("data", std::string(64, '\0')) + chunks;
    return Chunk("RIFF", body);
}

bool HasId3(const FileToSave& file) {
    return file.Contains("ID3\3");
}
bool HasInfo(const FileToSave& file) {
    return file.Contains("INFO");
}

// "genre" that is a number reads as a name in ID3v2.
constexpr wchar_t NumberGenre[] = L"17";
constexpr wchar_t HalfPair[] = L"half \xD83C pair";

} // namespace

TEST(WavFileTags, AnInfoListAloneStaysAlone) {
    FileToSave file(WavWith(Info({{"INAM", "old"}, {"ISBJ", "subject"}})));
    ASSERT_EQ(file.Set(L"title", L"new"), Outcome::Done);
    EXPECT_EQ(file.Content(), WavWith(Info({{"INAM", "new"}, {"ISBJ", "subject"}})));
}

TEST(WavFileTags, AnId3ChunkAloneStaysAlone) {
    FileToSave file(WavWith(Id3("old")));
    ASSERT_EQ(file.Set(L"title", L"new"), Outcome::Done);
    EXPECT_EQ(file.Value(L"title"), L"new");
    EXPECT_TRUE(HasId3(file));
    EXPECT_FALSE(HasInfo(file));
}

TEST(WavFileTags, BothChangeInStep) {
    FileToSave file(WavWith(Id3("old") + Info({{"INAM", "old"}, {"ISBJ", "subject"}})));
    ASSERT_EQ(file.Set(L"title", L"new"), Outcome::Done);
    EXPECT_EQ(file.Value(L"title"), L"new");
    EXPECT_TRUE(file.Contains(Info({{"INAM", "new"}, {"ISBJ", "subject"}})));
    NStringList title;
    title.Add(L"title");
    ASSERT_EQ(DeleteTags(file.Path().c_str(), title), Outcome::Done);
    EXPECT_EQ(file.Value(L"title"), Absent);
    EXPECT_TRUE(file.Contains(Info({{"ISBJ", "subject"}})));
}

TEST(WavFileTags, WhatTheChunkRefusesReachesNoList) {
    FileToSave file(WavWith(Id3("old") + Info({{"INAM", "old"}, {"IGNR", "Rock"}})));
    clTagRecord changes;
    changes.Add(L"title", L"new");
    changes.Add(L"genre", NumberGenre);
    changes.Add(L"artist", HalfPair);
    changes.Add(L"album", L"\r\r");
    ASSERT_EQ(file.Set(changes), Outcome::Done);
    EXPECT_EQ(file.Refused(), L"genre|artist|album");
    EXPECT_TRUE(file.Contains(Info({{"IGNR", "Rock"}, {"INAM", "new"}})));
    EXPECT_EQ(file.Value(L"title"), L"new");
}

TEST(WavFileTags, AFileWithNeitherGetsBoth) {
    FileToSave file(WavWith(""));
    clTagRecord changes;
    changes.Add(L"title", L"new");
    changes.Add(L"genre", NumberGenre);
    ASSERT_EQ(file.Set(changes), Outcome::Done);
    EXPECT_EQ(file.Refused(), L"genre");
    EXPECT_TRUE(HasId3(file));
    EXPECT_TRUE(file.Contains(Info({{"INAM", "new"}})));
}

TEST(WavFileTags, AListAloneHoldsWhatAChunkWouldRefuse) {
    FileToSave file(WavWith(Info({{"INAM", "old"}})));
    ASSERT_EQ(file.Set(L"genre", NumberGenre), Outcome::Done);
    EXPECT_EQ(file.Refused(), L"");
    EXPECT_EQ(file.Content(), WavWith(Info({{"IGNR", "17"}, {"INAM", "old"}})));
}

TEST(WavFileTags, WhatAListCannotHoldMakesAChunk) {
    FileToSave file(WavWith(Info({{"INAM", "old"}})));
    clTagRecord changes;
    changes.Add(L"title", L"new");
    changes.Add(L"mood", L"calm");
    ASSERT_EQ(file.Set(changes), Outcome::Done);
    EXPECT_EQ(file.Refused(), L"");
    EXPECT_EQ(file.Value(L"mood"), L"calm");
    EXPECT_EQ(file.Value(L"title"), L"new");
    EXPECT_TRUE(HasId3(file));
    EXPECT_TRUE(file.Contains(Info({{"INAM", "new"}})));
}

TEST(WavFileTags, AChunkThatIsMadeGetsAllThatTheListShows) {
    FileToSave file(WavWith(Info({{"IART", "artist"}, {"ISBJ", "subject"}})));
    ASSERT_EQ(file.Set(L"mood", L"calm"), Outcome::Done);
    const std::string content = file.Content();
    const size_t chunk = content.find("ID3 ");
    ASSERT_NE(chunk, std::string::npos);
    EXPECT_NE(content.find("TPE1", chunk), std::string::npos);
    EXPECT_TRUE(file.Contains(Info({{"IART", "artist"}, {"ISBJ", "subject"}})));
}

TEST(WavFileTags, AChunkThatIsMadeGetsNoTextThatIsNoUtf8) {
    const std::string artist("\xC0\xF0\xF2\xE8\xF1\xF2"); // Cyrillic, as Windows writes it
    const std::string list = Info({{"IART", artist}, {"IPRD", "\xC3\x84lbum"}});
    FileToSave file(WavWith(list));
    ASSERT_EQ(file.Set(L"mood", L"calm"), Outcome::Done);
    const std::string content = file.Content();
    const size_t chunk = content.find("ID3 ");
    ASSERT_NE(chunk, std::string::npos);
    EXPECT_EQ(content.find("TPE1", chunk), std::string::npos);
    EXPECT_NE(content.find("TALB", chunk), std::string::npos);
    EXPECT_TRUE(file.Contains(list));
    EXPECT_EQ(file.Value(L"artist"), L"\u00C0\u00F0\u00F2\u00E8\u00F1\u00F2");
    EXPECT_EQ(file.Value(L"album"), L"\u00C4lbum");
}

TEST(WavFileTags, WhatNeitherHoldsMakesNoChunk) {
    FileToSave file(WavWith(Info({{"INAM", "old"}})));
    clTagRecord changes;
    changes.Add(L"artist", HalfPair);
    changes.Add(L"album", L"\r");
    changes.Add(L"mood", HalfPair);
    changes.Add(L"title", L"new");
    ASSERT_EQ(file.Set(changes), Outcome::Done);
    EXPECT_EQ(file.Refused(), L"artist|album|mood");
    EXPECT_EQ(file.Content(), WavWith(Info({{"INAM", "new"}})));
}

TEST(WavFileTags, AnEntryMakesAListOfItsOwnBesideAChunk) {
    FileToSave file(WavWith(Id3("old")));
    clTagRecord changes;
    changes.Add(L"title", L"new");
    changes.Add(L"_riff_ISRF", L"tape");
    ASSERT_EQ(file.Set(changes), Outcome::Done);
    EXPECT_EQ(file.Refused(), L"");
    EXPECT_TRUE(file.Contains(Info({{"ISRF", "tape"}})));
    EXPECT_FALSE(file.Contains("INAM"));
    EXPECT_EQ(file.Value(L"_riff_ISRF"), L"tape");
    EXPECT_EQ(file.Value(L"title"), L"new");
}

TEST(WavFileTags, AnEntryAloneMakesNoChunk) {
    FileToSave file(WavWith(""));
    ASSERT_EQ(file.Set(L"_riff_ISRF", L"tape"), Outcome::Done);
    EXPECT_EQ(file.Content(), WavWith(Info({{"ISRF", "tape"}})));
}

TEST(WavFileTags, AnEntryThatNoListHoldsIsRefused) {
    FileToSave file(WavWith(Id3("old")));
    ASSERT_EQ(file.Set(L"_riff_INAM", L"x"), Outcome::Done);
    EXPECT_EQ(file.Refused(), L"_riff_INAM");
    ASSERT_EQ(file.Set(L"_riff_ISRF", L""), Outcome::Done);
    EXPECT_EQ(file.Refused(), L"");
    EXPECT_FALSE(HasInfo(file));
}

TEST(WavFileTags, ListsThatTheLibraryDoesNotKeepAreRefused) {
    EXPECT_TRUE(FileToSave(WavWith(Info({{"INAM", "one"}, {"INAM", "two"}}))).IsRefused());
    EXPECT_TRUE(FileToSave(WavWith(Info({{"INAM", "one"}}) + Info({{"IART", "A"}}))).IsRefused());
    EXPECT_TRUE(FileToSave(WavWith(Info({{"INAM", std::string("cut\0rest", 8)}}))).IsRefused());
    EXPECT_TRUE(FileToSave(WavWith(Info({{"I\xC3\xA4M", "invalid id"}}))).IsRefused());
    EXPECT_TRUE(
        FileToSave(WavWith(Chunk("LIST", "INFOINAM" + LittleEndian(99) + "cut"))).IsRefused());
    EXPECT_TRUE(FileToSave(WavWith(Chunk("LIST", "INFOrest"))).IsRefused());
    EXPECT_TRUE(FileToSave(WavWith(Info({{"INAM", "one"}, {"INAM", "one"}}))).IsRefused());
    EXPECT_TRUE(FileToSave(WavWith(Info({{"INAM", "one"}}) + Info({{"INAM", "one"}}))).IsRefused());
    EXPECT_TRUE(FileToSave(WavWith(Chunk("LIST", "INFOINAM" + LittleEndian(99)))).IsRefused());
}

TEST(WavFileTags, OtherListsAndPaddingAreNoHindrance) {
    const std::string labels = Chunk("LIST", "adtllabl");
    const std::string list =
        Chunk("LIST", "INFO" + Chunk("INAM", std::string("T\0\0\0", 4)) +
                          Chunk("IART", std::string(2, '\0')) + std::string(6, '\0'));
    FileToSave file(WavWith(labels + list));
    ASSERT_EQ(file.Set(L"album", L"L"), Outcome::Done);
    EXPECT_EQ(file.Content(), WavWith(labels + Info({{"INAM", "T"}, {"IPRD", "L"}})));
}

TEST(WavFileTags, BytesThatAreNoUtf8StayWhenAnotherElementIsWritten) {
    for (const std::string bytes : {"\xED\xA0\x80", "\xE0\x80\x80", "\xF0\x80\x80\x80",
                                    "\xF4\x90\x80\x80", "M\xFCller", "\xEF\xBF\xBF marked"}) {
        FileToSave file(WavWith(Info({{"IART", bytes}, {"INAM", "old"}})));
        ASSERT_EQ(file.Set(L"title", L"new"), Outcome::Done);
        EXPECT_EQ(file.Content(), WavWith(Info({{"IART", bytes}, {"INAM", "new"}})));
    }
}

} // namespace tagmap
