#include "Soak/PlannedCards.h"

#include "QVCardScan/QVCardProcessingError.h"
#include "QVCardScan/QVVeltoContact.h"

#include <algorithm>

namespace soak {

namespace {

std::vector<long> codesOf(const QVErrorArray& errors) {
    std::vector<long> codes;
    if (!errors) return {-1};
    std::transform(errors->begin(), errors->end(), std::back_inserter(codes), [](const qv::Error& error) {
        return error.domain == kQVCardProcessingErrorDomain ? error.code : -1;
    });
    return codes;
}

/// Every card has its own hash, so that the notes of two cannot be taken for each other.
std::string hashOf(const PlannedCard& card) {
    return "0123456789abcdef" + std::to_string(card.number());
}

bool mentions(const QVString& text, const std::string& part) {
    return text && text->find(part) != std::string::npos;
}

std::string problemOfNote(const PlannedCard& card, const QVCardProcessingResponse& response) {
    if (card.skipsNote()) {
        const bool isRight = !response.qvmlContent() && !response.contact();
        return isRight ? "" : "a note that nobody asked for";
    }
    if (!response.contact()) return "no contact";
    if (!mentions(response.qvmlContent(), hashOf(card))) return "no note with its picture";
    if (card.hasPerson() && !mentions(response.qvmlContent(), card.email())) return "a note without the address";
    return {};
}

std::string problemOfPerson(const PlannedCard& card, const QVCardProcessingResponse& response) {
    if (!card.hasPerson()) {
        const bool isNobody = !response.contactName() && !response.contactEmails();
        return isNobody || card.plan() == Plan::NoXML ? "" : "a person where none was";
    }
    if (response.contactName() != card.name()) return "the name " + response.contactName().value_or("(none)");
    const auto emails = response.contactEmails();
    if (!emails || *emails != std::vector{card.email()}) return "other addresses";
    const auto phones = response.contactPhones();
    if (!phones || *phones != card.phones()) return "other numbers";
    return {};
}

}  // namespace

SoakCard PlannedCards::card(int number) const {
    const PlannedCard card(number);
    auto request = QVCardProcessingRequest::initWithNoteUUID(
        card.noteUUID(), mPictures.picturesOf(card),
        std::make_shared<std::vector<std::string>>(std::vector{hashOf(card), "back" + hashOf(card)}), card.token(),
        /*processImageForOCR=*/number % 2 == 0);
    request->setSkipNoteGeneration(card.skipsNote());
    return {.request = std::move(request), .isCancelled = card.plan() == Plan::Cancelled};
}

std::string PlannedCards::problemOf(int number, const QVCardProcessingResponse& response) const {
    const PlannedCard card(number);
    if (response.originalNoteUUID() != card.noteUUID()) return "another card's response";
    if (codesOf(response.errors()) != card.errorCodes()) return "other errors than planned";
    const std::string problem = problemOfPerson(card, response);
    return problem.empty() ? problemOfNote(card, response) : problem;
}

bool PlannedCards::hasPerson(int number) const {
    const PlannedCard card(number);
    return card.hasPerson() && !card.skipsNote() && card.plan() != Plan::Cancelled && number % 2 == 0;
}

}  // namespace soak
