#include "QVCardScan/QVBizCardParser.h"
#include "QVCardScan/QVCardProcessingError.h"
#include "QVCardScan/QVCardProcessingOperation.h"
#include "QVCardScan/QVCardUtilities.h"
#include "QVPlatform/HTTPClient.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/Text.h"

#include <utility>

namespace {

constexpr const char* kDefaultLanguage = "en";

qv::HTTPRequest requestToRecognise(const qv::URL& url, const QVString& language, const QVString& token,
                                   std::optional<qv::Data> data) {
    qv::HTTPRequest request{.method = "POST", .url = url};
    request.headers = {{"content-language", language.value_or(kDefaultLanguage)}, {"Content-Type", "image/jpeg"}};
    if (token) request.headers.emplace_back("auth", *token);
    request.body = std::move(data);
    request.cachePolicy = qv::CachePolicy::ReturnCacheDataElseLoad;
    return request;
}

qv::Error connectionFailed(const qv::Error& transportError) {
    return {std::string(kQVCardProcessingErrorDomain),
            QVCardProcessingErrorConnectionFailed,
            {{std::string(kQVCardProcessingUnderlyingErrorKey), transportError}}};
}

qv::Error unreadableResult() {
    return {std::string(kQVCardProcessingErrorDomain), QVCardProcessingErrorUnreadableResult, {}};
}

void store(std::optional<qv::Error>* slot, qv::Error error) {
    if (slot) *slot = std::move(error);
}

}  // namespace

std::shared_ptr<qv::Image> QVCardProcessingOperation::processNSImageForOCR(
    const std::shared_ptr<qv::Image>& image) const {
    return image;
}

std::optional<qv::Data> QVCardProcessingOperation::compressedCardImageDataFromNSImage(
    const std::shared_ptr<qv::Image>& image) const {
    qv::Log::write("<INFO> Compressing card image");
    const auto scaled = imageByScalingProportionallyToSize(
        image, {static_cast<double>(QVCardMaxRecoWidth), static_cast<double>(QVCardMaxRecoHeight)});
    return JPEGRepresentationUsingCompressionFactor(scaled, QVCardRecoCompressionFactor);
}

QVString QVCardProcessingOperation::sendCardSynchronouslyWithData(const std::optional<qv::Data>& data,
                                                                  const QVString& auth,
                                                                  std::optional<qv::Error>* error) const {
    return send(data, auth, error);
}

QVString QVCardProcessingOperation::send(std::optional<qv::Data> data, const QVString& auth,
                                         std::optional<qv::Error>* error) const {
    qv::Log::write("<INFO> Sending card to %@", mServerURL ? QVString(mServerURL->absoluteString()) : std::nullopt);
    if (!mServerURL) {
        store(error, connectionFailed(
                         {std::string(qv::kURLErrorDomain), static_cast<long>(qv::HTTPErrorCode::UnsupportedURL), {}}));
        return std::nullopt;
    }
    const auto request = mRequest.load();
    const auto answer = qv::HTTPClient::sendSynchronousRequest(
        requestToRecognise(*mServerURL, request ? request->recoLanguage() : std::nullopt, auth, std::move(data)));
    QVString text = answer.body ? qv::Text::stringFromUTF8(*answer.body) : std::nullopt;
    if (answer.error) {
        store(error, connectionFailed(*answer.error));
        return text;
    }
    if (!text) store(error, unreadableResult());
    return text;
}

std::shared_ptr<QVBusinessCard> QVCardProcessingOperation::performCardScanSynchronouslyFromImage(
    const std::shared_ptr<qv::Image>& image, const QVString& withAuth, QVErrorArray& errors,
    QVString& rawResult) const {
    auto data = compressedCardImageDataFromNSImage(image);
    auto list = std::make_shared<std::vector<qv::Error>>();
    std::optional<qv::Error> sendError;
    const QVString text = send(std::move(data), withAuth, &sendError);
    // The slot starts empty, and the parser fills only a slot that holds an error: a malformed answer reports nothing
    // and yields the card as far as it was read.
    std::optional<qv::Error> parseError;
    auto card = QVBizCardParser().parse(text, &parseError);
    if (sendError) list->push_back(*sendError);
    if (parseError) list->push_back(*parseError);
    errors = list;
    if (text) rawResult = text;
    return card;
}
