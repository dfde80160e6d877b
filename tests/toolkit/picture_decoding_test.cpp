#include "foundation/nfile.h"
#include "foundation/unique_handle.h"
#include "tests/support/leak_counters.h"
#include "tests/support/temp_folder.h"
#include "tests/toolkit/pixels.h"
#include "tests/toolkit/test_pictures.h"
#include "toolkit/nmsimg.h"
#include "toolkit/picture_decoding.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {
constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Blue = RGB(0, 0, 255);
constexpr COLORREF Green = RGB(0, 255, 0);

using Bytes = std::vector<uint8_t>;

uint32_t SizeOf(const Bytes& bytes) {
    return static_cast<uint32_t>(bytes.size());
}

bool Load(NBitmap& bitmap, const Bytes& bytes, bool transparent = false) {
    return bitmap.LoadMemory(bytes.data(), SizeOf(bytes), transparent);
}

Bytes PlainBmp(int width, int height, COLORREF colour = Blue) {
    return BmpPicture(width, height, [colour](int, int) { return colour; });
}

// Red at the top left and within, blue elsewhere.
Bytes KeyedBmp() {
    return BmpPicture(6, 4, [](int x, int y) { return (x == 0 && y == 0) || x == 3 ? Red : Blue; });
}

UniqueGlobalMemory InMemory(const Bytes& bytes) {
    UniqueGlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE, bytes.size()));
    memcpy(GlobalLock(memory.Get()), bytes.data(), bytes.size());
    GlobalUnlock(memory.Get());
    return memory;
}

bool Decode(const Bytes& bytes, bool transparent, const PictureTools& tools, NBitmap& bitmap) {
    UniqueGlobalMemory memory = InMemory(bytes);
    return DecodePicture(memory.Get(), SizeOf(bytes), transparent, tools, bitmap);
}

PictureTools ToolsWithout() {
    PictureTools tools = PlatformPictureTools();
    tools.transparentBlt = nullptr;
    return tools;
}

// Bitmaps that may still be made.
int bitmapsLeft;

bool MakeWhileThereAreAny(NBitmap& bitmap, HDC dc, int width, int height) {
    return bitmapsLeft-- > 0 && bitmap.CreateCompatible(dc, width, height);
}

void WriteFileOf(const NString& path, const Bytes& bytes) {
    NFile file(path, GENERIC_WRITE, CREATE_ALWAYS, false, false);
    ASSERT_TRUE(file.Write(bytes.data(), SizeOf(bytes), NFile::NoSeek));
}
} // namespace

TEST(PictureDecoding, EachFormatComesOutInItsSizeAndColours) {
    struct Case {
        const char* format;
        Bytes bytes;
        SIZE size;
        POINT place;
        COLORREF colour;
        int tolerance;
    };
    const Case cases[] = {
        {"PNG", Bytes(std::begin(pngPicture), std::end(pngPicture)), {4, 3}, {0, 0}, Red, 0},
        {"PNG", Bytes(std::begin(pngPicture), std::end(pngPicture)), {4, 3}, {1, 0}, Blue, 0},
        {"PNG", Bytes(std::begin(pngPicture), std::end(pngPicture)), {4, 3}, {3, 2}, Red, 0},
        {"GIF", Bytes(std::begin(gifPicture), std::end(gifPicture)), {4, 3}, {0, 0}, Red, 0},
        {"GIF", Bytes(std::begin(gifPicture), std::end(gifPicture)), {4, 3}, {0, 2}, Blue, 0},
        {"JPEG", Bytes(std::begin(jpegPicture), std::end(jpegPicture)), {16, 8}, {8, 4}, Green, 2},
        {"BMP", PlainBmp(9, 7, 0x123456), {9, 7}, {8, 6}, 0x123456, 0},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.format);
        NBitmap bitmap;
        ASSERT_TRUE(Load(bitmap, each.bytes));
        EXPECT_EQ(each.size.cx, bitmap.Width());
        EXPECT_EQ(each.size.cy, bitmap.Height());
        const COLORREF seen = PixelOf(bitmap.handle, each.place.x, each.place.y);
        EXPECT_NEAR(GetRValue(each.colour), GetRValue(seen), each.tolerance);
        EXPECT_NEAR(GetGValue(each.colour), GetGValue(seen), each.tolerance);
        EXPECT_NEAR(GetBValue(each.colour), GetBValue(seen), each.tolerance);
    }
}

TEST(PictureDecoding, SizesComeThroughTheHimetricUnitsExactly) {
    for (int size : {1, 2, 3, 10, 31, 87, 88, 89, 100, 299, 300, 333, 500, 1001}) {
        NBitmap bitmap;
        ASSERT_TRUE(Load(bitmap, PlainBmp(size, 2)));
        EXPECT_EQ(size, bitmap.Width());
        ASSERT_TRUE(Load(bitmap, PlainBmp(2, size)));
        EXPECT_EQ(size, bitmap.Height());
    }
}

