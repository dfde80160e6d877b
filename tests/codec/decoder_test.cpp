#include "codec/decoder.h"
#include "tests/codec/plugins/plugin_folder.h"
#include "tests/codec/plugins/recording_script.h"
#include "tests/support/message_box_driver.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/page_end.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <mmreg.h>

#include <cstring>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

// The middle of clAudioInfo is the platform's wave format.
constexpr size_t WaveFormatAt = offsetof(clAudioInfo, FormatTag);
static_assert(offsetof(clAudioInfo, Channels) == WaveFormatAt + offsetof(WAVEFORMATEX, nChannels));
static_assert(offsetof(clAudioInfo, SampleRate) ==
              WaveFormatAt + offsetof(WAVEFORMATEX, nSamplesPerSec));
static_assert(offsetof(clAudioInfo, AvgBytesPerSec) ==
              WaveFormatAt + offsetof(WAVEFORMATEX, nAvgBytesPerSec));
static_assert(offsetof(clAudioInfo, BlockAlign) ==
              WaveFormatAt + offsetof(WAVEFORMATEX, nBlockAlign));
static_assert(offsetof(clAudioInfo, BitsPerSample) ==
              WaveFormatAt + offsetof(WAVEFORMATEX, wBitsPerSample));
static_assert(FormatFloat == WAVE_FORMAT_IEEE_FLOAT);
static_assert(AudioInfoRequest == 0x1C);

namespace {
class Decoder : public testing::Test {
protected:
    bool LoadWhole(cltNDecoder& decoder) { return decoder.LoadFor(folder_.Add(L"a.dll"), L".ext"); }
    void MakeLive(cltNDecoder& decoder) {
        ASSERT_TRUE(LoadWhole(decoder));
        ASSERT_TRUE(decoder.CreateInstance(&context_));
        script_.calls.clear();
    }

    PluginFolder folder_;
    RecordingScript script_;
    NLogContext context_ = {};
};

using Pointers = std::vector<const void*>;

// The nine, as they lie in memory.
Pointers EntryPointsOf(const cltNDecoder& decoder) {
    Pointers pointers(std::size(DecoderExportNames));
    static_assert(sizeof(decoder.Entry) == std::size(DecoderExportNames) * sizeof(void*));
    memcpy(pointers.data(), &decoder.Entry, sizeof(decoder.Entry));
    return pointers;
}

Pointers ExportsOf(HMODULE module) {
    Pointers pointers;
    for (const char* name : DecoderExportNames)
        pointers.push_back(reinterpret_cast<const void*>(GetProcAddress(module, name)));
    return pointers;
}

const Pointers NoEntryPoints(std::size(DecoderExportNames));

void ExpectEmpty(const cltNDecoder& decoder) {
    EXPECT_EQ(decoder.Module, nullptr);
    EXPECT_FALSE(decoder.Loaded);
    EXPECT_EQ(decoder.Handle, nullptr);
    EXPECT_EQ(decoder.Extension, L"");
    EXPECT_EQ(decoder.Path, L"");
    EXPECT_EQ(EntryPointsOf(decoder), NoEntryPoints);
}

std::vector<uint8_t> Serialised(clTagRecord& record) {
    NBuffer buffer;
    record.Serialise(buffer);
    return std::vector<uint8_t>(buffer.Data, buffer.Data + buffer.Size);
}

std::vector<uint8_t> TwoElements() {
    clTagRecord record;
    record.Add(L"artist", L"Somebody");
    record.Add(L"title", L"Something");
    return Serialised(record);
}

// The names that a record holds after it was taken; it held another before.
std::vector<std::wstring> NamesTaken(const void* data, uint32_t size) {
    clTagRecord record;
    record.Add(L"old", L"");
    TakeDecoderRecord(data, size, record);
    std::vector<std::wstring> names;
    for (int index = 0; index < record.Count(); ++index)
        names.push_back(record[index]->Name.Text);
    return names;
}

const void* Address(uintptr_t number) {
    return reinterpret_cast<const void*>(number);
}

class DecoderWithout : public Decoder, public testing::WithParamInterface<const char*> {};
} // namespace

TEST_F(Decoder, IsEmptyAtFirst) {
    cltNDecoder decoder;
    ExpectEmpty(decoder);
}

TEST_F(Decoder, HasItsFieldsInOrder) {
    cltNDecoder decoder;
    auto offset = [&](const void* field) {
        return reinterpret_cast<const char*>(field) - reinterpret_cast<const char*>(&decoder);
    };
    constexpr ptrdiff_t Text = sizeof(NString);
    EXPECT_EQ(offset(&decoder.Module), 8);
    EXPECT_EQ(offset(&decoder.Loaded), 16);
    EXPECT_EQ(offset(&decoder.Extension), 24);
    EXPECT_EQ(offset(&decoder.Path), 24 + Text);
    EXPECT_EQ(offset(&decoder.Handle), 24 + 2 * Text);
    EXPECT_EQ(offset(&decoder.Entry), 32 + 2 * Text);
    EXPECT_EQ(sizeof(decoder), static_cast<size_t>(32 + 2 * Text + 9 * 8));
}

