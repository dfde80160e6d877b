#include "tests/support/picture_compare.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace {
class PictureCompare : public testing::Test {
protected:
    void SetUp() override {
        for (uint32_t index = 1; index <= 6; ++index)
            picture_.pixels.push_back(0x081018 * index);
        ASSERT_TRUE(SavePicture(golden_, picture_));
    }
    testing::AssertionResult Compare(int colour, int pixels = 0) {
        return LooksLike(picture_, golden_, {colour, pixels}, output_);
    }

    TempFolder folder_;
    ScopedEnvironment asUsual_{L"TONEWRIGHT_NEW_PICTURES", nullptr};
    std::filesystem::path golden_ = folder_.File(L"golden.bmp").Text;
    std::filesystem::path output_ = folder_.File(L"output").Text;
    Picture picture_{3, 2, {}}; // of rows that aren't a multiple of 4 bytes
};
} // namespace

TEST_F(PictureCompare, APictureComesBackAsItWasSaved) {
    Picture loaded = LoadPicture(golden_);
    EXPECT_EQ(loaded.width, 3);
    EXPECT_EQ(loaded.height, 2);
    EXPECT_EQ(loaded.pixels, picture_.pixels);
}

TEST_F(PictureCompare, TheSamePictureLooksTheSame) {
    EXPECT_TRUE(Compare(0));
    EXPECT_FALSE(std::filesystem::exists(output_));
}

TEST_F(PictureCompare, APixelMayBeOffByTheToleranceInEachColour) {
    picture_.pixels[4] += 0x030303;
    EXPECT_TRUE(Compare(3));
    EXPECT_FALSE(Compare(2));
}

TEST_F(PictureCompare, ADifferenceOfOneColourCounts) {
    const uint32_t pixel = picture_.pixels[4];
    for (uint32_t change : {0x000005u, 0x000500u, 0x050000u}) {
        picture_.pixels[4] = pixel + change;
        EXPECT_FALSE(Compare(4));
        EXPECT_TRUE(Compare(5));
    }
}

TEST_F(PictureCompare, AsManyPixelsMayBeFurtherOffAsTheBudgetSays) {
    picture_.pixels[0] = 0xFFFFFF;
    picture_.pixels[4] += 0x000400;
    picture_.pixels[5] += 0x000003;
    EXPECT_TRUE(Compare(3, 2));
    EXPECT_FALSE(Compare(3, 1));
    EXPECT_FALSE(Compare(2, 2));
    EXPECT_TRUE(Compare(2, 3));
    EXPECT_FALSE(Compare(3));
}

TEST_F(PictureCompare, AFailureTellsHowManyPixelsAreOff) {
    picture_.pixels[0] ^= 0x000100;
    picture_.pixels[1] ^= 0x000010;
    EXPECT_STREQ(Compare(0, 1).message(),
                 (testing::Message()
                  << "2 pixels off " << golden_ << " by more than 0, up to 16, where 1 "
                  << "may be; see " << output_ / "golden.bmp"
                  << ".*")
                     .GetString()
                     .c_str());
}

TEST_F(PictureCompare, AFailureLeavesThePictureAndTheDifference) {
    picture_.pixels[5] += 0x000200;
    EXPECT_FALSE(Compare(0));
    EXPECT_EQ(LoadPicture(output_ / "golden.bmp.actual.bmp").pixels, picture_.pixels);
    Picture difference = LoadPicture(output_ / "golden.bmp.difference.bmp");
    EXPECT_EQ(difference.pixels, (std::vector<uint32_t>{0, 0, 0, 0, 0, 0x001000}));
}

TEST_F(PictureCompare, AnotherSizeIsAnotherPicture) {
    picture_.height = 1;
    picture_.pixels.resize(3);
    EXPECT_FALSE(Compare(255, 6));
}

TEST_F(PictureCompare, WithoutAGoldenPictureTheComparisonFails) {
    std::filesystem::remove(golden_);
    EXPECT_FALSE(Compare(255, 6));
}

TEST_F(PictureCompare, OnDemandTheGoldenPictureIsWrittenAndTheComparisonFails) {
    ScopedEnvironment anew(L"TONEWRIGHT_NEW_PICTURES", L"1");
    picture_.pixels[0] = 0xFFFFFF;
    EXPECT_FALSE(Compare(255));
    EXPECT_EQ(LoadPicture(golden_).pixels, picture_.pixels);
}
