#include "Fields/Email.h"

#include "Fields/Internet.h"
#include "Fields/LookAlikes.h"
#include "Text/Letters.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace qv::recognition {
namespace {

constexpr std::string_view kWrapping = "<>()[]{},;:.'\"|";

bool isLocalByte(char c) {
    return c < 0 || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           std::string_view("._%+-'&!#=~").find(c) != std::string_view::npos;
}

/// What the engine makes of "@" when it fails; each counts only where a host name follows.
std::string withAtSign(std::string text) {
    static constexpr std::array<std::string_view, 4> misread = {"©", "®", "(@)", "(at)"};
    if (text.find('@') != std::string::npos && text.find("(@)") == std::string::npos) return text;
    for (const auto sign : misread) {
        const auto at = text.find(sign);
        if (at != std::string::npos && at > 0) return text.substr(0, at) + '@' + text.substr(at + sign.size());
    }
    return text;
}

/// "e:john" → "john": a label glued to the local part.
std::string withoutLabel(const std::string& local) {
    const auto colon = local.find_last_of(":;|)>");
    return colon == std::string::npos ? local : local.substr(colon + 1);
}

bool isLocal(const std::string& local) {
    return !local.empty() && local.size() <= 64 && std::all_of(local.begin(), local.end(), isLocalByte) &&
           local.front() != '.' && local.back() != '.' && (countLetters(local) > 0 || countDigits(local) > 0);
}

/// The address in a text without spaces; empty when there is none.
std::string addressIn(const std::string& text) {
    const std::string whole = withAtSign(text);
    const auto at = whole.rfind('@');
    if (at == std::string::npos) return {};
    const std::string local = trimmed(withoutLabel(whole.substr(0, at)), kWrapping);
    const auto host = hostName(trimmed(whole.substr(at + 1), kWrapping));
    return isLocal(local) && host ? local + '@' + *host : std::string();
}

bool standsClose(const Word& left, const Word& right) {
    return right.box.x - left.box.right() < 0.9F * std::max(typeSize(left), typeSize(right));
}

bool isLabelWord(const Word& word) {
    static constexpr std::array<std::string_view, 14> labels = {
        "email", "mail",   "e",     "em",          "eml",     "correo",      "courriel",
        "posta", "eposta", "epost", "mailadresse", "contact", "elektronisk", "m"};
    return std::find(labels.begin(), labels.end(), foldedKey(word.text)) != labels.end();
}

std::string joined(const TextLine& line, std::size_t first, std::size_t end) {
    std::string text;
    for (std::size_t i = first; i < end; ++i)
        text += line.words[i].text;
    return text;
}

bool staysTogether(const TextLine& line, std::size_t first, std::size_t end) {
    for (std::size_t i = first + 1; i < end; ++i) {
        if (!standsClose(line.words[i - 1], line.words[i])) return false;
    }
    return true;
}

bool isPart(const TextLine& line, std::size_t i) {
    const std::string& text = line.words[i].text;
    return text.find_first_of(".@") != std::string::npos || isAllCapitals(text) == isAllCapitals(line.text());
}

/// "jane. doe@acme.com": the word before is the beginning of the local part.
bool isCutBefore(const TextLine& line, std::size_t first) {
    if (first == 0 || !standsClose(line.words[first - 1], line.words[first])) return false;
    const std::string& text = line.words[first - 1].text;
    const std::string bare = trimmed(text, "._-");
    const bool ends = text.size() > 2 && std::string_view("._-").find(text.back()) != std::string_view::npos;
    return ends && folded(bare) == bare && isLocal(bare) && countDigits(bare) == 0 &&
           !isLabelWord(line.words[first - 1]) && line.words[first].text.front() != '@';
}

/// The address around the "@" in word `at`, with as few neighbours as it takes.
Claim claimAround(const TextLine& line, std::size_t at) {
    static constexpr std::array<std::pair<std::size_t, std::size_t>, 6> reaches = {
        {{0, 0}, {1, 0}, {0, 1}, {1, 1}, {0, 2}, {1, 2}}};
    for (const auto& [before, after] : reaches) {
        if (before > at || at + after >= line.words.size()) continue;
        const std::size_t first = at - before;
        const std::size_t end = at + after + 1;
        if (!staysTogether(line, first, end) ||
            (before == 1 && (isLabelWord(line.words[first]) || !isPart(line, first))))
            continue;
        const std::string address = addressIn(joined(line, first, end));
        if (address.empty() || (before == 0 && isCutBefore(line, first))) continue;
        const bool labelled = first > 0 && isLabelWord(line.words[first - 1]);
        return {FieldType::Email, labelled ? first - 1 : first, end, address, before + after == 0 ? 0.98F : 0.85F};
    }
    return {};
}

/// Whether two texts of equal length differ, and only in letters that many typefaces draw alike.
bool printAlike(const std::string& a, const std::string& b) {
    const auto same = [](char c, char d) {
        const auto both = [c, d](std::string_view group) {
            return group.find(c) != std::string_view::npos && group.find(d) != std::string_view::npos;
        };
        return c == d || both("il1|") || both("o0");
    };
    return a != b && a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), same);
}

}  // namespace

bool isEmail(std::string_view text) {
    const auto at = text.find('@');
    return at != std::string_view::npos && isLocal(std::string(text.substr(0, at))) &&
           isHostName(text.substr(at + 1)) && text.find('/') == std::string_view::npos;
}

std::vector<Claim> findEmails(const TextLine& line) {
    std::vector<Claim> claims;
    for (std::size_t i = 0; i < line.words.size(); ++i) {
        const std::string& text = line.words[i].text;
        if (withAtSign(text).find('@') == std::string::npos || (!claims.empty() && i < claims.back().end)) continue;
        const Claim claim = claimAround(line, i);
        if (!claim.text.empty() && (claims.empty() || claim.first >= claims.back().end)) claims.push_back(claim);
    }
    return claims;
}

std::string snappedToHost(const std::string& email, const std::string& host) {
    const auto at = email.rfind('@');
    if (at == std::string::npos || host.empty()) return email;
    const std::string own = folded(email.substr(at + 1));
    const bool extraLetter =
        own.size() == host.size() + 1 && own.substr(1) == host && (own[0] == 'g' || own[0] == 'q' || own[0] == 'a');
    if (own == host || (!extraLetter && !areLookAlikes(own, host))) return email;
    return email.substr(0, at + 1) + host;
}

std::string snappedToName(const std::string& email, const std::string& name) {
    const auto at = email.find('@');
    const auto words = foldedWords(name);
    if (at == std::string::npos || words.size() < 2) return email;
    const std::string local = folded(email.substr(0, at));
    const std::string& first = words.front();
    const std::string& last = words.back();
    const std::string initial = first.substr(0, 1);
    const std::string dotLast = "." + last;
    const std::string dotFirst = "." + first;
    for (const auto& made :
         {first + dotLast, initial + last, initial + dotLast, first + last, last + dotFirst, last, first}) {
        if (local == made) return email;
        if (made.size() >= 4 && printAlike(local, made)) return made + email.substr(at);
    }
    return email;
}

}  // namespace qv::recognition
