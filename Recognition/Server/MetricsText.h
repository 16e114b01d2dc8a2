#pragma once

#include "Server/Histogram.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace qv::recognition {

/// Writes figures in Prometheus' text format 0.0.4: https://prometheus.io/docs/instrumenting/exposition_formats/
/// A figure belongs to the family that was begun last; the samples of one family have to follow each other.
class MetricsText {
  public:
    static constexpr const char* kContentType = "text/plain; version=0.0.4; charset=utf-8";

    /// `type` is "counter", "gauge" or "histogram"; `help` one sentence.
    void begin(std::string_view name, std::string_view type, std::string_view help);
    void add(std::uint64_t value);
    void add(double value);
    /// With one label; its value may be any text.
    void add(std::string_view label, std::string_view labelValue, std::uint64_t value);
    /// A histogram, with a label unless that is empty.
    void add(std::string_view label, std::string_view labelValue, const Histogram& histogram);

    const std::string& text() const { return mText; }

  private:
    void sample(std::string_view suffix, std::string_view labels, const std::string& value);

    std::string mName;
    std::string mText;
};

}  // namespace qv::recognition
