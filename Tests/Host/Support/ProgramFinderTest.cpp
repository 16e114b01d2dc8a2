#include "Support/HostProgram.h"
#include "Support/ProgramFinder.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

namespace fs = std::filesystem;
namespace ProgramFinder = qvhost::ProgramFinder;

/// Sets PATH as long as it lives.
class SearchPath {
  public:
    explicit SearchPath(const std::string& value) : mBefore(std::getenv("PATH")) { ::setenv("PATH", value.c_str(), 1); }
    ~SearchPath() { ::setenv("PATH", mBefore.c_str(), 1); }
    SearchPath(const SearchPath&) = delete;
    SearchPath& operator=(const SearchPath&) = delete;

  private:
    std::string mBefore;
};

fs::path makeProgram(const testsupport::TemporaryFolder& folder, const char* name) {
    const fs::path file = folder.write(name, "#!/bin/sh\n");
    fs::permissions(file, fs::perms::owner_all);
    return file;
}

TEST(ProgramFinder, LooksBesideThisProgramFirst) {
    const testsupport::TemporaryFolder folder;
    makeProgram(folder, "FakeRecod");
    const SearchPath path(folder.path().string());
    EXPECT_EQ(ProgramFinder::find("FakeRecod"), fs::path(testsupport::fakeRecognizer()));
}

TEST(ProgramFinder, LooksInThePathInItsOrder) {
    const testsupport::TemporaryFolder first;
    const testsupport::TemporaryFolder second;
    const fs::path wanted = makeProgram(first, "qv-program");
    makeProgram(second, "qv-program");
    const SearchPath path("/nowhere:" + first.path().string() + ":" + second.path().string());
    EXPECT_EQ(ProgramFinder::find("qv-program"), wanted);
}

TEST(ProgramFinder, PassesOverWhatIsNoProgram) {
    const testsupport::TemporaryFolder folder;
    folder.write("qv-text", "x");
    folder.write("qv-folder/x", "x");
    const SearchPath path(folder.path().string());
    EXPECT_EQ(ProgramFinder::find("qv-text"), std::nullopt);
    EXPECT_EQ(ProgramFinder::find("qv-folder"), std::nullopt);
    EXPECT_EQ(ProgramFinder::find("qv-missing"), std::nullopt);
}

TEST(ProgramFinder, NeverLooksInTheWorkingFolder) {
    const testsupport::TemporaryFolder folder;
    makeProgram(folder, "qv-planted");
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    for (const char* value : {"", ":", "::/nowhere:"}) {
        const SearchPath path(value);
        EXPECT_EQ(ProgramFinder::find("qv-planted"), std::nullopt) << value;
    }
    fs::current_path(before);
}

}  // namespace
