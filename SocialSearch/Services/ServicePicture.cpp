#include "Services/ServicePicture.h"

#include "QVPlatform/Image.h"

bool isPicture(const qv::Data& bytes) {
    return qv::Image::initWithData(bytes)->isValid();
}

std::optional<qv::Data> pictureAtLink(const QVString& link, QVLinkFetcher::Clock::time_point deadline) {
    auto bytes = QVLinkFetcher::contentsOfLink(link, deadline);
    if (!bytes || !isPicture(*bytes)) return std::nullopt;
    return bytes;
}
