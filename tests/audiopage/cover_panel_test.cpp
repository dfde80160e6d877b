#include "audiopage/cover_panel.h"
#include "audiopage/property_rows.h"
#include "tests/audiopage/page_settings.h"
#include "tests/audiopage/scripted_audio.h"
#include "tests/audiopage/test_pictures.h"
#include "tests/support/picture_compare.h"
#include "tests/support/temp_folder.h"

#include <string>

namespace {
constexpr int CaseWidth = 99;
constexpr int CaseHeight = 90;
constexpr int Opening = 88;
constexpr uint32_t Grey = 0xEEEEEE;
constexpr uint32_t Red = 0xD02010;
constexpr uint32_t Black = 0;
constexpr uint32_t DarkestOfTheBright = 0x00005A; // blue of 90

constexpr int SameColour = 2; // what a stretch may be off on a plain colour
constexpr int SamePicture = 24;

Picture WholePicture(const NCanvas& canvas) {
    return ReadPicture(canvas.dc, canvas.Width(), canvas.Height());
}

// A part of the opening. Its first columns and rows that are uncertain aren't
// looked at.
struct Place {
    int left, top, width, height;
    int uncertainColumns = 0;
    int uncertainRows = 0;
};
constexpr Place WholeOpening = {0, 0, Opening, Opening};

class Covers : public testing::Test {
protected:
    void AddCover(const wchar_t* name, const NBuffer& data) {
        tags_.AddData(name, data.Data, static_cast<int>(data.Size));
    }
    void Build() { BuildAlbumArt(list_, tags_); }
    // The framed picture at an index.
    Picture Framed(int index = 0) {
        if (index >= list_.Count()) {
            ADD_FAILURE() << "no picture " << index;
            return Picture{CaseWidth, CaseHeight,
                           std::vector<uint32_t>(static_cast<size_t>(CaseWidth * CaseHeight))};
        }
        return WholePicture(*list_[index]);
    }
    static uint32_t InOpening(const Picture& framed, int x, int y) {
        return framed.At(10 + x, 1 + y);
    }
    Picture FramedCover(const NBuffer& data) {
        tags_.Clear();
        AddCover(L"_albumart_1", data);
        Build();
        return Framed();
    }
    // The cover covers this part of the opening, and the rest is grey.
    void ExpectCoverAt(const Picture& framed, uint32_t colour, const Place& place) {
        for (int y = 0; y < Opening; ++y) {
            for (int x = 0; x < Opening; ++x) {
                int inX = x - place.left;
                int inY = y - place.top;
                bool inside = inX >= 0 && inX < place.width && inY >= 0 && inY < place.height;
                if (inside && (inX < place.uncertainColumns || inY < place.uncertainRows))
                    continue;
                ASSERT_LE(PixelDistance(InOpening(framed, x, y), inside ? colour : Grey),
                          SameColour)
                    << x << ", " << y;
            }
        }
    }

    clTagRecord tags_;
    NKeyedList<NCanvas> list_;
};

// A test picture whose corners differ, so that it can be seen which way up it
// stands and how much of it shows.
uint32_t Corners(int x, int y, int width, int height) {
    uint32_t red = static_cast<uint32_t>(255 * x / std::max(width - 1, 1));
    uint32_t green = static_cast<uint32_t>(255 * y / std::max(height - 1, 1));
    return red << 16 | green << 8 | 0x60;
}

NBuffer CornersFile(int width, int height) {
    return BitmapFile(width, height, [=](int x, int y) { return Corners(x, y, width, height); });
}

NBuffer BorderedFile(int width, int height, uint32_t border, uint32_t inside) {
    return BitmapFile(width, height, [=](int x, int y) {
        bool onBorder = x == 0 || y == 0 || x == width - 1 || y == height - 1;
        return onBorder ? border : inside;
    });
}

NBuffer DamagedPicture() {
    NBuffer bytes;
    bytes.Set("this is no picture at all", 25);
    return bytes;
}
} // namespace

// Where covers stand.

TEST_F(Covers, AFramedCoverHasTheSizeOfTheCase) {
    Picture framed = FramedCover(PlainBitmapFile(Opening, Opening, Red));
    EXPECT_EQ(framed.width, CaseWidth);
    EXPECT_EQ(framed.height, CaseHeight);
    ExpectCoverAt(framed, Red, WholeOpening);
}

TEST_F(Covers, AFlatSmallCoverIsCopiedToTheMiddle) {
    Picture framed = FramedCover(CornersFile(Opening, 40));
    for (int y = 0; y < Opening; ++y) {
        for (int x = 0; x < Opening; ++x) {
            bool inside = y >= 24 && y < 64;
            ASSERT_EQ(InOpening(framed, x, y), inside ? Corners(x, y - 24, Opening, 40) : Grey)
                << x << ", " << y;
        }
    }
}

