#include "Output/FileKind.h"
#include "Support/HostProgram.h"
#include "Support/ReadFile.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace {

using qvhost::FileKind;

qv::Data bytes(const std::string& text) {
    return {text.begin(), text.end()};
}

TEST(FileKind, KnowsPicturesByTheirBeginning) {
    const std::tuple<const char*, const char*, const char*> rows[] = {{"front.jpg", "jpg", "image/jpeg"},
                                                                      {"back.png", "png", "image/png"},
                                                                      {"card.webp", "webp", "image/webp"},
                                                                      {"card.tiff", "tiff", "image/tiff"},
                                                                      {"front.xml", "bin", "application/octet-stream"}};
    for (const auto& [name, extension, mimeType] : rows) {
        const FileKind kind = FileKind::of(bytes(testsupport::readFile(testsupport::hostData(name))));
        EXPECT_EQ(kind.extension, extension) << name;
        EXPECT_EQ(kind.mimeType, mimeType) << name;
    }
    EXPECT_EQ(FileKind::of({}).extension, "bin");
    EXPECT_EQ(FileKind::of(bytes("RI")).extension, "bin");
    EXPECT_EQ(FileKind::of(bytes(std::string("\0\0\0\x18"
                                             "ftypheic",
                                             12)))
                  .extension,
              "heic");
}

}  // namespace
