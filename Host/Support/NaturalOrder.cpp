#include "Support/NaturalOrder.h"

#include "QVPlatform/Text.h"

#include <string>

namespace qvhost {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Takes the number at the beginning away, and the zeros before it, which say nothing.
std::string_view takeNumber(std::string_view& text) {
    std::size_t length = 0;
    while (length < text.size() && isDigit(text[length]))
        ++length;
    std::string_view number = text.substr(0, length);
    text.remove_prefix(length);
    while (number.size() > 1 && number.front() == '0')
        number.remove_prefix(1);
    return number;
}

/// Below, above or 0.
int compared(std::string_view one, std::string_view other) {
    while (!one.empty() && !other.empty()) {
        if (isDigit(one.front()) && isDigit(other.front())) {
            const std::string_view a = takeNumber(one);
            const std::string_view b = takeNumber(other);
            if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
            if (const int order = a.compare(b); order != 0) return order;
            continue;
        }
        const auto a = static_cast<unsigned char>(one.front());
        const auto b = static_cast<unsigned char>(other.front());
        if (a != b) return a < b ? -1 : 1;
        one.remove_prefix(1);
        other.remove_prefix(1);
    }
    return static_cast<int>(!one.empty()) - static_cast<int>(!other.empty());
}

}  // namespace

bool comesBefore(std::string_view one, std::string_view other) {
    const int order = compared(qv::Text::lowercased(one), qv::Text::lowercased(other));
    return order != 0 ? order < 0 : one < other;
}

}  // namespace qvhost
