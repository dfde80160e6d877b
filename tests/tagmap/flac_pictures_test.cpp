#include "suite/tagmap/flac_pictures.h"
#include "suite/tagmap/pictures.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

#include <flacpicture.h>
#include <id3v2framefactory.h>
#include <tbytevectorstream.h>

#include <memory>
#include <string>

namespace tagmap {
namespace {

using TagLib::ByteVector;
using TagLib::FLAC::Picture;
using TagLib::Ogg::XiphComment;

const std::string Png = "\x89PNG\r\n\x1a\n picture";
const std::string Jpeg = "\xff\xd8\xff picture";

// A FLAC stream in memory: its stream information, and bytes for audio.
class FlacFile {
public:
    FlacFile() : stream_(Empty()) { Open(); }

    TagLib::FLAC::File& File() { return *file_; }
    // Writes the file, and reads it again.
    void SaveAndOpen() {
        ASSERT_TRUE(file_->save());
        Open();
    }

private:
    static ByteVector Empty() {
        constexpr unsigned StreamInfoSize = 34;
        ByteVector bytes("fLaC");
        bytes.append(ByteVector::fromUInt(0x80000000u | StreamInfoSize));
        bytes.append(ByteVector(StreamInfoSize, '\1'));
        bytes.append(ByteVector("\xff\xf8 audio"));
        return bytes;
    }
    void Open() {
        stream_.seek(0);
        file_ = std::make_unique<TagLib::FLAC::File>(
            &stream_, TagLib::ID3v2::FrameFactory::instance(), false);
        ASSERT_TRUE(file_->isValid());
    }

