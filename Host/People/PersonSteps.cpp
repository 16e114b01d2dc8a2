#include "People/PersonSteps.h"

#include "People/PersonsAddressBook.h"
#include "QVCardScan/QVBizCardManager.h"
#include "Support/Progress.h"

#include <utility>

namespace qvhost {
namespace {

void append(std::vector<std::string>& remarks, const std::vector<std::string>& more) {
    remarks.insert(remarks.end(), more.begin(), more.end());
}

}  // namespace

PersonSteps::PersonSteps(Plan plan) : mPlan(std::move(plan)) {
    if (mPlan.searchKey) mLookup.emplace(mLoop, mPlan.searchKey->first, mPlan.searchKey->second);
    if (mPlan.addressBook) QVAddressBookController::sharedController()->setAddressBook(mPlan.addressBook->book);
    QVSocialSearchManager::sharedManager()->setProviders(mPlan.services);
}

PersonSteps::~PersonSteps() {
    QVBizCardManager::sharedManager()->setContactNoteDataSource(nullptr);
    QVAddressBookController::sharedController()->setAddressBook(nullptr);
    QVSocialSearchManager::sharedManager()->setProviders({});
}

std::shared_ptr<KnownContacts> PersonSteps::nextCard() {
    // Each card has its own, because several are read at the same time.
    auto known = mPlan.known ? std::make_shared<KnownContacts>(*mPlan.known) : nullptr;
    QVBizCardManager::sharedManager()->setContactNoteDataSource(known);
    return known;
}

PersonOutcome PersonSteps::run(const ScanOutcome& scan, const std::shared_ptr<KnownContacts>& known,
                               const QVString& newUID) {
    PersonOutcome outcome;
    outcome.comparesContacts = mPlan.known.has_value();
    outcome.searches = mLookup.has_value();
    outcome.saves = mPlan.saves;
    outcome.nameOnCard = scan.response->contactName();
    if (!scan.hasFields() || !scan.response->contact()) {
        if (outcome.searches || outcome.saves)
            outcome.remarks.emplace_back("Nobody was searched for or saved, because nothing was read.");
        return outcome;
    }
    if (known) {
        known->completeByName(*scan.response);
        outcome.merged = known->merged();
        append(outcome.remarks, known->remarks());
    }
    if (mLookup) search(scan, outcome);
    if (mPlan.saves) save(scan, newUID, outcome);
    return outcome;
}

void PersonSteps::search(const ScanOutcome& scan, PersonOutcome& outcome) {
    const Progress progress(mShowsProgress ? "Looking the person up …" : "");
    const auto controller = QVAddressBookController::sharedController();
    const auto addressBook = controller->addressBook();
    if (addressBook) {
        const Person person = Person::of(*scan.response->contact());
        controller->setAddressBook(std::make_shared<PersonsAddressBook>(addressBook, person));
    }
    outcome.search = mLookup->run(scan.response);
    controller->setAddressBook(addressBook);
}

void PersonSteps::save(const ScanOutcome& scan, const QVString& newUID, PersonOutcome& outcome) {
    const Progress progress(mShowsProgress ? "Saving the contact in " + mPlan.addressBook->name + " …" : "");
    const auto found = outcome.search ? outcome.search->profile : nullptr;
    outcome.save = ContactSaver(mLoop, *mPlan.addressBook).save(scan.response->contact(), found, newUID);
    append(outcome.remarks, outcome.save->remarks);
}

}  // namespace qvhost