TEST_F(Covers, SmallCoversAreNeverScaled) {
    const struct {
        int width, height, left, top;
    } cases[] = {
        {40, 88, 24, 0}, {1, 1, 44, 44}, {3, 5, 43, 42}, {87, 87, 1, 1}, {88, 87, 0, 1},
    };
    for (const auto& cover : cases) {
        Picture framed = FramedCover(PlainBitmapFile(cover.width, cover.height, Red));
        ExpectCoverAt(framed, Red, {cover.left, cover.top, cover.width, cover.height});
    }
}

// Wine leaves out the first column and row when it shrinks by a factor that is
// not whole.
TEST_F(Covers, GreatCoversAreScaledToTheOpening) {
    const struct {
        int width, height;
        Place place;
    } cases[] = {
        {200, 100, {0, 22, 88, 44, 1, 1}}, {100, 200, {22, 0, 44, 88, 1, 1}},
        {176, 176, WholeOpening},          {176, 88, {0, 22, 88, 44}},
        {89, 89, {0, 0, 88, 88, 1, 1}},    {1000, 1, {0, 44, 88, 1}},
        {1, 1000, {44, 0, 1, 88}},         {89, 1, {0, 44, 88, 1, 1, 0}},
        {300, 100, {0, 30, 88, 29}},       {1000, 20, {0, 44, 88, 1}},
    };
    for (const auto& cover : cases) {
        SCOPED_TRACE(std::to_string(cover.width) + " x " + std::to_string(cover.height));
        Picture framed = FramedCover(PlainBitmapFile(cover.width, cover.height, Red));
        ExpectCoverAt(framed, Red, cover.place);
    }
}

TEST_F(Covers, AroundTheOpeningStandsTheCase) {
    NCanvas bare;
    ASSERT_TRUE(bare.LoadResource(236));
    Picture frame = WholePicture(bare);
    Picture framed = FramedCover(PlainBitmapFile(200, 200, Red));
    for (int y = 0; y < CaseHeight; ++y) {
        for (int x = 0; x < CaseWidth; ++x) {
            if (x < 10 || x >= 98 || y < 1 || y >= 89) {
                ASSERT_EQ(framed.At(x, y), frame.At(x, y)) << x << ", " << y;
            }
        }
    }
}

// Which covers there are.

TEST_F(Covers, EachCoverHasAPictureInTheOrderOfTheNumbers) {
    AddCover(L"_albumart_2_back", PlainBitmapFile(8, 8, 0x00FF00));
    AddCover(L"_albumart_1", PlainBitmapFile(8, 8, 0xFF0000));
    AddCover(L"_albumart_4_not reached", PlainBitmapFile(8, 8, 0x0000FF));
    tags_.Add(L"artist", L"A");
    Build();
    ASSERT_EQ(list_.Count(), 2);
    EXPECT_EQ(InOpening(Framed(0), 44, 44), 0xFF0000u);
    EXPECT_EQ(InOpening(Framed(1), 44, 44), 0x00FF00u);
}

TEST_F(Covers, WithoutACoverThereIsTheBareCase) {
    tags_.Add(L"artist", L"A");
    Build();
    ASSERT_EQ(list_.Count(), 1);
    NCanvas bare;
    ASSERT_TRUE(bare.LoadResource(236));
    EXPECT_EQ(Framed().pixels, WholePicture(bare).pixels);
}

TEST_F(Covers, AnElementOf8BytesIsNoCover) {
    NBuffer bytes;
    bytes.Set("12345678", 8);
    AddCover(L"_albumart_1", bytes);
    AddCover(L"_albumart_2", bytes);
    Build();
    ASSERT_EQ(list_.Count(), 1);
    NCanvas bare;
    ASSERT_TRUE(bare.LoadResource(236));
    EXPECT_EQ(Framed().pixels, WholePicture(bare).pixels);
}

TEST_F(Covers, AnElementOf8BytesIsPassedOver) {
    NBuffer bytes;
    bytes.Set("12345678", 8);
    AddCover(L"_albumart_1", bytes);
    AddCover(L"_albumart_2", PlainBitmapFile(88, 88, Red));
    Build();
    ASSERT_EQ(list_.Count(), 1);
    ExpectCoverAt(Framed(), Red, WholeOpening);
}

TEST_F(Covers, ADamagedPictureIsAGreyCover) {
    NBuffer nine;
    nine.Set("123456789", 9);
    AddCover(L"_albumart_1", DamagedPicture());
    AddCover(L"_albumart_2", nine);
    Build();
    ASSERT_EQ(list_.Count(), 2);
    ExpectCoverAt(Framed(0), Grey, WholeOpening);
    ExpectCoverAt(Framed(1), Grey, WholeOpening);
}

