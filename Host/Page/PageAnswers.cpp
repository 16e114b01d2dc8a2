#include "Page/PageAnswers.h"

#include "Page/PileJSON.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace qvhost::PageAnswers {
namespace {

constexpr const char* kJSON = "application/json";

/// For a header: other letters in it mean different things to different browsers, so those go by percent signs.
std::string disposition(const std::string& name) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string plain;
    std::string encoded;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '.' ||
                             c == '-' || c == '_';
        plain += isPlain ? c : '_';
        if (isPlain) {
            encoded += c;
        } else {
            encoded.append(1, '%').append(1, kDigits[byte >> 4U]).append(1, kDigits[byte & 0xFU]);
        }
    }
    return "attachment; filename=\"" + plain + "\"; filename*=UTF-8''" + encoded;
}

}  // namespace

PageAnswer json(const JSON::Value& value, unsigned status) {
    PageAnswer answer;
    answer.status = status;
    answer.type = kJSON;
    answer.body = JSON::text(value);
    return answer;
}

PageAnswer problem(unsigned status, const std::string& message) {
    return json({{"error", message}}, status);
}

PageAnswer failure(const Failure& failure) {
    return problem(failure.status == ExitStatus::NotWritten ? 507 : 422, failure.message);
}

PageAnswer card(const CardPile::Card& card) {
    if (!card) return problem(409, "This cannot be done with the card as it is now.");
    return json(PileJSON::whole(*card));
}

PageAnswer download(std::string bytes, const std::string& type, const std::string& name) {
    PageAnswer answer;
    answer.type = type;
    answer.body = std::move(bytes);
    answer.headers.emplace_back("Content-Disposition", disposition(name));
    return answer;
}

JSON::Value body(const PageRequest& request) {
    if (!request.contentType.starts_with(kJSON)) return JSON::Value(JSON::Value::value_t::discarded);
    return JSON::Value::parse(request.body, nullptr, /*allow_exceptions=*/false);
}

}  // namespace qvhost::PageAnswers
