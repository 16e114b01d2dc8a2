#include "Page/PictureShelf.h"
#include "Support/HostProgram.h"
#include "Support/ReadFile.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

namespace qvhost {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// With a place for temporary files of its own.
class PictureShelfTest : public testing::Test {
  protected:
    PictureShelfTest() {
        const char* place = std::getenv("TMPDIR");
        if (place != nullptr) mOldPlace = place;
        ::setenv("TMPDIR", mPlace.path().c_str(), 1);
    }
    ~PictureShelfTest() override {
        if (mOldPlace) {
            ::setenv("TMPDIR", mOldPlace->c_str(), 1);
        } else {
            ::unsetenv("TMPDIR");
        }
    }

    static qv::Data picture() {
        const std::string bytes = testsupport::readFile(testsupport::hostData("front.jpg"));
        return {bytes.begin(), bytes.end()};
    }
    std::vector<fs::path> folders() const {
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(mPlace.path()))
            found.push_back(entry.path());
        return found;
    }
    /// Made more than a minute ago.
    static void age(const fs::path& folder) {
        fs::last_write_time(folder, fs::file_time_type::clock::now() - std::chrono::hours(1));
    }

    testsupport::TemporaryFolder mPlace;
    std::optional<std::string> mOldPlace;
};

TEST_F(PictureShelfTest, KeepsAPictureInThreeFormsThatOnlyTheUserCanOpen) {
    const auto shelf = std::move(*PictureShelf::make());
    const Result<ShelvedPicture> kept = shelf->put("front.jpg", picture());
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->name, "front.jpg");
    EXPECT_EQ(std::max(kept->size.width, kept->size.height), 1024) << "as it is sent";
    EXPECT_EQ(shelf->bytes(kept->identifier, PictureShelf::Form::Original), picture());
    EXPECT_FALSE(shelf->bytes(kept->identifier, PictureShelf::Form::View).empty());
    EXPECT_FALSE(shelf->bytes(kept->identifier, PictureShelf::Form::Thumbnail).empty());
    EXPECT_EQ(shelf->picture(*kept)->hash, kept->hash);
    ASSERT_EQ(folders().size(), 1U);
    EXPECT_EQ(fs::status(folders().front()).permissions(), fs::perms::owner_all);
}

TEST_F(PictureShelfTest, RemovesEverythingWithItself) {
    {
        const auto shelf = std::move(*PictureShelf::make());
        ASSERT_TRUE(shelf->put("front.jpg", picture()));
    }
    EXPECT_TRUE(folders().empty());
}

TEST_F(PictureShelfTest, TakesNothingThatIsNoPictureAndNamesIt) {
    const auto shelf = std::move(*PictureShelf::make());
    const Result<ShelvedPicture> kept = shelf->put("list.txt", {'m', 'i', 'l', 'k'});
    ASSERT_FALSE(kept);
    EXPECT_THAT(kept.failure().message, HasSubstr("\"list.txt\" is not an image"));
}

TEST_F(PictureShelfTest, KnowsOnlyItsOwnIdentifiers) {
    const auto shelf = std::move(*PictureShelf::make());
    for (const char* identifier : {"", ".", "..", "../../etc/passwd", "/etc/passwd"}) {
        EXPECT_EQ(shelf->find(identifier), nullptr);
        EXPECT_TRUE(shelf->bytes(identifier, PictureShelf::Form::Original).empty());
        shelf->remove(identifier);
    }
}

TEST_F(PictureShelfTest, RoomIsGivenBack) {
    const auto shelf = std::move(*PictureShelf::make(std::uint64_t{3} << 19));
    const Result<ShelvedPicture> first = shelf->put("a", picture());
    ASSERT_TRUE(first);
    const Result<ShelvedPicture> second = shelf->put("b", picture());
    ASSERT_FALSE(second);
    EXPECT_EQ(second.failure().status, ExitStatus::NotWritten);
    shelf->remove(first->identifier);
    EXPECT_TRUE(shelf->bytes(first->identifier, PictureShelf::Form::View).empty());
    EXPECT_TRUE(shelf->put("b", picture()));
}

TEST_F(PictureShelfTest, ClearsUpAfterAProgramThatCouldNot) {
    const fs::path left = mPlace.path() / "qvcardscan-page-gone";
    fs::create_directory(left);
    mPlace.write("qvcardscan-page-gone/picture", "x");
    age(left);
    const fs::path foreign = mPlace.path() / "something-else";
    fs::create_directory(foreign);
    age(foreign);
    const auto first = std::move(*PictureShelf::make());
    EXPECT_FALSE(fs::exists(left));
    EXPECT_TRUE(fs::exists(foreign));
    // One that is in use stays, however old it is.
    for (const fs::path& folder : folders())
        age(folder);
    const auto second = std::move(*PictureShelf::make());
    EXPECT_EQ(folders().size(), 3U);
    EXPECT_TRUE(first->put("a", picture()));
}

}  // namespace
}  // namespace qvhost
