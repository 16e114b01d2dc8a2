#include "Output/ContactList.h"

#include "Output/TextTable.h"

namespace qvhost {
namespace {

std::string orDash(const QVString& text) {
    return text && !text->empty() ? *text : "-";
}

/// The first entry, and how many there are besides.
template <typename List, typename Text>
std::string firstOf(const List& list, Text text) {
    if (list.empty()) return "-";
    const std::string more = list.size() > 1 ? " (+" + std::to_string(list.size() - 1) + ")" : "";
    return text(*list.front()) + more;
}

}  // namespace

std::string contactList(const ContactsShelf::Contacts& contacts) {
    if (contacts.empty()) return "";
    TextTable table({{.maximumWidth = 28}, {.maximumWidth = 28}, {.maximumWidth = 40}, {.maximumWidth = 26}, {}});
    table.addRow({"Name", "Company", "Email", "Phone", "UID"});
    for (const ShelvedContact* contact : contacts) {
        const QVSocialProfile& record = *contact->record;
        table.addRow({orDash(record.formattedName()), orDash(record.company()),
                      firstOf(record.emailAddresses(), [](const QVEmail& email) { return email.address(); }),
                      firstOf(record.phoneNumbers(), [](const QVPhoneNumber& phone) { return phone.number(); }),
                      contact->shortUID});
    }
    return table.text();
}

}  // namespace qvhost
