#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/MD5.h"
#include "Support/ResourceFolder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <latch>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr char kPlaceholderFile[] = "contact-note-profile-placeholder.png";
constexpr char kHashOfNothing[] = "d41d8cd98f00b204e9800998ecf8427e";
constexpr char kAvatarStyle[] =
    "width:80px;height:80px;-webkit-border-radius:3px;-moz-border-radius:3px;border-radius: 3px;box-shadow:0 1px 3px "
    "rgba(0,0,0,.6);margin-left:10px;";
constexpr char kEmptyAvatar[] = "<div style=\"width:130px; height; 130px; display:block;\">&nbsp;</div>";

std::shared_ptr<qv::Image> placeholderFromItsFile() {
    return qv::Image::initWithContentsOfFile(std::filesystem::path(QV_SOURCE_DIR) / "Resources" / kPlaceholderFile);
}

std::string hashOf(const std::shared_ptr<qv::Image>& image, const std::string& type) {
    return QVVeltoNoteGenerator::lowerHexStringForDataHashFromNSImage(image, type);
}

TEST(ImageHash, IsTheMD5OfTheEncodingThatTheTypeNames) {
    const auto image = placeholderFromItsFile();
    ASSERT_TRUE(image && image->isValid());
    EXPECT_EQ(hashOf(image, "image/jpeg"),
              qv::lowerHexMD5(*image->representationUsingType(qv::ImageFileType::JPEG, 1.0)));
    EXPECT_EQ(hashOf(image, "image/png"), qv::lowerHexMD5(*image->representationUsingType(qv::ImageFileType::PNG)));
    EXPECT_EQ(hashOf(image, "image/tiff"), qv::lowerHexMD5(*image->TIFFRepresentation()));
    EXPECT_NE(hashOf(image, "image/jpeg"), hashOf(image, "image/png"));
    EXPECT_NE(hashOf(image, "image/jpeg"),
              qv::lowerHexMD5(*image->representationUsingType(qv::ImageFileType::JPEG, 0.7)));
}

TEST(ImageHash, AnyOtherTypeMeansTIFF) {
    const auto image = placeholderFromItsFile();
    for (const char* type : {"", "image/gif", "IMAGE/PNG", "image/jpg", "image/png "})
        EXPECT_EQ(hashOf(image, type), hashOf(image, "image/tiff")) << type;
}

TEST(ImageHash, HasThirtyTwoLowerCaseDigitsAndIsTheSameEachTime) {
    const std::string hash = hashOf(placeholderFromItsFile(), "image/png");
    EXPECT_EQ(hash.size(), 32u);
    EXPECT_EQ(hash.find_first_not_of("0123456789abcdef"), std::string::npos) << hash;
    EXPECT_EQ(hash, hashOf(placeholderFromItsFile(), "image/png"));
}

TEST(ImageHash, OfWhatCannotBeEncodedIsThatOfNothing) {
    const auto garbage = qv::Image::initWithData({'n', 'o', ' ', 'i', 'm', 'a', 'g', 'e'});
    for (const char* type : {"image/jpeg", "image/png", "image/tiff"}) {
        EXPECT_EQ(hashOf(garbage, type), kHashOfNothing) << type;
        EXPECT_EQ(hashOf(nullptr, type), kHashOfNothing) << type;
        EXPECT_TRUE(QVVeltoNoteGenerator::dataForNSImage(nullptr, type).empty());
    }
}

TEST(ImageData, IsWhatTheHashIsTakenOf) {
    const auto image = placeholderFromItsFile();
    for (const char* type : {"image/jpeg", "image/png", "image/tiff"}) {
        const qv::Data data = QVVeltoNoteGenerator::dataForNSImage(image, type);
        EXPECT_FALSE(data.empty());
        EXPECT_EQ(qv::lowerHexMD5(data), hashOf(image, type)) << type;
        const auto again = qv::Image::initWithData(data);
        EXPECT_EQ(again->size().width, image->size().width) << type;
    }
}

TEST(ProfileImage, WithoutHashOrTypeIsAnEmptyBox) {
    using Generator = QVVeltoNoteGenerator;
    EXPECT_EQ(Generator::profileImageStringFromImageHash(std::nullopt, "image/png"), kEmptyAvatar);
    EXPECT_EQ(Generator::profileImageStringFromImageHash("ab", std::nullopt), kEmptyAvatar);
    EXPECT_EQ(Generator::profileImageStringFromImageHash(std::nullopt, "t", /*isHTML=*/true, "u"), kEmptyAvatar);
    EXPECT_EQ(Generator::profileImageStringFromImageHash("ab", std::nullopt, /*isHTML=*/true, "u"), kEmptyAvatar);
}

