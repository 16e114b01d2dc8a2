#include "Fields/Link.h"

#include "Fields/Internet.h"
#include "Text/Letters.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace qv::recognition {
namespace {

constexpr std::string_view kWrapping = "<>()[]{},;:.'\"|";

std::string schemeOf(const std::string& text) {
    const std::string lower = folded(text);
    for (const std::string_view scheme : {"https://", "http://", "https:/", "http:/"}) {
        if (startsWith(lower, scheme)) return text.substr(0, scheme.size());
    }
    return {};
}

/// "web:www.acme.com" → "www.acme.com"
std::string withoutLabel(const std::string& text) {
    const auto colon = text.find(':');
    return colon == std::string::npos || text.compare(colon, 2, ":/") == 0 ? text : text.substr(colon + 1);
}

/// The engine drops the thin dot after a run of "w", or takes it for a comma or a space.
std::string withDotAfterWWW(std::string rest) {
    if (!startsWith(folded(rest), "www") || rest.size() < 7) return rest;
    if (startsWith(folded(rest), "wwww.")) rest.erase(0, 1);
    if (rest[3] == ',' || rest[3] == '-') rest[3] = '.';
    if (rest[3] != '.') rest.insert(3, ".");
    return rest;
}

struct Parts {
    std::string host;
    std::string path;
};

Parts divided(const std::string& text) {
    const auto slash = std::min(text.find_first_of("/?"), text.size());
    return {text.substr(0, slash), text.substr(slash)};
}

/// A host name without "www" is taken for a link only where nothing else is likely: abbreviations ("Ph.D", "St.No") end
/// like one too.
bool isPlainlyHost(const std::string& host) {
    const auto dot = host.rfind('.');
    const std::string ending = host.substr(dot + 1);
    const bool oneCase = folded(ending) == ending || isAllCapitals(host);
    return oneCase && registeredLabel(host).size() >= 3 && countLetters(host) >= 5;
}

/// The link in a text without spaces; empty when there is none.
std::string linkIn(const std::string& text) {
    if (text.find('@') != std::string::npos) return {};
    const std::string whole = trimmed(withoutLabel(trimmed(text, kWrapping)), kWrapping);
    const std::string scheme = schemeOf(whole);
    Parts parts = divided(withDotAfterWWW(whole.substr(scheme.size())));
    for (auto twice = parts.host.find(".."); twice != std::string::npos; twice = parts.host.find(".."))
        parts.host.erase(twice, 1);
    const bool marked = !scheme.empty() || startsWith(folded(parts.host), "www.");
    if (!marked && !isHostName(parts.host)) return {};
    std::string host = parts.host;
    if (startsWith(folded(host), "www.") && host.find('.', 4) == std::string::npos) {
        const auto repaired = hostName(host.substr(4));
        if (!repaired) return {};
        host.replace(4, std::string::npos, *repaired);
    }
    const auto name = hostName(host);
    if (!name || (!marked && !isPlainlyHost(*name))) return {};
    const std::string slash = !scheme.empty() && !endsWith(scheme, "//") ? "/" : "";
    return scheme + slash + *name + parts.path;
}

bool isLabelWord(const Word& word) {
    static constexpr std::array<std::string_view, 14> labels = {"web",      "website", "www",   "internet", "site",
                                                                "homepage", "url",     "w",     "online",   "siteweb",
                                                                "sitio",    "sito",    "visit", "webb"};
    return std::find(labels.begin(), labels.end(), foldedKey(word.text)) != labels.end();
}

FieldType typeOf(const std::string& link) {
    const std::string host = hostOf(link);
    const bool twitter = host == "twitter.com" || host == "x.com" || host == "mobile.twitter.com";
    return twitter && link.find('/', link.find(".com")) != std::string::npos ? FieldType::Twitter : FieldType::URL;
}

bool standsClose(const Word& left, const Word& right) {
    return right.box.x - left.box.right() < 0.9F * std::max(typeSize(left), typeSize(right));
}

/// Whether the word is the beginning of a link that the engine cut off.
bool isCutOff(const std::string& text) {
    const std::string lower = folded(text);
    return startsWith(lower, "www") || startsWith(lower, "http") || endsWith(lower, ".") || endsWith(lower, "/") ||
           endsWith(lower, "-");
}

bool isMarked(const std::string& link) {
    return startsWith(folded(link), "www") || startsWith(folded(link), "http");
}

/// Two words that only a full stop joins ("San. ve") are a link where its ending is no short word.
bool hasLongEnding(const std::string& link) {
    const std::string host = hostOf(link);
    return host.size() - std::min(host.size(), host.rfind('.') + 1) >= 3;
}

}  // namespace

std::vector<Claim> findLinks(const TextLine& line) {
    std::vector<Claim> claims;
    for (std::size_t i = 0; i < line.words.size(); ++i) {
        std::string text = line.words[i].text;
        std::string link = linkIn(text);
        std::size_t end = i + 1;
        while (end < line.words.size() && end < i + 3 && isCutOff(text) &&
               standsClose(line.words[end - 1], line.words[end])) {
            text += line.words[end].text;
            const std::string longer = linkIn(text);
            if (!link.empty() && longer.size() <= link.size()) break;
            if (isMarked(longer) || hasLongEnding(longer)) link = longer;
            ++end;
        }
        if (link.empty()) continue;
        const bool labelled = i > 0 && isLabelWord(line.words[i - 1]) && (claims.empty() || claims.back().end < i);
        claims.push_back(
            {typeOf(link), labelled ? i - 1 : i, end, link, startsWith(folded(link), "www.") ? 0.97F : 0.9F});
        i = end - 1;
    }
    return claims;
}

}  // namespace qv::recognition
