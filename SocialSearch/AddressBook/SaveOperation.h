#pragma once

#include "QVPlatform/MainQueue.h"
#include "QVPlatform/Operation.h"
#include "QVSocialSearch/QVAddressBookController.h"

#include <memory>

/// One save, and the report of it on the main executor.
class SaveOperation : public qv::Operation {
  public:
    SaveOperation(std::shared_ptr<QVAddressBook> addressBook, std::shared_ptr<const QVSocialProfile> profile,
                  QVAddressBookCompletionHandler completionHandler);
    void main() override;

  private:
    QVAddressBookSaveResult save() const;
    void report(QVAddressBookSaveResult result);

    const std::shared_ptr<QVAddressBook> mAddressBook;
    const std::shared_ptr<const QVSocialProfile> mProfile;
    const std::shared_ptr<qv::MainExecutor> mExecutor;
    QVAddressBookCompletionHandler mCompletionHandler;
};
