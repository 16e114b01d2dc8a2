#include "ContactFixtures.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "Support/ResourceFolder.h"

#include <gmock/gmock.h>

namespace {

using fixtures::entryArray;
using fixtures::entrySet;
using fixtures::handleSet;
using fixtures::strings;

std::string label(const std::string& lower, const std::string& text) {
    return "<div style=\"float: left;margin: 0;padding: 0;width: 77px;text-align: left;\"><p "
           "style=\"margin:0;padding:0;"
           "\"><span style=\"-webkit-appearance: none;border: none;color: #aaaaaa;font-size: 14px;font-family: "
           "Helvetica;\"><span style=\"x-quorvane:context;-quorvane-context-name:" +
           lower + "\">" + text + "</span></span></p></div>";
}

std::string framed(const std::string& content) {
    return "<div style=\"float: left; clear: left; min-width: 400px;overflow:hidden; _overflow:visible; zoom:1;\">"
           "<div style=\"margin: 0;padding: 0;text-align: left;overflow:hidden; _overflow:visible; "
           "zoom:1;margin-bottom:6px;\">" +
           content + "</div></div>";
}

std::string linkRow(const std::string& kind, const std::string& cell, const std::string& link,
                    const std::string& text) {
    return framed("<div style=\"x-quorvane:" + kind + "; -quorvane-editable:" + kind + "; word-wrap: break-word;\">" +
                  cell + "<div style=\"x-quorvane:value; color: #6f6f6f;\"><a href=\"" + link + "\">" + text +
                  "</a></div></div>");
}

std::string emailRow(const std::string& cell, const std::string& address) {
    return linkRow("email", cell, "mailto:" + address, address);
}

std::string phoneRow(const std::string& cell, const std::string& number) {
    return framed("<div style=\"x-quorvane:phone; -quorvane-editable:phone; word-wrap: break-word;\">" + cell +
                  "<span style=\"x-quorvane:value; color: #6f6f6f;\">" + number + "</span></div>");
}

std::string addressRow(const std::string& cell, const std::string& link, const std::string& text) {
    return framed("<div style=\"x-quorvane:address;-quorvane-editable:address;\">" + cell +
                  "<div style=\"x-quorvane:value;\"><a href=\"" + link + "\">" + text + "</a></div></div>");
}

std::string profileRow(const std::string& kind, const std::string& cell, const std::string& link,
                       const std::string& text) {
    return framed("<div style=\"x-quorvane:" + kind + ";-quorvane-editable:" + kind + ";word-wrap: break-word;\">" +
                  cell + "<div style=\"x-quorvane:value;\"><a href=\"" + link + "\">" + text + "</a></div></div>");
}

class NoteRows : public fixtures::UntranslatedWords {
  protected:
    /// What stands in the place of that name.
    std::string filled(const std::string& place) {
        mResources.write("velto-note-template-new.html", "[<!--x-quorvane:" + place + "-->]");
        const std::string note = QVVeltoNoteGenerator().noteFromContactInfo(mContact).value_or("");
        return note.size() < 2 ? note : note.substr(1, note.size() - 2);
    }
    std::string unfilled(const std::string& place) { return "<!--x-quorvane:" + place + "-->"; }

