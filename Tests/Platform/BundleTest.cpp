#include "QVPlatform/Bundle.h"
#include "QVPlatform/Log.h"
#include "Support/TemporaryFolder.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <link.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using qv::Bundle;
using testsupport::TemporaryFolder;

namespace {

/// The file of some small library that this process has loaded.
fs::path anyLoadedLibrary() {
    std::string found;
    ::dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* result) {
            const std::string name = info->dlpi_name;
            if (name.find("libexpat.so") == std::string::npos) return 0;
            *static_cast<std::string*>(result) = name;
            return 1;
        },
        &found);
    return found;
}

/// A second copy of that library, loaded from where it is installed for the test.
class InstalledLibrary {
  public:
    explicit InstalledLibrary(const fs::path& file) {
        fs::create_directories(file.parent_path());
        fs::copy_file(anyLoadedLibrary(), file);
        mHandle = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    }
    ~InstalledLibrary() {
        if (mHandle) ::dlclose(mHandle);
    }
    InstalledLibrary(const InstalledLibrary&) = delete;
    InstalledLibrary& operator=(const InstalledLibrary&) = delete;

    /// An address inside the library; null when it could not be loaded.
    const void* address() const {
        link_map* map = nullptr;
        if (!mHandle || ::dlinfo(mHandle, RTLD_DI_LINKMAP, &map) != 0) return nullptr;
        return reinterpret_cast<const void*>(map->l_addr);
    }

  private:
    void* mHandle = nullptr;
};

class BundleTest : public testing::Test {
  protected:
    void TearDown() override { Bundle::setResourceFolder({}); }
    TemporaryFolder mFolder;
};

class InstalledBundle : public BundleTest, public testing::WithParamInterface<const char*> {};

TEST_P(InstalledBundle, IsTheShareFolderOfTheLibrarysPrefix) {
    const auto resource = mFolder.write("usr/share/QVCardScan/note.html", "x");
    const InstalledLibrary library(mFolder.path() / "usr" / GetParam());
    ASSERT_NE(library.address(), nullptr);
    EXPECT_EQ(Bundle::bundleForAddress(library.address()).pathForResource("note", "html"), resource);
}

INSTANTIATE_TEST_SUITE_P(Places, InstalledBundle,
                         testing::Values("lib/libTest.so", "lib/x86_64-linux-gnu/libTest.so", "lib64/libTest.so.1",
                                         "bin/program"));

TEST_F(BundleTest, FollowsLinksToTheLibrary) {
    const auto resource = mFolder.write("opt/share/QVCardScan/note.html", "x");
    const fs::path real = mFolder.path() / "opt/lib/libReal.so";
    fs::create_directories(real.parent_path());
    fs::copy_file(anyLoadedLibrary(), real);
    const fs::path link = mFolder.path() / "elsewhere.so";
    fs::create_symlink(real, link);
    void* handle = ::dlopen(link.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(handle, nullptr);
    link_map* map = nullptr;
    ASSERT_EQ(::dlinfo(handle, RTLD_DI_LINKMAP, &map), 0);
    const auto bundle = Bundle::bundleForAddress(reinterpret_cast<const void*>(map->l_addr));
    EXPECT_EQ(bundle.pathForResource("note", "html"), resource);
    ::dlclose(handle);
}

TEST_F(BundleTest, NamesWhereAResourceWasExpectedWhenNothingIsInstalled) {
    const InstalledLibrary library(mFolder.path() / "usr/lib/libTest.so");
    ASSERT_NE(library.address(), nullptr);
    EXPECT_EQ(Bundle::bundleForAddress(library.address()).pathForResource("note", "html"),
              mFolder.path() / "usr/share/QVCardScan/note.html");
}

TEST_F(BundleTest, IsTheSourceTreesForALibraryThatWasOnlyBuilt) {
    const fs::path expected = fs::path(QV_SOURCE_DIR) / "Resources" / "x.html";
    EXPECT_EQ(Bundle::bundleForAddress(reinterpret_cast<const void*>(&qv::Log::isEnabled)).pathForResource("x", "html"),
              expected)
        << "of the library";
    static const int insideTheProgram = 0;
    EXPECT_EQ(Bundle::bundleForAddress(&insideTheProgram).pathForResource("x", "html"), expected) << "of the program";
}

TEST_F(BundleTest, TakesAnAddressOfNothingForTheProgram) {
    EXPECT_EQ(Bundle::bundleForAddress(nullptr).pathForResource("x", "html"),
              fs::path(QV_SOURCE_DIR) / "Resources" / "x.html");
}

TEST_F(BundleTest, IsWhereTheHostSaysInstead) {
    Bundle::setResourceFolder(mFolder.path());
    EXPECT_EQ(Bundle::bundleForAddress(&mFolder).pathForResource("note", "html"), mFolder.path() / "note.html");
    Bundle::setResourceFolder({});
    EXPECT_NE(Bundle::bundleForAddress(nullptr).pathForResource("note", "html"), mFolder.path() / "note.html");
}

TEST_F(BundleTest, NamesResourcesWhetherOrNotTheyAreThere) {
    const Bundle bundle(mFolder.path());
    EXPECT_EQ(bundle.pathForResource("a.b", "html"), mFolder.path() / "a.b.html");
    EXPECT_EQ(bundle.pathForResource("plain", ""), mFolder.path() / "plain");
}

TEST_F(BundleTest, FindsImagesByNameInTheOrderOfTypes) {
    const Bundle bundle(mFolder.path());
    EXPECT_EQ(bundle.pathForImageResource("picture"), std::nullopt);
    mFolder.write("picture.gif", "a type that is not read");
    fs::create_directory(mFolder.path() / "picture.png");
    EXPECT_EQ(bundle.pathForImageResource("picture"), std::nullopt) << "a folder is no picture";
    for (const char* type : {"heic", "webp", "tiff", "tif", "jpeg", "jpg"}) {
        const auto file = mFolder.write(std::string("picture.") + type, "x");
        EXPECT_EQ(bundle.pathForImageResource("picture"), file);
    }
    fs::remove(mFolder.path() / "picture.png");
    EXPECT_EQ(bundle.pathForImageResource("picture"), mFolder.write("picture.png", "x"));
    EXPECT_EQ(bundle.pathForImageResource("pictur"), std::nullopt);
}

}  // namespace
