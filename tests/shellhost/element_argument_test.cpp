#include "foundation/nfile.h"
#include "suite/shellhost/element_argument.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {
class ElementArgument : public testing::Test {
protected:
    ArgumentResult TryToTake(const wchar_t* word) {
        return TakeElementArgument(word, record_, problem_);
    }
    bool Take(const wchar_t* word) { return TryToTake(word) == ArgumentResult::Taken; }

    clTagRecord record_;
    NString problem_;
};
} // namespace

TEST_F(ElementArgument, IsANameAndWhatStandsBehindTheFirstEqualsSign) {
    ASSERT_TRUE(Take(L"title=a=b 音"));
    ASSERT_EQ(record_.Count(), 1);
    EXPECT_EQ(record_[0]->Name, L"title");
    EXPECT_EQ(record_[0]->Value, L"a=b 音");
}

TEST_F(ElementArgument, ANameGivenTwiceGetsAValueOfTwoParts) {
    ASSERT_TRUE(Take(L"artist=Anna"));
    ASSERT_TRUE(Take(L"ARTIST=王芳"));
    ASSERT_EQ(record_.Count(), 1);
    EXPECT_EQ(record_[0]->Value, L"Anna\r王芳");
}

TEST_F(ElementArgument, AnEmptyValueIsAnElementWithoutOne) {
    ASSERT_TRUE(Take(L"genre="));
    ASSERT_EQ(record_.Count(), 1);
    EXPECT_TRUE(record_[0]->Value.IsEmpty());
}

TEST_F(ElementArgument, AnEmptyValueAddsNoPart) {
    ASSERT_TRUE(Take(L"genre="));
    ASSERT_TRUE(Take(L"genre=Jazz"));
    EXPECT_EQ(record_[0]->Value, L"Jazz");
    ASSERT_TRUE(Take(L"genre="));
    ASSERT_TRUE(Take(L"genre=Folk"));
    ASSERT_EQ(record_.Count(), 1);
    EXPECT_EQ(record_[0]->Value, L"Jazz\rFolk");
}

TEST_F(ElementArgument, WithoutANameOrAnEqualsSignIsRefused) {
    EXPECT_EQ(TryToTake(L"title"), ArgumentResult::WrongForm);
    EXPECT_EQ(problem_, L"shellhost: not of the form NAME=VALUE: title");
    EXPECT_EQ(TryToTake(L"=value"), ArgumentResult::WrongForm);
    EXPECT_EQ(TryToTake(L""), ArgumentResult::WrongForm);
    EXPECT_EQ(record_.Count(), 0);
}

TEST_F(ElementArgument, APictureIsReadFromItsFile) {
    TempFolder folder;
    NString path = folder.File(L"Bild ä.png");
    NFile(path, GENERIC_WRITE, CREATE_ALWAYS, false, false).Write("\x89PNG", 4, NFile::NoSeek);
    ASSERT_TRUE(Take(NString(L"_albumart_2_Front=@").Concat(path.Text).Text));
    ASSERT_EQ(record_.Count(), 1);
    EXPECT_EQ(record_[0]->Name, L"_albumart_2_Front");
    EXPECT_TRUE(record_[0]->Value.IsEmpty());
    ASSERT_EQ(record_[0]->Data.Size, 4u);
    EXPECT_EQ(memcmp(record_[0]->Data.Data, "\x89PNG", 4), 0);
}

TEST_F(ElementArgument, APictureWhoseFileIsMissingIsRefused) {
    EXPECT_EQ(TryToTake(L"_albumart_1=@C:\\there is none.png"), ArgumentResult::FileUnreadable);
    EXPECT_EQ(problem_, L"shellhost: can't read the file C:\\there is none.png");
    EXPECT_EQ(record_.Count(), 0);
}

TEST_F(ElementArgument, AnAtSignInATextIsText) {
    ASSERT_TRUE(Take(L"title=@home"));
    EXPECT_EQ(record_[0]->Value, L"@home");
}

TEST_F(ElementArgument, TheBytesOfACdTocAreReadFromAFileToo) {
    TempFolder folder;
    NString path = folder.File(L"toc");
    NFile(path, GENERIC_WRITE, CREATE_ALWAYS, false, false).Write("toc", 3, NFile::NoSeek);
    ASSERT_TRUE(Take(NString(L"_CDTOC=@").Concat(path.Text).Text));
    EXPECT_EQ(record_[0]->Data.Size, 3u);
}

TEST(PictureName, BeginsLikeOneWhateverItsCase) {
    EXPECT_TRUE(IsPictureName(L"_AlbumArt_1"));
    EXPECT_FALSE(IsPictureName(L"_albumart"));
    EXPECT_FALSE(IsPictureName(L"_cdtoc"));
}

TEST(PictureName, HasANumberThatEndsAtItsDescription) {
    EXPECT_EQ(PictureNumber(L"_albumart_1"), 1);
    EXPECT_EQ(PictureNumber(L"_albumart_12_7 Lead Artist"), 12);
    EXPECT_EQ(PictureNumber(L"_albumart_"), 0);
    EXPECT_EQ(PictureNumber(L"_albumart_-1"), 0);
    EXPECT_EQ(PictureNumber(L"_albumart_4294967297"), 0);
    EXPECT_EQ(PictureNumber(L"title"), 0);
}
