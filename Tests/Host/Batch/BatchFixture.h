#pragma once

#include "QVPlatform/MD5.h"
#include "Support/HostProgram.h"
#include "Support/ReadFile.h"
#include "Support/ScriptedServer.h"
#include "Support/TemporaryFolder.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace testsupport {

/// An answer with these fields, each a type's name and a text.
inline std::string recognitionOf(const std::vector<std::pair<std::string, std::string>>& fields) {
    std::string answer = "<recoIndex lang=\"en\" objWidth=\"120\" objHeight=\"70\">";
    for (const auto& [type, text] : fields)
        answer.append("<item fldType=\"")
            .append(type)
            .append(R"(" x="1" y="2" w="3" h="4" orient="0"><t w="90">)")
            .append(text)
            .append("</t></item>");
    return answer + "</recoIndex>";
}

/// `batch` against a server in the test.
class BatchFixture : public testing::Test {
  protected:
    /// A picture unlike those of other numbers.
    void addPicture(const std::string& name, int number) const {
        Pixels pixels(48, 32);
        for (int x = 0; x < 48; ++x)
            pixels.set(x, 16, {static_cast<std::uint8_t>(number * 37 + x), static_cast<std::uint8_t>(number), 0, 255});
        const qv::Data bytes = makeJPEG(pixels);
        mFolder.write("in/" + name, std::string(bytes.begin(), bytes.end()));
    }
    void addPictures(int count) const {
        for (int i = 1; i <= count; ++i)
            addPicture("card" + std::to_string(i) + ".jpg", i);
    }
    static std::string answer(const std::string& recognition) { return ScriptedServer::answer(200, recognition); }
    void recognise(const std::vector<std::pair<std::string, std::string>>& fields) {
        mServer.respond(answer(recognitionOf(fields)));
    }
    /// Each picture is the card of another person, without an e-mail address.
    void recogniseEverybody() {
        mServer.handle([](ScriptedConnection& connection, const ScriptedRequest& request) {
            const std::string name = "Person " + qv::lowerHexMD5(qv::Data(request.body.begin(), request.body.end()));
            connection.write(answer(recognitionOf({{"name", name}, {"phone", "+1 202 555 0142"}})));
        });
    }

    std::string in() const { return (mFolder / "in").string(); }
    std::string out() const { return (mFolder / "out").string(); }
    std::string book() const { return (mFolder / "book").string(); }
    /// `batch in -o out` with this and the server.
    ProcessCall call(std::vector<std::string> more = {}) const {
        std::vector<std::string> arguments{"batch", in(), "-o", out(), "--server", mServer.url("/recognise")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        ProcessCall call = hostCall(std::move(arguments));
        call.environment["QVCARDSCAN_TOKEN"] = "s3cret-t0ken-for-tests";
        call.environment["XDG_DATA_HOME"] = (mFolder / "data").string();
        return call;
    }
    ProcessResult batch(std::vector<std::string> more = {}) const { return runProcess(call(std::move(more))); }

    std::vector<std::string> cards() const { return namesIn(mFolder / "out/cards"); }
    nlohmann::ordered_json record(const std::string& card) const {
        return nlohmann::ordered_json::parse(readFile(mFolder / "out/cards" / card / "batch.json"));
    }
    static std::vector<std::string> namesIn(const std::filesystem::path& folder) {
        std::vector<std::string> names;
        if (!std::filesystem::exists(folder)) return names;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    std::string list(const char* name) const { return readFile(mFolder / "out" / name); }

    TemporaryFolder mFolder;
    ScriptedServer mServer;
};

}  // namespace testsupport
