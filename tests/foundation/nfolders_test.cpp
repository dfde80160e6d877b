#include "foundation/ndisk.h"
#include "foundation/nfolders.h"
#include "foundation/npath.h"
#include "foundation/nreg.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <shlobj.h>
#include <winternl.h>

#include <map>
#include <string>
#include <utility>

namespace {
// What the platform of a test knows.
std::map<int, std::wstring> known;

NString Lookup(int id) {
    auto found = known.find(id);
    return found == known.end() ? NString() : NString(found->second.c_str());
}

class SpecialFolders : public testing::Test {
protected:
    void SetUp() override { known.clear(); }
    static NString Get(int id, const wchar_t* fallback = nullptr) {
        return NGetSpecialFolderBy(Lookup, id, fallback);
    }
};

// While it lives, the loader knows this program's file by another name.
class LoadedAs {
public:
    explicit LoadedAs(NString name)
        : name_(std::move(name)), entry_(Entry()), old_(entry_.FullDllName) {
        entry_.FullDllName.Buffer = name_.Text;
        entry_.FullDllName.Length =
            static_cast<USHORT>(static_cast<size_t>(name_.CharCount()) * sizeof(wchar_t));
        entry_.FullDllName.MaximumLength =
            static_cast<USHORT>(entry_.FullDllName.Length + sizeof(wchar_t));
    }
    ~LoadedAs() { entry_.FullDllName = old_; }
    LoadedAs(const LoadedAs&) = delete;
    LoadedAs& operator=(const LoadedAs&) = delete;

private:
    // The program itself comes first in the loader's list.
    static LDR_DATA_TABLE_ENTRY& Entry() {
        auto currentPeb = reinterpret_cast<PEB*(NTAPI*)()>(
            GetProcAddress(GetModuleHandleW(L"ntdll"), "RtlGetCurrentPeb"));
        LIST_ENTRY& modules = currentPeb()->Ldr->InMemoryOrderModuleList;
        return *CONTAINING_RECORD(modules.Flink, LDR_DATA_TABLE_ENTRY, InMemoryOrderLinks);
    }

    NString name_;
    LDR_DATA_TABLE_ENTRY& entry_;
    UNICODE_STRING old_;
};

class DerivedFolders : public SpecialFolders {
protected:
    void SetUp() override {
        known = {
            {5, L"C:\\Users\\me\\Documents"}, {46, L"C:\\Public\\"}, {0x5000, L"C:\\Programs"}};
    }
};
} // namespace

TEST_F(SpecialFolders, TheIdsAreThoseOfThePlatform) {
    EXPECT_EQ(NFolderProgramFiles, 20480);
    EXPECT_EQ(NFolderSystemRoot, 20481);
    EXPECT_EQ(NFolderSystem, 20482);
    EXPECT_EQ(NFolderTemp, 20483);
}

TEST_F(SpecialFolders, APathOfThePlatformGetsABackslash) {
    known = {{26, L"C:\\Users\\me\\AppData"}, {13, L"D:\\Music\\"}};
    EXPECT_EQ(Get(26), L"C:\\Users\\me\\AppData\\");
    EXPECT_EQ(Get(13), L"D:\\Music\\");
}

TEST_F(SpecialFolders, APathOfThePlatformGoesBeforeADerivedOne) {
    known = {{5, L"C:\\Documents"}, {13, L"D:\\Music"}};
    EXPECT_EQ(Get(13, L"E:\\"), L"D:\\Music\\");
}

TEST_F(SpecialFolders, AnUnknownIdGivesTheFallback) {
    EXPECT_EQ(Get(1234, L"D:\\Mine"), L"D:\\Mine\\");
    EXPECT_EQ(Get(1234, L"D:\\Mine\\"), L"D:\\Mine\\");
    EXPECT_EQ(Get(1234), L"C:\\Error\\");
    EXPECT_EQ(Get(1234, L""), L"C:\\Error\\");
}

TEST_F(SpecialFolders, AFolderWhoseBaseIsUnknownTooGivesTheFallback) {
    for (int id : {26, 43, 13, 39, 14, 53, 54, 55}) {
        EXPECT_EQ(Get(id, L"D:\\Mine"), L"D:\\Mine\\") << id;
        EXPECT_EQ(Get(id), L"C:\\Error\\") << id;
    }
}

TEST_F(DerivedFolders, ApplicationDataLiesBesideThePersonalFolder) {
    EXPECT_EQ(Get(26), L"C:\\Users\\me\\Application Data\\");
}

TEST_F(DerivedFolders, CommonProgramFilesLieBelowProgramFiles) {
    EXPECT_EQ(Get(43), L"C:\\Programs\\Common\\");
}

TEST_F(DerivedFolders, TheUsersMediaLieBelowThePersonalFolder) {
    EXPECT_EQ(Get(13), L"C:\\Users\\me\\Documents\\My Music\\");
    EXPECT_EQ(Get(39), L"C:\\Users\\me\\Documents\\My Pictures\\");
    EXPECT_EQ(Get(14), L"C:\\Users\\me\\Documents\\My Video\\");
}

