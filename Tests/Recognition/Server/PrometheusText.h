#pragma once

#include <cstddef>
#include <limits>
#include <map>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace qv::recognition {

/// Reads Prometheus' text format 0.0.4 and takes nothing that its grammar and its conventions do not allow: throws
/// `std::runtime_error` with the line. Values are found by the sample as it is written: `name{label="value"}`.
class PrometheusText {
  public:
    explicit PrometheusText(const std::string& text) {
        if (text.empty() || text.back() != '\n') throw std::runtime_error("the last line has no end");
        std::size_t start = 0;
        for (std::size_t end = 0; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
            readLine(text.substr(start, end - start));
        endFamily();
    }

    bool has(const std::string& sample) const { return mValues.contains(sample); }
    double operator[](const std::string& sample) const {
        const auto found = mValues.find(sample);
        if (found == mValues.end()) throw std::runtime_error("no sample " + sample);
        return found->second;
    }
    const std::string& typeOf(const std::string& family) const { return mTypes.at(family); }
    const std::map<std::string, std::string>& types() const { return mTypes; }

  private:
    struct Series {
        double lastBound = -std::numeric_limits<double>::infinity();
        double lastCount = 0;
        double infinite = -1;
        double count = -2;
        bool hasSum = false;
    };

    static void require(bool condition, const std::string& what, const std::string& line) {
        if (!condition) throw std::runtime_error(what + ": " + line);
    }

    void readLine(const std::string& line) {
        static const std::regex help(R"(# HELP ([a-zA-Z_:][a-zA-Z0-9_:]*) (\S(?:[^\\]|\\\\|\\n)*))");
        static const std::regex type(R"(# TYPE ([a-zA-Z_:][a-zA-Z0-9_:]*) (counter|gauge|histogram|summary|untyped))");
        static const std::regex sample(
            R"re(([a-zA-Z_:][a-zA-Z0-9_:]*)(\{([a-zA-Z_][a-zA-Z0-9_]*="(?:[^"\\]|\\["\\n])*"(?:,[a-zA-Z_][a-zA-Z0-9_]*="(?:[^"\\]|\\["\\n])*")*)\})? ([+-]?(?:Inf|[0-9]+(?:\.[0-9]+)?(?:e[+-]?[0-9]+)?)))re");
        std::smatch match;
        if (std::regex_match(line, match, help)) return beginFamily(match[1], line);
        if (std::regex_match(line, match, type)) return setType(match[1], match[2], line);
        require(std::regex_match(line, match, sample), "neither a comment nor a sample", line);
        addSample(match[1], match[3], number(match[4]), line);
    }

    static double number(const std::string& text) {
        return text == "+Inf" ? std::numeric_limits<double>::infinity() : std::stod(text);
    }

    void beginFamily(const std::string& name, const std::string& line) {
        endFamily();
        require(mFamilies.insert(name).second, "a family twice", line);
        mFamily = name;
    }

    void setType(const std::string& name, const std::string& type, const std::string& line) {
        require(name == mFamily && !mTypes.contains(name) && mSamples == 0, "a type in the wrong place", line);
        require((type == "counter") == name.ends_with("_total"), "counters, and only they, end in _total", line);
        mTypes[name] = type;
    }

    void addSample(const std::string& name, const std::string& labels, double value, const std::string& line) {
        require(mTypes.contains(mFamily), "a sample without its type", line);
        ++mSamples;
        require(mValues.emplace(labels.empty() ? name : name + '{' + labels + '}', value).second, "a sample twice",
                line);
        require(mTypes[mFamily] == "gauge" || value >= 0, "a negative count", line);
        if (mTypes[mFamily] == "histogram") return addToHistogram(name, labels, value, line);
        require(name == mFamily, "a sample of another family", line);
    }

    void addToHistogram(const std::string& name, const std::string& labels, double value, const std::string& line) {
        static const std::regex bound(R"re(^(?:(.*),)?le="([^"]*)"$)re");
        std::smatch match;
        if (name == mFamily + "_sum") {
            mSeries[labels].hasSum = true;
        } else if (name == mFamily + "_count") {
            mSeries[labels].count = value;
        } else {
            require(name == mFamily + "_bucket" && std::regex_match(labels, match, bound), "no bucket", line);
            addBucket(mSeries[match[1]], number(match[2]), value, line);
        }
    }

    static void addBucket(Series& series, double bound, double value, const std::string& line) {
        require(bound > series.lastBound, "bounds that do not grow", line);
        require(value >= series.lastCount, "a bucket with less than the one before", line);
        series.lastBound = bound;
        series.lastCount = value;
        if (bound == std::numeric_limits<double>::infinity()) series.infinite = value;
    }

    void endFamily() {
        for (const auto& [labels, series] : mSeries) {
            require(series.infinite == series.count && series.hasSum, "an incomplete histogram", mFamily + labels);
        }
        require(mFamily.empty() || mSamples > 0, "a family without samples", mFamily);
        mSeries.clear();
        mSamples = 0;
    }

    std::string mFamily;
    std::size_t mSamples = 0;
    std::set<std::string> mFamilies;
    std::map<std::string, std::string> mTypes;
    std::map<std::string, double> mValues;
    std::map<std::string, Series> mSeries;
};

}  // namespace qv::recognition
