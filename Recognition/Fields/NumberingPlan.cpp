#include "Fields/NumberingPlan.h"

#include <phonenumbers/phonenumberutil.h>

#include <array>

namespace qv::recognition {
namespace {

using i18n::phonenumbers::PhoneNumber;
using i18n::phonenumbers::PhoneNumberUtil;

bool parsed(std::string_view text, const std::string& region, PhoneNumber& number) {
    const auto& plan = *PhoneNumberUtil::GetInstance();
    return plan.Parse(std::string(text), region.empty() ? "ZZ" : region, &number) == PhoneNumberUtil::NO_PARSING_ERROR;
}

/// What the first digits of a country's numbers (without the trunk zero) say of ranges that are reserved or that the
/// plan at hand does not know yet.
struct Starts {
    std::string_view region;
    std::string_view mobile;
    std::string_view fixed;
};

constexpr std::array<Starts, 14> kStarts = {{{"FR", "67", "12345"},
                                             {"IT", "3", "0"},
                                             {"ES", "67", "89"},
                                             {"PT", "9", "2"},
                                             {"GB", "7", "12"},
                                             {"NL", "6", "123457"},
                                             {"BE", "4", ""},
                                             {"CH", "7", "2345"},
                                             {"AT", "6", "12357"},
                                             {"SE", "7", ""},
                                             {"TR", "5", "234"},
                                             {"CZ", "67", "2345"},
                                             {"PL", "5678", ""},
                                             {"DE", "", "23456789"}}};

PlanAdvice adviceByStart(const PhoneNumber& number, const PlanAdvice& advice) {
    const auto& plan = *PhoneNumberUtil::GetInstance();
    std::string region;
    std::string digits;
    plan.GetRegionCodeForCountryCode(number.country_code(), &region);
    plan.GetNationalSignificantNumber(number, &digits);
    for (const auto& starts : kStarts) {
        if (starts.region != region || digits.empty()) continue;
        const auto has = [&](std::string_view list) { return list.find(digits[0]) != std::string_view::npos; };
        return {advice.possible, advice.valid, has(starts.mobile), has(starts.fixed)};
    }
    return advice;
}

}  // namespace

PlanAdvice planAdvice(std::string_view number, const std::string& region) {
    PhoneNumber parts;
    if (!parsed(number, region, parts)) return {};
    const auto& plan = *PhoneNumberUtil::GetInstance();
    const auto type = plan.GetNumberType(parts);
    const PlanAdvice advice = {plan.IsPossibleNumber(parts), plan.IsValidNumber(parts), type == PhoneNumberUtil::MOBILE,
                               type == PhoneNumberUtil::FIXED_LINE};
    return advice.valid || !advice.possible ? advice : adviceByStart(parts, advice);
}

std::string planCountry(std::string_view number) {
    PhoneNumber parts;
    if (!parsed(number, "", parts)) return {};
    std::string region;
    PhoneNumberUtil::GetInstance()->GetRegionCodeForCountryCode(parts.country_code(), &region);
    return region.size() == 2 && region != "ZZ" ? region : std::string();
}

}  // namespace qv::recognition
