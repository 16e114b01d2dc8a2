// What somebody sends to the page, through a socket; bytes 0x1E part what arrives at once. Each input meets the same
// pile: one card with a picture, read. Seeds bring the key, without which nothing is answered.

#include "Page/PageDesk.h"
#include "Page/PageServer.h"
#include "Page/ReadFields.h"
#include "Page/WebFiles.h"
#include "Support/Input.h"
#include "Support/Loopback.h"
#include "Support/Require.h"

#include <fstream>
#include <iterator>
#include <thread>

using fuzzing::require;
using namespace qvhost;

/// The page's own files are the same whoever asks: one stands for them.
const WebFile* qvhost::webFile(std::string_view name) {
    static constexpr WebFile kFile{"main.js", "text/javascript", "1;"};
    return name == kFile.name ? &kFile : nullptr;
}

namespace {

constexpr const char* kKey = "the-fuzzers-own-key";
/// The port that the seeds name; the one that is listened on is another each time.
constexpr std::uint16_t kPort = 80;
constexpr std::uint64_t kShelfRoom = 4 << 20;

constexpr const char* kResult =
    "<recoIndex lang=\"en\" objWidth=\"100\" objHeight=\"60\"><item fldType=\"name\" x=\"1\" y=\"2\" w=\"3\" h=\"4\">"
    "<t w=\"90\">Jane Doe</t></item><item fldType=\"email\"><t w=\"80\">jane@zq.example</t></item></recoIndex>";

/// An address book that nothing comes into.
class NoAddressBook final : public QVAddressBook {
  public:
    QVAddressBookSaveResult saveProfile(const QVSocialProfile&) override { return {}; }
    Profiles profiles(std::optional<qv::Error>*) override { return {}; }
    Profiles profilesWithEmailAddress(const std::string&, std::optional<qv::Error>*) override { return {}; }
    std::shared_ptr<QVSocialProfile> profileWithUID(const std::string&, std::optional<qv::Error>*) override {
        return nullptr;
    }
};

AddressBookPlace noPlace() {
    return {std::make_shared<NoAddressBook>(), "nowhere", [](const std::string&) { return std::string(); }, {}};
}

/// The desk of one input, with the pile that it works on.
struct Table {
    explicit Table(PictureShelf& shelf, const ShelvedPicture& picture) : pile(shelf), saver(pile, noPlace()) {
        const std::string identifier = pile.add({picture});
        pile.takeWaiting();
        pile.change(identifier, [](PileCard& card) {
            takeReadFields(card, kResult, std::nullopt);
            card.state = PileCard::State::Done;
            return true;
        });
        desk.emplace(PageGate(PageKey(kKey), kPort, /*isForNetwork=*/false), pile, shelf, saver);
    }
    ~Table() {
        pile.stop();
        saver.stop();
    }

    CardPile pile;
    PileSaver saver;
    std::optional<PageDesk> desk;
};

/// A server that lives as long as the fuzzer, in front of the table of the moment.
class House final : public PageHandler {
  public:
    House() {
        Result<std::unique_ptr<PictureShelf>> shelf = PictureShelf::make(kShelfRoom);
        require(bool(shelf), "there is a folder for pictures");
        mShelf = std::move(*shelf);
        std::ifstream file(QV_SEED_PICTURE, std::ios::binary);
        const Result<ShelvedPicture> picture =
            mShelf->put("card.jpg", {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
        require(bool(picture), "a picture can be kept");
        mPicture = *picture;
        std::string error;
        // What the client has ended is over at once, and not when time is up.
        PageServerLimits limits;
        limits.headerTime = limits.bodyTime = std::chrono::minutes(5);
        mServer = PageServer::listen("127.0.0.1", 0, limits, error);
        require(mServer != nullptr, "the server listens");
        std::thread([this] { mServer->run(*this); }).detach();
    }

    std::string answersTo(const std::vector<std::string>& pieces) {
        mTable = std::make_unique<Table>(*mShelf, mPicture);
        std::string answers = fuzzing::exchange(mServer->port(), pieces);
        mTable.reset();
        return answers;
    }

    std::optional<unsigned> refusal(const PageRequest& head) const override { return mTable->desk->refusal(head); }
    std::size_t bodyLimit(const PageRequest& head) const override { return mTable->desk->bodyLimit(head); }
    void handle(const PageRequest& request, const PageAnswering& answer) override {
        mTable->desk->handle(request, answer);
    }
    void tick() override {}
    void stop() override {}

  private:
    std::unique_ptr<PictureShelf> mShelf;
    ShelvedPicture mPicture;
    std::unique_ptr<PageServer> mServer;
    std::unique_ptr<Table> mTable;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static auto* const house = new House();
    const std::string text = fuzzing::textOf(bytes, count);
    const std::string answers = house->answersTo(fuzzing::partsOf(text));
    require(answers.empty() || answers.starts_with("HTTP/1.1 "), "an answer is HTTP");
    if (text.find(kKey) == std::string::npos) {
        require(answers.find("Jane") == std::string::npos, "nobody without the key learns anything");
        require(answers.find("Set-Cookie") == std::string::npos, "nobody without the key gets it");
    }
    return 0;
}
