#include "suite/querytrackdata/exchange_file.h"
#include "tests/querytrackdata/disk_change_watch.h"
#include "tests/querytrackdata/test_files.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32_t NoLimit = 0x10000000;

// As the module opens it, and keeps it open.
UniqueFileHandle OpenAsItsMaker(const std::wstring& path) {
    return UniqueFileHandle(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
}

NBuffer Buffer(const Bytes& bytes) {
    NBuffer buffer;
    buffer.Set(bytes.data(), static_cast<uint32_t>(bytes.size()));
    return buffer;
}

Bytes ContentOf(const NBuffer& buffer) {
    return Bytes(buffer.Data, buffer.Data + buffer.Size);
}

bool HasMagic(const Bytes& file) {
    return file.size() >= 4 && Bytes(file.begin(), file.begin() + 4) == BytesOf("IDTG");
}

} // namespace

TEST(ExchangeFile, IsReadAndAnsweredWhileItsMakerHasItOpen) {
    TestFolder folder;
    std::wstring path = folder.Write(L"x.tmp", BytesOf("the request"));
    UniqueFileHandle maker = OpenAsItsMaker(path);
    ASSERT_TRUE(maker);
    ErrorLine error;
    ExchangeFile exchange;
    NBuffer request;
    ASSERT_TRUE(exchange.Open(path.c_str(), ExchangeFile::Use::ReadAndReply, error));
    ASSERT_TRUE(exchange.ReadAll(request, NoLimit, error));
    EXPECT_EQ(ContentOf(request), BytesOf("the request"));
    ASSERT_TRUE(exchange.WriteReply(Buffer(BytesOf("abcd")), error));
    EXPECT_EQ(ReadWhole(path), BytesOf("IDTG") + LittleEndian32(4) + BytesOf("abcd"));
}

TEST(ExchangeFile, TheReplyIsAllThatIsLeftOfALongerRequest) {
    TestFolder folder;
    std::wstring path = folder.Write(L"x.tmp", Bytes(1000, 'r'));
    ErrorLine error;
    ExchangeFile exchange;
    ASSERT_TRUE(exchange.Open(path.c_str(), ExchangeFile::Use::ReadAndReply, error));
    ASSERT_TRUE(exchange.WriteReply(Buffer(Bytes(5, 'p')), error));
    EXPECT_EQ(ReadWhole(path), BytesOf("IDTG") + LittleEndian32(5) + Bytes(5, 'p'));
}

TEST(ExchangeFile, ItsReaderSeesNoReplyBeforeTheReplyIsWhole) {
    TestFolder folder;
    std::wstring path = folder.Write(L"x.tmp", BytesOf(L"C:\\song.mp3"));
    ErrorLine error;
    ExchangeFile exchange;
    ASSERT_TRUE(exchange.Open(path.c_str(), ExchangeFile::Use::ReadAndReply, error));
    Bytes whole = BytesOf("IDTG") + LittleEndian32(100) + Bytes(100, 'p');
    int changes = 0;
    {
        DiskChangeWatch watch([&] {
            ++changes;
            Bytes now = ReadWhole(path);
            EXPECT_TRUE(!HasMagic(now) || now == whole);
        });
        ASSERT_TRUE(exchange.WriteReply(Buffer(Bytes(100, 'p')), error));
    }
    EXPECT_GE(changes, 2);
    EXPECT_EQ(ReadWhole(path), whole);
}

TEST(ExchangeFile, OneThatIsOnlyReadMayBeReadOnly) {
    TestFolder folder;
    std::wstring path = folder.Write(L"x.tmp", BytesOf("request"));
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
    ErrorLine error;
    ExchangeFile exchange;
    NBuffer request;
    EXPECT_TRUE(exchange.Open(path.c_str(), ExchangeFile::Use::Read, error));
    EXPECT_TRUE(exchange.ReadAll(request, NoLimit, error));
}

TEST(ExchangeFile, AnEmptyOneIsAnEmptyRequest) {
    TestFolder folder;
    std::wstring path = folder.Write(L"x.tmp", {});
    ErrorLine error;
    ExchangeFile exchange;
    NBuffer request;
    ASSERT_TRUE(exchange.Open(path.c_str(), ExchangeFile::Use::Read, error));
    ASSERT_TRUE(exchange.ReadAll(request, NoLimit, error));
    EXPECT_EQ(request.Size, 0u);
}

TEST(ExchangeFile, OneAboveTheLimitIsRefusedUnread) {
    TestFolder folder;
    std::wstring path = folder.Write(L"x.tmp", Bytes(101, 'r'));
    ErrorLine error;
    ExchangeFile exchange;
    NBuffer request;
    ASSERT_TRUE(exchange.Open(path.c_str(), ExchangeFile::Use::Read, error));
    EXPECT_FALSE(exchange.ReadAll(request, 100, error));
    EXPECT_EQ(request.Size, 0u);
    EXPECT_NE(error.Text().Find(L"too large"), 0);
}

TEST(ExchangeFile, OneThatIsNotThereOrIsAFolderOrADeviceIsTold) {
    TestFolder folder;
    for (const std::wstring& path : {folder.File(L"none.tmp"), folder.Path(), std::wstring(L"NUL"),
                                     std::wstring(L"\\\\.\\pipe\\x")}) {
        ErrorLine error;
        ExchangeFile exchange;
        EXPECT_FALSE(exchange.Open(path.c_str(), ExchangeFile::Use::ReadAndReply, error));
        EXPECT_NE(error.Text().Find(L"cannot open the exchange file"), 0);
    }
}