TEST_F(Covers, PicturesThatWereThereAreReplaced) {
    AddCover(L"_albumart_1", PlainBitmapFile(8, 8, Red));
    Build();
    Build();
    EXPECT_EQ(list_.Count(), 1);
}

// The dark border.

namespace {
class DarkBorder : public testing::Test {
protected:
    void Load(const NBuffer& file) {
        ASSERT_TRUE(picture_.LoadMemory(file.Data, file.Size));
        width_ = picture_.Width();
        height_ = picture_.Height();
    }
    bool IsTrimmed(const NBuffer& file) {
        Load(file);
        double oldWidth = width_;
        double oldHeight = height_;
        TrimDarkBorder(picture_, width_, height_);
        EXPECT_EQ(picture_.Width(), static_cast<int>(width_));
        EXPECT_EQ(picture_.Height(), static_cast<int>(height_));
        if (width_ == oldWidth && height_ == oldHeight)
            return false;
        EXPECT_EQ(width_, oldWidth - 2);
        EXPECT_EQ(height_, oldHeight - 2);
        return true;
    }

    NCanvas picture_;
    double width_ = 0;
    double height_ = 0;
};
} // namespace

TEST_F(DarkBorder, ABlackFrameOfOnePixelIsTakenOff) {
    EXPECT_TRUE(IsTrimmed(BorderedFile(300, 300, Black, Red)));
    EXPECT_EQ(width_, 298);
    EXPECT_EQ(height_, 298);
    for (uint32_t pixel : WholePicture(picture_).pixels)
        ASSERT_EQ(pixel, Red);
}

TEST_F(DarkBorder, WhatStandsInsideKeepsItsPlace) {
    EXPECT_TRUE(IsTrimmed(BitmapFile(7, 5, [](int x, int y) {
        bool onBorder = x == 0 || y == 0 || x == 6 || y == 4;
        return onBorder ? Black : Corners(x, y, 7, 5);
    })));
    Picture inside = WholePicture(picture_);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x)
            EXPECT_EQ(inside.At(x, y), Corners(x + 1, y + 1, 7, 5)) << x << ", " << y;
    }
}

TEST_F(DarkBorder, TheMeasuresAreCutToWholePixels) {
    Load(BorderedFile(6, 6, Black, Red));
    width_ = 6.9;
    height_ = 6.5;
    TrimDarkBorder(picture_, width_, height_);
    EXPECT_EQ(width_, 4);
    EXPECT_EQ(height_, 4);
}

TEST_F(DarkBorder, OnePixelThatIsNotDarkKeepsTheBorder) {
    const struct {
        int x, y;
    } places[] = {{0, 0}, {19, 0}, {0, 9}, {19, 9}, {7, 0}, {7, 9}, {0, 4}, {19, 4}};
    for (const auto& place : places) {
        EXPECT_FALSE(IsTrimmed(BitmapFile(20, 10,
                                          [&](int x, int y) {
                                              if (x == place.x && y == place.y)
                                                  return DarkestOfTheBright;
                                              return x == 0 || y == 0 || x == 19 || y == 9 ? Black
                                                                                           : Red;
                                          })))
            << place.x << ", " << place.y;
    }
}

TEST_F(DarkBorder, DarkIsBelow90InEachColour) {
    EXPECT_TRUE(IsTrimmed(BorderedFile(10, 10, 0x595959, Red)));
    EXPECT_FALSE(IsTrimmed(BorderedFile(10, 10, 0x5A0000, Red)));
    EXPECT_FALSE(IsTrimmed(BorderedFile(10, 10, 0x005A00, Red)));
    EXPECT_FALSE(IsTrimmed(BorderedFile(10, 10, 0x00005A, Red)));
}

TEST_F(DarkBorder, PicturesBelow4PixelsKeepTheirs) {
    EXPECT_FALSE(IsTrimmed(PlainBitmapFile(3, 10, Black)));
    EXPECT_FALSE(IsTrimmed(PlainBitmapFile(10, 3, Black)));
    EXPECT_TRUE(IsTrimmed(PlainBitmapFile(4, 4, Black)));
    EXPECT_EQ(width_, 2);
}

TEST_F(DarkBorder, AnEmptyPictureStaysEmpty) {
    TrimDarkBorder(picture_, width_, height_);
    EXPECT_EQ(picture_.handle, nullptr);
    width_ = height_ = 10;
    TrimDarkBorder(picture_, width_, height_);
    EXPECT_EQ(width_, 10);
}

TEST_F(Covers, ADarkBorderDoesNotShowOnAScaledCover) {
    Picture framed = FramedCover(BorderedFile(90, 90, Black, Red));
    ExpectCoverAt(framed, Red, WholeOpening);
}