TEST_F(Decoder, BindsTheNineExportsInTheirOrder) {
    cltNDecoder decoder;
    ASSERT_TRUE(LoadWhole(decoder));
    EXPECT_TRUE(decoder.Loaded);
    EXPECT_EQ(EntryPointsOf(decoder), ExportsOf(decoder.Module));
    EXPECT_THAT(EntryPointsOf(decoder), testing::Each(testing::NotNull()));
    EXPECT_EQ(reinterpret_cast<const void*>(decoder.Entry.DeleteATag),
              ExportsOf(decoder.Module)[8]);
    EXPECT_EQ(reinterpret_cast<const void*>(decoder.Entry.Open), ExportsOf(decoder.Module)[4]);
}

TEST_P(DecoderWithout, OneExportIsRefusedAndStaysLoaded) {
    std::wstring built = L"plugin_without_";
    for (const char* unit = GetParam(); *unit; ++unit)
        built += static_cast<wchar_t>(*unit);
    NString path = folder_.Add(L"a.dll", (built + L".dll").c_str());
    cltNDecoder decoder;
    EXPECT_FALSE(decoder.LoadFor(path, L".ext"));
    EXPECT_FALSE(decoder.Loaded);
    EXPECT_EQ(decoder.Extension, L"");
    EXPECT_EQ(decoder.Path, L"");
    EXPECT_NE(decoder.Module, nullptr);
    // All the others are bound.
    EXPECT_EQ(EntryPointsOf(decoder), ExportsOf(decoder.Module));
    EXPECT_EQ(GetProcAddress(decoder.Module, GetParam()), nullptr);
    EXPECT_THAT(EntryPointsOf(decoder), testing::Contains(testing::IsNull()).Times(1));
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll load"));
    // A second load changes nothing.
    EXPECT_FALSE(decoder.Load(nullptr));
    EXPECT_FALSE(decoder.Load(folder_.Add(L"b.dll").Text));
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll load"));
    decoder.Unload();
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll load", L"a.dll unload"));
    ExpectEmpty(decoder);
}
INSTANTIATE_TEST_SUITE_P(Export, DecoderWithout, testing::ValuesIn(DecoderExportNames),
                         [](const auto& each) { return std::string(each.param); });

TEST_F(Decoder, LoadedIsNotLoadedAgain) {
    cltNDecoder decoder;
    ASSERT_TRUE(decoder.Load(folder_.Add(L"a.dll").Text));
    EXPECT_TRUE(decoder.Load(folder_.Add(L"b.dll").Text));
    EXPECT_TRUE(decoder.Load(nullptr));
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll load"));
    EXPECT_EQ(EntryPointsOf(decoder), ExportsOf(decoder.Module));
}

TEST_F(Decoder, RemembersWhatItWasLoadedFor) {
    NString path = folder_.Add(L"a.dll");
    cltNDecoder decoder;
    ASSERT_TRUE(decoder.LoadFor(path, L".Ext"));
    EXPECT_EQ(decoder.Path, path);
    EXPECT_EQ(decoder.Extension, L".Ext");
    EXPECT_EQ(decoder.Handle, nullptr);
}

TEST_F(Decoder, LoadsAnotherLibraryInPlaceOfTheFirst) {
    cltNDecoder decoder;
    MakeLive(decoder);
    NString other = folder_.Add(L"b.dll");
    ASSERT_TRUE(decoder.LoadFor(other, L".other"));
    EXPECT_EQ(decoder.Path, other);
    EXPECT_EQ(decoder.Extension, L".other");
    EXPECT_EQ(decoder.Handle, nullptr);
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll destroy", L"a.dll unload", L"b.dll load"));
}

TEST_F(Decoder, LoadsItsOwnLibraryAnew) {
    cltNDecoder decoder;
    MakeLive(decoder);
    ASSERT_TRUE(decoder.LoadFor(decoder.Path, decoder.Extension));
    EXPECT_EQ(decoder.Path, folder_.PathOf(L"a.dll"));
    EXPECT_EQ(decoder.Extension, L".ext");
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll destroy", L"a.dll unload", L"a.dll load"));
}

