#pragma once

#include "QVSocialSearch/QVSocialSearchTypes.h"

#include <functional>
#include <string>

/// The hash of two texts in their order; an absent one counts as 0.
inline std::size_t hashOfTexts(const QVString& first, const QVString& second) {
    const auto hashOf = [](const QVString& text) { return text ? std::hash<std::string>{}(*text) : 0; };
    return hashOf(first) * 31 + hashOf(second);
}
