#include "QVPlatform/JSON.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace qv {

/// A part of a whole that lives as long as any of its parts is held.
struct JSON::Value {
    std::shared_ptr<const nlohmann::json> json;
};

namespace {

/// Whether more brackets are open at once than allowed, wherever they stand outside of strings. A text for which this
/// miscounts is no JSON, and is refused by the reading.
bool isDeeperThan(const Data& text, std::size_t most) {
    std::size_t depth = 0;
    bool isInString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = static_cast<char>(text[i]);
        if (isInString && c == '\\') {
            ++i;
        } else if (c == '"') {
            isInString = !isInString;
        } else if (!isInString && (c == '[' || c == '{')) {
            if (++depth > most) return true;
        } else if (!isInString && (c == ']' || c == '}')) {
            depth -= depth > 0 ? 1 : 0;
        }
    }
    return false;
}

}  // namespace

std::optional<JSON> JSON::read(const Data& text, const JSONLimits& limits) {
    if (text.size() > limits.maximumSize || isDeeperThan(text, limits.maximumDepth)) return std::nullopt;
    auto whole = std::make_shared<const nlohmann::json>(
        nlohmann::json::parse(text.begin(), text.end(), nullptr, /*allow_exceptions=*/false));
    if (whole->is_discarded()) return std::nullopt;
    return JSON(std::make_shared<const Value>(Value{std::move(whole)}));
}

JSON JSON::partOfThis(const void* part) const {
    const auto* json = static_cast<const nlohmann::json*>(part);
    return JSON(std::make_shared<const Value>(Value{std::shared_ptr<const nlohmann::json>(mValue->json, json)}));
}

bool JSON::isObject() const {
    return mValue && mValue->json->is_object();
}

JSON JSON::member(std::string_view name) const {
    if (!isObject()) return {};
    const auto found = mValue->json->find(std::string(name));
    return found == mValue->json->end() ? JSON() : partOfThis(&*found);
}

std::vector<JSON> JSON::elements() const {
    std::vector<JSON> elements;
    if (!mValue || !mValue->json->is_array()) return elements;
    for (const nlohmann::json& element : *mValue->json)
        elements.push_back(partOfThis(&element));
    return elements;
}

std::optional<std::string> JSON::string() const {
    if (!mValue || !mValue->json->is_string()) return std::nullopt;
    return mValue->json->get_ref<const std::string&>();
}

std::optional<bool> JSON::boolean() const {
    if (!mValue || !mValue->json->is_boolean()) return std::nullopt;
    return mValue->json->get<bool>();
}

}  // namespace qv
