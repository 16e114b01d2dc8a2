#include "Scan/RecognisedCard.h"

#include "QVCardScan/QVBizCardParser.h"

namespace qvhost::RecognisedCard {

std::shared_ptr<QVBusinessCard> fromResult(const QVString& result) {
    std::optional<qv::Error> error;
    return QVBizCardParser().parse(result, &error);
}

std::shared_ptr<QVBusinessCard> merged(std::shared_ptr<QVBusinessCard> front,
                                       const std::shared_ptr<QVBusinessCard>& back) {
    if (!back) return front;
    if (!front) front = std::make_shared<QVBusinessCard>();
    const bool frontWins = front->score() >= back->score();
    const auto& winner = frontWins ? front : back;
    winner->mergeWithCard(frontWins ? back : front);
    return winner;
}

std::shared_ptr<QVBusinessCard> fromResults(const QVString& front, const QVString& back) {
    return merged(fromResult(front), fromResult(back));
}

}  // namespace qvhost::RecognisedCard
