#include "Services/LinkedCard.h"

#include "Merging/EntryMeaning.h"
#include "QVSocialSearch/QVVCard.h"
#include "QVSocialSearch/QVVCardProfile.h"
#include "Services/ServicePicture.h"

#include <string>
#include <string_view>

namespace {

/// A person's card has a few dozen; to compare very many with each other takes its time.
constexpr std::size_t kMostProperties = 500;

/// The shown name, when it is made of the given and the family name; both of them in the western order otherwise.
QVString nameOf(const QVVCard& card, const QVString& shown) {
    const QVVCardProperty* property = card.propertyNamed("N");
    const auto parts = property != nullptr ? property->components() : std::vector<std::string>();
    if (parts.size() < 2) return std::nullopt;
    const std::string family = trimmed(parts[0]);
    const std::string given = trimmed(parts[1]);
    if (family.empty() || given.empty()) return std::nullopt;
    const auto isShown = [&](const std::string& part) { return shown && shown->find(part) != std::string::npos; };
    return isShown(family) && isShown(given) ? shown : given + " " + family;
}

}  // namespace

std::shared_ptr<QVSocialProfile> profileOfLinkedCard(const qv::Data& bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto card = QVVCard::cardWithBytes(text, nullptr);
    if (!card || card->properties().size() > kMostProperties) return nullptr;
    auto profile = qv::profileOfCard(*card, "");
    profile->setProfileType(QVSocialProfileSourceWebFinger);
    profile->setAddressBookUID(std::nullopt);
    profile->setFormattedName(nameOf(*card, profile->formattedName()));
    profile->setJobTitleSource(profile->jobTitle() ? QVSocialProfileSourceWebFinger : QVSocialProfileSourceUnknown);
    profile->setCompanySource(profile->company() ? QVSocialProfileSourceWebFinger : QVSocialProfileSourceUnknown);
    const auto& picture = profile->addressBookAvatarData();
    if (picture && !isPicture(*picture)) profile->setAddressBookAvatarData(std::nullopt);
    return profile;
}
