#include "QVSocialSearch/QVSocialSearchRequest.h"

std::shared_ptr<QVSocialSearchRequest> QVSocialSearchRequest::initWithEmailAddress(QVString emailAddress) {
    auto request = std::make_shared<QVSocialSearchRequest>();
    request->mEmailAddress = std::move(emailAddress);
    return request;
}
