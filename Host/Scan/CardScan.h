#pragma once

#include "QVCardScan/QVBusinessCard.h"
#include "QVCardScan/QVCardProcessingRequest.h"
#include "QVCardScan/QVCardProcessingResponse.h"
#include "Recognition/RecognitionServer.h"
#include "Scan/CardPicture.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qvhost {

/// What a person wants read.
struct ScanRequest {
    std::vector<CardPicture> pictures;
    QVString language;
    bool skipNote = false;
};

/// Errors that the program adds to those of the library.
inline constexpr std::string_view kScanErrorDomain = "QVScanErrorDomain";
/// The library ended the card without a response: something failed that nobody expected, memory most of all.
inline constexpr std::int64_t kScanErrorGivenUp = 1;

/// What came of it.
struct ScanOutcome {
    std::string noteUUID;
    std::size_t pictureCount = 0;
    std::shared_ptr<QVCardProcessingResponse> response;
    /// The recognised card, front and back merged; null when nothing was recognised.
    std::shared_ptr<QVBusinessCard> card;
    /// Whether the library gave no response; the one here is empty then.
    bool wasGivenUp = false;

    /// Fills in what the response tells. Whoever takes the outcome of `CardScan::start` calls it, once.
    void lookAtResponse();
    /// Everything that failed, in order.
    std::vector<qv::Error> errors() const;
    /// Degrees clockwise that the winning picture must be turned; 0 when it is upright.
    std::int64_t rotation() const;
    bool hasFields() const;
    /// Whether there was a picture of the back that was not looked at, because the front said enough.
    bool leftBackUnread() const;
};

/// Runs cards through the library's manager.
class CardScan {
  public:
    using Completion = std::function<void(ScanOutcome outcome)>;

    explicit CardScan(RecognitionServer& server) : mServer(server) {}

    /// Waits for the outcome of one card. A server of our own that dies in the middle is started again, and the card
    /// sent once more.
    Result<ScanOutcome> run(const ScanRequest& request);

    /// Hands a card to the manager's queue and returns; `completion` comes once, on a thread of the queue, unless the
    /// card is cancelled. Its outcome holds the bare response, null at worst: the completion must need no memory, or
    /// the one who waits is never told that there was none. Without a server (`access` is null) the library says so in
    /// its response. For one thread. Returns the note's UUID, by which the card can be cancelled; nothing, and no
    /// completion, when the library refuses the card.
    static std::optional<std::string> start(const ScanRequest& request, const ServerAccess* access,
                                            Completion completion);

    /// Whether the exchange with the server failed.
    static bool connectionFailed(const ScanOutcome& outcome);

  private:
    Result<ScanOutcome> runOnce(const ScanRequest& request);

    RecognitionServer& mServer;
};

}  // namespace qvhost
