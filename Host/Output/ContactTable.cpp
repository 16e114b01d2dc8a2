#include "Output/ContactTable.h"

#include "Output/TextTable.h"
#include "People/Person.h"

#include <cmath>

namespace qvhost {
namespace {

void add(TextTable& table, const std::string& label, const QVString& text) {
    if (text && !text->empty()) table.addRow({label, *text});
}

void addEntries(TextTable& table, const std::string& standardLabel, const QVContactFieldSet& fields) {
    if (!fields) return;
    for (const auto& field : *fields) {
        const QVString label = field->label();
        add(table, label && !label->empty() ? *label : standardLabel, field->text());
    }
}

void addHandles(TextTable& table, const std::string& label, const QVHandleSet& handles) {
    if (!handles) return;
    for (const std::string& handle : *handles)
        add(table, label, handle);
}

QVString sizeOf(const std::shared_ptr<qv::Image>& picture) {
    if (!picture || !picture->isValid()) return std::nullopt;
    const qv::Size size = picture->size();
    return std::to_string(std::lround(size.width)) + " x " + std::to_string(std::lround(size.height)) + " pixels";
}

TextTable emptyTable() {
    constexpr std::size_t kLabelWidth = 20;
    return TextTable({{.maximumWidth = kLabelWidth}, {}});
}

void addContact(TextTable& table, const QVVeltoContact& contact) {
    add(table, "Name", contact.fullName());
    add(table, "Title", contact.jobTitle());
    add(table, "Company", contact.company());
    addEntries(table, "Email", contact.emailFields());
    addEntries(table, "Phone", contact.phoneFields());
    add(table, "URL", contact.URL());
    add(table, "Address", contact.address());
    addHandles(table, "Twitter", contact.twitterHandles());
    addHandles(table, "Weibo", contact.weiboHandles());
    add(table, "LinkedIn", contact.linkedInProfileURL());
    add(table, "Facebook", contact.facebookProfileURL());
    add(table, "Picture", sizeOf(contact.avatar()));
}

}  // namespace

std::string contactTable(const QVVeltoContact& contact) {
    TextTable table = emptyTable();
    addContact(table, contact);
    return table.text();
}

std::string recordTable(const ShelvedContact& contact) {
    TextTable table = emptyTable();
    addContact(table, *contactOfRecord(*contact.record));
    const QVPostalAddressList& addresses = contact.record->addressList();
    for (std::size_t i = 1; i < addresses.size(); ++i)
        add(table, addresses[i]->label().value_or("Address"), addresses[i]->formattedAddress());
    add(table, "UID", contact.UID);
    return table.text();
}

}  // namespace qvhost
