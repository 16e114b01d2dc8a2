#include "People/SearchServices.h"

#include "QVSocialSearch/QVGravatarProvider.h"
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
                                     "Also ask gravatar.com, which learns a digest of the e-mail address");
    service->needs(&search);
    command
        .add_option("--profile-service-key-file", mProfileServiceKeyFile,
                    std::string("File with your key for that service, if you have one (or set ") + kKeyVariable + ")")
        ->type_name("F")
        ->needs(service);
    command.add_option("--profile-service-url", mProfileServiceURL, "Where that service is")
        ->needs(service)
        ->check(RemoteServer::objectionTo)
        ->group("");
}

Result<QVSocialSearchManager::Providers> SearchServices::open() const {
    QVSocialSearchManager::Providers providers;
    if (mUsesProfileService) {
        const auto key = Secrets::read({mProfileServiceKeyFile, {kKeyVariable}, "the service's key, on one line"});
        if (!key) return key.failure();
        QVGravatarOptions options;
        if (*key) options.apiKey = (*key)->front();
        if (mProfileServiceURL) options.baseURL = *mProfileServiceURL;
        providers.push_back(std::make_shared<QVGravatarProvider>(std::move(options)));
    }
    return providers;
}

}  // namespace qvhost
