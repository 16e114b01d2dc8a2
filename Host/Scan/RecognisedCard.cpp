#include "Scan/RecognisedCard.h"

#include "QVCardScan/QVBizCardParser.h"

namespace qvhost::RecognisedCard {

std::shared_ptr<QVBusinessCard> fromResult(const QVString& result) {
    std::optional<qv::Error> error;
    return QVBizCardParser().parse(result, &error);
}

std::shared_ptr<QVBusinessCard> fromResults(const QVString& front, const QVString& back) {
    auto first = fromResult(front);
    const auto second = fromResult(back);
    if (!second) return first;
    if (!first) first = std::make_shared<QVBusinessCard>();
    const bool frontWins = first->score() >= second->score();
    const auto& winner = frontWins ? first : second;
    winner->mergeWithCard(frontWins ? second : first);
    return winner;
}

}  // namespace qvhost::RecognisedCard
