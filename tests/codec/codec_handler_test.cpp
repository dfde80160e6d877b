#include "codec/codec_handler.h"
#include "foundation/nfilefind.h"
#include "foundation/npath.h"
#include "tests/codec/decoder_search.h"
#include "tests/support/leak_counters.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {
class UnwritableDecoderSearch : public DecoderSearch {
protected:
    UnwritableDecoderSearch() : DecoderSearch(PrivateCurrentUser::Kind::Unwritable) {}
};

// The name of the first value of the cache, as it is spelled there.
std::wstring NameInCache() {
    UniqueRegKey key;
    RegOpenKeyExW(HKEY_CURRENT_USER, DecoderCacheKey, 0, KEY_READ, key.Put());
    wchar_t name[64] = {};
    DWORD length = 64;
    RegEnumValueW(key.Get(), 0, name, &length, nullptr, nullptr, nullptr, nullptr);
    return name;
}
} // namespace

TEST(CodecHandler, HasTwoEmptyTextsInOrder) {
    cltNCodecHandler handler;
    EXPECT_EQ(handler.DecoderPath, L"");
    EXPECT_EQ(handler.Extension, L"");
    EXPECT_EQ(static_cast<void*>(&handler), &handler.DecoderPath);
    EXPECT_EQ(&handler.DecoderPath + 1, &handler.Extension);
    static_assert(sizeof(handler) == 2 * sizeof(NString));
}

TEST(CodecHandler, KeepsItsTableInTheUsersPartOfTheRegistry) {
    EXPECT_STREQ(DecoderCacheKey, L"Software\\Quillmarsh\\Tonewright\\DecoderCache");
}

TEST_F(DecoderSearch, AsksAPluginForItsExtensionsOneByOne) {
    NString path = AddPlugin(L"a.dll", {L".x", L".y", L".z"});
    EXPECT_THAT(CallsOfFind(L"C:\\m\\file.z"),
                ElementsAre(L"a.dll load", L"a.dll create", L"a.dll get 0", L"a.dll get 1",
                            L"a.dll get 2"));
    EXPECT_TRUE(found_);
    EXPECT_NE(decoder_.Handle, nullptr);
    EXPECT_EQ(decoder_.Path, path);
    EXPECT_EQ(decoder_.Extension, L".z");
    EXPECT_EQ(handler_.DecoderPath, path);
    EXPECT_EQ(handler_.Extension, L".z");
    EXPECT_EQ(Cached(L".z"), path);
    EXPECT_EQ(NRegValueType(L".z", HKEY_CURRENT_USER, DecoderCacheKey),
              static_cast<uint32_t>(REG_SZ));
}

TEST_F(DecoderSearch, AsksWithAZeroedRecordThatHoldsTheIndexAlone) {
    AddPlugin(L"a.dll", {L".x", L".y"});
    ASSERT_TRUE(Find(L"file.y"));
    clDecodesInfo expected = {};
    expected.Index = 1;
    EXPECT_EQ(memcmp(script_.record.data(), &expected, sizeof(expected)), 0);
    EXPECT_EQ(script_.record.size(), sizeof(expected));
    EXPECT_EQ(script_.what, L"Decodes");
    EXPECT_EQ(script_.logContext, &context_);
}

TEST_F(DecoderSearch, ComparesExtensionsWithoutRegardToAsciiCaseAlone) {
    AddPlugin(L"a.dll", {L".Fl\u00C4c", L".oGG"});
    EXPECT_TRUE(Find(L"file.OgG"));
    EXPECT_FALSE(Find(L"file.fl\u00E4c"));
}

TEST_F(DecoderSearch, TakesAnExtensionForTheWholeClaimOnly) {
    AddPlugin(L"a.dll", {L".fla", L".flacx", L".", L""});
    EXPECT_FALSE(Find(L"file.flac"));
    EXPECT_EQ(script_.Count(L"a.dll get 4"), 1);
}

TEST_F(DecoderSearch, TakesTheFirstPluginThatTheSystemLists) {
    for (const wchar_t* name : {L"c.dll", L"a.dll", L"b.dll"})
        AddPlugin(name, {L".x"});
    NFileFind find(L"*.dll", NGetFolder(folder_.PathOf(L"")));
    ASSERT_TRUE(find.Next());
    ASSERT_TRUE(Find(L"file.x"));
    EXPECT_EQ(decoder_.Path, find.Path);
    EXPECT_EQ(script_.calls.size(), 3u); // one plug-in was loaded, made and asked
}

