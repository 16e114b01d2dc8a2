#pragma once

#include "QVPlatform/Atomic.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"
#include "QVPlatform/OperationQueue.h"
#include "QVSocialSearch/QVAddressBook.h"

#include <functional>
#include <memory>

/// Called once on the process's main executor; what it throws is caught there and logged.
using QVAddressBookCompletionHandler = std::function<void(const QVAddressBookSaveResult& result)>;

/// Saves profiles in the address book that the host has chosen. Any thread may call.
class QV_EXPORT QVAddressBookController : public qv::Object {
  public:
    /// The process's controller; never destroyed.
    static std::shared_ptr<QVAddressBookController> sharedController();

    /// `init` A controller without an address book.
    QVAddressBookController();

    /// Where saves go from now on; those under way keep theirs. Null: saves answer with an error.
    std::shared_ptr<QVAddressBook> addressBook() const { return mAddressBook.load(); }
    void setAddressBook(std::shared_ptr<QVAddressBook> addressBook) { mAddressBook.store(std::move(addressBook)); }

    /// `saveSocialProfileInAddressBook:completionHandler:` Saves a copy of the profile as it is now, on a thread of the
    /// controller, one after the other in the order of the calls: an update of the record that it stands for, or a new
    /// record. An address book that throws is an error; one that blocks holds up the saves behind it. The handler may
    /// be empty; it is never called inside this call.
    void saveSocialProfileInAddressBook(const std::shared_ptr<QVSocialProfile>& profile,
                                        QVAddressBookCompletionHandler completionHandler);

  private:
    qv::Atomic<std::shared_ptr<QVAddressBook>> mAddressBook;
    qv::OperationQueue mSaves;
};
