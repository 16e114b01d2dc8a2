#include "QVPlatform/DomainName.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

struct DomainCase {
    const char* name;
    std::string text;
    std::optional<std::string> domain;
};

class DomainName : public testing::TestWithParam<DomainCase> {};

TEST_P(DomainName, IsWhatGoesOutOnTheWire) {
    EXPECT_EQ(qv::asciiDomainName(GetParam().text), GetParam().domain);
}

const std::string kLabelOf63(63, 'a');

INSTANTIATE_TEST_SUITE_P(Names, DomainName,
                         testing::Values(DomainCase{"Plain", "example.com", "example.com"},
                                         DomainCase{"Capitals", "WWW.Example.COM", "www.example.com"},
                                         DomainCase{"Umlaut", "bücher.example", "xn--bcher-kva.example"},
                                         DomainCase{"CapitalUmlaut", "BÜCHER.example", "xn--bcher-kva.example"},
                                         DomainCase{"SharpSStays", "straße.example", "xn--strae-oqa.example"},
                                         DomainCase{"Chinese", "例子.example", "xn--fsqu00a.example"},
                                         DomainCase{"IdeographicStop", "例子。example", "xn--fsqu00a.example"},
                                         DomainCase{"AlreadyEncoded", "xn--bcher-kva.example", "xn--bcher-kva.example"},
                                         DomainCase{"LastLabelEncoded", "example.xn--p1ai", "example.xn--p1ai"},
                                         DomainCase{"LongestLabel", kLabelOf63 + ".com", kLabelOf63 + ".com"}),
                         [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    NoNames, DomainName,
    testing::Values(
        DomainCase{"Empty", "", std::nullopt}, DomainCase{"OneLabel", "localhost", std::nullopt},
        DomainCase{"Address", "192.0.2.1", std::nullopt}, DomainCase{"AddressInOneNumber", "2130706433", std::nullopt},
        DomainCase{"AddressInHex", "127.0.0.0x1", std::nullopt},
        DomainCase{"FullwidthAddress", "１２７.0.0.1", std::nullopt},
        DomainCase{"AddressLiteral", "[192.0.2.1]", std::nullopt}, DomainCase{"IPv6", "[::1]", std::nullopt},
        DomainCase{"Port", "example.com:80", std::nullopt}, DomainCase{"Path", "example.com/x", std::nullopt},
        DomainCase{"User", "a@example.com", std::nullopt}, DomainCase{"Blank", "exa mple.com", std::nullopt},
        DomainCase{"Underscore", "a_b.example.com", std::nullopt},
        DomainCase{"EmptyLabel", "example..com", std::nullopt}, DomainCase{"LeadingDot", ".com", std::nullopt},
        DomainCase{"TrailingDot", "example.com.", std::nullopt},
        DomainCase{"LeadingHyphen", "-a.example", std::nullopt},
        DomainCase{"BrokenPunycode", "xn--\x7f.example", std::nullopt},
        DomainCase{"Percent", "example%2ecom.org", std::nullopt},
        DomainCase{"NUL", std::string("example.com\0.org", 16), std::nullopt},
        DomainCase{"BrokenUTF8", "\xFF\xC3.example", std::nullopt},
        DomainCase{"LabelOf64", kLabelOf63 + "a.com", std::nullopt},
        DomainCase{"TooLong", kLabelOf63 + "." + kLabelOf63 + "." + kLabelOf63 + "." + kLabelOf63 + ".com",
                   std::nullopt},
        DomainCase{"Huge", std::string(10'000'000, 'a'), std::nullopt}),
    [](const auto& row) { return row.param.name; });

}  // namespace