TEST_F(DecoderSearch, GoesOnBehindWhatIsNoDecoder) {
    folder_.AddFolder(L"a.dll");
    folder_.AddPlainFile(L"b.dll");
    folder_.Add(L"c.dll", L"plugin_without_DeleteATag.dll");
    script_.claims[L"c.dll"] = {L".x"};
    AddPlugin(L"d.dll", {L".y"});
    AddPlugin(L"e.dll", {L".x"});
    AddPlugin(L"e.dll.old", {L".x"});
    EXPECT_TRUE(Find(L"file.x"));
    EXPECT_EQ(decoder_.Path, folder_.PathOf(L"e.dll"));
    EXPECT_EQ(script_.Count(L"c.dll create"), 0);
    EXPECT_FALSE(Find(L"file.none"));
}

TEST_F(DecoderSearch, FindsNothingWhereAFolderAloneHasTheName) {
    folder_.AddFolder(L"x.dll");
    EXPECT_THAT(CallsOfFind(L"file.x"), IsEmpty());
    ExpectNothingFound();
    EXPECT_EQ(decoder_.Module, nullptr);
}

TEST_F(DecoderSearch, FindsNothingWithoutADecoderFolder) {
    ASSERT_TRUE(RemoveDirectoryW(folder_.PathOf(L"").Text));
    EXPECT_THAT(CallsOfFind(L"file.x"), IsEmpty());
    ExpectNothingFound();
    EXPECT_FALSE(IsCached(L".x"));
}

TEST_F(DecoderSearch, WritesNothingWhenItFindsNothing) {
    AddPlugin(L"a.dll", {L".y"});
    EXPECT_THAT(CallsOfFind(L"file.x"),
                ElementsAre(L"a.dll load", L"a.dll create", L"a.dll get 0", L"a.dll get 1"));
    ExpectNothingFound();
    EXPECT_FALSE(IsCached(L".x"));
    EXPECT_FALSE(IsCached(L".y"));
}

TEST_F(DecoderSearch, LeavesTheLastCandidateAsItStands) {
    AddPlugin(L"a.dll", {L".y"});
    EXPECT_FALSE(Find(L"file.x"));
    EXPECT_NE(decoder_.Module, nullptr);
    EXPECT_NE(decoder_.Handle, nullptr);
    EXPECT_EQ(decoder_.Extension, L".x");
}

// Wanted: the library that a failed search left loaded counts as the loaded one
// of its extension, and the second file is given to it.
TEST_F(DecoderSearch, ReusesTheCandidateThatAFailedSearchLeft) {
    AddPlugin(L"a.dll", {L".y"});
    EXPECT_FALSE(Find(L"first.x"));
    EXPECT_THAT(CallsOfFind(L"second.x"), ElementsAre(L"a.dll destroy", L"a.dll create"));
    EXPECT_TRUE(found_);
    EXPECT_FALSE(IsCached(L".x"));
}

TEST_F(DecoderSearch, LooksUpADotForAFileWithoutAnExtension) {
    AddPlugin(L"a.dll", {L".x", L"."});
    EXPECT_TRUE(Find(L"C:\\folder.x\\file"));
    EXPECT_EQ(decoder_.Extension, L".");
    EXPECT_EQ(script_.Count(L"a.dll get 1"), 1);
    EXPECT_EQ(NameInCache(), L".");
    EXPECT_EQ(Cached(L"."), folder_.PathOf(L"a.dll"));
}

TEST_F(DecoderSearch, AsksForADotEvenWhereNoneIsClaimed) {
    AddPlugin(L"a.dll", {L".x"});
    EXPECT_THAT(CallsOfFind(L"file"),
                ElementsAre(L"a.dll load", L"a.dll create", L"a.dll get 0", L"a.dll get 1"));
    ExpectNothingFound();
}

TEST_F(DecoderSearch, SpellsTheCachedNameAsTheFileDoes) {
    AddPlugin(L"a.dll", {L".flac"});
    ASSERT_TRUE(Find(L"file.FlAc"));
    EXPECT_EQ(NameInCache(), L".FlAc");
    EXPECT_EQ(handler_.Extension, L".FlAc");
}

TEST_F(DecoderSearch, NeedsANewInstanceAloneForTheNextFileOfAKind) {
    AddPlugin(L"a.dll", {L".x"});
    ASSERT_TRUE(Find(L"first.x"));
    ForgetCached(L".x");
    handler_.Extension = L"";
    EXPECT_THAT(CallsOfFind(L"second.X"), ElementsAre(L"a.dll destroy", L"a.dll create"));
    EXPECT_TRUE(found_);
    EXPECT_EQ(decoder_.Extension, L".x");
    EXPECT_EQ(handler_.Extension, L"");
    EXPECT_FALSE(IsCached(L".x"));
}

