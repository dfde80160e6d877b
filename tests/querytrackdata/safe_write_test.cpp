#include "suite/querytrackdata/full_path.h"
#include "suite/querytrackdata/safe_write.h"
#include "suite/querytrackdata/writer_lock.h"
#include "tests/querytrackdata/disk_change_watch.h"
#include "tests/querytrackdata/test_files.h"

#include <gtest/gtest.h>

#include <sddl.h>

#include <functional>
#include <string>
#include <thread>

namespace {

const Bytes Old = BytesOf("the old content");
const Bytes New = BytesOf("the new content, which is longer");

// Writes `New` into the copy; each step can be watched or made to fail.
class WriteNew : public FileEdit {
public:
    bool IsDone(const wchar_t* file) override { return ReadWhole(file) == New; }
    bool Apply(const wchar_t* copy, ErrorLine& error) override {
        copyPath = copy;
        attributesOfCopy = GetFileAttributesW(copy);
        WriteWhole(copy, New);
        if (inBetween)
            inBetween();
        return applies || error.Fail(L"apply fails");
    }
    bool Check(const wchar_t* original, const wchar_t* copy, ErrorLine& error) override {
        EXPECT_EQ(ReadWhole(original), Old);
        EXPECT_EQ(ReadWhole(copy), New);
        return checks || error.Fail(L"check fails");
    }

    bool applies = true;
    bool checks = true;
    std::function<void()> inBetween;
    std::wstring copyPath;
    DWORD attributesOfCopy = 0;
};

struct Outcome {
    bool Done;
    std::wstring Error;
};

Outcome Write(const std::wstring& path, FileEdit& edit) {
    ErrorLine error;
    bool done = WriteSafely(path.c_str(), edit, error);
    return {done, error.Text().c_str()};
}

Outcome Write(const std::wstring& path) {
    WriteNew edit;
    return Write(path, edit);
}

UniqueFileHandle Open(const std::wstring& path, DWORD access, DWORD sharing) {
    return UniqueFileHandle(CreateFileW(path.c_str(), access, sharing, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::wstring CopyOf(const std::wstring& path) {
    return WorkingCopyPath(FullPath(path.c_str())).c_str();
}

// Full access for its owner, and none for anybody else.
void LimitAccess(const std::wstring& path) {
    UniqueLocalMemory descriptor;
    ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(
        L"D:P(A;;FA;;;OW)(A;;FA;;;BA)", SDDL_REVISION_1, descriptor.Put(), nullptr));
    ASSERT_TRUE(SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor.Get()));
}

std::wstring AccessListOf(const std::wstring& path) {
    DWORD size = 0;
    GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    Bytes descriptor(size);
    EXPECT_TRUE(
        GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size));
    wchar_t* text = nullptr;
    EXPECT_TRUE(ConvertSecurityDescriptorToStringSecurityDescriptorW(
        descriptor.data(), SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &text, nullptr));
    UniqueLocalMemory owner(text);
    return text ? text : L"";
}

void ExpectUntouched(const TestFolder& folder, const std::wstring& path) {
    EXPECT_EQ(ReadWhole(path), Old);
    EXPECT_EQ(folder.Names().size(), 1u) << "a copy was left behind";
}

} // namespace

TEST(SafeWrite, PutsTheChangedCopyInTheFilesPlace) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    Outcome outcome = Write(path);
    EXPECT_TRUE(outcome.Done);
    EXPECT_EQ(outcome.Error, L"");
    EXPECT_EQ(ReadWhole(path), New);
    EXPECT_EQ(folder.Names(), std::vector<std::wstring>{L"song.mp3"});
}

TEST(SafeWrite, TheFileIsOldAndWholeUntilItIsNew) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    int changes = 0;
    {
        DiskChangeWatch watch([&] {
            ++changes;
            Bytes now = ReadWhole(path);
            EXPECT_TRUE(now == Old || now == New) << "behind change " << changes;
        });
        EXPECT_TRUE(Write(path).Done);
    }
    EXPECT_GE(changes, 5);
}

TEST(SafeWrite, TheCopyIsHiddenLiesBesideTheFileAndKeepsItsExtension) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    WriteNew edit;
    EXPECT_TRUE(Write(path, edit).Done);
    EXPECT_EQ(edit.attributesOfCopy & FILE_ATTRIBUTE_HIDDEN, DWORD{FILE_ATTRIBUTE_HIDDEN});
    std::wstring folderOfCopy = edit.copyPath.substr(0, edit.copyPath.rfind(L'\\'));
    EXPECT_EQ(folderOfCopy.substr(folderOfCopy.rfind(L'\\')),
              folder.Path().substr(folder.Path().rfind(L'\\')));
    EXPECT_EQ(edit.copyPath.substr(edit.copyPath.size() - 4), L".mp3");
}

