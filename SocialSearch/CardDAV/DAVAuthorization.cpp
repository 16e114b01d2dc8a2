#include "CardDAV/DAVAuthorization.h"

#include "AddressBook/RecordName.h"
#include "QVPlatform/Base64.h"
#include "QVPlatform/MD5.h"
#include "QVPlatform/Text.h"

#include <algorithm>

namespace {

qv::Data bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

std::string digestOf(const std::string& text) {
    return qv::lowerHexMD5(bytesOf(text));
}

std::string valueOf(const DigestChallenge& challenge, const std::string& name) {
    const auto entry = challenge.find(name);
    return entry == challenge.end() ? "" : entry->second;
}

void skip(std::string_view& text, std::string_view characters) {
    text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
}

std::string takeQuoted(std::string_view& text) {
    std::string value;
    text.remove_prefix(1);
    while (!text.empty() && text.front() != '"') {
        if (text.front() == '\\' && text.size() > 1) text.remove_prefix(1);
        value += text.front();
        text.remove_prefix(1);
    }
    if (!text.empty()) text.remove_prefix(1);
    return value;
}

std::string takeWord(std::string_view& text, std::string_view end) {
    std::string word(text.substr(0, text.find_first_of(end)));
    text.remove_prefix(word.size());
    return word;
}

/// "auth" among the qualities that a server offers.
bool offersAuth(const std::string& qualities) {
    const std::string list = "," + qv::Text::replaceAll(qv::Text::lowercased(qualities), " ", "") + ",";
    return list.find(",auth,") != std::string::npos;
}

bool canBeAnswered(const DigestChallenge& challenge) {
    const std::string algorithm = qv::Text::lowercased(valueOf(challenge, "algorithm"));
    return challenge.contains("realm") && challenge.contains("nonce") && (algorithm.empty() || algorithm == "md5") &&
           (!challenge.contains("qop") || offersAuth(valueOf(challenge, "qop")));
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text)
        result += (c == '"' || c == '\\') ? std::string{'\\', c} : std::string(1, c);
    return result + '"';
}

std::string eightDigits(std::uint32_t number) {
    std::string text;
    for (int shift = 28; shift >= 0; shift -= 4)
        text += "0123456789abcdef"[number >> shift & 15U];
    return text;
}

}  // namespace

std::optional<DigestChallenge> digestChallenge(std::string_view header) {
    constexpr std::string_view kScheme = "digest ";
    if (qv::Text::lowercased(header.substr(0, kScheme.size())) != kScheme) return std::nullopt;
    header.remove_prefix(kScheme.size());
    DigestChallenge challenge;
    for (skip(header, " \t,"); !header.empty(); skip(header, " \t,")) {
        const std::string name = qv::Text::lowercased(takeWord(header, " \t,="));
        skip(header, " \t");
        // What has no value begins the next scheme's challenge.
        if (!header.starts_with('=')) break;
        skip(header, "= \t");
        challenge.emplace(name, header.starts_with('"') ? takeQuoted(header) : takeWord(header, " \t,"));
    }
    return canBeAnswered(challenge) ? std::optional(challenge) : std::nullopt;
}

std::string digestAnswer(const DigestChallenge& challenge, const std::string& user, const std::string& password,
                         const DigestRequest& request) {
    const std::string realm = valueOf(challenge, "realm");
    const std::string nonce = valueOf(challenge, "nonce");
    const bool hasQuality = challenge.contains("qop");
    const std::string count = eightDigits(request.count);
    const std::string middle = hasQuality ? ":" + count + ":" + request.clientNonce + ":auth:" : ":";
    const std::string response = digestOf(digestOf(user + ":" + realm + ":" + password) + ":" + nonce + middle +
                                          digestOf(request.method + ":" + request.target));
    std::string answer = "Digest username=" + quoted(user) + ", realm=" + quoted(realm) + ", nonce=" + quoted(nonce) +
                         ", uri=" + quoted(request.target) + ", response=\"" + response + "\"";
    if (challenge.contains("algorithm")) answer += ", algorithm=MD5";
    if (challenge.contains("opaque")) answer += ", opaque=" + quoted(valueOf(challenge, "opaque"));
    if (hasQuality) answer += ", qop=auth, nc=" + count + ", cnonce=" + quoted(request.clientNonce);
    return answer;
}

QVString DAVAuthorization::header(const std::string& method, const qv::URL& url) {
    if (mCredentials.token) return "Bearer " + *mCredentials.token;
    if (!mCredentials.user) return std::nullopt;
    const std::string password = mCredentials.password.value_or("");
    const std::lock_guard lock(mMutex);
    if (!mChallenge) return "Basic " + qv::base64(bytesOf(*mCredentials.user + ":" + password));
    return digestAnswer(*mChallenge, *mCredentials.user, password,
                        {.method = method,
                         .target = url.path().empty() ? "/" : url.path(),
                         .clientNonce = newUUID(),
                         .count = ++mCount});
}

bool DAVAuthorization::takesChallenge(const qv::HTTPResponse& response) {
    if (mCredentials.token || !mCredentials.user) return false;
    for (const auto& [name, value] : response.headers) {
        const auto challenge = name == "www-authenticate" ? digestChallenge(value) : std::nullopt;
        if (!challenge) continue;
        const std::lock_guard lock(mMutex);
        // Whoever was refused with a fresh nonce has the wrong password.
        const bool isNew = !mChallenge || qv::Text::lowercased(valueOf(*challenge, "stale")) == "true";
        mChallenge = challenge;
        mCount = 0;
        return isNew;
    }
    return false;
}
