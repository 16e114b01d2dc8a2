#include "Fields/NumberingPlan.h"

#include <phonenumbers/phonenumberutil.h>

namespace qv::recognition {
namespace {

using i18n::phonenumbers::PhoneNumber;
using i18n::phonenumbers::PhoneNumberUtil;

bool parsed(std::string_view text, const std::string& region, PhoneNumber& number) {
    const auto& plan = *PhoneNumberUtil::GetInstance();
    return plan.Parse(std::string(text), region.empty() ? "ZZ" : region, &number) == PhoneNumberUtil::NO_PARSING_ERROR;
}

}  // namespace

PlanAdvice planAdvice(std::string_view number, const std::string& region) {
    PhoneNumber parts;
    if (!parsed(number, region, parts)) return {};
    const auto& plan = *PhoneNumberUtil::GetInstance();
    return {plan.IsPossibleNumber(parts), plan.IsValidNumber(parts),
            plan.GetNumberType(parts) == PhoneNumberUtil::MOBILE};
}

std::string planCountry(std::string_view number) {
    PhoneNumber parts;
    if (!parsed(number, "", parts)) return {};
    std::string region;
    PhoneNumberUtil::GetInstance()->GetRegionCodeForCountryCode(parts.country_code(), &region);
    return region.size() == 2 && region != "ZZ" ? region : std::string();
}

}  // namespace qv::recognition
