#include "QVPlatform/HTTPClient.h"
#include "QVPlatform/Image.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/MainQueue.h"
#include "QVPlatform/XMLParser.h"
#include "Support/FailingMemory.h"
#include "Support/HTTPRequests.h"
#include "Support/ScriptedServer.h"
#include "Support/TemporaryFolder.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

// What becomes of a piece of work when memory gives out at any of its allocations, one after the other.

namespace {

using qv::Image;
using qv::ImageFileType;
using namespace testsupport;

TEST(OutOfMemory, EndsAnExchangeInAnError) {
    ScriptedServer server;
    server.respond(ScriptedServer::answer(200, "a body", "X-Header: with a value that is long enough\r\n"));
    auto request = requestTo(server.url("/a/path/that/is/long/enough"), "POST");
    request.headers = {{"auth", "a token that is long enough"}};
    request.body = dataOf("some bytes to be sent");
    int errors = 0;
    for (long count = 0;; ++count) {
        failAfter(count);
        qv::HTTPResponse response = send(request);
        if (!endFailing()) {
            EXPECT_EQ(bodyOf(response), "a body");
            break;
        }
        // What was not to be had may have been dispensable.
        if (response.error) {
            ++errors;
            EXPECT_EQ(response.error->domain, qv::kURLErrorDomain) << count;
        } else {
            EXPECT_EQ(bodyOf(response), "a body") << count;
        }
    }
    EXPECT_GT(errors, 3);
}

TEST(OutOfMemory, LeavesNoPictureToBeHad) {
    const qv::Data data = makePNG(quarters(18, 14), {.kind = PNGOptions::Kind::RGBA});
    for (const auto type : {ImageFileType::JPEG, ImageFileType::PNG, ImageFileType::TIFF}) {
        long count = 0;
        for (bool failed = true; failed; ++count) {
            const auto image = Image::initWithSize({9, 7}, Image::initWithData(data));
            failAfter(count);
            const auto bytes = image->representationUsingType(type, 0.7);
            failed = endFailing();
            EXPECT_TRUE(failed || bytes) << count;
        }
        EXPECT_GT(count, 5);
    }
}

TEST(OutOfMemory, LeavesEveryKindOfPictureUndecoded) {
    for (const qv::Data& data : {makeJPEG(quarters(18, 14), {.orientation = 6}), makeTIFF(quarters(18, 14)),
                                 makeWebP(quarters(18, 14), {.orientation = 5})}) {
        for (long count = 0;; ++count) {
            const auto image = Image::initWithData(data);
            failAfter(count);
            const auto bytes = image->representationUsingType(ImageFileType::JPEG, 0.7);
            if (!endFailing()) {
                EXPECT_TRUE(bytes);
                break;
            }
        }
    }
}

TEST(OutOfMemory, LeavesAFileUnread) {
    const TemporaryFolder folder;
    const auto file = folder.write("a picture with a name that is long enough.png",
                                   std::string(reinterpret_cast<const char*>(makePNG(quarters(4, 4)).data()), 60));
    for (long count = 0;; ++count) {
        failAfter(count);
        const auto image = Image::initWithContentsOfFile(file);
        const bool failed = endFailing();
        EXPECT_EQ(image == nullptr, failed) << count;
        if (!failed) break;
    }
}

/// Counts what it hears of.
class Listener : public qv::XMLParserDelegate {
  public:
    void didStartElement(const std::string& /*elementName*/,
                         const std::map<std::string, std::string>& attributes) override {
        mCount += 1 + static_cast<int>(attributes.size());
    }
    void didEndElement(const std::string& /*elementName*/) override { ++mCount; }
    void foundCharacters(std::string_view /*string*/) override { ++mCount; }
    void parseErrorOccurred(const qv::Error& /*parseError*/) override { ++mErrors; }

    int mCount = 0;
    int mErrors = 0;
};

TEST(OutOfMemory, ReachesWhoeverParses) {
    const std::string text =
        "<an-element-whose-name-is-long attribute-whose-name-is-long=\"and its value is long\">text</an-element-whose-"
        "name-is-long>";
    int thrown = 0;
    for (long count = 0;; ++count) {
        Listener listener;
        failAfter(count);
        try {
            EXPECT_TRUE(qv::XMLParser::parse(text, listener));
        } catch (const std::bad_alloc&) {
            ++thrown;
        }
        if (!endFailing()) {
            EXPECT_EQ(listener.mCount, 4);
            break;
        }
        EXPECT_EQ(listener.mErrors, 0);
    }
    EXPECT_GT(thrown, 3);
}

/// Work that throws ends there, even where there is no memory to say so.
TEST(OutOfMemory, KeepsWorkOfTheMainThreadFromReachingTheHost) {
    qv::PumpedExecutor executor;
    std::size_t messages = 0;
    qv::Log::setSink([&](std::string_view) { ++messages; });
    long count = 0;
    for (bool failed = true; failed; ++count) {
        executor.dispatchAsync([count] {
            failAfter(count);
            throw std::runtime_error("a failure whose words are long enough for an allocation");
        });
        EXPECT_EQ(executor.pump(), 1U);
        failed = endFailing();
    }
    qv::Log::setSink({});
    EXPECT_GT(count, 3);
    EXPECT_GE(messages, 1U);
    EXPECT_LT(messages, static_cast<std::size_t>(count));
}

}  // namespace