    TagLib::ByteVectorStream stream_;
    std::unique_ptr<TagLib::FLAC::File> file_;
};

Picture* NewPicture(int type, const char* description, const std::string& data) {
    auto* picture = new Picture();
    picture->setType(static_cast<Picture::Type>(type));
    picture->setDescription(description);
    picture->setMimeType("image/png");
    picture->setWidth(640);
    picture->setData(ByteVector(data.data(), static_cast<unsigned>(data.size())));
    return picture;
}

void SetArt(FlacFile& flac, const wchar_t* name, const std::string& bytes) {
    clTagRecord changes;
    AddBytes(changes, name, bytes);
    Refusals refused;
    SetFlacPictures(flac.File(), changes, refused);
    ASSERT_EQ(RefusedNames(refused), L"");
}

std::wstring Names(FlacFile& flac) {
    clTagRecord record;
    ReadFlacPictures(flac.File(), record);
    return NamesOf(record);
}

NStringList* Listed(NStringList& names, std::initializer_list<const wchar_t*> texts) {
    for (const wchar_t* text : texts)
        names.Add(text);
    return &names;
}

TEST(FlacPictures, APictureBecomesABlockWithTypeAndMimeType) {
    FlacFile flac;
    SetArt(flac, L"_albumart_1_Back Album Cover", Jpeg);
    flac.SaveAndOpen();
    ASSERT_EQ(flac.File().pictureList().size(), 1u);
    const Picture* picture = flac.File().pictureList().front();
    EXPECT_EQ(picture->type(), Picture::BackCover);
    EXPECT_TRUE(picture->description().isEmpty());
    EXPECT_EQ(picture->mimeType(), TagLib::String("image/jpeg"));
    EXPECT_EQ(std::string(picture->data().data(), picture->data().size()), Jpeg);
    EXPECT_EQ(Names(flac), L"_albumart_1_Back Album Cover");
}

TEST(FlacPictures, AFreeTextIsTheDescriptionOfTypeOther) {
    FlacFile flac;
    SetArt(flac, L"_albumart_1_My cat", Png);
    flac.SaveAndOpen();
    const Picture* picture = flac.File().pictureList().front();
    EXPECT_EQ(picture->type(), Picture::Other);
    EXPECT_EQ(picture->description(), TagLib::String("My cat"));
    EXPECT_EQ(Names(flac), L"_albumart_1_My cat");
}

TEST(FlacPictures, APictureWithoutDescriptionIsAFrontCover) {
    FlacFile flac;
    SetArt(flac, L"_albumart_1", Png);
    flac.SaveAndOpen();
    EXPECT_EQ(flac.File().pictureList().front()->type(), Picture::FrontCover);
    EXPECT_EQ(Names(flac), L"_albumart_1_Front Album Cover");
}

TEST(FlacPictures, ATypeOutsideTheOfferedOnesLastsThroughARoundTrip) {
    FlacFile flac;
    flac.File().addPicture(NewPicture(Picture::ColouredFish, "", Png));
    EXPECT_EQ(Names(flac), L"_albumart_1");
    SetArt(flac, L"_albumart_1", Jpeg);
    flac.SaveAndOpen();
    EXPECT_EQ(flac.File().pictureList().front()->type(), Picture::ColouredFish);
}

TEST(FlacPictures, APictureThatIsNotNamedKeepsAllItsFacts) {
    FlacFile flac;
    flac.File().addPicture(NewPicture(Picture::Artist, "She", Png));
    const ByteVector before = flac.File().pictureList().front()->render();
    SetArt(flac, L"_albumart_2_Media", Jpeg);
    flac.SaveAndOpen();
    ASSERT_EQ(flac.File().pictureList().size(), 2u);
    EXPECT_TRUE(flac.File().pictureList().front()->render() == before);
    EXPECT_EQ(Names(flac), L"_albumart_1_She|_albumart_2_Media");
}

TEST(FlacPictures, DeletingByNumberCountsThePicturesBeforeTheRequest) {
    FlacFile flac;
    for (const char* description : {"a", "b", "c"})
        flac.File().addPicture(NewPicture(0, description, Png));
    NStringList names;
    DeleteFlacPictures(flac.File(), *Listed(names, {L"title", L"_albumart_1", L"_albumart_2_b"}));
    EXPECT_EQ(Names(flac), L"_albumart_1_c");
}

TEST(FlacPictures, DeletingOtherNamesLeavesThePictures) {
    FlacFile flac;
    flac.File().addPicture(NewPicture(0, "a", Png));
    NStringList names;
    DeleteFlacPictures(flac.File(), *Listed(names, {L"title"}));
    EXPECT_EQ(Names(flac), L"_albumart_1_a");
}

TEST(FlacPictures, DeletingAllTakesThoseOfTheCommentToo) {
    FlacFile flac;
    flac.File().addPicture(NewPicture(0, "a", Png));
    flac.File().xiphComment(true)->addPicture(NewPicture(0, "b", Png));
    DeleteFlacPictures(flac.File(), NStringList());
    EXPECT_TRUE(flac.File().pictureList().isEmpty());
    EXPECT_TRUE(flac.File().xiphComment()->pictureList().isEmpty());
}

TEST(FlacPictures, PicturesOfTheCommentFollowAndBecomeBlocksWhenPicturesAreWritten) {
    FlacFile flac;
    XiphComment* comment = flac.File().xiphComment(true);
    comment->addField("TITLE", "T");
    comment->addPicture(NewPicture(0, "of the comment", Png));
    flac.File().addPicture(NewPicture(0, "block", Png));
    flac.SaveAndOpen();
    EXPECT_EQ(Names(flac), L"_albumart_1_block|_albumart_2_of the comment");
    SetArt(flac, L"_albumart_2_new", Jpeg);
    flac.SaveAndOpen();
    EXPECT_EQ(Names(flac), L"_albumart_1_block|_albumart_2_new");
    EXPECT_TRUE(flac.File().xiphComment()->pictureList().isEmpty());
    EXPECT_EQ(flac.File().pictureList().size(), 2u);
}

TEST(FlacPictures, APictureLargerThanABlockIsRefusedAndTheOthersAreWritten) {
    FlacFile flac;
    clTagRecord changes;
    AddBytes(changes, L"_albumart_1_large", std::string(0x1000000, 'x'));
    AddBytes(changes, L"_albumart_2_small", Png);
    AddBytes(changes, L"_albumart_none", Png);
    Refusals refused;
    SetFlacPictures(flac.File(), changes, refused);
    EXPECT_EQ(RefusedNames(refused), L"_albumart_none|_albumart_1_large");
    flac.SaveAndOpen();
    EXPECT_EQ(Names(flac), L"_albumart_1_small");
}

TEST(VorbisPictures, APictureIsABase64BlockInTheComment) {
    XiphComment comment;
    clTagRecord changes;
    AddBytes(changes, L"_albumart_1_Lead Artist", Png);
    Refusals refused;
    SetVorbisPictures(comment, changes, refused);
    EXPECT_EQ(RefusedNames(refused), L"");
    const ByteVector rendered = comment.render();
    const ByteVector key("METADATA_BLOCK_PICTURE=");
    const int at = rendered.find(key);
    ASSERT_GE(at, 0);
    const unsigned from = static_cast<unsigned>(at) + key.size();
    // What follows is the base64 text, and the framing bit.
    const Picture picture(ByteVector::fromBase64(rendered.mid(from, rendered.size() - from - 1)));
    EXPECT_EQ(picture.type(), Picture::LeadArtist);
    EXPECT_EQ(picture.mimeType(), TagLib::String("image/png"));
    EXPECT_EQ(std::string(picture.data().data(), picture.data().size()), Png);
}

TEST(VorbisPictures, PicturesComeBackFromTheRenderedComment) {
    XiphComment comment;
    comment.addField("TITLE", "T");
    clTagRecord changes;
    AddBytes(changes, L"_albumart_1_Lead Artist", Png);
    AddBytes(changes, L"_albumart_2_My cat", Jpeg);
    Refusals refused;
    SetVorbisPictures(comment, changes, refused);
    XiphComment again(comment.render());
    clTagRecord record;
    ReadVorbisPictures(again, record);
    EXPECT_EQ(NamesOf(record), L"_albumart_1_Lead Artist|_albumart_2_My cat");
    EXPECT_EQ(DataOf(record, L"_albumart_1_Lead Artist"), Png);
    EXPECT_EQ(DataOf(record, L"_albumart_2_My cat"), Jpeg);
}

// A comment block with the one comment COVERART.
ByteVector CoverArtComment(const std::string& picture) {
    ByteVector field("COVERART=");
    field.append(ByteVector(picture.data(), static_cast<unsigned>(picture.size())).toBase64());
    ByteVector data = ByteVector::fromUInt(0, false);
    data.append(ByteVector::fromUInt(1, false));
    data.append(ByteVector::fromUInt(field.size(), false));
    data.append(field);
    return data;
}

TEST(VorbisPictures, TheOldCoverArtCommentIsReadAsAPictureWithoutDescription) {
    XiphComment comment(CoverArtComment(Jpeg));
    clTagRecord record;
    ReadVorbisPictures(comment, record);
    EXPECT_EQ(NamesOf(record), L"_albumart_1");
    EXPECT_EQ(DataOf(record, L"_albumart_1"), Jpeg);
}

TEST(VorbisPictures, ANumberReplacesThatPictureAndEmptyBytesRemoveIt) {
    XiphComment comment;
    for (const char* description : {"a", "b", "c"})
        comment.addPicture(NewPicture(0, description, Png));
    clTagRecord changes;
    changes.Add(L"_albumart_1", L"");
    AddBytes(changes, L"_albumart_3_new", Jpeg);
    Refusals refused;
    SetVorbisPictures(comment, changes, refused);
    clTagRecord record;
    ReadVorbisPictures(comment, record);
    EXPECT_EQ(NamesOf(record), L"_albumart_1_b|_albumart_2_new");
}

TEST(VorbisPictures, DeletingTakesTheNamedPicturesOrAll) {
    XiphComment comment;
    for (const char* description : {"a", "b"})
        comment.addPicture(NewPicture(0, description, Png));
    NStringList names;
    DeleteVorbisPictures(comment, *Listed(names, {L"_albumart_1"}));
    clTagRecord record;
    ReadVorbisPictures(comment, record);
    EXPECT_EQ(NamesOf(record), L"_albumart_1_b");
    DeleteVorbisPictures(comment, NStringList());
    EXPECT_TRUE(comment.pictureList().isEmpty());
}

} // namespace
} // namespace tagmap
