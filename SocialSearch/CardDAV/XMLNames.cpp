#include "CardDAV/XMLNames.h"

#include <algorithm>

namespace {

constexpr std::size_t kMostElements = 64;
constexpr std::size_t kMostBindings = 256;
constexpr std::string_view kDefault = "xmlns";
constexpr std::string_view kPrefixed = "xmlns:";

char markOfNamespace(std::string_view uri) {
    if (uri == "DAV:") return 'D';
    return uri == "urn:ietf:params:xml:ns:carddav" ? 'C' : '?';
}

}  // namespace

bool XMLNames::open(const std::string& name, const std::map<std::string, std::string>& attributes) {
    // The element itself is within what it declares.
    mPath.emplace_back();
    for (const auto& [attribute, value] : attributes)
        bind(attribute, value);
    const std::size_t colon = name.find(':');
    const std::string_view prefix = colon == std::string::npos ? "" : std::string_view(name).substr(0, colon);
    mPath.back() = std::string{markOf(prefix), ':'} + (colon == std::string::npos ? name : name.substr(colon + 1));
    return mPath.size() <= kMostElements && mBindings.size() <= kMostBindings;
}

void XMLNames::close() {
    while (!mBindings.empty() && mBindings.back().depth == mPath.size())
        mBindings.pop_back();
    mPath.pop_back();
}

std::string_view XMLNames::inner(std::size_t steps) const {
    return steps < mPath.size() ? std::string_view(mPath[mPath.size() - 1 - steps]) : std::string_view();
}

void XMLNames::bind(const std::string& attribute, const std::string& value) {
    const bool isPrefixed = attribute.starts_with(kPrefixed);
    if (!isPrefixed && attribute != kDefault) return;
    mBindings.push_back({.prefix = isPrefixed ? attribute.substr(kPrefixed.size()) : "",
                         .mark = markOfNamespace(value),
                         .depth = mPath.size()});
}

char XMLNames::markOf(std::string_view prefix) const {
    const auto found = std::find_if(mBindings.rbegin(), mBindings.rend(),
                                    [&](const Binding& binding) { return binding.prefix == prefix; });
    return found == mBindings.rend() ? '?' : found->mark;
}