TEST(ProfileImage, IsAMediaReferenceInANote) {
    const auto expected = [](const std::string& hash, const std::string& type) {
        return std::string("<qv-media style=\"") + kAvatarStyle + "\" hash=\"" + hash + "\" type=\"" + type + "\" />";
    };
    using Generator = QVVeltoNoteGenerator;
    EXPECT_EQ(Generator::profileImageStringFromImageHash("ab", "image/png"), expected("ab", "image/png"));
    EXPECT_EQ(Generator::profileImageStringFromImageHash("ab", "image/png", /*isHTML=*/false, "url"),
              expected("ab", "image/png"));
    EXPECT_EQ(Generator::profileImageStringFromImageHash("", ""), expected("", ""));
    EXPECT_EQ(Generator::profileImageStringFromImageHash("<&%@", "\"%%"), expected("<&%@", "\"%%"));
}

TEST(ProfileImage, IsAPictureAtAURLInHTML) {
    const auto expected = [](const std::string& type, const std::string& url) {
        return std::string("<img width=\"80\" height=\"80\" style=\"") + kAvatarStyle + "\" x-quorvane-mime=\"" + type +
               "\" src=\"" + url + "\" id=\"" + url + "\" class=\"qv-media\" />";
    };
    using Generator = QVVeltoNoteGenerator;
    const std::string image =
        Generator::profileImageStringFromImageHash("0123abcd", "image/jpeg", /*isHTML=*/true, "app://a?b&c");
    EXPECT_EQ(image, expected("image/jpeg", "app://a?b&c"));
    EXPECT_EQ(image.find("0123abcd"), std::string::npos);
    EXPECT_EQ(Generator::profileImageStringFromImageHash("ab", "image/png", /*isHTML=*/true, std::nullopt),
              expected("image/png", ""));
}

TEST(PlaceholderAvatar, IsTheImageAmongTheResourcesAndKept) {
    const auto image = QVVeltoNoteGenerator::placeholderAvatar();
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->size().width, 160);
    EXPECT_EQ(image->size().height, 160);
    EXPECT_EQ(QVVeltoNoteGenerator::placeholderAvatar(), image);
    EXPECT_EQ(QVVeltoNoteGenerator::hashStringForPlaceholderAvatar(), hashOf(placeholderFromItsFile(), "image/png"));
}

// What happens on first use can be seen once in a process: each of these runs in one of its own.
class PlaceholderOnFirstUse : public testing::Test {
  protected:
    PlaceholderOnFirstUse() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

void check(bool condition, const char* what) {
    if (condition) return;
    throw std::runtime_error(what);
}

/// Ends the process only after the work is left, so that it takes its folders with it.
void endWith(void (*work)()) {
    int status = 0;
    try {
        work();
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        status = 1;
    }
    std::_Exit(status);
}

void looksForTheImageUntilItIsThere() {
    using Generator = QVVeltoNoteGenerator;
    const testsupport::ResourceFolder resources;
    check(!Generator::placeholderAvatar(), "found without a file");
    resources.write(kPlaceholderFile, "no image");
    check(!Generator::placeholderAvatar(), "found in a file that holds no image");
    resources.copyFromResources(kPlaceholderFile);
    const auto image = Generator::placeholderAvatar();
    check(image != nullptr, "not found once it was there");
    std::filesystem::remove(resources.path() / kPlaceholderFile);
    check(Generator::placeholderAvatar() == image, "not kept");
    check(Generator::hashStringForPlaceholderAvatar() == hashOf(image, "image/png"), "another hash");
}

void keepsTheFirstHash() {
    using Generator = QVVeltoNoteGenerator;
    const testsupport::ResourceFolder resources;
    check(Generator::hashStringForPlaceholderAvatar() == kHashOfNothing, "a hash without an image");
    resources.copyFromResources(kPlaceholderFile);
    check(Generator::placeholderAvatar() != nullptr, "not found once it was there");
    check(Generator::hashStringForPlaceholderAvatar() == kHashOfNothing, "another hash later");
}

void isMadeByEightThreadsAtOnce() {
    std::latch start(8);
    std::vector<std::string> notes(8);
    std::vector<std::thread> threads;
    for (std::string& note : notes) {
        threads.emplace_back([&start, &note] {
            const auto contact = std::make_shared<QVVeltoContact>();
            contact->setFullName("Jordan Example");
            start.arrive_and_wait();
            note = QVVeltoNoteGenerator().noteFromContactInfo(contact).value_or("");
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    const std::string hash = hashOf(placeholderFromItsFile(), "image/png");
    for (const std::string& note : notes)
        check(note == notes[0] && note.find("hash=\"" + hash + "\"") != std::string::npos, "another note");
}

TEST_F(PlaceholderOnFirstUse, LooksForTheImageUntilItIsThere) {
    EXPECT_EXIT(endWith(looksForTheImageUntilItIsThere), testing::ExitedWithCode(0), "");
}

TEST_F(PlaceholderOnFirstUse, KeepsTheFirstHash) {
    EXPECT_EXIT(endWith(keepsTheFirstHash), testing::ExitedWithCode(0), "");
}

TEST_F(PlaceholderOnFirstUse, IsMadeByEightThreadsAtOnce) {
    EXPECT_EXIT(endWith(isMadeByEightThreadsAtOnce), testing::ExitedWithCode(0), "");
}

}  // namespace
