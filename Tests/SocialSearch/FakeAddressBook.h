#pragma once

#include "QVSocialSearch/QVAddressBook.h"
#include "QVSocialSearch/QVAddressBookController.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace social {

/// An address book that does what a test tells it.
class FakeAddressBook : public QVAddressBook {
  public:
    std::function<QVAddressBookSaveResult(const QVSocialProfile&)> save;
    std::function<Profiles(const std::string&, std::optional<qv::Error>*)> find;

    QVAddressBookSaveResult saveProfile(const QVSocialProfile& profile) override { return save(profile); }
    Profiles profiles(std::optional<qv::Error>*) override { return {}; }
    Profiles profilesWithEmailAddress(const std::string& address, std::optional<qv::Error>* error) override {
        return find(address, error);
    }
    std::shared_ptr<QVSocialProfile> profileWithUID(const std::string&, std::optional<qv::Error>*) override {
        return nullptr;
    }
};

/// The host's choice while this lives.
class ChosenAddressBook {
  public:
    explicit ChosenAddressBook(std::shared_ptr<QVAddressBook> addressBook) {
        QVAddressBookController::sharedController()->setAddressBook(std::move(addressBook));
    }
    ~ChosenAddressBook() { QVAddressBookController::sharedController()->setAddressBook(nullptr); }
    ChosenAddressBook(const ChosenAddressBook&) = delete;
    ChosenAddressBook& operator=(const ChosenAddressBook&) = delete;
};

}  // namespace social
