#include "Batch/BatchInputs.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using qvhost::BatchInputs;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kJPEG = "\xFF\xD8\xFF\xE0 and so on";

class BatchInputsTest : public testing::Test {
  protected:
    std::string name(const std::string& file) const { return (mFolder / file).string(); }
    void addPictures(const std::vector<std::string>& names) const {
        for (const std::string& file : names)
            mFolder.write(file, kJPEG);
    }
    BatchInputs gather(std::vector<std::string> names) const {
        for (std::string& one : names)
            one = name(one);
        return BatchInputs::gather(names);
    }
    std::vector<std::string> taken(const BatchInputs& inputs) const {
        std::vector<std::string> names;
        for (const fs::path& picture : inputs.pictures)
            names.push_back(picture.lexically_relative(mFolder.path()).string());
        return names;
    }

    testsupport::TemporaryFolder mFolder;
};

TEST_F(BatchInputsTest, FoldersAreReadInNaturalOrder) {
    addPictures({"in/card10.jpg", "in/card2.jpg", "in/Card1.jpg", "in/more/a.jpg"});
    const auto inputs = gather({"in"});
    EXPECT_THAT(taken(inputs), ElementsAre("in/Card1.jpg", "in/card2.jpg", "in/card10.jpg", "in/more/a.jpg"));
    EXPECT_EQ(inputs.skipped, 0U);
    EXPECT_THAT(inputs.mistakes, IsEmpty());
}

TEST_F(BatchInputsTest, WhatIsNoPictureInAFolderIsCounted) {
    addPictures({"in/a.jpg", "in/without-ending"});
    mFolder.write("in/notes.txt", "text");
    mFolder.write("in/empty", "");
    mFolder.write("in/damaged.jpg", "text");
    ::mkfifo((mFolder / "in/pipe.jpg").c_str(), 0600);
    const auto inputs = gather({"in"});
    EXPECT_THAT(taken(inputs), ElementsAre("in/a.jpg", "in/damaged.jpg", "in/without-ending"));
    EXPECT_EQ(inputs.skipped, 3U);
    EXPECT_THAT(inputs.mistakes, IsEmpty());
}

TEST_F(BatchInputsTest, WhatIsNoPictureByNameIsAMistake) {
    mFolder.write("notes.txt", "text");
    ::mkfifo((mFolder / "pipe.jpg").c_str(), 0600);
    const auto inputs = gather({"notes.txt", "nowhere.jpg", "pipe.jpg"});
    EXPECT_THAT(inputs.pictures, IsEmpty());
    ASSERT_EQ(inputs.mistakes.size(), 3U);
    EXPECT_EQ(inputs.mistakes[0].file, name("notes.txt"));
    EXPECT_THAT(inputs.mistakes[0].message, testing::HasSubstr("no picture"));
    EXPECT_THAT(inputs.mistakes[1].message, testing::HasSubstr("No such file"));
    EXPECT_EQ(inputs.skipped, 0U);
}

TEST_F(BatchInputsTest, FilesAsAShellListsThemAreOrderedNaturally) {
    addPictures({"card1.jpg", "card2.jpg", "card10.jpg", "Bo.jpg", "ax.jpg"});
    EXPECT_THAT(taken(gather({"card1.jpg", "card10.jpg", "card2.jpg"})),
                ElementsAre("card1.jpg", "card2.jpg", "card10.jpg"));
    EXPECT_THAT(taken(gather({"ax.jpg", "Bo.jpg", "card1.jpg"})), ElementsAre("ax.jpg", "Bo.jpg", "card1.jpg"));
    EXPECT_THAT(taken(gather({"card2.jpg", "card10.jpg", "card1.jpg"})),
                ElementsAre("card2.jpg", "card10.jpg", "card1.jpg"))
        << "somebody chose this order";
}

TEST_F(BatchInputsTest, EachFileIsTakenOnce) {
    addPictures({"in/a.jpg", "in/b.jpg"});
    fs::create_symlink(name("in/a.jpg"), name("in/link.jpg"));
    fs::create_hard_link(name("in/b.jpg"), name("in/same.jpg"));
    const auto inputs = gather({"in/b.jpg", "in", "in/a.jpg"});
    EXPECT_THAT(taken(inputs), ElementsAre("in/b.jpg", "in/a.jpg"));
    EXPECT_EQ(inputs.repeated, 4U);
}

TEST_F(BatchInputsTest, LinksToFoldersAreNotFollowed) {
    addPictures({"in/a.jpg", "elsewhere/b.jpg"});
    fs::create_directory_symlink(name("in"), name("in/circle"));
    fs::create_directory_symlink(name("elsewhere"), name("in/elsewhere"));
    fs::create_symlink(name("nowhere"), name("in/broken.jpg"));
    const auto inputs = gather({"in"});
    EXPECT_THAT(taken(inputs), ElementsAre("in/a.jpg"));
    fs::create_directory_symlink(name("elsewhere"), name("named"));
    EXPECT_THAT(taken(gather({"named"})), ElementsAre("named/b.jpg")) << "this one was named";
}

TEST_F(BatchInputsTest, HiddenFilesAndBatchesArePassedOver) {
    addPictures({"in/a.jpg", "in/.hidden.jpg", "in/.thumbnails/a.jpg", "in/out/cards/x/resources/a.jpg"});
    mFolder.write("in/out/qvcardscan-batch.json", "{}");
    EXPECT_THAT(taken(gather({"in"})), ElementsAre("in/a.jpg"));
}

TEST_F(BatchInputsTest, NamesMayBeAnything) {
    const std::vector<std::string> names = {"-o.jpg", "a b.jpg", "new\nline.jpg", "\xFF\xFE.jpg",
                                            std::string(250, 'x') + ".jpg"};
    for (const std::string& one : names)
        mFolder.write("in/" + one, kJPEG);
    EXPECT_EQ(gather({"in"}).pictures.size(), names.size());
}

}  // namespace