TEST(PictureDecoding, ThePictureStandsUpright) {
    NBitmap bitmap;
    ASSERT_TRUE(Load(bitmap, BmpPicture(3, 2, [](int x, int y) {
                         return static_cast<uint32_t>(y * 100 + x * 10);
                     })));
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(static_cast<COLORREF>(y * 100 + x * 10), PixelOf(bitmap.handle, x, y));
}

TEST(PictureDecoding, AThreadNeedsNoComOfItsOwn) {
    bool loaded = false;
    std::thread([&] {
        NBitmap bitmap;
        loaded = bitmap.LoadMemory(jpegPicture, sizeof(jpegPicture));
    }).join();
    EXPECT_TRUE(loaded);
}

TEST(PictureDecoding, ATransparentPicturesTopLeftColourBecomesTheFaceWithAndWithoutThePlatform) {
    ASSERT_NE(nullptr, PlatformPictureTools().transparentBlt);
    for (const PictureTools& tools : {PlatformPictureTools(), ToolsWithout()}) {
        SCOPED_TRACE(tools.transparentBlt ? "TransparentBlt" : "pixel by pixel");
        NBitmap bitmap;
        ASSERT_TRUE(Decode(KeyedBmp(), true, tools, bitmap));
        EXPECT_EQ(6, bitmap.Width());
        EXPECT_EQ(4, bitmap.Height());
        const COLORREF face = GetSysColor(COLOR_BTNFACE);
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 6; ++x) {
                // Also where the key's colour is a part of the subject.
                const bool isKey = (x == 0 && y == 0) || x == 3;
                EXPECT_EQ(isKey ? face : Blue, PixelOf(bitmap.handle, x, y)) << x << ", " << y;
            }
    }
}

TEST(PictureDecoding, ThePlatformsTransparentBltIsUsedWhereThereIsOne) {
    static int calls;
    calls = 0;
    PictureTools tools = PlatformPictureTools();
    tools.transparentBlt = [](HDC, int, int, int width, int height, HDC, int, int, int, int,
                              UINT key) -> WINBOOL {
        ++calls;
        EXPECT_EQ(6, width);
        EXPECT_EQ(4, height);
        EXPECT_EQ(Red, key);
        return TRUE;
    };
    NBitmap bitmap;
    EXPECT_TRUE(Decode(KeyedBmp(), true, tools, bitmap));
    EXPECT_EQ(1, calls);
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), PixelOf(bitmap.handle, 1, 1));
}

TEST(PictureDecoding, TransparentPicturesLoadFromMemoryAndFiles) {
    TempFolder folder;
    const NString path = folder.File(L"keyed.bmp");
    WriteFileOf(path, KeyedBmp());
    NBitmap fromMemory;
    NBitmap fromFile;
    ASSERT_TRUE(Load(fromMemory, KeyedBmp(), true));
    ASSERT_TRUE(fromFile.LoadFile(path, true));
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), PixelOf(fromMemory.handle, 0, 0));
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), PixelOf(fromFile.handle, 0, 0));
}

TEST(PictureDecoding, APictureThatIsNotTransparentKeepsItsTopLeftColour) {
    NBitmap bitmap;
    ASSERT_TRUE(Load(bitmap, KeyedBmp()));
    EXPECT_EQ(Red, PixelOf(bitmap.handle, 0, 0));
}

TEST(PictureDecoding, WithoutABitmapToDrawOnItFailsAndIsEmpty) {
    PictureTools tools = PlatformPictureTools();
    tools.makeBitmap = MakeWhileThereAreAny;
    for (bool transparent : {false, true}) {
        bitmapsLeft = 0;
        NBitmap bitmap;
        EXPECT_FALSE(Decode(KeyedBmp(), transparent, tools, bitmap));
        EXPECT_EQ(nullptr, bitmap.handle);
    }
}

TEST(PictureDecoding, WithoutASecondBitmapATransparentPictureFailsAndTheFirstStaysBehind) {
    PictureTools tools = PlatformPictureTools();
    tools.makeBitmap = MakeWhileThereAreAny;
    bitmapsLeft = 1;
    NBitmap bitmap;
    EXPECT_FALSE(Decode(KeyedBmp(), true, tools, bitmap));
    ASSERT_NE(nullptr, bitmap.handle);
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), PixelOf(bitmap.handle, 0, 0));
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), PixelOf(bitmap.handle, 5, 3));
}

