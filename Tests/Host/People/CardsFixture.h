#pragma once

#include "People/AddressBookPlace.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace testsupport {

/// A folder of vCards.
class CardsFixture : public testing::Test {
  protected:
    /// Writes `UID.vcf` with these lines, each without its end.
    void addCard(const std::string& UID, std::initializer_list<std::string> lines) const {
        std::string card = "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + UID + "\r\n";
        for (const std::string& line : lines)
            card += line + "\r\n";
        mFolder.write("cards/" + UID + ".vcf", card + "END:VCARD\r\n");
    }
    void addPerson(const std::string& UID, const std::string& name, const std::string& email,
                   const std::string& company = "") const {
        addCard(UID, {"FN:" + name, "N:;" + name + ";;;", email.empty() ? "NOTE:none" : "EMAIL:" + email,
                      company.empty() ? "NOTE:none" : "ORG:" + company});
    }
    std::string cards() const { return (mFolder / "cards").string(); }
    qvhost::AddressBookPlace place() const { return qvhost::AddressBookPlace::folder(cards()); }

    TemporaryFolder mFolder;
};

}  // namespace testsupport
