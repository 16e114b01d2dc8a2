// A card that is read, brought up to date and written. Parts that bytes 0x1E separate: the card, then what a profile
// says of the person, one value each.

#include "QVSocialSearch/QVVCardProfile.h"
#include "Support/Input.h"
#include "Support/Require.h"
#include "VCard/VCardReader.h"

#include <algorithm>
#include <array>

using fuzzing::require;

namespace {

/// Lines that an update may write anew; it adds others and changes none of them.
constexpr std::array kOurs = {"UID", "FN", "N", "TITLE", "ORG", "PHOTO", "URL", "X-SOCIALPROFILE", "X-ABLABEL"};

bool isOurs(const VCardLine& line) {
    return line.property &&
           std::any_of(kOurs.begin(), kOurs.end(), [&](const char* name) { return line.property->isNamed(name); });
}

std::vector<VCardLine> linesOf(const std::string& bytes) {
    VCardReader reader(bytes);
    require(reader.read(), "what is written can be read");
    return reader.takeLines();
}

/// Every line that is not ours is still there, in its order, byte for byte.
void requireUntouched(const std::string& before, const std::string& after) {
    const std::vector<VCardLine> written = linesOf(after);
    auto next = written.begin();
    for (const VCardLine& line : linesOf(before)) {
        if (isOurs(line)) continue;
        next = std::find_if(next, written.end(), [&](const VCardLine& other) { return other.bytes == line.bytes; });
        require(next != written.end(), "a line that is not ours stays byte for byte");
        ++next;
    }
}

std::string updated(const std::string& bytes, const QVSocialProfile& profile) {
    auto card = QVVCard::cardWithBytes(bytes, nullptr);
    require(card.has_value(), "what is written can be read");
    qv::updateCard(*card, profile, "fuzzer-uid");
    return card->bytes();
}

/// UTF-8 without the characters that a card has no place for.
bool isCardText(const std::string& text) {
    return fuzzing::isUTF8(text) && std::none_of(text.begin(), text.end(), [](char c) {
               return static_cast<unsigned char>(c) < ' ' && c != '\n';
           });
}

QVSocialProfile profileOf(const std::vector<std::string>& parts) {
    const auto part = [&](std::size_t i) {
        return i < parts.size() && isCardText(parts[i]) ? QVString(parts[i]) : QVString();
    };
    QVSocialProfile profile;
    profile.setFormattedName(part(1));
    profile.setJobTitle(part(2));
    profile.setCompany(part(3));
    profile.setEmailAddresses({QVEmail::emailWithLabel(part(4), part(5))});
    profile.setPhoneNumbers({QVPhoneNumber::phoneNumberWithNumber(part(6), part(7))});
    if (const QVString handle = part(8))
        profile.mergeWithTwitterSet(
            std::make_shared<qv::OrderedSet<std::string>>(qv::OrderedSet<std::string>{*handle}));
    profile.setAddressList({QVPostalAddress::addressWithLabel(part(9), part(10))});
    profile.setProfileURLLinkedInPublic(part(11));
    profile.setProfileURLFacebook(part(12));
    if (const QVString picture = part(13)) profile.setAddressBookAvatarData(fuzzing::dataOf(*picture));
    return profile;
}

std::string trimmed(const std::string& text) {
    const std::u16string units = qv::Text::utf16(text);
    return qv::Text::utf8(qv::Text::trimWhitespace(units));
}

void requireRead(const QVString& written, const QVString& read, const char* what) {
    // Line ends become LF, and what is no text at all may go.
    if (!written || trimmed(*written).empty() || !isCardText(*written) || written->find('\n') != std::string::npos)
        return;
    require(read && trimmed(*read) == trimmed(*written), what);
}

void checkUpdate(const std::string& bytes, const QVSocialProfile& profile) {
    const std::string once = updated(bytes, profile);
    requireUntouched(bytes, once);
    require(updated(once, profile) == once, "what a card says already is not written again");
    const auto read = qv::profileOfCard(*QVVCard::cardWithBytes(once, nullptr), "uid");
    requireRead(profile.formattedName(), read->formattedName(), "the name is read back");
    requireRead(profile.jobTitle(), read->jobTitle(), "the title is read back");
    requireRead(profile.company(), read->company(), "the company is read back");
    for (const auto& email : profile.emailAddresses())
        require(qv::cardHasEmailAddress(*QVVCard::cardWithBytes(once, nullptr), email->address()),
                "the e-mail address is read back");
}

/// One entry alone: of several that mean the same, one is kept.
template <typename Entries, typename Text>
void requireEntry(const std::string& text, const Entries& entries, Text textOf, const char* what) {
    const bool isThere = std::any_of(entries.begin(), entries.end(),
                                     [&](const auto& entry) { return trimmed(textOf(*entry)) == trimmed(text); });
    require(isThere || text.find_first_of("\r\n") != std::string::npos, what);
}

std::string withoutScheme(const std::string& number) {
    const std::string text = trimmed(number);
    return trimmed(text.starts_with("tel:") ? text.substr(4) : text);
}

/// What a new card holds is the contact, and what is read from it makes the same card again.
void checkNewCard(const std::string& version, const QVSocialProfile& profile) {
    const std::string empty = "BEGIN:VCARD\r\nVERSION:" + version + "\r\nEND:VCARD\r\n";
    const auto readBack = [&](const QVSocialProfile& written) {
        return qv::profileOfCard(*QVVCard::cardWithBytes(updated(empty, written), nullptr), "uid");
    };
    const auto read = readBack(profile);
    if (profile.phoneNumbers().size() == 1) {
        const std::string number = withoutScheme(profile.phoneNumbers().front()->number());
        if (!number.empty())
            requireEntry(
                number, read->phoneNumbers(), [](const auto& entry) { return entry.number(); },
                "the telephone number is read back");
    }
    if (profile.addressList().size() == 1)
        requireEntry(
            profile.addressList().front()->formattedAddress(), read->addressList(),
            [](const auto& entry) { return entry.formattedAddress(); }, "the address is read back");
    require(readBack(*read)->description() == read->description(), "what is read back is the same contact");
}

/// Labels in one maker's wrapping lose it when they are read, however often they are wrapped.
bool hasWrapping(const std::string& text) {
    return text.find("_$!<") != std::string::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const auto parts = fuzzing::partsOf(fuzzing::textOf(bytes, count));
    const auto card = QVVCard::cardWithBytes(parts[0], nullptr);
    if (!card) return 0;
    require(card->bytes() == parts[0], "a card is written as it was read");
    const auto profile = qv::profileOfCard(*card, "uid");
    (void)profile->description();
    checkUpdate(parts[0], *profile);
    checkUpdate(parts[0], profileOf(parts));
    checkUpdate(QVVCard::emptyCard().bytes(), profileOf(parts));
    constexpr std::array kVersions = {"3.0", "2.1", "4.0"};
    if (!hasWrapping(parts[0])) checkNewCard(kVersions[count % kVersions.size()], *profile);
    if (!hasWrapping(fuzzing::textOf(bytes, count)))
        checkNewCard(kVersions[count % kVersions.size()], profileOf(parts));
    return 0;
}
