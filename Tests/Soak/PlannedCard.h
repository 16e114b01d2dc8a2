#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace soak {

/// What is to become of a card.
enum class Plan {
    OneSide,
    TwoSides,       ///< the e-mail address stands on the back
    NoCard,         ///< the server finds nothing
    BrokenPicture,  ///< cannot be decoded, or not to its end
    Unavailable,    ///< 503 with an empty body
    NoXML,          ///< half a result, or a page of some proxy's
    NoText,         ///< bytes that are no UTF-8
    Reset,          ///< the connection breaks instead of an answer
    Cancelled,      ///< at once; may have ended before
};

/// One card of the soak, the same each time for the same number: what is printed on it, what the stub server answers
/// and what the library has to make of that.
class PlannedCard {
  public:
    explicit PlannedCard(int number);

    int number() const { return mNumber; }
    Plan plan() const { return mPlan; }
    bool hasBack() const { return mPlan == Plan::TwoSides; }
    /// Whether somebody can be read on it.
    bool hasPerson() const;
    /// Whether only the card is asked for, without contact and note.
    bool skipsNote() const { return mNumber % 11 == 3; }
    /// Whether the host knows the person already.
    bool isKnownToHost() const { return mNumber % 7 == 2; }

    std::string noteUUID() const { return "note-" + std::to_string(mNumber); }
    /// Carries the number to the stub server.
    std::string token() const { return "card-" + std::to_string(mNumber); }
    /// The number in a token or an e-mail address; nothing in any other text.
    static std::optional<int> numberIn(std::string_view text);

    /// The result that the stub server sends for a side, as XML.
    std::string frontResult() const;
    std::string backResult() const;

    /// What has to be read.
    std::string name() const;
    std::string email() const;
    std::vector<std::string> phones() const;
    /// The codes of the errors that have to be reported, in order.
    std::vector<long> errorCodes() const;

  private:
    std::string printedName() const;
    std::string printedEmail() const;

    int mNumber;
    Plan mPlan;
};

}  // namespace soak
