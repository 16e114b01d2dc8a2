#include "ContactFixtures.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/Text.h"
#include "QVPlatform/XMLParser.h"

#include <gtest/gtest.h>

namespace {

using fixtures::entrySet;
using fixtures::handleSet;

/// Collects the text of a note and what it refers to.
class NoteReader : public qv::XMLParserDelegate {
  public:
    void didStartElement(const std::string& elementName,
                         const std::map<std::string, std::string>& attributes) override {
        if (elementName == "a") mLinks.push_back(attributes.at("href"));
        if (elementName == "qv-media") mHashes.push_back(attributes.at("hash"));
        mIsStyle = elementName == "style";
    }
    void didEndElement(const std::string&) override { mIsStyle = false; }
    void foundCharacters(std::string_view string) override {
        if (!mIsStyle) mText += string;
    }
    void parseErrorOccurred(const qv::Error&) override {}

    const std::string& text() const { return mText; }
    const std::vector<std::string>& links() const { return mLinks; }
    const std::vector<std::string>& hashes() const { return mHashes; }

  private:
    std::string mText;
    std::vector<std::string> mLinks;
    std::vector<std::string> mHashes;
    bool mIsStyle = false;
};

/// Markup knows the non-breaking space by name, XML only by number.
bool isWellFormed(const std::string& note, NoteReader& reader) {
    return qv::XMLParser::parse(qv::Text::replaceAll(note, "&nbsp;", "&#160;"), reader);
}

/// A contact that has the text wherever a contact has text.
std::shared_ptr<QVVeltoContact> contactOf(const std::string& text) {
    auto contact = std::make_shared<QVVeltoContact>();
    contact->setFullName(text);
    contact->setEmailFields(entrySet({{"Email", text}}));
    contact->setPhoneFields(entrySet({{"Phone", text}}));
    contact->setTwitterHandles(handleSet({text}));
    contact->setWeiboHandles(handleSet({text}));
    contact->setJobTitle(text);
    contact->setCompany(text);
    contact->setAddress(text);
    contact->setLinkedInProfileURL(text);
    contact->setFacebookProfileURL(text);
    contact->setResourceHashes(fixtures::strings({"abc", "def"}));
    return contact;
}

struct Hostile {
    const char* name;
    std::string text;
};

class HostileTextTest : public fixtures::UntranslatedWords, public testing::WithParamInterface<Hostile> {};

TEST_P(HostileTextTest, LeavesTheNoteWellFormedAndIsReadBackAsItIs) {
    for (const bool full : {true, false}) {
        NoteReader reader;
        const auto note = QVVeltoNoteGenerator().noteFromContactInfo(contactOf(GetParam().text), full);
        ASSERT_TRUE(isWellFormed(*note, reader)) << *note;
        std::size_t found = 0;
        for (std::size_t at = 0; (at = reader.text().find(GetParam().text, at)) != std::string::npos; ++at)
            ++found;
        EXPECT_EQ(found, 8u) << "name, role, organisation, e-mail, phone, address and two handles";
        ASSERT_EQ(reader.links().size(), 6u);
        EXPECT_EQ(reader.links()[0], "mailto:" + GetParam().text);
        EXPECT_EQ(reader.hashes().size(), full ? 3u : 0u);
    }
}

const Hostile kHostile[] = {
    {"Script", "<script>alert('x')</script>"},
    {"EndOfAttribute", "\"><img src=x onerror=\"alert(1)\">"},
    {"EndOfComment", "--><b>"},
    {"EndOfCDATA", "]]>&amp;<![CDATA["},
    {"Entities", "&nbsp;&undefined;&#0;"},
    {"Placeholder", "<!--x-quorvane:attachments-->"},
    {"Format", "%@%d%%%s%n"},
    {"RightToLeft", "\u202eمحمد\u2066"},
    {"OtherPlanes", "👩‍👩‍👧‍👦 𠮷"},
};

INSTANTIATE_TEST_SUITE_P(Texts, HostileTextTest, testing::ValuesIn(kHostile),
                         [](const auto& row) { return std::string(row.param.name); });

class NoteWellFormedness : public fixtures::UntranslatedWords {};

TEST_F(NoteWellFormedness, HoldsForAContactWithoutAnything) {
    NoteReader reader;
    EXPECT_TRUE(isWellFormed(*QVVeltoNoteGenerator().noteFromContactInfo(std::make_shared<QVVeltoContact>()), reader));
    EXPECT_EQ(reader.hashes().size(), 1u);
    EXPECT_TRUE(reader.links().empty());
}

TEST_F(NoteWellFormedness, EndsWhereNoMarkupCanHoldTheText) {
    // A control character has no form in XML, escaped or not. It passes through as it came.
    NoteReader reader;
    const auto note = QVVeltoNoteGenerator().noteFromContactInfo(contactOf("a\x01z"));
    EXPECT_FALSE(isWellFormed(*note, reader));
    EXPECT_NE(note->find("a\x01z"), std::string::npos);
}

TEST_F(NoteWellFormedness, AHundredThousandCharactersAreOneNote) {
    const std::string text(100'000, '&');
    NoteReader reader;
    const auto note = QVVeltoNoteGenerator().noteFromContactInfo(contactOf(text));
    ASSERT_TRUE(isWellFormed(*note, reader));
    EXPECT_GE(note->size(), 8 * 5 * text.size());
}

}  // namespace
