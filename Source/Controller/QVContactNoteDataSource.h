#pragma once

#include "QVCardScan/QVCardScanTypes.h"
#include "QVPlatform/Export.h"

class QVVeltoContact;

/// What the host may supply to have its own contacts matched. Called on the manager's queue threads, up to three at
/// once. An exception is logged and costs the match, not the card.
class QV_EXPORT QVContactNoteDataSource {
  public:
    virtual ~QVContactNoteDataSource() = default;

    /// Whether the optional operation below is there; false unless a host overrides both.
    virtual bool implementsContactMatchingFullName() const { return false; }

    /// `contactMatchingFullName:firstName:lastName:email:phone:` The host's contact that matches, or null. Each
    /// argument may be absent. The contact is read on the calling thread after this has returned: no other thread
    /// changes it meanwhile.
    virtual std::shared_ptr<QVVeltoContact> contactMatchingFullName(const QVString& fullName, const QVString& firstName,
                                                                    const QVString& lastName, const QVString& email,
                                                                    const QVString& phone);
};