    testsupport::ResourceFolder mResources;
    std::shared_ptr<QVVeltoContact> mContact = std::make_shared<QVVeltoContact>();
};

TEST_F(NoteRows, EmailsLinkToTheEscapedAddress) {
    mContact->setEmailFields(entrySet({{"Email", "b&c@example.com"}, {"Work Email", "a@example.com"}}));
    EXPECT_EQ(filled("emails"), emailRow(label("email", "Email"), "b&amp;c@example.com") +
                                    emailRow(label("work email", "Work Email"), "a@example.com"));
}

TEST_F(NoteRows, PhonesAreText) {
    mContact->setPhoneFields(entrySet({{"Fax", "<555>"}, {"Mobile", "+1 202 555 0100"}}));
    EXPECT_EQ(filled("phones"),
              phoneRow(label("fax", "Fax"), "&lt;555&gt;") + phoneRow(label("mobile", "Mobile"), "+1 202 555 0100"));
}

TEST_F(NoteRows, HandlesLinkToTheirServices) {
    mContact->setTwitterHandles(handleSet({"jordan", "o'neil"}));
    mContact->setWeiboHandles(handleSet({"示例"}));
    const std::string cell = label("twitter", "Twitter");
    EXPECT_EQ(filled("twitters"), linkRow("twitter", cell, "http://twitter.com/jordan", "jordan") +
                                      linkRow("twitter", cell, "http://twitter.com/o&apos;neil", "o&apos;neil"));
    EXPECT_EQ(filled("weibos"), linkRow("weibo", label("weibo", "Weibo"), "http://weibo.com/示例", "示例"));
}

TEST_F(NoteRows, EmptyAndAbsentListsLeaveNothing) {
    for (const char* place : {"emails", "phones", "twitters", "weibos"})
        EXPECT_EQ(filled(place), "") << place;
    mContact->setEmailFields(entrySet({}));
    mContact->setPhoneFields(entrySet({}));
    mContact->setTwitterHandles(handleSet({}));
    mContact->setWeiboHandles(handleSet({}));
    for (const char* place : {"emails", "phones", "twitters", "weibos"})
        EXPECT_EQ(filled(place), "") << place;
}

TEST_F(NoteRows, OrderedListsGoFirst) {
    mContact->setEmailFields(entrySet({{"Email", "set"}}));
    mContact->setPhoneFields(entrySet({{"Phone", "set"}}));
    mContact->setTwitterHandles(handleSet({"set"}));
    mContact->setWeiboHandles(handleSet({"set"}));
    mContact->setOrderedEmailFields(entryArray({{"B", "2"}, {"A", "1"}, {"B", "2"}}));
    mContact->setOrderedPhoneFields(entryArray({{"B", "2"}}));
    mContact->setOrderedTwitterHandles(strings({"b", "a", "b"}));
    mContact->setOrderedWeiboHandles(strings({"b"}));
    EXPECT_EQ(filled("emails"),
              emailRow(label("b", "B"), "2") + emailRow(label("a", "A"), "1") + emailRow(label("b", "B"), "2"));
    EXPECT_EQ(filled("phones"), phoneRow(label("b", "B"), "2"));
    const auto twitter = [](const std::string& handle) {
        return linkRow("twitter", label("twitter", "Twitter"), "http://twitter.com/" + handle, handle);
    };
    EXPECT_EQ(filled("twitters"), twitter("b") + twitter("a") + twitter("b"));
    EXPECT_EQ(filled("weibos"), linkRow("weibo", label("weibo", "Weibo"), "http://weibo.com/b", "b"));
}

TEST_F(NoteRows, AnEmptyOrderedListIsUsedAsItIs) {
    mContact->setEmailFields(entrySet({{"Email", "set"}}));
    mContact->setPhoneFields(entrySet({{"Phone", "set"}}));
    mContact->setTwitterHandles(handleSet({"set"}));
    mContact->setWeiboHandles(handleSet({"set"}));
    mContact->setOrderedEmailFields(entryArray({}));
    mContact->setOrderedPhoneFields(entryArray({}));
    mContact->setOrderedTwitterHandles(strings({}));
    mContact->setOrderedWeiboHandles(strings({}));
    for (const char* place : {"emails", "phones", "twitters", "weibos"})
        EXPECT_EQ(filled(place), "") << place;
}

TEST_F(NoteRows, AnEntryWithoutTextOrLabelIsARowAllTheSame) {
    mContact->setEmailFields(entrySet({{std::nullopt, std::nullopt}}));
    mContact->setPhoneFields(entrySet({{"", ""}}));
    EXPECT_EQ(filled("emails"), emailRow(label("", ""), ""));
    EXPECT_EQ(filled("phones"), phoneRow(label("", ""), ""));
}

TEST_F(NoteRows, NothingInTheListsIsNoRow) {
    const auto entries = entryArray({{"A", "1"}});
    entries->push_back(nullptr);
    mContact->setOrderedEmailFields(entries);
    mContact->setOrderedPhoneFields(entries);
    EXPECT_EQ(filled("emails"), emailRow(label("a", "A"), "1"));
    EXPECT_EQ(filled("phones"), phoneRow(label("a", "A"), "1"));
}

TEST_F(NoteRows, LabelsAreNotEscapedAndTextsNoFormats) {
    mContact->setEmailFields(entrySet({{"R&D <i>", "100%@example.com"}}));
    EXPECT_EQ(filled("emails"), emailRow(label("r&d <i>", "R&D <i>"), "100%@example.com"));
}

TEST_F(NoteRows, TheAddressLinksToTheMapAndKeepsItsWhiteSpace) {
    mContact->setAddress("10  Main St\n\n Suite #5 & 6 ");
    EXPECT_EQ(filled("place-address"), addressRow(label("address", "Address"),
                                                  "http://maps.google.com/?q=10%20Main%20St%20Suite%20%235%20%26%206",
                                                  "10  Main St\n\n Suite #5 &amp; 6 "));
}

TEST_F(NoteRows, AnEmptyAddressIsAnAddress) {
    mContact->setAddress("");
    EXPECT_EQ(filled("place-address"), addressRow(label("address", "Address"), "http://maps.google.com/?q=", ""));
}

TEST_F(NoteRows, ProfilesLinkToTheirPages) {
    mContact->setLinkedInProfileURL("http://linkedin.example/?a=1&b=2");
    mContact->setFacebookProfileURL("");
    EXPECT_EQ(filled("linkedin"), profileRow("linkedin", label("linkedin", "LinkedIn"),
                                             "http://linkedin.example/?a=1&amp;b=2", "View Profile"));
    EXPECT_EQ(filled("facebook"), profileRow("facebook", label("facebook", "Facebook"), "", "View Profile"));
}

TEST_F(NoteRows, AbsentAddressAndProfilesKeepTheirPlaces) {
    for (const char* place : {"place-address", "linkedin", "facebook"})
        EXPECT_EQ(filled(place), unfilled(place));
}

TEST_F(NoteRows, WordsAreTheHostsAndNotEscaped) {
    qv::Bundle::setLocalizer(
        [](std::string_view key) -> std::optional<std::string> { return "<" + std::string(key) + ">"; });
    mContact->setAddress("x");
    mContact->setLinkedInProfileURL("l");
    mContact->setFacebookProfileURL("f");
    mContact->setTwitterHandles(handleSet({"t"}));
    mContact->setWeiboHandles(handleSet({"w"}));
    EXPECT_EQ(filled("place-address"), addressRow(label("<address>", "<Address>"), "http://maps.google.com/?q=x", "x"));
    EXPECT_EQ(filled("linkedin"), profileRow("linkedin", label("<linkedin>", "<LinkedIn>"), "l", "<View Profile>"));
    EXPECT_EQ(filled("facebook"), profileRow("facebook", label("<facebook>", "<Facebook>"), "f", "<View Profile>"));
    EXPECT_EQ(filled("twitters"), linkRow("twitter", label("<twitter>", "<Twitter>"), "http://twitter.com/t", "t"));
    EXPECT_EQ(filled("weibos"), linkRow("weibo", label("<weibo>", "<Weibo>"), "http://weibo.com/w", "w"));
}

TEST_F(NoteRows, HandleWordsAreLookedUpOncePerRow) {
    int lookUps = 0;
    qv::Bundle::setLocalizer([&lookUps](std::string_view) -> std::optional<std::string> {
        ++lookUps;
        return std::nullopt;
    });
    mContact->setTwitterHandles(handleSet({"a", "b", "c"}));
    filled("twitters");
    EXPECT_EQ(lookUps, 3);
}

std::string attachment(const std::string& hash) {
    return "<div style=\"x-quorvane:card-image;width: 500px; height:auto; padding: 20px; margin-bottom: "
           "20px;\"><qv-media "
           "style=\"width: 93%;height:auto;margin-left: 3.5%;\" hash=\"" +
           hash + "\" type=\"image/jpeg\"/></div>";
}

TEST_F(NoteRows, AttachmentsReferToTheCardImages) {
    mContact->setResourceHashes(strings({"", "abc", "", "def", "abc"}));
    EXPECT_EQ(filled("attachments"), attachment("abc") + attachment("def") + attachment("abc"));
    mContact->setResourceHashes(strings({"", "abc"}));
    EXPECT_EQ(filled("attachments"), attachment("abc"));
    mContact->setResourceHashes(strings({}));
    EXPECT_EQ(filled("attachments"), "");
    mContact->setResourceHashes(nullptr);
    EXPECT_EQ(filled("attachments"), "");
}

// What many rows need is not what the first would need as many times.
TEST_F(NoteRows, MayBeManyBehindOneOfMegabytes) {
    constexpr std::size_t kLong = std::size_t{4} << 20;
    constexpr std::size_t kMany = 100'000;
    mContact->setPhoneFields(entrySet({}));
    mContact->phoneFields()->insert(QVVeltoContactField::initWithLabel("Phone", std::string(kLong, '1')));
    for (std::size_t index = 0; index < kMany; ++index)
        mContact->phoneFields()->insert(QVVeltoContactField::initWithLabel("Phone", std::to_string(index)));
    const std::string rows = filled("phones");
    const std::string last = phoneRow(label("phone", "Phone"), std::to_string(kMany - 1));
    EXPECT_TRUE(rows.ends_with(last)) << rows.substr(rows.size() - std::min(rows.size(), last.size()));
}

}  // namespace
