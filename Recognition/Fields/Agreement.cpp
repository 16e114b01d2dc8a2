#include "Fields/Agreement.h"

#include "Fields/Email.h"
#include "Fields/Internet.h"
#include "Fields/LookAlikes.h"
#include "Text/Letters.h"

#include <algorithm>
#include <string>
#include <utility>

namespace qv::recognition {
namespace {

std::vector<std::string> readings(const Field& field) {
    std::vector<std::string> all{field.text};
    all.insert(all.end(), field.others.begin(), field.others.end());
    return all;
}

/// Two readings that say the same are better evidence than one that the engine was sure of.
bool agreeByOtherReadings(Field& email, Field& link) {
    for (const auto& address : readings(email)) {
        for (const auto& target : readings(link)) {
            if (hostOf(address) != hostOf(target)) continue;
            email.text = address;
            link.text = target;
            return true;
        }
    }
    return false;
}

void agree(Field& email, Field& link) {
    if (agreeByOtherReadings(email, link)) return;
    const std::string host = hostOf(link.text);
    const std::string own = hostOf(email.text);
    if (areLookAlikes(own, host) && email.confidence > link.confidence) {
        if (const auto at = folded(link.text).find(host); at != std::string::npos)
            link.text.replace(at, host.size(), own);
    } else {
        email.text = snappedToHost(email.text, host);
    }
}

void takeReadingOf(const std::string& name, Field& email) {
    const auto words = foldedWords(name);
    for (const auto& reading : email.others) {
        const std::string local = folded(reading.substr(0, reading.find('@')));
        const bool whole = words.size() >= 2 && local == words.front() + '.' + words.back();
        if (whole && hostOf(reading) == hostOf(email.text)) email.text = reading;
    }
}

/// Whether a host is the end of another that begins within a label of it.
bool isCutFrom(const std::string& host, const std::string& whole) {
    return host.size() < whole.size() && endsWith(whole, host) && whole[whole.size() - host.size() - 1] != '.';
}

}  // namespace

void agreeOnHosts(std::vector<Field>& fields) {
    for (auto& email : fields) {
        if (email.type != FieldType::Email) continue;
        for (auto& link : fields) {
            if (link.type == FieldType::URL) agree(email, link);
        }
    }
}

void agreeOnNames(std::vector<Field>& fields) {
    for (const auto& name : fields) {
        if (name.type != FieldType::Name) continue;
        for (auto& email : fields) {
            if (email.type != FieldType::Email) continue;
            takeReadingOf(name.text, email);
            email.text = snappedToName(email.text, name.text);
        }
    }
}

void dropFragments(std::vector<Field>& fields) {
    std::vector<Field> kept;
    for (const auto& link : fields) {
        const std::string host = hostOf(link.text);
        const bool isBare = link.type == FieldType::URL && folded(link.text) == host;
        const bool isFragment = isBare && std::any_of(fields.begin(), fields.end(), [&](const Field& other) {
                                    return isCutFrom(host, hostOf(other.text));
                                });
        if (!isFragment) kept.push_back(link);
    }
    fields = std::move(kept);
}

}  // namespace qv::recognition
