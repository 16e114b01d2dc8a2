#include "Server/MetricsText.h"

#include <array>
#include <charconv>

namespace qv::recognition {
namespace {

/// The shortest text that gives the number back, whatever the process' locale is.
std::string textOf(double value) {
    std::array<char, 32> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), end};
}

std::string escaped(std::string_view text, bool isLabel) {
    std::string result;
    for (const char c : text) {
        if (c == '\n') {
            result += "\\n";
        } else if (c == '\\' || (isLabel && c == '"')) {
            result += {'\\', c};
        } else {
            result += c;
        }
    }
    return result;
}

std::string labelled(std::string_view label, std::string_view value) {
    if (label.empty()) return {};
    return std::string(label) + "=\"" + escaped(value, /*isLabel=*/true) + '"';
}

}  // namespace

void MetricsText::begin(std::string_view name, std::string_view type, std::string_view help) {
    mName = name;
    mText += "# HELP " + mName + ' ' + escaped(help, /*isLabel=*/false) + '\n';
    mText += "# TYPE " + mName + ' ' + std::string(type) + '\n';
}

void MetricsText::add(std::uint64_t value) {
    sample("", "", std::to_string(value));
}

void MetricsText::add(double value) {
    sample("", "", textOf(value));
}

void MetricsText::add(std::string_view label, std::string_view labelValue, std::uint64_t value) {
    sample("", labelled(label, labelValue), std::to_string(value));
}

void MetricsText::add(std::string_view label, std::string_view labelValue, const Histogram& histogram) {
    const std::string labels = labelled(label, labelValue);
    const std::string start = labels.empty() ? labels : labels + ',';
    for (std::size_t i = 0; i < Histogram::kBounds.size(); ++i) {
        sample("_bucket", start + labelled("le", textOf(Histogram::kBounds[i])),
               std::to_string(histogram.countUpTo(i)));
    }
    sample("_bucket", start + labelled("le", "+Inf"), std::to_string(histogram.count()));
    sample("_sum", labels, textOf(histogram.sum()));
    sample("_count", labels, std::to_string(histogram.count()));
}

void MetricsText::sample(std::string_view suffix, std::string_view labels, const std::string& value) {
    mText += mName;
    mText += suffix;
    if (!labels.empty()) mText += '{' + std::string(labels) + '}';
    mText += ' ' + value + '\n';
}

}  // namespace qv::recognition
