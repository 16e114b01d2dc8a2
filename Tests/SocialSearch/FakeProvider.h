#pragma once

#include "QVSocialSearch/QVSocialSearchProvider.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace social {

/// A provider that does what a test tells it.
class FakeProvider : public QVSocialSearchProvider {
  public:
    using Answer = std::function<std::shared_ptr<QVSocialProfile>(const QVSocialSearchRequest& request)>;

    FakeProvider(std::string name, Answer answer) : mName(std::move(name)), mAnswer(std::move(answer)) {}

    std::string name() const override { return mName; }
    std::shared_ptr<QVSocialProfile> profileForRequest(const QVSocialSearchRequest& request,
                                                       Clock::time_point) override {
        return mAnswer(request);
    }

  private:
    const std::string mName;
    const Answer mAnswer;
};

inline std::shared_ptr<FakeProvider> provider(FakeProvider::Answer answer, std::string name = "fake") {
    return std::make_shared<FakeProvider>(std::move(name), std::move(answer));
}

/// Always finds this.
inline std::shared_ptr<FakeProvider> finding(std::shared_ptr<QVSocialProfile> profile) {
    return provider([profile = std::move(profile)](const QVSocialSearchRequest&) { return profile; });
}

}  // namespace social
