#include "Batch/CardFields.h"

#include "QVPlatform/Text.h"

#include <algorithm>
#include <utility>

namespace qvhost {
namespace {

using Texts = std::vector<std::string>;

const JSON::Value& member(const JSON::Value& object, const char* key) {
    static const JSON::Value nothing;
    const auto found = object.is_object() ? object.find(key) : object.end();
    return object.is_object() && found != object.end() ? *found : nothing;
}

void add(Texts& texts, std::string text) {
    if (text.find_first_not_of(" \t\r\n") == std::string::npos) return;
    if (std::find(texts.begin(), texts.end(), text) == texts.end()) texts.push_back(std::move(text));
}

Texts single(const JSON::Value& contact, const char* key) {
    Texts texts;
    add(texts, stringIn(contact, key));
    return texts;
}

enum class Telephone { Phone, Mobile, Fax };

Telephone telephoneOf(const std::string& label) {
    const std::string word = qv::Text::lowercased(label);
    if (word.find("fax") != std::string::npos) return Telephone::Fax;
    const bool isMobile = word.find("mobil") != std::string::npos || word.find("cell") != std::string::npos;
    return isMobile ? Telephone::Mobile : Telephone::Phone;
}

Texts telephones(const JSON::Value& contact, Telephone kind) {
    Texts texts;
    for (const char* key : {"phoneFields", "orderedPhoneFields"}) {
        for (const auto& entry : member(contact, key)) {
            if (telephoneOf(stringIn(entry, "label")) == kind) add(texts, stringIn(entry, "text"));
        }
    }
    return texts;
}

Texts emails(const JSON::Value& contact) {
    Texts texts;
    for (const char* key : {"emailFields", "orderedEmailFields"}) {
        for (const auto& entry : member(contact, key))
            add(texts, stringIn(entry, "text"));
    }
    return texts;
}

/// The card's own fields of a type, for what a contact has no place for.
Texts onCard(const JSON::Value& card, int type) {
    Texts texts;
    for (const auto& field : member(card, "fields")) {
        if (member(field, "type") == type) add(texts, stringIn(field, "text"));
    }
    return texts;
}

Texts handles(const JSON::Value& contact, Texts texts) {
    for (std::string& handle : stringsIn(contact, "twitterHandles"))
        add(texts, std::move(handle));
    return texts;
}

}  // namespace

CardFields CardFields::of(const CardRecord& record) {
    const JSON::Value& contact = member(record.object, "contact");
    const JSON::Value& card = member(record.object, "card");
    return {{{"Name", single(contact, "fullName")},
             {"Title", single(contact, "jobTitle")},
             {"Department", onCard(card, QVBusinessCardFieldTypeDepartment)},
             {"Company", single(contact, "company")},
             {"Email", emails(contact)},
             {"Phone", telephones(contact, Telephone::Phone)},
             {"Mobile", telephones(contact, Telephone::Mobile)},
             {"Fax", telephones(contact, Telephone::Fax)},
             {"Website", single(contact, "URL")},
             {"Address", single(contact, "address")},
             {"Twitter", handles(contact, onCard(card, QVBusinessCardFieldTypeTwitter))},
             {"Skype", onCard(card, QVBusinessCardFieldTypeSkype)},
             {"LinkedIn", single(contact, "linkedInProfileURL")},
             {"Facebook", single(contact, "facebookProfileURL")}}};
}

std::string CardFields::joined(const std::string& kind, const std::string& separator) const {
    const auto field = std::find_if(fields.begin(), fields.end(), [&](const Field& one) { return one.kind == kind; });
    std::string text;
    if (field == fields.end()) return text;
    for (const std::string& one : field->texts)
        text.append(text.empty() ? "" : separator).append(one);
    return text;
}

}  // namespace qvhost
