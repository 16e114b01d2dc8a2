#pragma once

#include "People/ContactMatcher.h"
#include "QVCardScan/QVCardProcessingResponse.h"
#include "QVCardScan/QVContactNoteDataSource.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// The contact that a card was merged with.
struct MergedContact {
    QVString UID;
    Person person;
    /// Where it lies.
    std::string where;
    /// Whether an e-mail address said that it is the same person; the name and the company otherwise.
    bool byEmail = false;
};

/// The contacts that there are already, as the library's data source while it reads a card. It asks on a thread of its
/// own, and only with name and e-mail address; what needs the company is done afterwards, by `completeByName`.
class KnownContacts : public QVContactNoteDataSource {
  public:
    explicit KnownContacts(AddressBookPlace place) : mPlace(std::move(place)) {}

    bool implementsContactMatchingFullName() const override { return true; }
    std::shared_ptr<QVVeltoContact> contactMatchingFullName(const QVString& fullName, const QVString& firstName,
                                                            const QVString& lastName, const QVString& email,
                                                            const QVString& phone) override;

    /// After the card was read: a card without an e-mail address is merged with the contact of the same name and
    /// company, and its note is written anew.
    void completeByName(QVCardProcessingResponse& response);

    /// After the card was read: whom it was merged with, and what a person should know besides.
    const std::optional<MergedContact>& merged() const { return mMerged; }
    const std::vector<std::string>& remarks() const { return mRemarks; }

  private:
    std::shared_ptr<QVVeltoContact> contactFor(const Person& person);

    AddressBookPlace mPlace;
    std::optional<MergedContact> mMerged;
    std::vector<std::string> mRemarks;
};

}  // namespace qvhost