TEST_F(DerivedFolders, CommonMediaLieBelowTheCommonDocuments) {
    EXPECT_EQ(Get(53), L"C:\\Public\\My Music\\");
    EXPECT_EQ(Get(54), L"C:\\Public\\My Pictures\\");
    EXPECT_EQ(Get(55), L"C:\\Public\\My Video\\");
}

TEST(PlatformFolders, ProgramFilesAreThoseOfTheRegistry) {
    NString expected = NRegReadString(L"ProgramFilesDir", HKEY_LOCAL_MACHINE,
                                      L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion");
    ASSERT_FALSE(expected.IsEmpty());
    EXPECT_EQ(NGetSpecialFolder(0x5000), NAppendBackslash(expected));
}

TEST(PlatformFolders, SystemFoldersAreThoseOfThePlatform) {
    wchar_t folder[MAX_PATH];
    GetWindowsDirectoryW(folder, MAX_PATH);
    EXPECT_EQ(NGetSpecialFolder(0x5001), NAppendBackslash(folder));
    GetSystemDirectoryW(folder, MAX_PATH);
    EXPECT_EQ(NGetSpecialFolder(0x5002), NAppendBackslash(folder));
}

TEST(PlatformFolders, OtherIdsAreAskedOfTheShell) {
    wchar_t folder[MAX_PATH];
    ASSERT_TRUE(SHGetSpecialFolderPathW(nullptr, folder, CSIDL_APPDATA, FALSE));
    EXPECT_EQ(NGetSpecialFolder(CSIDL_APPDATA), NAppendBackslash(folder));
    EXPECT_EQ(NGetSpecialFolder(0x77, L"D:\\Mine"), L"D:\\Mine\\");
}

TEST(PlatformFolders, TheTempFolderIsThatOfTheEnvironment) {
    TempFolder folder;
    ScopedEnvironment temp(L"TMP", folder.Path().Text);
    EXPECT_EQ(NGetTempFolder(), NAppendBackslash(folder.Path()));
    EXPECT_EQ(NGetSpecialFolder(0x5003), NAppendBackslash(folder.Path()));
}

TEST(PlatformFolders, ATempFolderTooLongForItsBufferIsNone) {
    NString tooLong(L"C:\\");
    tooLong.SetLength(300, L'x');
    ScopedEnvironment temp(L"TMP", tooLong.Text);
    EXPECT_EQ(NGetTempFolder(), L"C:\\Temp\\");
}

TEST_F(SpecialFolders, WithoutATempFolderThereIsAFixedOne) {
    EXPECT_EQ(NGetTempFolderBy(Lookup), L"C:\\Temp\\");
    known = {{0x5003, L"D:\\T"}};
    EXPECT_EQ(NGetTempFolderBy(Lookup), L"D:\\T\\");
}

TEST(ModuleFolder, AModulesPathLeadsToItsFile) {
    NString path = NGetModulePath(GetModuleHandleW(nullptr));
    EXPECT_EQ(NGetFileName(path), L"foundation_tests.exe");
    bool isFolder = true;
    EXPECT_TRUE(NPathExists(path, isFolder));
    EXPECT_FALSE(isFolder);
    EXPECT_EQ(NGetFileName(NGetModulePath(GetModuleHandleW(L"kernel32"))).ToLower(),
              L"kernel32.dll");
}

TEST(ModuleFolder, AQuotedAnswerOfThePlatformGivesThePathWithoutItsQuotes) {
    HINSTANCE instance = GetModuleHandleW(nullptr);
    LoadedAs quoted(L"\"C:\\My Music\\a.exe\" /x \"y\"");
    wchar_t answer[MAX_PATH] = {};
    GetModuleFileNameW(instance, answer, MAX_PATH);
    ASSERT_EQ(answer[0], L'"');
    EXPECT_EQ(NGetModulePath(instance), L"C:\\My Music\\a.exe");
    EXPECT_EQ(NGetModuleFolder(instance), L"C:\\My Music\\");
}

TEST(ModuleFolder, APathBelowAThousandUnitsIsKeptAndALongerOneIsCut) {
    HINSTANCE instance = GetModuleHandleW(nullptr);
    NString path(L"C:\\");
    path.SetLength(999, L'x');
    {
        LoadedAs longest(path);
        EXPECT_EQ(NGetModulePath(instance), path);
    }
    NString longer(path);
    longer.SetLength(2000, L'y');
    LoadedAs tooLong(longer);
    EXPECT_EQ(NGetModulePath(instance).Left(999), path);
    EXPECT_LE(NGetModulePath(instance).CharCount(), 1000);
}

TEST(ModuleFolder, AModulesFolderEndsInABackslash) {
    HINSTANCE instance = GetModuleHandleW(nullptr);
    EXPECT_EQ(NGetModuleFolder(instance).Concat(L"foundation_tests.exe"), NGetModulePath(instance));
}
