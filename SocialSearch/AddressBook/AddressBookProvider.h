#pragma once

#include "QVSocialSearch/QVSocialSearchProvider.h"

/// Looks people up in the address book that the host has chosen, by any of a contact's e-mail addresses. An address
/// that several contacts share says nothing of who was met: then none of them is found, which is logged.
class AddressBookProvider : public QVSocialSearchProvider {
  public:
    std::string name() const override;
    std::shared_ptr<QVSocialProfile> profileForRequest(const QVSocialSearchRequest& request,
                                                       Clock::time_point deadline) override;
};
