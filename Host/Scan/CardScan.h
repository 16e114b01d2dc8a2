#pragma once

#include "QVCardScan/QVBusinessCard.h"
#include "QVCardScan/QVCardProcessingRequest.h"
#include "QVCardScan/QVCardProcessingResponse.h"
#include "Recognition/RecognitionServer.h"
#include "Scan/CardPicture.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace qvhost {

/// What a person wants read.
struct ScanRequest {
    std::vector<CardPicture> pictures;
    QVString language;
    bool skipNote = false;
};

/// What came of it.
struct ScanOutcome {
    std::string noteUUID;
    std::size_t pictureCount = 0;
    std::shared_ptr<QVCardProcessingResponse> response;
    /// The recognised card, front and back merged; null when nothing was recognised.
    std::shared_ptr<QVBusinessCard> card;

    /// Everything that failed, in order.
    std::vector<qv::Error> errors() const;
    /// Degrees clockwise that the winning picture must be turned; 0 when it is upright.
    std::int64_t rotation() const;
    bool hasFields() const;
    /// Whether there was a picture of the back that was not looked at, because the front said enough.
    bool leftBackUnread() const;
};

/// Runs one card through the library's manager and waits for the outcome.
class CardScan {
  public:
    explicit CardScan(RecognitionServer& server) : mServer(server) {}

    /// A server of our own that dies in the middle is started again, and the card sent once more.
    Result<ScanOutcome> run(const ScanRequest& request);

  private:
    Result<ScanOutcome> runOnce(const ScanRequest& request);

    RecognitionServer& mServer;
};

}  // namespace qvhost
