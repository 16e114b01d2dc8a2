#include "Output/ErrorText.h"

#include "QVCardScan/QVCardProcessingError.h"
#include "Scan/CardScan.h"

namespace qvhost::ErrorText {
namespace {

template <typename T>
std::optional<T> valueFor(const qv::Error& error, std::string_view key) {
    const auto found = error.userInfo.find(std::string(key));
    const T* value = found != error.userInfo.end() ? std::any_cast<T>(&found->second) : nullptr;
    return value != nullptr ? std::optional<T>(*value) : std::nullopt;
}

std::string identity(const qv::Error& error) {
    return error.domain + " " + std::to_string(error.code);
}

std::string connectionMessage(const qv::Error& error, const std::string& server) {
    const auto cause = underlying(error);
    std::string why;
    if (cause) why = ": " + explanation(*cause).value_or("no explanation") + " (" + identity(*cause) + ")";
    return "The exchange with " + server + " failed" + why + ". Check its address, and that it is running.";
}

}  // namespace

std::optional<qv::Error> underlying(const qv::Error& error) {
    return valueFor<qv::Error>(error, kQVCardProcessingUnderlyingErrorKey);
}

QVString explanation(const qv::Error& error) {
    return valueFor<std::string>(error, qv::kErrorDescriptionKey);
}

std::string message(const qv::Error& error, const std::string& server) {
    if (error.domain == kScanErrorDomain) {
        return "The card was given up in the middle, most likely because there was not enough memory. Run again with "
               "--verbose to see why.";
    }
    if (error.domain != kQVCardProcessingErrorDomain) return "Processing the card failed: " + identity(error) + ".";
    switch (error.code) {
        case QVCardProcessingErrorNoServerURL:
            return "There is no recognition server to send the card to. Name one with --server.";
        case QVCardProcessingErrorConnectionFailed:
            return connectionMessage(error, server);
        case QVCardProcessingErrorUnreadableResult:
            return "The answer of " + server +
                   " could not be read. Servers also answer with nothing when they refuse "
                   "the token or the picture, or are too busy: check the token, and try again.";
        default:
            return "Processing the card failed: " + identity(error) + ".";
    }
}

}  // namespace qvhost::ErrorText
