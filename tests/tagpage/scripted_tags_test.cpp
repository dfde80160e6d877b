// The tests' own tag program answers as it is told, and tells what it was asked.
#include "codec/tag_exchange.h"
#include "foundation/nprocess.h"
#include "tests/tagpage/scripted_tags.h"

#include <gtest/gtest.h>

#include <thread>

namespace {
using Texts = ScriptedTags::Texts;

const wchar_t One[] = L"C:\\Music\\Bj\u00F6rk \u4E2D.mp3";
const wchar_t Two[] = L"C:\\Music\\two.mp3";

// The elements that a read yields; L"(empty)" if it yields no reply.
Texts Read(const wchar_t* path) {
    NBuffer reply;
    RunGetAudioInf(path, reply);
    if (reply.Size == 0)
        return {L"(empty)"};
    clTagRecord tag;
    tag.Deserialise(reply.Data, static_cast<int>(reply.Size));
    Texts elements;
    for (int index = 0; index < tag.Count(); ++index)
        elements.push_back(std::wstring(tag[index]->Name.c_str()) + L"=" +
                           tag[index]->Value.c_str());
    return elements;
}

bool Set(const wchar_t* path, const wchar_t* name, const wchar_t* value) {
    clTagRecord tag;
    tag.Add(name, value);
    return RunSetTags(path, tag);
}

void Delete(const wchar_t* path, std::initializer_list<const wchar_t*> names) {
    NStringList list;
    for (const wchar_t* name : names)
        list.Add(name);
    RunDelTagElements(path, list);
}

void ExpectReply(const ScriptedTags::Bytes& reply, const Texts& elements) {
    ScriptedTags tags;
    tags.SetReply(One, reply);
    EXPECT_EQ(Read(One), elements);
}

clTagRecord& ATag() {
    static clTagRecord tag;
    tag.Clear();
    tag.Add(L"title", L"A");
    tag.Add(L"album", L"B");
    return tag;
}

// Each of these holds for programs of their own and for ones in this process.
class ScriptedTagsBoth : public testing::TestWithParam<bool> {
protected:
    ScriptedTagsBoth() {
        if (GetParam())
            tags_.RunInProcess();
    }

    ScriptedTags tags_;
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Ways, ScriptedTagsBoth, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& way) {
                             return way.param ? "InThisProcess" : "AsPrograms";
                         });

TEST_P(ScriptedTagsBoth, APathThatNobodyToldOfHasNoReply) {
    EXPECT_EQ(Read(One), Texts{L"(empty)"});
    EXPECT_EQ(tags_.Asked(One), Texts{L"read"});
}

TEST_P(ScriptedTagsBoth, EachPathHasATagOfItsOwn) {
    tags_.SetTag(One, {{L"title", L"First"}, {L"artist", L"\u00C4"}});
    tags_.SetTag(Two, {{L"title", L"Second"}});
    EXPECT_EQ(Read(One), (Texts{L"title=First", L"artist=\u00C4"}));
    EXPECT_EQ(Read(Two), Texts{L"title=Second"});
}

TEST_P(ScriptedTagsBoth, WhatWasSetAndDeletedIsReadLater) {
    tags_.SetTag(One, {{L"title", L"First"}, {L"artist", L"A"}, {L"album", L"B"}});
    EXPECT_TRUE(Set(One, L"title", L"Changed"));
    EXPECT_TRUE(Set(One, L"year", L"1999"));
    Delete(One, {L"ARTIST", L"not there"});
    EXPECT_EQ(Read(One), (Texts{L"title=Changed", L"album=B", L"year=1999"}));
    EXPECT_EQ(tags_.ValueOf(One, L"year"), L"1999");
    EXPECT_EQ(tags_.ValueOf(One, L"artist"), L"(none)");
    Delete(One, {});
    EXPECT_EQ(Read(One), Texts());
}

TEST_P(ScriptedTagsBoth, WhatWasSetIsForgottenIfTheTestWantsThat) {
    tags_.SetTag(One, {{L"title", L"First"}}, ScriptedTags::Changes::Forgotten);
    Set(One, L"title", L"Changed");
    Delete(One, {});
    EXPECT_EQ(Read(One), Texts{L"title=First"});
}

TEST_P(ScriptedTagsBoth, AllRequestsAreKnownInTurn) {
    tags_.SetTag(One, {{L"title", L"First"}});
    Read(One);
    Set(Two, L"title", L"New");
    Delete(One, {L"a", L"b"});
    Delete(Two, {});
    const std::vector<TagRequest> requests = tags_.Requests();
    Texts texts;
    for (const TagRequest& request : requests)
        texts.push_back(request.Text() + L": " + request.path);
    EXPECT_EQ(texts,
              (Texts{std::wstring(L"read: ") + One, std::wstring(L"set title=New: ") + Two,
                     std::wstring(L"delete a|b: ") + One, std::wstring(L"delete all: ") + Two}));
    ASSERT_EQ(requests.size(), 4u);
    for (size_t index = 1; index < 4; ++index)
        EXPECT_LT(requests[index - 1].time, requests[index].time);
    EXPECT_EQ(requests[0].bytes.size(), 2 * wcslen(One));
    EXPECT_EQ(tags_.Count(TagRequestKind::Delete), 2);
    EXPECT_EQ(tags_.Count(TagRequestKind::Set, One), 0);
    EXPECT_EQ(tags_.Count(TagRequestKind::Set, Two), 1);
}

