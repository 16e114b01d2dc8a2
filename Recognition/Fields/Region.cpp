#include "Fields/Region.h"

#include "Fields/Internet.h"
#include "Fields/Phone.h"
#include "Fields/Postcode.h"
#include "Text/Letters.h"

#include <map>

namespace qv::recognition {
namespace {

std::string usualRegion(const std::string& language) {
    static const std::map<std::string, std::string> regions = {
        {"en", "US"}, {"de", "DE"}, {"fr", "FR"}, {"es", "ES"}, {"it", "IT"}, {"pt", "PT"}, {"nl", "NL"},
        {"tr", "TR"}, {"pl", "PL"}, {"cs", "CZ"}, {"sv", "SE"}, {"ja", "JP"}, {"zh", "CN"}, {"ko", "KR"}};
    const auto found = regions.find(language);
    return found == regions.end() ? "US" : found->second;
}

}  // namespace

std::string regionOfLanguage(const std::string& language) {
    return language == "en" ? std::string() : usualRegion(language);
}

std::string guessedRegion(const std::vector<Field>& internet, const std::vector<TextLine>& lines,
                          const std::string& language) {
    for (const auto& line : lines) {
        if (auto region = countryOfNumber(line.text()); !region.empty()) return region;
    }
    for (const auto& line : lines) {
        if (auto region = postcodeCountry(splitAtSpaces(line.text())); !region.empty()) return region;
    }
    for (const auto& field : internet) {
        if (auto region = countryOfHost(hostOf(field.text)); !region.empty()) return region;
    }
    return usualRegion(language);
}

}  // namespace qv::recognition
