#include "QVSocialSearch/QVAddressBookController.h"

#include "AddressBook/SaveOperation.h"

#include <utility>

std::shared_ptr<QVAddressBookController> QVAddressBookController::sharedController() {
    // Never destroyed: saves may still run while the process ends.
    static const auto* const controller =
        new std::shared_ptr<QVAddressBookController>(std::make_shared<QVAddressBookController>());
    return *controller;
}

QVAddressBookController::QVAddressBookController() : mSaves(/*maxConcurrentOperationCount=*/1) {
}

void QVAddressBookController::saveSocialProfileInAddressBook(const std::shared_ptr<QVSocialProfile>& profile,
                                                             QVAddressBookCompletionHandler completionHandler) {
    mSaves.addOperation(std::make_shared<SaveOperation>(addressBook(), profile ? profile->copy() : nullptr,
                                                        std::move(completionHandler)));
}
