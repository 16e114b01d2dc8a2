#pragma once

#include <string>
#include <string_view>

namespace qv::recognition {

/// What the world's numbering plans say about a number as printed. Advice only: cards print shapes and reserved numbers
/// that no plan knows.
struct PlanAdvice {
    bool possible = false;  ///< its length can be dialled
    bool valid = false;     ///< it lies in an assigned range
    bool mobile = false;    ///< that range is for mobiles alone
    bool fixed = false;     ///< that range is for fixed lines alone
};

/// `region` counts for numbers without a country code. Any thread.
PlanAdvice planAdvice(std::string_view number, const std::string& region);

/// ISO code of the country of a number that begins with "+"; empty when it cannot be told.
std::string planCountry(std::string_view number);

}  // namespace qv::recognition
