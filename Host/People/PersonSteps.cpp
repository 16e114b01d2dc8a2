#include "People/PersonSteps.h"

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
    if (mPlan.known) mKnown = std::make_shared<KnownContacts>(*mPlan.known);
    QVBizCardManager::sharedManager()->setContactNoteDataSource(mKnown);
    if (mPlan.searchKey) mLookup.emplace(mLoop, mPlan.searchKey->first, mPlan.searchKey->second);
    if (mPlan.addressBook) QVAddressBookController::sharedController()->setAddressBook(mPlan.addressBook->book);
    QVSocialSearchManager::sharedManager()->setProviders(mPlan.services);
}

PersonSteps::~PersonSteps() {
    QVBizCardManager::sharedManager()->setContactNoteDataSource(nullptr);
    QVAddressBookController::sharedController()->setAddressBook(nullptr);
    QVSocialSearchManager::sharedManager()->setProviders({});
}

PersonOutcome PersonSteps::run(const ScanOutcome& scan) {
    PersonOutcome outcome;
    outcome.comparesContacts = mKnown != nullptr;
    outcome.searches = mLookup.has_value();
    outcome.saves = mPlan.saves;
    outcome.nameOnCard = scan.response->contactName();
    if (!scan.hasFields() || !scan.response->contact()) {
        if (outcome.searches || outcome.saves)
            outcome.remarks.emplace_back("Nobody was searched for or saved, because nothing was read.");
        return outcome;
    }
    if (mKnown) {
        mKnown->completeByName(*scan.response);
        outcome.merged = mKnown->merged();
        append(outcome.remarks, mKnown->remarks());
    }
    if (mLookup) search(scan, outcome);
    if (mPlan.saves) save(scan, outcome);
    return outcome;
}

void PersonSteps::search(const ScanOutcome& scan, PersonOutcome& outcome) {
    const Progress progress("Looking the person up …");
    outcome.search = mLookup->run(scan.response);
}

void PersonSteps::save(const ScanOutcome& scan, PersonOutcome& outcome) {
    const Progress progress("Saving the contact in " + mPlan.addressBook->name + " …");
    const auto found = outcome.search ? outcome.search->profile : nullptr;
    outcome.save = ContactSaver(mLoop, *mPlan.addressBook).save(scan.response->contact(), found);
    append(outcome.remarks, outcome.save->remarks);
}

}  // namespace qvhost
