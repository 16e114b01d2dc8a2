#pragma once

#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"
#include "QVSocialSearch/QVSocialProfile.h"
#include "QVSocialSearch/QVSocialSearchTypes.h"

/// What a search found. The profile belongs to whoever receives the response.
class QV_EXPORT QVSocialSearchResponse : public qv::Object {
  public:
    QVSocialSearchResponse() = default;

    /// `initWithRequestID:mergedSocialProfile:`
    static std::shared_ptr<QVSocialSearchResponse> initWithRequestID(
        QVString requestID, std::shared_ptr<QVSocialProfile> mergedSocialProfile);

    /// The request's tag; absent when it had none, or when there was no request.
    const QVString& requestID() const { return mRequestID; }

    /// What all providers found, in one profile; null when none of them found anything.
    const std::shared_ptr<QVSocialProfile>& mergedSocialProfile() const { return mMergedSocialProfile; }

    /// One line for the log: which request, and whether somebody was found. It does not say who.
    std::string description() const override;

  private:
    QVString mRequestID;
    std::shared_ptr<QVSocialProfile> mMergedSocialProfile;
};
