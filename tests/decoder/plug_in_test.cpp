// The plug-in's contract: its exports, its life, and what it does to files.
#include "tests/decoder/plug_in.h"
#include "tests/shell/portable_executable.h"
#include "tests/support/leak_counters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace {
using testing::UnorderedElementsAre;

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

UniqueFileHandle OpenFile(const std::wstring& path, DWORD access, DWORD share) {
    return UniqueFileHandle(CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Asks as the module does; null behind the last one.
const wchar_t* ExtensionOf(void* instance, uint32_t index, int32_t& result) {
    clDecodesInfo record = {};
    record.Index = index;
    result = PlugIn::Get().GetRecord(instance, L"Decodes", &record);
    return record.Extension;
}

std::vector<std::wstring> AllExtensions() {
    Instance instance;
    std::vector<std::wstring> all;
    int32_t result = 0;
    for (uint32_t index = 0; index < 1000; ++index) {
        const wchar_t* extension = ExtensionOf(instance.Handle(), index, result);
        if (!extension)
            break;
        EXPECT_NE(result, 0) << index;
        all.push_back(extension);
    }
    return all;
}
} // namespace

TEST(PlugInLibrary, HasTheNineExportsByPlainName) {
    EXPECT_THAT(ExportedNames(PlugIn::Get().Module()),
                UnorderedElementsAre("Create", "Destroy", "Get", "Set", "Open", "Close",
                                     "DecodeBlock", "SetPosition", "DeleteATag"));
}

TEST(PlugInLibrary, ImportsTheKernelAndTheRunTimeAlone) {
    EXPECT_THAT(ImportedLibraries(PlugIn::Get().Module()),
                UnorderedElementsAre("kernel32.dll", "msvcrt.dll"));
}

TEST(PlugInLibrary, HasAllThatMakesAttacksHarder) {
    const WORD flags = HeadersOf(PlugIn::Get().Module()).OptionalHeader.DllCharacteristics;
    for (int wanted : {IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE, IMAGE_DLLCHARACTERISTICS_NX_COMPAT,
                       IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA})
        EXPECT_NE(flags & wanted, 0) << wanted;
}

TEST(PlugInExports, TakeNullForEveryPointer) {
    PlugIn& plugIn = PlugIn::Get();
    clAudioInfo info = {};
    clDecodesInfo record = {};
    plugIn.Destroy(nullptr);
    EXPECT_EQ(plugIn.GetRecord(nullptr, L"Decodes", &record), 0);
    EXPECT_EQ(plugIn.Set(nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(plugIn.Open(nullptr, &info), 0);
    EXPECT_EQ(plugIn.Close(nullptr), 0);
    EXPECT_EQ(plugIn.DecodeBlock(nullptr, nullptr), 0);
    EXPECT_EQ(plugIn.SetPosition(nullptr, 0), 0);
    EXPECT_EQ(plugIn.DeleteATag(nullptr, nullptr), 0);

    Instance instance;
    EXPECT_EQ(plugIn.GetRecord(instance.Handle(), nullptr, &record), 0);
    EXPECT_EQ(plugIn.GetRecord(instance.Handle(), L"Decodes", nullptr), 0);
    EXPECT_EQ(plugIn.Open(instance.Handle(), nullptr), 0);
    EXPECT_EQ(plugIn.Open(instance.Handle(), &info), 0) << "a path of null";
}

TEST(PlugInExports, ThatChangeOrDecodeDoNothing) {
    TestFolder folder;
    const std::wstring path = folder.Write(L"a.mp3", ReadWhole(SamplePath("sample.mp3")));
    Instance instance;
    PlugIn& plugIn = PlugIn::Get();
    uint8_t block[16] = {};
    EXPECT_EQ(plugIn.Set(instance.Handle(), L"Decodes", block), 0);
    EXPECT_EQ(plugIn.DecodeBlock(instance.Handle(), block), 0);
    EXPECT_EQ(plugIn.SetPosition(instance.Handle(), 1), 0);
    EXPECT_EQ(plugIn.DeleteATag(instance.Handle(), path.c_str()), 0);
    EXPECT_EQ(ReadWhole(path), ReadWhole(SamplePath("sample.mp3")));
}

TEST(Decodes, NamesEveryExtensionWithItsDot) {
    EXPECT_THAT(AllExtensions(),
                UnorderedElementsAre(L".mp3", L".mp2", L".mp1", L".mpga", L".flac", L".ogg",
                                     L".oga", L".opus", L".spx", L".m4a", L".m4b", L".m4r", L".mp4",
                                     L".wma", L".wav", L".aif", L".aiff", L".aifc", L".ape", L".wv",
                                     L".mpc", L".mp+", L".mpp", L".tta", L".it", L".s3m", L".xm",
                                     L".mod"));
}

TEST(Decodes, EndsWithNullAndZeroBehindTheLastExtension) {
    Instance instance;
    const auto count = static_cast<uint32_t>(AllExtensions().size());
    for (uint32_t index : {count, count + 1, UINT32_MAX}) {
        int32_t result = 1;
        EXPECT_EQ(ExtensionOf(instance.Handle(), index, result), nullptr) << index;
        EXPECT_EQ(result, 0) << index;
    }
}

TEST(Decodes, IsTheOnlyThingToGet) {
    Instance instance;
    clDecodesInfo record = {};
    for (const wchar_t* what : {L"", L"decodes", L"Decodes ", L"Encodes"})
        EXPECT_EQ(PlugIn::Get().GetRecord(instance.Handle(), what, &record), 0) << what;
    EXPECT_EQ(record.Extension, nullptr);
}

TEST(Open, GivesBlobsThatStayGoodWhateverOtherInstancesDo) {
    Instance first;
    clAudioInfo info;
    ASSERT_TRUE(first.Open(SamplePath("sample.flac"), info));
    const Bytes before(static_cast<const uint8_t*>(info.Tags),
                       static_cast<const uint8_t*>(info.Tags) + info.TagsSize);
    {
        Instance second;
        clAudioInfo other;
        ASSERT_TRUE(second.Open(SamplePath("sample.mp3"), other));
        EXPECT_NE(info.Tags, other.Tags);
        EXPECT_NE(info.TechInfo, other.TechInfo);
    }
    EXPECT_EQ(memcmp(info.Tags, before.data(), before.size()), 0);
}

TEST(Open, GivesTheBlobsThatAreAskedForAndTheNumbersAlways) {
    struct Row {
        uint32_t Request;
        bool HasTags;
        bool HasTechInfo;
    };
    for (const Row& row : {Row{AudioInfoRequest, true, true}, Row{8, true, false},
                           Row{16, false, true}, Row{0, false, false}, Row{4, false, false}}) {
        Instance instance;
        clAudioInfo info;
        ASSERT_TRUE(instance.Open(SamplePath("sample.flac"), info, row.Request));
        EXPECT_EQ(info.Tags != nullptr, row.HasTags) << row.Request;
        EXPECT_EQ(info.TagsSize > 0, row.HasTags) << row.Request;
        EXPECT_EQ(info.TechInfo != nullptr, row.HasTechInfo) << row.Request;
        EXPECT_EQ(info.TechInfoSize > 0, row.HasTechInfo) << row.Request;
        EXPECT_EQ(info.SampleRate, 44100U) << row.Request;
    }
}

TEST(Open, GivesNoTagBlobForAFileWithoutTags) {
    OpenedFile file(LibraryDataPath("empty.wav"));
    EXPECT_TRUE(file.opened);
    EXPECT_EQ(file.info.Tags, nullptr);
    EXPECT_EQ(file.info.TagsSize, 0U);
}

TEST(Open, LeavesTheRecordAloneOnFailure) {
    Instance instance;
    clAudioInfo info;
    const std::wstring path = SamplePath("odd/text-named.mp3");
    EXPECT_FALSE(instance.Open(path, info));
    clAudioInfo expected = {};
    expected.Path = path.c_str();
    expected.Request = AudioInfoRequest;
    EXPECT_EQ(memcmp(&info, &expected, sizeof(info)), 0);
}

TEST(Open, FailsOnWhatIsNoFileOfAudio) {
    TestFolder folder;
    const std::wstring empty = folder.Write(L"empty.mp3", {});
    const std::wstring shut = folder.Write(L"shut.mp3", ReadWhole(SamplePath("sample.mp3")));
    UniqueFileHandle lock = OpenFile(shut, GENERIC_READ, 0);
    ASSERT_TRUE(lock);
    for (const std::wstring& path :
         {empty, shut, folder.Path(), folder.File(L"none.mp3"), std::wstring(),
          std::wstring(L"*.mp3"), SamplePath("odd/front.png")})
        EXPECT_FALSE(OpenedFile(path).opened) << path.size();
}

TEST(Open, ReadsAFileThatOthersHoldOpenForWritingAndDeletion) {
    TestFolder folder;
    const std::wstring path = folder.Write(L"a.flac", ReadWhole(SamplePath("sample.flac")));
    UniqueFileHandle other = OpenFile(path, GENERIC_READ | GENERIC_WRITE | DELETE, ShareAll);
    ASSERT_TRUE(other);
    EXPECT_TRUE(OpenedFile(path).opened);
}

TEST(Open, HasClosedTheFileWhenItReturns) {
    TestFolder folder;
    Instance instance;
    for (const char* name : {"sample.mp3", "odd/cut.flac"}) {
        const std::wstring path = folder.Write(L"a.bin", ReadWhole(SamplePath(name)));
        clAudioInfo info;
        instance.Open(path, info);
        EXPECT_TRUE(OpenFile(path, GENERIC_READ | GENERIC_WRITE, 0)) << name;
    }
}

TEST(Open, KeepsNoHandle) {
    Instance instance;
    clAudioInfo info;
    for (int warmUp = 0; warmUp < 2; ++warmUp)
        instance.Open(SamplePath("sample.ogg"), info);
    const int before = CountKernelHandles();
    for (int count = 0; count < 100; ++count)
        EXPECT_TRUE(instance.Open(SamplePath("sample.ogg"), info));
    EXPECT_EQ(CountKernelHandles(), before);
    const UniqueKernelHandle planted(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    EXPECT_EQ(CountKernelHandles(), before + 1);
}

TEST(Open, TakesUnicodeAndLongPaths) {
    TestFolder folder;
    const Bytes sample = ReadWhole(SamplePath("sample.mp3"));
    EXPECT_TRUE(OpenedFile(folder.Write(L"Klang \x97F3\x8272 \xE4.mp3", sample)).opened);

    std::wstring deep = folder.Path();
    for (int level = 0; level < 4; ++level) {
        deep += L"\\" + std::wstring(90, static_cast<wchar_t>(L'a' + level));
        MakeFolder(deep);
    }
    const std::wstring path = deep + L"\\long.mp3";
    WriteWhole(path, sample);
    OpenedFile file(path);
    EXPECT_TRUE(file.opened);
    EXPECT_EQ(file.info.FileSize, static_cast<int64_t>(sample.size()));
}

TEST(Open, WorksOnSeveralThreadsAtOnce) {
    int opened[4] = {};
    std::vector<std::thread> threads;
    for (int& count : opened) {
        threads.emplace_back([&count] {
            Instance instance;
            clAudioInfo info;
            for (int round = 0; round < 20; ++round)
                count += instance.Open(SamplePath("sample.mp3"), info) && info.TagsSize > 0;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_THAT(opened, testing::Each(20));
}

TEST(Close, FreesTheBlobsAndTheInstanceGoesOn) {
    Instance instance;
    clAudioInfo info;
    ASSERT_TRUE(instance.Open(SamplePath("sample.flac"), info));
    EXPECT_EQ(PlugIn::Get().Close(instance.Handle()), 1);
    EXPECT_EQ(PlugIn::Get().Close(instance.Handle()), 1);
    EXPECT_TRUE(instance.Open(SamplePath("sample.flac"), info));
    EXPECT_NE(info.Tags, nullptr);
}
