#include "QVPlatform/DomainName.h"

#include <unicode/uidna.h>

#include <array>
#include <cstdint>
#include <memory>

namespace qv {

namespace {

/// RFC 1035, 2.3.4, as it is written with dots.
constexpr std::size_t kLongestName = 253;

using Mapping = std::unique_ptr<UIDNA, decltype(&uidna_close)>;

Mapping openMapping() {
    UErrorCode status = U_ZERO_ERROR;
    UIDNA* mapping = uidna_openUTS46(UIDNA_USE_STD3_RULES | UIDNA_CHECK_BIDI | UIDNA_CHECK_CONTEXTJ |
                                         UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_NONTRANSITIONAL_TO_UNICODE,
                                     &status);
    return {U_SUCCESS(status) ? mapping : nullptr, uidna_close};
}

std::optional<std::string> mapped(std::string_view utf8) {
    const Mapping mapping = openMapping();
    if (!mapping) return std::nullopt;
    std::array<char, kLongestName + 2> name{};
    UIDNAInfo info = UIDNA_INFO_INITIALIZER;
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length =
        uidna_nameToASCII_UTF8(mapping.get(), utf8.data(), static_cast<std::int32_t>(utf8.size()), name.data(),
                               static_cast<std::int32_t>(name.size()), &info, &status);
    if (U_FAILURE(status) || info.errors != 0 || static_cast<std::size_t>(length) > kLongestName) return std::nullopt;
    return std::string(name.data(), static_cast<std::size_t>(length));
}

/// The last label of an address is a number, that of a name never (RFC 3696, 2).
bool endsInName(std::string_view domain) {
    const std::size_t dot = domain.rfind('.');
    if (dot == std::string_view::npos || dot == 0) return false;
    const std::string_view last = domain.substr(dot + 1);
    return !last.empty() && (last.front() < '0' || last.front() > '9');
}

}  // namespace

std::optional<std::string> asciiDomainName(std::string_view utf8) {
    // In UTF-8 no character of a label takes more than four bytes.
    if (utf8.empty() || utf8.size() > 4 * kLongestName) return std::nullopt;
    auto domain = mapped(utf8);
    if (!domain || !endsInName(*domain)) return std::nullopt;
    return domain;
}

}  // namespace qv
