#include "Host/People/CardsFixture.h"
#include "Output/ContactList.h"
#include "Output/ContactTable.h"
#include "People/ContactsShelf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;

class ContactsShelf : public testsupport::CardsFixture {
  protected:
    ContactsShelf() {
        addCard("0a1b2c3d-1",
                {"FN:Zo\xC3\xAB Sample", "N:Sample;Zo\xC3\xAB;;;", "EMAIL:zoe@example.com", "EMAIL:second@example.com",
                 "TEL:+1 202 555 0142", "ADR:;;1 Main Street;Town;;;", "ADR:;;2 Side Street;Town;;;"});
        addCard("0a1b2c3d-2", {"FN:ada Example", "N:Example;Ada;;;", "ORG:\xC3\x84pfel & S\xC3\xB6hne",
                               "TITLE:Engineer", "EMAIL:Ada@Example.com"});
        addCard("ffff", {"FN:\xE5\xB1\xB1\xE7\x94\xB0 \xE5\xA4\xAA\xE9\x83\x8E",
                         "N:\xE5\xB1\xB1\xE7\x94\xB0;\xE5\xA4\xAA\xE9\x83\x8E;;;"});
    }
    qvhost::ContactsShelf shelf() const { return qvhost::ContactsShelf::read(place()); }
    static std::vector<std::string> UIDs(const qvhost::ContactsShelf::Contacts& contacts) {
        std::vector<std::string> list;
        for (const auto* contact : contacts)
            list.push_back(contact->UID);
        return list;
    }
};

TEST_F(ContactsShelf, IsOrderedByName) {
    const auto shelf = this->shelf();
    EXPECT_THAT(UIDs(shelf.all()), ElementsAre("0a1b2c3d-2", "0a1b2c3d-1", "ffff"));
    EXPECT_EQ(shelf.problem(), std::nullopt);
}

TEST_F(ContactsShelf, ShortensUIDsAsFarAsTheyDiffer) {
    const auto shelf = this->shelf();
    std::vector<std::string> shortened;
    for (const auto* contact : shelf.all())
        shortened.push_back(contact->shortUID);
    EXPECT_THAT(shortened, ElementsAre("0a1b2c3d-2", "0a1b2c3d-1", "ffff"));
    for (const auto* contact : shelf.all())
        EXPECT_THAT(UIDs(shelf.named(contact->shortUID)), ElementsAre(contact->UID));
    addPerson("aaaabbbbccccdddd", "Long", "");
    const auto longer = this->shelf();
    EXPECT_EQ(longer.named("Long").front()->shortUID, "aaaabbbb");
}

TEST_F(ContactsShelf, ShortensUIDsBehindTheURNPrefix) {
    addPerson("urn:uuid:11112222-3333", "First", "");
    addPerson("URN:UUID:44445555-6666", "Second", "");
    const auto shelf = this->shelf();
    EXPECT_EQ(shelf.named("First").front()->shortUID, "11112222");
    EXPECT_EQ(shelf.named("Second").front()->shortUID, "44445555");
    EXPECT_THAT(UIDs(shelf.named("4444")), ElementsAre("URN:UUID:44445555-6666"));
    EXPECT_THAT(UIDs(shelf.named("urn:uuid:1111")), ElementsAre("urn:uuid:11112222-3333"));
}

TEST_F(ContactsShelf, FindsTextInAnyCaseAnywhere) {
    const auto shelf = this->shelf();
    const struct {
        const char* text;
        std::vector<std::string> found;
    } rows[] = {{"EXAMPLE.COM", {"0a1b2c3d-2", "0a1b2c3d-1"}},
                {"\xC3\xA4PFEL", {"0a1b2c3d-2"}},
                {"zo\xC3\x8B", {"0a1b2c3d-1"}},
                {"engin", {"0a1b2c3d-2"}},
                {"555 0142", {"0a1b2c3d-1"}},
                {"side street", {"0a1b2c3d-1"}},
                {"\xE5\xA4\xAA", {"ffff"}},
                {"nothing like it", {}}};
    for (const auto& row : rows)
        EXPECT_EQ(UIDs(shelf.containing(row.text)), row.found) << row.text;
}

TEST_F(ContactsShelf, NamesByUIDAddressOrWholeName) {
    const auto shelf = this->shelf();
    EXPECT_THAT(UIDs(shelf.named("ffff")), ElementsAre("ffff"));
    EXPECT_THAT(UIDs(shelf.named("ff")), ElementsAre("ffff"));
    EXPECT_THAT(UIDs(shelf.named("0a1b")), ElementsAre("0a1b2c3d-2", "0a1b2c3d-1"));
    EXPECT_THAT(UIDs(shelf.named("SECOND@example.com")), ElementsAre("0a1b2c3d-1"));
    EXPECT_THAT(UIDs(shelf.named("ADA EXAMPLE")), ElementsAre("0a1b2c3d-2"));
    EXPECT_THAT(UIDs(shelf.named("Ada")), IsEmpty());
}

TEST_F(ContactsShelf, TellsOfWhatCannotBeRead) {
    mFolder.write("cards/broken.vcf", "BEGIN:VCARD\n");
    const auto shelf = this->shelf();
    EXPECT_EQ(shelf.all().size(), 3U);
    EXPECT_THAT(shelf.problem(), Optional(HasSubstr("broken.vcf")));
}

TEST_F(ContactsShelf, ThatIsNotThereYetIsEmpty) {
    auto where = place();
    where.book.reset();
    const auto shelf = qvhost::ContactsShelf::read(where);
    EXPECT_THAT(shelf.all(), IsEmpty());
    EXPECT_EQ(shelf.problem(), std::nullopt);
}

TEST_F(ContactsShelf, IsListedInAlignedColumns) {
    EXPECT_EQ(qvhost::contactList(this->shelf().all()),
              "Name         Company        Email                 Phone            UID\n"
              "ada Example  \xC3\x84pfel & S\xC3\xB6hne  Ada@Example.com       -                0a1b2c3d-2\n"
              "Zo\xC3\xAB Sample   -              zoe@example.com (+1)  +1 202 555 0142  0a1b2c3d-1\n"
              "\xE5\xB1\xB1\xE7\x94\xB0 \xE5\xA4\xAA\xE9\x83\x8E    -              -                     -             "
              "   ffff\n");
    EXPECT_EQ(qvhost::contactList({}), "");
}

TEST_F(ContactsShelf, ShowsAContactWhole) {
    const auto shelf = this->shelf();
    EXPECT_EQ(qvhost::recordTable(*shelf.named("0a1b2c3d-1").front()),
              "Name     Zo\xC3\xAB Sample\n"
              "Email    zoe@example.com\n"
              "Email    second@example.com\n"
              "Phone    +1 202 555 0142\n"
              "Address  1 Main Street\n"
              "         Town\n"
              "Address  2 Side Street\n"
              "         Town\n"
              "UID      0a1b2c3d-1\n");
}

}  // namespace
