#include "AddressBook/AddressBookProblems.h"

#include <utility>

namespace {

constexpr std::size_t kProblemsTold = 5;

}  // namespace

qv::Error addressBookError(QVAddressBookErrorCode code, std::string description) {
    qv::Error error{.domain = std::string(kQVAddressBookErrorDomain), .code = code, .userInfo = {}};
    error.userInfo[std::string(qv::kErrorDescriptionKey)] = std::move(description);
    return error;
}

void Problems::add(const std::string& place, const std::string& what, bool isBroken) {
    mAllAreBroken = mAllAreBroken && isBroken;
    if (++mCount > kProblemsTold) return;
    mText += (mText.empty() ? "" : "; ") + place + ": " + what;
}

void Problems::fail(qv::Error error) {
    if (!mFailure) mFailure = std::move(error);
}

std::optional<qv::Error> Problems::error() const {
    if (mFailure) return mFailure;
    if (mCount == 0) return std::nullopt;
    const std::string more = mCount > kProblemsTold ? "; and " + std::to_string(mCount - kProblemsTold) + " more" : "";
    return addressBookError(mAllAreBroken ? QVAddressBookErrorBrokenRecord : QVAddressBookErrorUnreadable,
                            mText + more);
}

void Problems::report(std::optional<qv::Error>* error) const {
    if (error != nullptr) *error = this->error();
}
