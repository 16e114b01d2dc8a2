#include "Output/Resources.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/MD5.h"
#include "Support/HostProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using qvhost::CardPicture;
using qvhost::Resources;
using testing::StartsWith;

std::vector<CardPicture> pictures(const std::vector<std::string>& names) {
    std::vector<CardPicture> pictures;
    for (const std::string& name : names)
        pictures.push_back(*CardPicture::read(testsupport::hostData(name)));
    return pictures;
}

TEST(Resources, HoldThePhotographsAsTheirFilesAre) {
    const auto given = pictures({"front.jpg", "back.png"});
    const Resources resources(given, QVCardProcessingResponse());
    for (const CardPicture& picture : given) {
        const qv::Data* bytes = resources.find(picture.hash);
        ASSERT_NE(bytes, nullptr);
        EXPECT_EQ(*bytes, picture.image->encodedData());
    }
    EXPECT_EQ(resources.find("unknown"), nullptr);
}

TEST(Resources, HoldThePlaceholderAndTheAvatarAsTheyWereHashed) {
    const auto avatar = qv::Image::initWithContentsOfFile(testsupport::hostData("card.webp"));
    QVCardProcessingResponse response;
    response.setAvatars(std::make_shared<std::vector<std::shared_ptr<qv::Image>>>(1, avatar));
    const Resources resources({}, response);
    for (const std::string& hash : {QVVeltoNoteGenerator::hashStringForPlaceholderAvatar(),
                                    QVVeltoNoteGenerator::lowerHexStringForDataHashFromNSImage(avatar, "image/jpeg")}) {
        const qv::Data* bytes = resources.find(hash);
        ASSERT_NE(bytes, nullptr);
        EXPECT_EQ(qv::lowerHexMD5(*bytes), hash);
    }
}

TEST(Resources, GiveBrowsersWhatTheyShow) {
    const auto given = pictures({"front.jpg", "back.png", "card.webp", "card.tiff"});
    const Resources resources(given, QVCardProcessingResponse());
    EXPECT_THAT(resources.dataAddress(given[0].hash), StartsWith("data:image/jpeg;base64,/9j/"));
    EXPECT_THAT(resources.dataAddress(given[1].hash), StartsWith("data:image/png;base64,iVBOR"));
    EXPECT_THAT(resources.dataAddress(given[2].hash), StartsWith("data:image/webp;base64,UklGR"));
    EXPECT_THAT(resources.dataAddress(given[3].hash), StartsWith("data:image/jpeg;base64,/9j/"));
    EXPECT_EQ(resources.dataAddress("unknown"), "");
}

TEST(Resources, KnowTheSizeOfThePicture) {
    const auto given = pictures({"back.png"});
    const Resources resources(given, QVCardProcessingResponse());
    EXPECT_EQ(resources.size(given[0].hash), (qv::Size{60, 110}));
    EXPECT_EQ(resources.size("unknown"), qv::Size());
}

}  // namespace