TEST(SafeWrite, WhatIsRightAlreadyIsLeftAlone) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", New);
    int changes = 0;
    DiskChangeWatch watch([&] { ++changes; });
    EXPECT_TRUE(Write(path).Done);
    EXPECT_EQ(changes, 0);
}

TEST(SafeWrite, AChangeThatFailsLeavesTheFileAndNoCopy) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    WriteNew edit;
    edit.applies = false;
    Outcome outcome = Write(path, edit);
    EXPECT_FALSE(outcome.Done);
    EXPECT_EQ(outcome.Error, L"QueryTrackData: apply fails");
    ExpectUntouched(folder, path);
}

TEST(SafeWrite, ACopyThatDoesntPassTheCheckIsDropped) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    WriteNew edit;
    edit.checks = false;
    Outcome outcome = Write(path, edit);
    EXPECT_FALSE(outcome.Done);
    EXPECT_EQ(outcome.Error, L"QueryTrackData: check fails");
    ExpectUntouched(folder, path);
}

TEST(SafeWrite, AnEditThatThrowsLeavesTheFileAndNoCopy) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    WriteNew edit;
    edit.inBetween = [] { throw std::bad_alloc(); };
    EXPECT_THROW(Write(path, edit), std::bad_alloc);
    ExpectUntouched(folder, path);
}

TEST(SafeWrite, ALeftoverCopyIsRemovedWhateverItIs) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    std::wstring leftover = CopyOf(path);
    WriteWhole(leftover, BytesOf("half a copy"));
    SetFileAttributesW(leftover.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY);
    ASSERT_EQ(folder.Names().size(), 2u);
    EXPECT_TRUE(Write(path).Done);
    EXPECT_EQ(ReadWhole(path), New);
    EXPECT_EQ(folder.Names().size(), 1u);
}

TEST(SafeWrite, ALeftoverCopyIsRemovedByAWriteThatChangesNothing) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", New);
    WriteWhole(CopyOf(path), BytesOf("half a copy"));
    EXPECT_TRUE(Write(path).Done);
    EXPECT_EQ(folder.Names().size(), 1u);
}

TEST(SafeWrite, TheCopyOfAWriterThatHoldsTheFileIsNotTouched) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    WriteWhole(CopyOf(path), BytesOf("another machine's copy"));
    UniqueFileHandle otherWriter = Open(path, GENERIC_READ, FILE_SHARE_READ);
    EXPECT_FALSE(Write(path).Done);
    EXPECT_EQ(ReadWhole(CopyOf(path)), BytesOf("another machine's copy"));
}

TEST(SafeWrite, WhereTheCopyCantBeMadeNothingHappens) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    MakeFolder(CopyOf(path));
    Outcome outcome = Write(path);
    EXPECT_FALSE(outcome.Done);
    EXPECT_NE(outcome.Error.find(L"cannot remove an earlier copy"), std::wstring::npos);
    EXPECT_EQ(ReadWhole(path), Old);
}

TEST(SafeWrite, AReadOnlyFileIsRefused) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(Write(path).Done);
    ExpectUntouched(folder, path);
    EXPECT_NE(GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_READONLY, 0u);
}

TEST(SafeWrite, AFileThatIsOpenElsewhereWithoutFullSharingIsRefused) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    for (DWORD sharing : {DWORD{0}, DWORD{FILE_SHARE_READ}, DWORD{FILE_SHARE_DELETE},
                          DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE}}) {
        UniqueFileHandle other = Open(path, GENERIC_READ, sharing);
        ASSERT_TRUE(other);
        WriteNew edit;
        EXPECT_FALSE(Write(path, edit).Done) << sharing;
        EXPECT_EQ(edit.copyPath, L"") << "found out only after all the work";
        other.Reset();
        ExpectUntouched(folder, path);
    }
}

TEST(SafeWrite, AFileThatAnotherProgramIsWritingIsRefused) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    UniqueFileHandle other =
        Open(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    ASSERT_TRUE(other);
    EXPECT_FALSE(Write(path).Done);
    other.Reset();
    ExpectUntouched(folder, path);
}

TEST(SafeWrite, NobodyCanWriteTheFileWhileItsCopyIsWorkedOn) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    WriteNew edit;
    edit.inBetween = [&] {
        EXPECT_FALSE(Open(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE));
        EXPECT_TRUE(Open(path, GENERIC_READ, FILE_SHARE_READ));
    };
    EXPECT_TRUE(Write(path, edit).Done);
}