TEST_F(DecoderSearch, TakesAnExtensionWithoutALibraryForNone) {
    AddPlugin(L"a.dll", {L".x"});
    decoder_.Extension = L".x";
    EXPECT_THAT(CallsOfFind(L"file.x"),
                ElementsAre(L"a.dll load", L"a.dll create", L"a.dll get 0"));
    EXPECT_TRUE(found_);
}

TEST_F(DecoderSearch, DropsTheFormerInstanceEvenWhereThereIsNothingToTry) {
    AddPlugin(L"a.dll", {L".x"});
    ASSERT_TRUE(Find(L"file.x"));
    PluginFolder empty;
    script_.calls.clear();
    EXPECT_FALSE(handler_.FindDecoder(L"file.y", decoder_, &context_, empty.Module()));
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll destroy"));
    EXPECT_EQ(decoder_.Handle, nullptr);
    EXPECT_EQ(decoder_.Extension, L".x");
}

TEST_F(DecoderSearch, FailsOnThatRouteWithoutLookingFurther) {
    AddPlugin(L"a.dll", {L".x"});
    AddPlugin(L"b.dll", {L".x"});
    ASSERT_TRUE(Find(L"first.x"));
    script_.create = [] { return nullptr; };
    CallsOfFind(L"second.x");
    EXPECT_FALSE(found_);
    EXPECT_EQ(decoder_.Handle, nullptr);
    EXPECT_EQ(script_.Count(L"a.dll create") + script_.Count(L"b.dll create"), 1);
}

TEST_F(DecoderSearch, LoadsTheLibraryThatTheHandlerRemembersUnasked) {
    NString path = AddPlugin(L"a.dll", {L".x"});
    ASSERT_TRUE(Find(L"first.x"));
    decoder_.Unload();
    ForgetCached(L".x");
    EXPECT_THAT(CallsOfFind(L"second.X"), ElementsAre(L"a.dll load", L"a.dll create"));
    EXPECT_TRUE(found_);
    EXPECT_EQ(decoder_.Extension, L".X");
    EXPECT_EQ(handler_.Extension, L".X");
    EXPECT_EQ(Cached(L".X"), path);
}

TEST_F(DecoderSearch, HoldsToTheRememberedLibraryEvenIfItIsGone) {
    NString path = AddPlugin(L"a.dll", {L".x"});
    ASSERT_TRUE(Find(L"first.x"));
    decoder_.Unload();
    ForgetCached(L".x");
    ASSERT_TRUE(DeleteFileW(path.Text));
    AddPlugin(L"b.dll", {L".x"});
    EXPECT_THAT(CallsOfFind(L"second.x"), IsEmpty());
    EXPECT_FALSE(found_);
    EXPECT_EQ(handler_.DecoderPath, path);
    EXPECT_EQ(Cached(L".x"), path);
}

TEST_F(DecoderSearch, ReturnsToAFormerExtensionThroughTheRegistry) {
    AddPlugin(L"a.dll", {L".x"});
    AddPlugin(L"b.dll", {L".y"});
    ASSERT_TRUE(Find(L"first.x"));
    ASSERT_TRUE(Find(L"second.y"));
    CallsOfFind(L"third.x");
    EXPECT_TRUE(found_);
    EXPECT_EQ(decoder_.Path, folder_.PathOf(L"a.dll"));
    EXPECT_EQ(script_.Count(L"a.dll get 0"), 1);
    EXPECT_EQ(script_.Count(L"b.dll load"), 0);
}

// Wanted: the check makes an instance, and the step behind it loads the library
// once more and makes another.
TEST_F(DecoderSearch, LoadsALibraryOutOfTheRegistryTwice) {
    NString path = AddPlugin(L"a.dll", {L".x"});
    SetCached(L".x", path);
    EXPECT_THAT(CallsOfFind(L"file.x"),
                ElementsAre(L"a.dll load", L"a.dll create", L"a.dll get 0", L"a.dll destroy",
                            L"a.dll unload", L"a.dll load", L"a.dll create"));
    EXPECT_TRUE(found_);
    EXPECT_EQ(handler_.DecoderPath, path);
    EXPECT_EQ(handler_.Extension, L".x");
}

TEST_F(DecoderSearch, TakesTheRegistrysLibraryFromAnyFolder) {
    PluginFolder elsewhere;
    NString path = elsewhere.Add(L"far.dll");
    script_.claims[L"far.dll"] = {L".x"};
    AddPlugin(L"a.dll", {L".x"});
    SetCached(L".x", path);
    EXPECT_TRUE(Find(L"file.x"));
    EXPECT_EQ(decoder_.Path, path);
    EXPECT_EQ(script_.Count(L"a.dll load"), 0);
    decoder_.Unload();
}

