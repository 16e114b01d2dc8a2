#pragma once

#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"
#include "QVSocialSearch/QVSocialSearchTypes.h"

/// A search for the person behind one e-mail address. Set up by whoever asks, and theirs again once it was handed over.
/// Not synchronised.
class QV_EXPORT QVSocialSearchRequest : public qv::Object {
  public:
    QVSocialSearchRequest() = default;

    /// `initWithEmailAddress:`
    static std::shared_ptr<QVSocialSearchRequest> initWithEmailAddress(QVString emailAddress);

    /// Who is looked for.
    const QVString& emailAddress() const { return mEmailAddress; }

    /// A tag that comes back with the response.
    const QVString& requestID() const { return mRequestID; }
    void setRequestID(QVString requestID) { mRequestID = std::move(requestID); }

  private:
    QVString mEmailAddress;
    QVString mRequestID;
};