TEST(SafeWrite, AFileThatChangedInTheMeantimeIsLeftAsItIsNow) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    WriteNew edit;
    edit.inBetween = [&] {
        // What remains possible while the file is held: to date it.
        UniqueFileHandle file = Open(path, FILE_WRITE_ATTRIBUTES,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
        FILETIME longAgo{0, 0x01c00000};
        ASSERT_TRUE(SetFileTime(file.Get(), nullptr, nullptr, &longAgo));
    };
    Outcome outcome = Write(path, edit);
    EXPECT_FALSE(outcome.Done);
    EXPECT_NE(outcome.Error.find(L"changed in the meantime"), std::wstring::npos);
    ExpectUntouched(folder, path);
}

// Like a virus scanner that looks at the file just before it is replaced.
TEST(SafeWrite, AReplacingMoveThatIsHinderedForAMomentIsTriedAgain) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    UniqueFileHandle scanner;
    WriteNew edit;
    edit.inBetween = [&] {
        scanner = Open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
        ASSERT_TRUE(scanner);
    };
    int retries = 0;
    DiskChangeWatch watch({}, [&] {
        if (++retries == 3)
            scanner.Reset();
    });
    Outcome outcome = Write(path, edit);
    EXPECT_TRUE(outcome.Done) << NString(outcome.Error.c_str()).ToNarrow();
    EXPECT_EQ(retries, 3);
    EXPECT_EQ(ReadWhole(path), New);
    EXPECT_EQ(folder.Names().size(), 1u);
}

TEST(SafeWrite, AReplacingMoveThatIsHinderedForGoodLeavesTheFileAndNoCopy) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    UniqueFileHandle holder;
    WriteNew edit;
    edit.inBetween = [&] {
        holder = Open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
        ASSERT_TRUE(holder);
    };
    int retries = 0;
    DiskChangeWatch watch({}, [&] { ++retries; });
    Outcome outcome = Write(path, edit);
    EXPECT_FALSE(outcome.Done);
    EXPECT_NE(outcome.Error.find(L"cannot replace the audio file"), std::wstring::npos);
    EXPECT_EQ(retries, 9);
    ExpectUntouched(folder, path);
}

TEST(SafeWrite, AFileThatIsWrittenBetweenTwoTriesOfTheMoveIsLeftAsItIsNow) {
    const Bytes others = BytesOf("what somebody else wrote meanwhile");
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    UniqueFileHandle holder;
    WriteNew edit;
    edit.inBetween = [&] {
        holder = Open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
        ASSERT_TRUE(holder);
    };
    DiskChangeWatch watch({}, [&] {
        holder.Reset();
        WriteWhole(path, others);
    });
    Outcome outcome = Write(path, edit);
    EXPECT_FALSE(outcome.Done);
    EXPECT_NE(outcome.Error.find(L"changed in the meantime"), std::wstring::npos);
    EXPECT_EQ(ReadWhole(path), others);
    EXPECT_EQ(folder.Names().size(), 1u);
}

TEST(SafeWrite, AttributesAreCarriedOver) {
    TestFolder folder;
    for (DWORD attributes :
         {DWORD{FILE_ATTRIBUTE_HIDDEN}, DWORD{FILE_ATTRIBUTE_SYSTEM},
          DWORD{FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM}, DWORD{FILE_ATTRIBUTE_ARCHIVE}}) {
        std::wstring path = folder.Write(L"song" + std::to_wstring(attributes), Old);
        SetFileAttributesW(path.c_str(), attributes);
        DWORD before = GetFileAttributesW(path.c_str());
        EXPECT_TRUE(Write(path).Done);
        EXPECT_EQ(GetFileAttributesW(path.c_str()), before);
    }
}

TEST(SafeWrite, TheAccessListIsCarriedOver) {
    TestFolder folder;
    std::wstring other = folder.Write(L"other.mp3", Old);
    std::wstring path = folder.Write(L"song.mp3", Old);
    LimitAccess(path);
    std::wstring before = AccessListOf(path);
    ASSERT_NE(before, AccessListOf(other));
    EXPECT_TRUE(Write(path).Done);
    EXPECT_EQ(AccessListOf(path), before);
    EXPECT_EQ(ReadWhole(path), New);
}

TEST(SafeWrite, BehindASymbolicLinkTheFileItselfIsWritten) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    std::wstring link = folder.File(L"link.mp3");
    MakeSymbolicLink(L"song.mp3", link);
    ASSERT_EQ(ReadWhole(link), Old);
    EXPECT_TRUE(Write(link).Done);
    EXPECT_EQ(ReadWhole(path), New);
    // A write through the link still reaches the file: it is a link still.
    WriteWhole(link, Old);
    EXPECT_EQ(ReadWhole(path), Old);
    EXPECT_EQ(folder.Names().size(), 2u);
}

TEST(SafeWrite, AFileOnAServerIsWritten) {
    TestShare share;
    std::wstring path = share.Path() + L"\\song.mp3";
    WriteWhole(path, Old);
    EXPECT_TRUE(Write(path).Done);
    EXPECT_EQ(ReadWhole(path), New);
    EXPECT_EQ(NamesIn(share.Path()).size(), 1u);
}