TEST_P(ScriptedTagsBoth, RequestsCanBeForgotten) {
    Read(One);
    Read(Two);
    tags_.ForgetRequests();
    EXPECT_TRUE(tags_.Requests().empty());
    Read(Two);
    EXPECT_EQ(tags_.Asked(Two), Texts{L"read"});
    EXPECT_TRUE(tags_.WaitForEnds(1));
}

TEST_P(ScriptedTagsBoth, ElementsWithDataKeepTheirBytes) {
    tags_.SetTag(One, {});
    clTagRecord changes;
    changes.AddData(L"_albumart_1", "\1\2\3", 3);
    RunSetTags(One, changes);
    EXPECT_EQ(tags_.Asked(One), Texts{L"set _albumart_1[3]"});
    EXPECT_EQ(tags_.Requests()[0].elements[0].data, (ScriptedTags::Bytes{1, 2, 3}));
    clTagRecord tag;
    tags_.GetTag(One, tag);
    ASSERT_EQ(tag.Count(), 1);
    EXPECT_EQ(tag[0]->Data.Size, 3u);
}

TEST_P(ScriptedTagsBoth, AProgramThatCannotBeStartedIsNoRequest) {
    tags_.SetTag(One, {{L"title", L"First"}});
    tags_.RefuseToStart(TagRequestKind::Set, One);
    EXPECT_EQ(Read(One), Texts{L"title=First"});
    EXPECT_FALSE(Set(One, L"title", L"Changed"));
    EXPECT_TRUE(Set(Two, L"title", L"Changed"));
    EXPECT_EQ(tags_.CountRefused(), 1);
    EXPECT_EQ(tags_.Asked(One), Texts{L"read"});
    EXPECT_EQ(tags_.ValueOf(One, L"title"), L"First");
}

TEST_P(ScriptedTagsBoth, AProgramThatFailsChangesNothing) {
    tags_.SetTag(One, {{L"title", L"First"}});
    tags_.Fail(TagRequestKind::Set, One);
    tags_.Fail(TagRequestKind::Delete, One);
    EXPECT_TRUE(Set(One, L"title", L"Changed")); // it was started, and that is all that counts
    Delete(One, {});
    EXPECT_EQ(Read(One), Texts{L"title=First"});
    tags_.Fail(TagRequestKind::Read, One);
    EXPECT_EQ(Read(One), Texts{L"(empty)"});
}

TEST_P(ScriptedTagsBoth, AProgramThatDiesLeavesHalfAReply) {
    tags_.SetTag(One, {{L"title", L"First"}, {L"album", L"A long name of an album"}});
    tags_.Die(TagRequestKind::Set, One);
    Set(One, L"title", L"Changed");
    EXPECT_EQ(tags_.ValueOf(One, L"title"), L"First");
    tags_.Die(TagRequestKind::Read, One);
    EXPECT_NE(Read(One), (Texts{L"title=First", L"album=A long name of an album"}));
    EXPECT_EQ(tags_.Asked(One), (Texts{L"set title=Changed", L"read"}));
}

TEST_P(ScriptedTagsBoth, ARequestWaitsUntilItIsReleased) {
    tags_.SetTag(One, {{L"title", L"First"}});
    tags_.Hold(TagRequestKind::Read, One);
    Texts seen;
    std::thread reader([&] { seen = Read(One); });
    EXPECT_TRUE(tags_.WaitForRequests(1));
    EXPECT_TRUE(Set(One, L"title", L"Meanwhile"));
    tags_.Release(TagRequestKind::Read, One);
    reader.join();
    EXPECT_EQ(seen, Texts{L"title=Meanwhile"});
    EXPECT_EQ(Read(One), Texts{L"title=Meanwhile"});
}

TEST(ScriptedTags, WhatIsHeldAtTheEndIsReleased) {
    Texts seen;
    std::thread reader;
    {
        ScriptedTags tags;
        tags.SetTag(One, {{L"title", L"First"}});
        tags.Hold(TagRequestKind::Read, One);
        reader = std::thread([&] { seen = Read(One); });
        EXPECT_TRUE(tags.WaitForRequests(1));
    }
    reader.join();
    EXPECT_EQ(seen, Texts{L"title=First"});
}

TEST(ScriptedTags, AWholeReplyIsTheTag) {
    ExpectReply(ScriptedTags::WholeReply(ATag()), {L"title=A", L"album=B"});
}

TEST(ScriptedTags, AReplyOfAWrongMagicIsNone) {
    ExpectReply(ScriptedTags::ReplyOfWrongMagic(ATag()), {L"(empty)"});
}

TEST(ScriptedTags, ATruncatedReplyHoldsItsFirstElements) {
    // The count, and the first block: its size, "title" and "A". The rest reads
    // as zeros, which make an element without a name.
    ExpectReply(ScriptedTags::TruncatedReply(ATag(), 4 + 4 + 12 + 4), {L"title=A", L"="});
}

TEST(ScriptedTags, AReplyOfOtherBytesIsNone) {
    ExpectReply({'g', 'a', 'r', 'b', 'a', 'g', 'e', 0, 1, 2}, {L"(empty)"});
}

TEST(ScriptedTags, ANoReplyTakesATagBack) {
    ScriptedTags tags;
    tags.SetTag(One, {{L"title", L"First"}});
    tags.SetNoReply(One);
    EXPECT_EQ(Read(One), Texts{L"(empty)"});
}

TEST(ScriptedTags, AnotherProgramIsStartedAsEver) {
    ScriptedTags tags;
    tags.RunInProcess();
    EXPECT_FALSE(NRunProgram(L"C:\\not there.exe", L"", true, 0, false, 0));
    EXPECT_EQ(tags.CountRefused(), 0);
    EXPECT_TRUE(tags.Requests().empty());
}
