#pragma once

#include "QVPlatform/Data.h"
#include "QVSocialSearch/QVSocialSearchTypes.h"

#include <optional>
#include <string>
#include <vector>

/// The links out of a JSON resource descriptor (RFC 7033, 4.4) that say something of a person.
struct WebFingerAnswer {
    /// Profile pages, in the answer's order.
    std::vector<std::string> pages;
    /// The first picture; absent when there is none.
    QVString picture;
    /// vCards, in the answer's order.
    std::vector<std::string> cards;
};

/// Nothing when the text is no such descriptor. Links of other kinds, and members of another kind than documented, are
/// left out.
std::optional<WebFingerAnswer> readWebFingerAnswer(const qv::Data& text);