TEST(SafeWrite, AFileThatIsNotThereIsAFolderOrADeviceIsRefused) {
    TestFolder folder;
    EXPECT_NE(Write(folder.File(L"none.mp3")).Error.find(L"cannot open the audio file"),
              std::wstring::npos);
    EXPECT_FALSE(Write(folder.Path()).Done);
    EXPECT_FALSE(Write(L"NUL").Done);
    EXPECT_FALSE(Write(L"\\\\.\\pipe\\x").Done);
    EXPECT_TRUE(folder.Names().empty());
}

TEST(SafeWrite, APathBeyondTheOldLimitIsWritten) {
    TestFolder folder;
    std::wstring deep = folder.Path();
    while (deep.size() < 400) {
        deep += L"\\a folder of some length, to get beyond the limit";
        MakeFolder(deep);
    }
    std::wstring path = deep + L"\\song.mp3";
    WriteWhole(path, Old);
    EXPECT_TRUE(Write(path).Done);
    EXPECT_EQ(ReadWhole(path), New);
    EXPECT_EQ(NamesIn(deep).size(), 1u);
}

TEST(SafeWrite, TheLongestFileNameLeavesRoomForTheCopysName) {
    TestFolder folder;
    std::wstring path = folder.File(std::wstring(251, L'n') + L".mp3");
    WriteWhole(path, Old);
    EXPECT_TRUE(Write(path).Done);
    EXPECT_EQ(ReadWhole(path), New);
}

TEST(SafeWrite, AFileNameInAnyScriptIsWritten) {
    TestFolder folder;
    std::wstring path = folder.Write(L"\u00e9t\u00e9 \u6b4c \U0001F3B5.mp3", Old);
    EXPECT_TRUE(Write(path).Done);
    EXPECT_EQ(ReadWhole(path), New);
    EXPECT_EQ(folder.Names(), std::vector<std::wstring>{L"\u00e9t\u00e9 \u6b4c \U0001F3B5.mp3"});
}

TEST(SafeWrite, ASecondWriterWaitsForTheFirst) {
    TestFolder folder;
    std::wstring path = folder.Write(L"song.mp3", Old);
    UniqueKernelHandle secondIsThere(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    bool firstIsThrough = false;
    std::thread second;
    WriteNew edit;
    edit.inBetween = [&] {
        std::wstring copy = edit.copyPath;
        NString real((copy.substr(0, copy.rfind(L'\\') + 1) + L"song.mp3").c_str());
        second = std::thread([&, real] {
            WriterLock impatient, patient;
            EXPECT_FALSE(impatient.Take(real, 0));
            SetEvent(secondIsThere.Get());
            EXPECT_TRUE(patient.Take(real, WriterPatience));
            EXPECT_TRUE(firstIsThrough);
        });
        WaitForSingleObject(secondIsThere.Get(), INFINITE);
    };
    {
        // The last change of the disk comes before the lock goes.
        DiskChangeWatch watch([&] { firstIsThrough = ReadWhole(path) == New; });
        EXPECT_TRUE(Write(path, edit).Done);
    }
    second.join();
}

TEST(WriterLock, OneThatDiedIsNoHindrance) {
    NString path(L"\\\\?\\C:\\song of a writer that died.mp3");
    static WriterLock abandoned;
    std::thread([&] { EXPECT_TRUE(abandoned.Take(path, 0)); }).join();
    WriterLock next;
    EXPECT_TRUE(next.Take(path, 0));
}

TEST(WorkingCopyPath, IsTheSameForAFileWhateverTheCaseOfItsName) {
    EXPECT_STREQ(WorkingCopyPath(L"\\\\?\\C:\\a\\Song.mp3").c_str(),
                 WorkingCopyPath(L"\\\\?\\C:\\a\\sOng.mp3").c_str());
    EXPECT_STRNE(WorkingCopyPath(L"\\\\?\\C:\\a\\song1.mp3").c_str(),
                 WorkingCopyPath(L"\\\\?\\C:\\a\\song2.mp3").c_str());
}

TEST(WorkingCopyPath, LeavesOutWhatIsTooLongForAnExtension) {
    std::wstring path = L"\\\\?\\C:\\a." + std::wstring(200, L'x');
    EXPECT_LT(NameOf(WorkingCopyPath(path.c_str())).CharCount(), 40);
}

TEST(HashDigits, FollowThePublishedHash) {
    // The published values of no bytes, and of the six bytes "foobar".
    EXPECT_STREQ(HashDigits(L"").c_str(), L"cbf29ce484222325");
    EXPECT_STREQ(HashDigits(L"\x6f66\x626f\x7261").c_str(), L"85944171f73967e8");
    EXPECT_STREQ(HashDigits(L"SONG").c_str(), HashDigits(L"song").c_str());
}
