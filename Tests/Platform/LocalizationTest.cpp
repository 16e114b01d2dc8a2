#include "QVPlatform/Bundle.h"
#include "Support/CapturedLog.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <libintl.h>

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using qv::Bundle;
using testing::ElementsAre;
using testsupport::CapturedLog;
using testsupport::TemporaryFolder;

namespace {

std::string word(std::uint32_t number) {
    return std::string(reinterpret_cast<const char*>(&number), sizeof number);
}

/// A compiled message catalogue (GNU gettext manual, "The Format of GNU MO Files"); keys must come sorted.
std::string catalogue(const std::vector<std::pair<std::string, std::string>>& entries) {
    const auto count = static_cast<std::uint32_t>(entries.size());
    std::uint32_t offset = 28 + 16 * count;
    std::string tables;
    std::string texts;
    const auto add = [&](const std::string& text) {
        tables += word(static_cast<std::uint32_t>(text.size())) + word(offset);
        offset += static_cast<std::uint32_t>(text.size()) + 1;
        texts += text + '\0';
    };
    for (const auto& entry : entries)
        add(entry.first);
    for (const auto& entry : entries)
        add(entry.second);
    return word(0x950412de) + word(0) + word(count) + word(28) + word(28 + 8 * count) + word(0) + word(0) + tables +
           texts;
}

/// Runs as a host whose language is German, with a catalogue of its own for each text domain that a test asks for.
class LocalizationTest : public testing::Test {
  protected:
    void SetUp() override {
        ::setenv("LANGUAGE", "de", 1);
        ASSERT_NE(std::setlocale(LC_ALL, "C.UTF-8"), nullptr);
    }
    void TearDown() override {
        Bundle::setLocalizer({});
        ::textdomain("messages");
        ::unsetenv("LANGUAGE");
        std::setlocale(LC_ALL, "C");
    }

    void useDomain(const std::string& domain) {
        mFolder.write("de/LC_MESSAGES/" + domain + ".mo",
                      catalogue({{"", "Content-Type: text/plain; charset=UTF-8\n"}, {"Title", "Größe"}}));
        ::bindtextdomain(domain.c_str(), mFolder.path().c_str());
        ::textdomain(domain.c_str());
    }

    TemporaryFolder mFolder;
};

TEST_F(LocalizationTest, AnswersTheKeyWithoutACatalogue) {
    EXPECT_EQ(Bundle::localizedString("Title"), "Title");
    EXPECT_EQ(Bundle::localizedString(""), "");
    EXPECT_EQ(Bundle::localizedString("Ünïcode"), "Ünïcode");
}

TEST_F(LocalizationTest, AsksTheHostsTextDomain) {
    useDomain("qv-test-bound");
    ::bind_textdomain_codeset("qv-test-bound", "UTF-8");
    EXPECT_EQ(Bundle::localizedString("Title"), "Größe");
    EXPECT_EQ(Bundle::localizedString("Company"), "Company");
}

TEST_F(LocalizationTest, TakesTheLocalesCodeSetWhereTheDomainHasNone) {
    useDomain("qv-test-locale");
    EXPECT_EQ(Bundle::localizedString("Title"), "Größe");
}

TEST_F(LocalizationTest, AnswersTheKeyWhereWordsWouldNotBeUTF8) {
    useDomain("qv-test-latin");
    ::bind_textdomain_codeset("qv-test-latin", "ISO-8859-1");
    EXPECT_EQ(Bundle::localizedString("Title"), "Title");

    useDomain("qv-test-ascii");
    std::setlocale(LC_CTYPE, "C");
    EXPECT_EQ(Bundle::localizedString("Title"), "Title");
}

TEST_F(LocalizationTest, NeverShowsTheCataloguesHeader) {
    useDomain("qv-test-header");
    EXPECT_EQ(Bundle::localizedString(""), "");
}

TEST_F(LocalizationTest, DoesNotCutAKeyAtANulByte) {
    useDomain("qv-test-nul");
    const std::string key("Title\0x", 7);
    EXPECT_EQ(Bundle::localizedString(key), key);
}

TEST_F(LocalizationTest, PrefersTheHostsLocalizer) {
    useDomain("qv-test-replaced");
    Bundle::setLocalizer([](std::string_view key) -> std::optional<std::string> {
        if (key == "Title") return "Titel";
        return std::nullopt;
    });
    EXPECT_EQ(Bundle::localizedString("Title"), "Titel");
    EXPECT_EQ(Bundle::localizedString("Company"), "Company");
    Bundle::setLocalizer({});
    EXPECT_EQ(Bundle::localizedString("Title"), "Größe");
}

TEST_F(LocalizationTest, KeepsAnEmptyWordOfTheHosts) {
    Bundle::setLocalizer([](std::string_view) { return std::optional<std::string>(""); });
    EXPECT_EQ(Bundle::localizedString("Title"), "");
}

TEST_F(LocalizationTest, AnswersTheKeyWhenTheLocalizerThrows) {
    const CapturedLog log;
    Bundle::setLocalizer([](std::string_view) -> std::optional<std::string> { throw std::runtime_error("no words"); });
    EXPECT_EQ(Bundle::localizedString("Title"), "Title");
    EXPECT_THAT(log.messages(), ElementsAre("<ERROR> Exception from the host's localizer: no words"));
}

}  // namespace
