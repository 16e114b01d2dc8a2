#include "QVCardScan/QVVeltoContact.h"
#include "QVCardScan/QVVeltoContactField.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "Source/SourceRows.h"
#include "Support/Duel.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>

namespace benchmarksupport {

namespace {

constexpr double kMostTimesCopying = 10;

/// The template read as it is, in one call.
void readTemplate() {
    constexpr std::size_t kLargest = 65'536;
    static std::string text(kLargest, '\0');
    const int file = ::open(QV_BENCHMARK_TEMPLATE, O_RDONLY | O_CLOEXEC);
    const ssize_t count = ::read(file, text.data(), text.size());
    ::close(file);
    if (count <= 0) throw std::runtime_error("the template cannot be read");
    keep(count);
}

std::shared_ptr<QVVeltoContact> ordinaryContact() {
    auto contact = QVVeltoContact::initWithCard(nullptr);
    contact->setFullName("Dr. Edmund J. Hartwell");
    contact->setJobTitle("Senior Surveyor");
    contact->setCompany("Hartwell & Sons Land Surveys");
    contact->setAddress("14 Orchard Lane, North Haven 90417");
    contact->emailFields()->insert(QVVeltoContactField::initWithLabel("Email", "edmund@hartwell.example.com"));
    contact->phoneFields()->insert(QVVeltoContactField::initWithLabel("Phone", "+1 555 0142 776"));
    contact->phoneFields()->insert(QVVeltoContactField::initWithLabel("Mobile", "+1 555 0198 203"));
    contact->setResourceHashes(
        std::make_shared<std::vector<std::string>>(1, std::string("0123456789abcdef0123456789abcdef")));
    return contact;
}

std::shared_ptr<QVVeltoContact> contactOfRows(std::size_t count) {
    auto contact = ordinaryContact();
    for (std::size_t index = 0; index < count; ++index) {
        contact->phoneFields()->insert(
            QVVeltoContactField::initWithLabel("Phone", "+1 555 01 " + std::to_string(index)));
    }
    return contact;
}

Row rowOf(const std::shared_ptr<QVVeltoContact>& contact) {
    const std::string note = QVVeltoNoteGenerator().noteFromContactInfo(contact).value_or("");
    if (note.empty()) throw std::runtime_error("no note");
    const auto ours = [&] { keep(QVVeltoNoteGenerator().noteFromContactInfo(contact)); };
    const auto floor = [&] {
        readTemplate();
        const std::string copy(note.data(), note.size());
        keep(copy);
    };
    return rowAgainstFloor(ours, floor, "read + copy", kMostTimesCopying);
}

}  // namespace

void addNoteRows() {
    addRow("note: ordinary contact", [] { return rowOf(ordinaryContact()); });
    addRow("note: 100 rows", [] { return rowOf(contactOfRows(100)); });
    addRow("note: 10 000 rows", [] { return rowOf(contactOfRows(10'000)); });
}

}  // namespace benchmarksupport
