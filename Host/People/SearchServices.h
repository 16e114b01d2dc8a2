#pragma once

#include "QVSocialSearch/QVSocialSearchManager.h"
#include "Support/Result.h"

#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace qvhost {

/// The options that choose where people are looked up besides the address book. All are off until chosen, because each
/// tells somebody else whom the user has met.
class SearchServices {
  public:
    /// `search` is the option without which there is nothing to choose.
    void describe(CLI::App& command, CLI::Option& search);

    /// The services that were chosen, in their order of trust.
    Result<QVSocialSearchManager::Providers> open() const;

  private:
    Result<std::shared_ptr<QVSocialSearchProvider>> profileService() const;
    std::shared_ptr<QVSocialSearchProvider> webFinger() const;

    bool mUsesProfileService = false;
    std::optional<std::string> mProfileServiceKeyFile;
    std::optional<std::string> mProfileServiceURL;
    bool mUsesWebFinger = false;
    std::optional<std::string> mWebFingerURL;
};

}  // namespace qvhost