TEST_F(DecoderSearch, ReplacesAStaleValueByThePluginThatItFinds) {
    NString path = AddPlugin(L"a.dll", {L".x"});
    SetCached(L".x", folder_.PathOf(L"deleted.dll"));
    EXPECT_THAT(CallsOfFind(L"file.x"),
                ElementsAre(L"a.dll load", L"a.dll create", L"a.dll get 0"));
    EXPECT_TRUE(found_);
    EXPECT_EQ(Cached(L".x"), path);
    EXPECT_EQ(handler_.DecoderPath, path);
}

// Wanted: nothing found, and the stale value is written back.
TEST_F(DecoderSearch, WritesAStaleValueBackWhenItFindsNoPlugin) {
    NString stale = folder_.PathOf(L"deleted.dll");
    NRegWriteString(stale.Text, L".x", HKEY_CURRENT_USER, DecoderCacheKey, true);
    AddPlugin(L"a.dll", {L".y"});
    EXPECT_FALSE(Find(L"file.x"));
    EXPECT_EQ(Cached(L".x"), stale);
    // It is of the type that is written, no longer of the one that it had.
    EXPECT_EQ(NRegValueType(L".x", HKEY_CURRENT_USER, DecoderCacheKey),
              static_cast<uint32_t>(REG_SZ));
    EXPECT_EQ(handler_.DecoderPath, stale);
    EXPECT_EQ(handler_.Extension, L".x");
    EXPECT_EQ(decoder_.Module, nullptr);
    // And by the handler the next file takes the same way to it.
    EXPECT_THAT(CallsOfFind(L"next.x"), IsEmpty());
    EXPECT_FALSE(found_);
}

// Wanted: the stale library is tried once more without being asked.
TEST_F(DecoderSearch, AcceptsAStaleLibraryThatDoesNotClaimTheExtension) {
    NString stale = AddPlugin(L"a.dll", {L".y"});
    SetCached(L".x", stale);
    EXPECT_TRUE(Find(L"file.x"));
    EXPECT_EQ(decoder_.Path, stale);
    EXPECT_NE(decoder_.Handle, nullptr);
    // Checked by the registry and by the scan, then loaded unasked.
    EXPECT_EQ(script_.Count(L"a.dll load"), 3);
    EXPECT_EQ(script_.Count(L"a.dll get 0"), 2);
    EXPECT_EQ(script_.calls.back(), L"a.dll create");
    EXPECT_EQ(Cached(L".x"), stale);
}

TEST_F(DecoderSearch, FailsWithAStaleLibraryThatMakesNoInstance) {
    SetCached(L".x", AddPlugin(L"a.dll", {L".x"}));
    script_.create = [] { return nullptr; };
    EXPECT_FALSE(Find(L"file.x"));
    EXPECT_EQ(script_.Count(L"a.dll create"), 3);
}

TEST_F(UnwritableDecoderSearch, FindsAllTheSame) {
    AddPlugin(L"a.dll", {L".x"});
    EXPECT_TRUE(Find(L"file.x"));
    EXPECT_EQ(handler_.Extension, L".x");
    EXPECT_FALSE(IsCached(L".x"));
}

TEST_F(DecoderSearch, HoldsNoMoreAfterAThousandRunsThanAfterOne) {
    AddPlugin(L"a.dll", {L".x", L".y"});
    folder_.AddPlainFile(L"b.dll");
    folder_.Add(L"c.dll", L"plugin_without_Set.dll");
    auto run = [&] {
        cltNDecoder decoder;
        cltNCodecHandler handler;
        // By the scan or the registry, by the loaded library, by another
        // extension and in vain.
        for (const wchar_t* path : {L"1.x", L"2.x", L"3.y", L"4.none"})
            handler.FindDecoder(path, decoder, &context_, folder_.Module());
        script_.calls.clear();
    };
    run();
    int before = CountKernelHandles();
    int threadsBefore = CountThreads();
    for (int runs = 0; runs < 1000; ++runs)
        run();
    EXPECT_EQ(CountKernelHandles(), before);
    EXPECT_EQ(CountThreads(), threadsBefore);
    EXPECT_EQ(GetModuleHandleW(folder_.PathOf(L"a.dll").Text), nullptr);
    EXPECT_EQ(GetModuleHandleW(folder_.PathOf(L"c.dll").Text), nullptr);
    // The count sees one that is left.
    UniqueKernelHandle planted(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    EXPECT_EQ(CountKernelHandles(), before + 1);
}

TEST_F(DecoderSearch, CallsNoneOfTheOtherExports) {
    AddPlugin(L"a.dll", {L".x"});
    Find(L"file.x");
    clAudioInfo info = {};
    decoder_.Open(&info);
    decoder_.Unload();
    EXPECT_EQ(script_.Count(L"a.dll open"), 1);
    EXPECT_EQ(script_.Count(L"a.dll misuse"), 0);
}