TEST(PictureDecoding, WhatIsNoPictureFailsAndLeavesTheBitmapEmpty) {
    const Bytes cases[] = {
        Bytes(8, 0),
        Bytes(1000, 0xFF),
        Bytes(pngPicture, pngPicture + 8),
        Bytes(jpegPicture, jpegPicture + 20),
        Bytes(gifPicture, gifPicture + 10),
    };
    for (const Bytes& bytes : cases) {
        NBitmap bitmap;
        bitmap.CreateCompatible(nullptr, 2, 2);
        EXPECT_FALSE(Load(bitmap, bytes));
        EXPECT_EQ(nullptr, bitmap.handle);
    }
}

TEST(PictureDecoding, BlocksOfLessThanEightBytesAreNoPictures) {
    const Bytes bytes = PlainBmp(2, 2);
    for (uint32_t size = 0; size < 8; ++size) {
        NBitmap bitmap;
        bitmap.CreateCompatible(nullptr, 2, 2);
        EXPECT_FALSE(bitmap.LoadMemory(bytes.data(), size));
        EXPECT_EQ(nullptr, bitmap.handle);
    }
    NBitmap bitmap;
    EXPECT_FALSE(bitmap.LoadMemory(nullptr, SizeOf(bytes)));
}

TEST(PictureDecoding, PicturesCutAnywhereNeitherCrashNorLeak) {
    const Bytes pictures[] = {
        Bytes(std::begin(pngPicture), std::end(pngPicture)),
        Bytes(std::begin(gifPicture), std::end(gifPicture)),
        Bytes(std::begin(jpegPicture), std::end(jpegPicture)),
        PlainBmp(4, 3),
    };
    const auto loadAllCuts = [&](size_t step) {
        for (const Bytes& whole : pictures)
            for (size_t size = 0; size < whole.size(); size += step) {
                NBitmap bitmap;
                const bool loaded =
                    bitmap.LoadMemory(whole.data(), static_cast<uint32_t>(size), size % 2 == 0);
                EXPECT_EQ(loaded, bitmap.handle != nullptr);
            }
    };
    loadAllCuts(1);
    const PlatformObjects before = CountPlatformObjects();
    loadAllCuts(17);
    EXPECT_EQ(before, CountPlatformObjects());
}

TEST(PictureDecoding, PicturesWithAnyByteSpoiltNeitherCrashNorLeak) {
    const Bytes pictures[] = {
        Bytes(std::begin(pngPicture), std::end(pngPicture)),
        Bytes(std::begin(gifPicture), std::end(gifPicture)),
        Bytes(std::begin(jpegPicture), std::end(jpegPicture)),
        PlainBmp(4, 3),
    };
    const auto loadAllSpoilt = [&](uint8_t change) {
        for (const Bytes& whole : pictures)
            for (size_t i = 0; i < whole.size(); ++i) {
                Bytes spoilt = whole;
                spoilt[i] = static_cast<uint8_t>(spoilt[i] ^ change);
                NBitmap bitmap;
                const bool loaded = Load(bitmap, spoilt, i % 2 == 0);
                EXPECT_EQ(loaded, bitmap.handle != nullptr);
            }
    };
    loadAllSpoilt(0x7F);
    const PlatformObjects before = CountPlatformObjects();
    loadAllSpoilt(0x01);
    EXPECT_EQ(before, CountPlatformObjects());
}

TEST(PictureDecoding, APictureThatClaimsAHugeSizeFailsAndLeavesNothing) {
    // Width and height of a bitmap file whose pixels are few.
    const uint32_t claims[][2] = {
        {0x7FFFFFFF, 0x7FFFFFFF}, {0x7FFFFFFF, 1},          {1, 0x7FFFFFFF},
        {0x80000000, 0x80000000}, {0xFFFFFFFF, 0xFFFFFFFF}, {100000, 100000},
    };
    const auto loadAll = [&] {
        for (const auto& claim : claims) {
            Bytes bytes = PlainBmp(2, 2);
            memcpy(bytes.data() + 18, &claim[0], 4);
            memcpy(bytes.data() + 22, &claim[1], 4);
            NBitmap bitmap;
            EXPECT_FALSE(Load(bitmap, bytes)) << claim[0] << " by " << claim[1];
            EXPECT_EQ(nullptr, bitmap.handle);
        }
    };
    loadAll();
    const PlatformObjects before = CountPlatformObjects();
    loadAll();
    EXPECT_EQ(before, CountPlatformObjects());
}

TEST(PictureDecoding, GoodPicturesLeaveNothingButTheirBitmaps) {
    const auto useAll = [] {
        for (const PictureTools& tools : {PlatformPictureTools(), ToolsWithout()})
            for (bool transparent : {false, true}) {
                NBitmap bitmap;
                EXPECT_TRUE(Decode(KeyedBmp(), transparent, tools, bitmap));
            }
        PictureTools failing = PlatformPictureTools();
        failing.makeBitmap = MakeWhileThereAreAny;
        for (int bitmaps : {0, 1}) {
            bitmapsLeft = bitmaps;
            NBitmap bitmap;
            EXPECT_FALSE(Decode(KeyedBmp(), true, failing, bitmap));
        }
    };
    useAll();
    const PlatformObjects before = CountPlatformObjects();
    for (int i = 0; i < 50; ++i)
        useAll();
    EXPECT_EQ(before, CountPlatformObjects());
}