TEST_F(Decoder, IsEmptyAfterALibraryThatCanNotBeLoaded) {
    folder_.AddPlainFile(L"plain.dll");
    folder_.AddFolder(L"folder.dll");
    MessageBoxDriver driver;
    for (const wchar_t* name : {L"missing.dll", L"plain.dll", L"folder.dll"}) {
        SCOPED_TRACE(NString(name).ToNarrow());
        cltNDecoder decoder;
        MakeLive(decoder);
        EXPECT_FALSE(decoder.LoadFor(folder_.PathOf(name), L".other"));
        ExpectEmpty(decoder);
        EXPECT_FALSE(decoder.CreateInstance(&context_));
    }
    EXPECT_THAT(driver.Boxes(), IsEmpty());
}

TEST_F(Decoder, UnloadsTheInstanceBeforeTheLibrary) {
    cltNDecoder decoder;
    MakeLive(decoder);
    decoder.Unload();
    ExpectEmpty(decoder);
    decoder.Unload();
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll destroy", L"a.dll unload"));
}

TEST_F(Decoder, UnloadsAtItsEnd) {
    {
        cltNDecoder decoder;
        MakeLive(decoder);
    }
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll destroy", L"a.dll unload"));
}

TEST_F(Decoder, HandsTheLogContextToTheNewInstance) {
    cltNDecoder decoder;
    ASSERT_TRUE(LoadWhole(decoder));
    EXPECT_TRUE(decoder.CreateInstance(&context_));
    EXPECT_NE(decoder.Handle, nullptr);
    EXPECT_EQ(script_.logContext, &context_);
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll load", L"a.dll create"));
}

TEST_F(Decoder, DropsAnInstanceForTheNext) {
    cltNDecoder decoder;
    MakeLive(decoder);
    void* first = decoder.Handle;
    EXPECT_TRUE(decoder.CreateInstance(&context_));
    EXPECT_NE(decoder.Handle, first);
    EXPECT_EQ(script_.instance, first);
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll destroy", L"a.dll create"));
}

TEST_F(Decoder, DropsAnInstanceOnce) {
    cltNDecoder decoder;
    MakeLive(decoder);
    void* first = decoder.Handle;
    decoder.DestroyInstance();
    decoder.DestroyInstance();
    EXPECT_EQ(decoder.Handle, nullptr);
    EXPECT_EQ(script_.instance, first);
    EXPECT_NE(decoder.Module, nullptr);
    EXPECT_EQ(decoder.Extension, L".ext");
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll destroy"));
}

TEST_F(Decoder, ForgetsAnInstanceThatItHasNoWayToDrop) {
    cltNDecoder decoder;
    MakeLive(decoder);
    decoder.Entry.Destroy = nullptr;
    decoder.DestroyInstance();
    EXPECT_EQ(decoder.Handle, nullptr);
    EXPECT_THAT(script_.calls, IsEmpty());
}

TEST_F(Decoder, HasNoInstanceWhenThePluginMakesNone) {
    script_.create = [] { return nullptr; };
    cltNDecoder decoder;
    ASSERT_TRUE(LoadWhole(decoder));
    EXPECT_FALSE(decoder.CreateInstance(&context_));
    EXPECT_EQ(decoder.Handle, nullptr);
    EXPECT_NE(decoder.Module, nullptr);
    decoder.Unload();
    EXPECT_EQ(script_.Count(L"a.dll destroy"), 0);
}

TEST_F(Decoder, AnswersZeroWithoutAnInstance) {
    clDecodesInfo decodes = {};
    clAudioInfo info = {};
    cltNDecoder decoder;
    EXPECT_EQ(decoder.Get(L"Decodes", &decodes), 0);
    EXPECT_EQ(decoder.Open(&info), 0);
    ASSERT_TRUE(LoadWhole(decoder));
    EXPECT_EQ(decoder.Get(L"Decodes", &decodes), 0);
    EXPECT_EQ(decoder.Open(&info), 0);
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll load"));
}

TEST_F(Decoder, AnswersZeroWithAnInstanceButWithoutTheEntryPoint) {
    clDecodesInfo decodes = {};
    clAudioInfo info = {};
    cltNDecoder decoder;
    MakeLive(decoder);
    decoder.Entry.Get = nullptr;
    decoder.Entry.Open = nullptr;
    EXPECT_EQ(decoder.Get(L"Decodes", &decodes), 0);
    EXPECT_EQ(decoder.Open(&info), 0);
    EXPECT_THAT(script_.calls, IsEmpty());
}