TEST_F(Covers, ASmallCoverKeepsItsDarkBorder) {
    Picture framed = FramedCover(BorderedFile(88, 88, Black, Red));
    EXPECT_EQ(InOpening(framed, 0, 0), Black);
    EXPECT_EQ(InOpening(framed, 87, 87), Black);
    EXPECT_EQ(InOpening(framed, 1, 1), Red);
}

// The case as it is painted. The pictures are those of Wine, which shrinks by
// leaving pixels out.

namespace {
constexpr PictureTolerance Tolerance = {.colour = SamePicture, .pixels = 8};

testing::AssertionResult LooksLikeGolden(const Picture& picture, const char* name) {
    return LooksLike(picture, std::string(TONEWRIGHT_SOURCE_DIR "/tests/audiopage/golden/") + name,
                     Tolerance, TONEWRIGHT_BUILD_DIR "/pictures");
}

// Rings, which show each flaw of scaling.
NBuffer Rings(int width, int height) {
    return BitmapFile(width, height, [=](int x, int y) {
        int dx = 2 * x - width;
        int dy = 2 * y - height;
        int ring = (dx * dx + dy * dy) * 16 / (width * width + height * height);
        return ring % 2 ? Corners(x, y, width, height) : 0xF4E8C8u;
    });
}
} // namespace

TEST_F(Covers, LookAsTheyDidWhenTheyWereLookedAt) {
    EXPECT_TRUE(LooksLikeGolden(FramedCover(Rings(60, 40)), "small.bmp"));
    EXPECT_TRUE(LooksLikeGolden(FramedCover(Rings(200, 100)), "wide.bmp"));
    EXPECT_TRUE(LooksLikeGolden(FramedCover(Rings(264, 264)), "square.bmp"));
    EXPECT_TRUE(LooksLikeGolden(FramedCover(Rings(1000, 1)), "line.bmp"));
    EXPECT_TRUE(LooksLikeGolden(FramedCover(BorderedFile(300, 300, Black, Red)), "bordered.bmp"));
    EXPECT_TRUE(LooksLikeGolden(FramedCover(DamagedPicture()), "damaged.bmp"));
    tags_.Clear();
    Build();
    EXPECT_TRUE(LooksLikeGolden(Framed(), "bare.bmp"));
}

// The rows' run.

namespace {
class CoversOfFiles : public PageSettings {
protected:
    void Add(ScriptedAudio& audio) {
        NString path = folder_.File((std::to_wstring(files_.Count) + L".scripted").c_str());
        audio.Write(path);
        files_.Add(path);
    }
    static void GiveCover(ScriptedAudio& audio) {
        NBuffer cover = PlainBitmapFile(88, 88, Red);
        audio.tags.AddData(L"_albumart_1", cover.Data, static_cast<int>(cover.Size));
    }
    void Build() { BuildPropRows(files_, nullptr, rows_, &art_); }

    TempFolder folder_;
    NStringList files_;
    NKeyedList<clPropRow> rows_;
    NKeyedList<NCanvas> art_;
};
} // namespace

TEST_F(CoversOfFiles, OneFileHasItsCovers) {
    ScriptedAudio audio;
    GiveCover(audio);
    Add(audio);
    Build();
    ASSERT_EQ(art_.Count(), 1);
    EXPECT_EQ(WholePicture(*art_[0]).At(54, 45), Red);
}

TEST_F(CoversOfFiles, WithoutATargetOneFileHasItsRowsAlone) {
    ScriptedAudio audio;
    GiveCover(audio);
    Add(audio);
    BuildPropRows(files_, nullptr, rows_, nullptr);
    EXPECT_EQ(rows_.Count(), 23);
}

TEST_F(CoversOfFiles, AFileWithATagButNoCoverHasTheBareCase) {
    ScriptedAudio audio;
    Add(audio);
    Build();
    EXPECT_EQ(art_.Count(), 1);
}

TEST_F(CoversOfFiles, AFileWithoutATagHasNothing) {
    ScriptedAudio audio;
    audio.says.tagsAreNull = 1;
    Add(audio);
    art_.Add();
    Build();
    EXPECT_EQ(art_.Count(), 0);
}

// A record of no bytes is none, wherever its pointer leads.
TEST_F(CoversOfFiles, AFileWithAnEmptyTagHasNothing) {
    ScriptedAudio audio;
    GiveCover(audio);
    NBuffer tagBytes;
    audio.tags.Serialise(tagBytes);
    audio.says.tagsSize = 0 - tagBytes.Size;
    Add(audio);
    Build();
    EXPECT_EQ(art_.Count(), 0);
}

TEST_F(CoversOfFiles, SeveralFilesHaveNone) {
    ScriptedAudio audio;
    GiveCover(audio);
    Add(audio);
    Add(audio);
    art_.Add();
    Build();
    EXPECT_EQ(art_.Count(), 0);
}