TEST(PictureDecoding, AFileIsReadWhole) {
    TempFolder folder;
    const NString path = folder.File(L"picture.bmp");
    WriteFileOf(path, PlainBmp(300, 200, Green));
    NBitmap bitmap;
    EXPECT_TRUE(bitmap.LoadFile(path));
    EXPECT_EQ(300, bitmap.Width());
    EXPECT_EQ(200, bitmap.Height());
    EXPECT_EQ(Green, PixelOf(bitmap.handle, 299, 199));
}

TEST(PictureDecoding, FilesThatHoldNoPictureLeaveTheBitmapEmpty) {
    TempFolder folder;
    const NString empty = folder.File(L"empty.bmp");
    const NString text = folder.File(L"text.bmp");
    WriteFileOf(empty, Bytes());
    WriteFileOf(text, Bytes(100, 'x'));
    for (const NString& path :
         {empty, text, folder.File(L"missing.bmp"), folder.Path(), NString()}) {
        NBitmap bitmap;
        bitmap.CreateCompatible(nullptr, 2, 2);
        EXPECT_FALSE(bitmap.LoadFile(path));
        EXPECT_EQ(nullptr, bitmap.handle);
    }
}

TEST(PictureDecoding, AFileThatEndsBeforeItsSizeIsNotRead) {
    TempFolder folder;
    const NString path = folder.File(L"short.bmp");
    const Bytes bytes = PlainBmp(5, 5);
    WriteFileOf(path, bytes);
    NFile file(path, GENERIC_READ, OPEN_EXISTING, false, true);
    UniqueGlobalMemory whole = ReadPictureFile(file, SizeOf(bytes));
    ASSERT_TRUE(whole);
    EXPECT_EQ(0, memcmp(GlobalLock(whole.Get()), bytes.data(), bytes.size()));
    GlobalUnlock(whole.Get());
    EXPECT_FALSE(ReadPictureFile(file, SizeOf(bytes) + 1));
}

TEST(PictureDecoding, APictureOfNoSizeNeitherCrashesNorLeaves) {
    const uint32_t claims[][2] = {{0, 0}, {0, 5}, {5, 0}};
    for (const auto& claim : claims) {
        Bytes bytes = PlainBmp(2, 2);
        memcpy(bytes.data() + 18, &claim[0], 4);
        memcpy(bytes.data() + 22, &claim[1], 4);
        NBitmap bitmap;
        const bool loaded = Load(bitmap, bytes); // the platform's to say
        EXPECT_EQ(loaded, bitmap.handle != nullptr);
    }
}

TEST(NMsImgDLL, BindsBothFunctionsOnce) {
    NMsImgDLL library;
    EXPECT_TRUE(library.Load(L"Msimg32.dll"));
    EXPECT_TRUE(library.Loaded);
    EXPECT_NE(nullptr, library.transparentBlt);
    EXPECT_NE(nullptr, library.gradientFill);
    // A second call does nothing.
    const HMODULE module = library.Module;
    EXPECT_TRUE(library.Load(L"not there.dll"));
    EXPECT_EQ(module, library.Module);
    EXPECT_NE(nullptr, library.transparentBlt);
}

TEST(NMsImgDLL, ALibraryWithoutTheFunctionsIsLoadedAllTheSame) {
    NMsImgDLL library;
    EXPECT_TRUE(library.Load(L"ntdll.dll"));
    EXPECT_NE(nullptr, library.Module);
    EXPECT_EQ(nullptr, library.transparentBlt);
    EXPECT_EQ(nullptr, library.gradientFill);
}

TEST(NMsImgDLL, ALibraryThatIsMissingIsNotLoaded) {
    NMsImgDLL library;
    EXPECT_FALSE(library.Load(L"not there.dll"));
    EXPECT_FALSE(library.Loaded);
    EXPECT_EQ(nullptr, library.Module);
    EXPECT_EQ(nullptr, library.transparentBlt);
    EXPECT_EQ(nullptr, library.gradientFill);
}

TEST(NMsImgDLL, OneOfTheProcessIsLoadedAtTheFirstNeed) {
    const NMsImgDLL& first = NProcessMsImg();
    EXPECT_EQ(&first, &NProcessMsImg());
    EXPECT_TRUE(first.Loaded);
    EXPECT_EQ(GetModuleHandleW(L"Msimg32.dll"), first.Module);
    EXPECT_EQ(first.transparentBlt, PlatformPictureTools().transparentBlt);
}