TEST_F(Decoder, AsksThePluginWithWhatItIsGiven) {
    script_.claims[L"a.dll"] = {L".one", L".two"};
    cltNDecoder decoder;
    MakeLive(decoder);
    clDecodesInfo decodes = {};
    decodes.Index = 1;
    EXPECT_EQ(decoder.Get(L"Decodes", &decodes), 1);
    EXPECT_STREQ(decodes.Extension, L".two");
    EXPECT_EQ(script_.what, L"Decodes");
    EXPECT_EQ(script_.instance, decoder.Handle);
    EXPECT_THAT(script_.calls, ElementsAre(L"a.dll get 1"));
}

TEST_F(Decoder, OpensWithThePluginsRecordAndResult) {
    script_.open = [](clAudioInfo& info) {
        info.SampleRate = 44100;
        info.TechInfoSize = 7;
        return -5;
    };
    cltNDecoder decoder;
    MakeLive(decoder);
    clAudioInfo info = {};
    info.Path = L"C:\\a.ext";
    EXPECT_EQ(decoder.Open(&info), -5);
    EXPECT_EQ(info.SampleRate, 44100u);
    EXPECT_EQ(info.TechInfoSize, 7u);
    EXPECT_EQ(script_.instance, decoder.Handle);
    EXPECT_EQ(memcmp(script_.record.data(), &info.Path, sizeof(info.Path)), 0);
}

TEST_F(Decoder, TakesAnExceptionForAFailure) {
    clDecodesInfo decodes = {};
    clAudioInfo info = {};
    cltNDecoder decoder;
    MakeLive(decoder);
    script_.throws = true;
    EXPECT_EQ(decoder.Get(L"Decodes", &decodes), 0);
    EXPECT_EQ(decoder.Open(&info), 0);
    EXPECT_FALSE(decoder.CreateInstance(&context_));
    EXPECT_EQ(decoder.Handle, nullptr);
    EXPECT_THAT(script_.calls, IsEmpty());
}

TEST(DecoderRecord, IsTakenWhole) {
    std::vector<uint8_t> bytes = TwoElements();
    EXPECT_THAT(NamesTaken(bytes.data(), static_cast<uint32_t>(bytes.size())),
                ElementsAre(L"artist", L"title"));
}

TEST(DecoderRecord, IsTakenFromAnOddAddressAtTheEndOfItsMemory) {
    std::vector<uint8_t> bytes = TwoElements();
    bytes.push_back(0);
    PageEnd pages;
    const void* data = pages.Put(bytes.data(), bytes.size());
    EXPECT_THAT(NamesTaken(data, static_cast<uint32_t>(bytes.size())),
                ElementsAre(L"artist", L"title"));
}

TEST(DecoderRecord, IsEmptyWithoutAPointerOrASize) {
    std::vector<uint8_t> bytes = TwoElements();
    EXPECT_THAT(NamesTaken(bytes.data(), 0), IsEmpty());
    EXPECT_THAT(NamesTaken(nullptr, static_cast<uint32_t>(bytes.size())), IsEmpty());
    EXPECT_THAT(NamesTaken(nullptr, 0), IsEmpty());
}

TEST(DecoderRecord, EndsWithItsMemoryWhenItsSizeSaysMore) {
    std::vector<uint8_t> bytes = TwoElements();
    PageEnd pages;
    const void* data = pages.Put(bytes.data(), bytes.size());
    EXPECT_THAT(NamesTaken(data, INT32_MAX), ElementsAre(L"artist", L"title"));
    // A third element is announced, and its size reaches behind the memory.
    bytes[0] = 3;
    const std::vector<uint8_t> third = {0, 0, 1, 0, 'x', 0};
    bytes.insert(bytes.end(), third.begin(), third.end());
    data = pages.Put(bytes.data(), bytes.size());
    EXPECT_THAT(NamesTaken(data, 0x20000), ElementsAre(L"artist", L"title"));
}

TEST(DecoderRecord, EndsWithTheSizeThatItSays) {
    std::vector<uint8_t> bytes = TwoElements();
    EXPECT_THAT(NamesTaken(bytes.data(), static_cast<uint32_t>(bytes.size() - 1)),
                ElementsAre(L"artist"));
}

TEST(DecoderRecord, IsEmptyWhereNothingCanBeRead) {
    PageEnd pages;
    EXPECT_THAT(NamesTaken(Address(1), 100), IsEmpty());
    EXPECT_THAT(NamesTaken(pages.LastBytes(0), 100), IsEmpty());
    EXPECT_THAT(NamesTaken(Address(UINTPTR_MAX - 3), 100), IsEmpty());
}

TEST(DecoderRecord, IsEmptyWithASizeThatNoRecordHas) {
    std::vector<uint8_t> bytes = TwoElements();
    EXPECT_THAT(NamesTaken(bytes.data(), 0x80000000), IsEmpty());
    EXPECT_THAT(NamesTaken(bytes.data(), 0xFFFFFFFF), IsEmpty());
}
