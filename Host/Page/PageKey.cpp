#include "Page/PageKey.h"

#include "QVPlatform/SHA256.h"
#include "Support/Random.h"
#include "Support/Secrets.h"

#include <algorithm>
#include <utility>

namespace qvhost {
namespace {

constexpr std::string_view kCookie = "qvcardscan=";
constexpr std::size_t kShortestKey = 16;
constexpr std::size_t kFolderLength = 32;

bool isSound(const std::string& key) {
    constexpr const char* kAllowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_";
    return key.size() >= kShortestKey && key.size() <= 128 && key.find_first_not_of(kAllowed) == std::string::npos;
}

}  // namespace

PageKey::PageKey(std::string key)
    : mKey(std::move(key)), mFolder("/" + qv::lowerHexSHA256("folder:" + mKey).substr(0, kFolderLength) + "/") {
}

Result<PageKey> PageKey::choose(const std::optional<std::string>& file) {
    const auto given = Secrets::read({file, {kVariable}, "the page's key, on one line"});
    if (!given) return given.failure();
    if (!*given) return PageKey(Random::token());
    std::string key = (*given)->front();
    if (isSound(key)) return PageKey(std::move(key));
    return Failure{ExitStatus::WrongCall,
                   "The page's key has to be 16 to 128 letters, digits, hyphens and underscores that nobody guesses."};
}

std::string PageKey::cookie() const {
    return std::string(kCookie) + mKey + "; Path=" + mFolder + "; HttpOnly; SameSite=Strict";
}

bool PageKey::is(std::string_view given) const {
    // Digests, because how long texts take to compare says how much of them is the same.
    return qv::lowerHexSHA256(given) == qv::lowerHexSHA256(mKey);
}

bool PageKey::isIn(std::string_view cookies) const {
    while (!cookies.empty()) {
        std::string_view cookie = cookies.substr(0, cookies.find(';'));
        cookies.remove_prefix(std::min(cookie.size() + 1, cookies.size()));
        while (cookie.starts_with(' '))
            cookie.remove_prefix(1);
        if (cookie.starts_with(kCookie) && is(cookie.substr(kCookie.size()))) return true;
    }
    return false;
}

}  // namespace qvhost
