#include "People/SearchServices.h"

#include "QVSocialSearch/QVGravatarProvider.h"
#include "QVSocialSearch/QVWebFingerProvider.h"
#include "Recognition/RemoteServer.h"
#include "Support/Secrets.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <utility>

namespace qvhost {
namespace {

constexpr const char* kKeyVariable = "QVCARDSCAN_PROFILE_SERVICE_KEY";

}  // namespace

void SearchServices::describe(CLI::App& command, CLI::Option& search) {
    auto* service = command.add_flag("--profile-service", mUsesProfileService,
                                     "Also ask gravatar.com (learns the address's digest)");
    service->needs(&search);
    command
        .add_option("--profile-service-key-file", mProfileServiceKeyFile,
                    std::string("Its key (or set ") + kKeyVariable + ")")
        ->type_name("F")
        ->needs(service);
    command.add_option("--profile-service-url", mProfileServiceURL, "Where that service is")
        ->needs(service)
        ->check(RemoteServer::objectionTo)
        ->group("");
    auto* webFinger =
        command.add_flag("--webfinger", mUsesWebFinger, "Also ask the address's domain (learns of the card)");
    webFinger->needs(&search);
    command.add_option("--webfinger-url", mWebFingerURL, "Whom to ask in the place of every domain")
        ->needs(webFinger)
        ->check(RemoteServer::objectionTo)
        ->group("");
}

Result<QVSocialSearchManager::Providers> SearchServices::open() const {
    QVSocialSearchManager::Providers providers;
    if (mUsesProfileService) {
        Result<std::shared_ptr<QVSocialSearchProvider>> service = profileService();
        if (!service) return service.failure();
        providers.push_back(std::move(*service));
    }
    if (mUsesWebFinger) providers.push_back(webFinger());
    return providers;
}

Result<std::shared_ptr<QVSocialSearchProvider>> SearchServices::profileService() const {
    const auto key = Secrets::read({mProfileServiceKeyFile, {kKeyVariable}, "the service's key, on one line"});
    if (!key) return key.failure();
    QVGravatarOptions options;
    if (*key) options.apiKey = (*key)->front();
    if (mProfileServiceURL) options.baseURL = *mProfileServiceURL;
    return std::shared_ptr<QVSocialSearchProvider>(std::make_shared<QVGravatarProvider>(std::move(options)));
}

std::shared_ptr<QVSocialSearchProvider> SearchServices::webFinger() const {
    QVWebFingerOptions options;
    if (mWebFingerURL) options.originOfDomain = [url = *mWebFingerURL](const std::string&) { return url; };
    return std::make_shared<QVWebFingerProvider>(std::move(options));
}

}  // namespace qvhost
