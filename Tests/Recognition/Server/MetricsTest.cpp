#include "Recognition/Server/PrometheusText.h"
#include "Server/Metrics.h"
#include "Server/MetricsText.h"

#include <gtest/gtest.h>

#include <clocale>

namespace qv::recognition {
namespace {

using namespace std::chrono_literals;

Recognition recognitionWith(int fields, std::vector<StageTime> stages, bool isCutShort = false) {
    Recognition recognition;
    recognition.isPicture = true;
    recognition.fields = fields;
    recognition.isCutShort = isCutShort;
    recognition.stages = std::move(stages);
    return recognition;
}

TEST(MetricsTest, BeginsWithEveryOutcomeAtZero) {
    const PrometheusText text(Metrics().text({}));
    for (const char* outcome : {"read", "nothing_found", "no_picture", "failed", "overloaded", "stopping", "hung_up",
                                "incomplete", "unauthorized", "too_large", "malformed", "not_found", "wrong_method"}) {
        EXPECT_EQ(text["qvcardrecod_requests_total{outcome=\"" + std::string(outcome) + "\"}"], 0);
    }
    EXPECT_EQ(text["qvcardrecod_request_duration_seconds_count"], 0);
    EXPECT_EQ(text["qvcardrecod_fields_total"], 0);
}

TEST(MetricsTest, CountsOutcomesFieldsAndTimes) {
    Metrics metrics;
    metrics.count(Outcome::Read);
    metrics.count(Outcome::Read);
    metrics.count(Outcome::WrongMethod);
    metrics.addRecognition(3ms, recognitionWith(7, {{"decode", 4ms}, {"read", 600ms}}));
    metrics.addRecognition(0ms, recognitionWith(5, {{"decode", 5ms}, {"read", 40s}}, /*isCutShort=*/true));
    metrics.addRequest(1500ms);
    const PrometheusText text(metrics.text({}));
    EXPECT_EQ(text["qvcardrecod_requests_total{outcome=\"read\"}"], 2);
    EXPECT_EQ(text["qvcardrecod_requests_total{outcome=\"wrong_method\"}"], 1);
    EXPECT_EQ(text["qvcardrecod_fields_total"], 12);
    EXPECT_EQ(text["qvcardrecod_cut_short_total"], 1);
    EXPECT_EQ(text["qvcardrecod_stage_duration_seconds_bucket{stage=\"decode\",le=\"0.005\"}"], 2);
    EXPECT_EQ(text["qvcardrecod_stage_duration_seconds_bucket{stage=\"read\",le=\"0.5\"}"], 0);
    EXPECT_EQ(text["qvcardrecod_stage_duration_seconds_bucket{stage=\"read\",le=\"1\"}"], 1);
    EXPECT_EQ(text["qvcardrecod_stage_duration_seconds_bucket{stage=\"read\",le=\"30\"}"], 1);
    EXPECT_EQ(text["qvcardrecod_stage_duration_seconds_bucket{stage=\"read\",le=\"+Inf\"}"], 2);
    EXPECT_DOUBLE_EQ(text["qvcardrecod_stage_duration_seconds_sum{stage=\"read\"}"], 40.6);
    EXPECT_DOUBLE_EQ(text["qvcardrecod_waiting_duration_seconds_sum"], 0.003);
    EXPECT_EQ(text["qvcardrecod_request_duration_seconds_bucket{le=\"2.5\"}"], 1);
    EXPECT_EQ(text["qvcardrecod_request_duration_seconds_bucket{le=\"1\"}"], 0);
}

TEST(MetricsTest, ShowsTheLoadOfTheMoment) {
    const PrometheusText text(Metrics().text({.workers = 4, .busy = 3, .waiting = 2, .places = 8, .connections = 9}));
    EXPECT_EQ(text["qvcardrecod_workers"], 4);
    EXPECT_EQ(text["qvcardrecod_busy_workers"], 3);
    EXPECT_EQ(text["qvcardrecod_waiting_requests"], 2);
    EXPECT_EQ(text["qvcardrecod_waiting_places"], 8);
    EXPECT_EQ(text["qvcardrecod_connections"], 9);
}

TEST(MetricsTest, ShowsTheMemoryOfTheProcess) {
    const std::vector<char> block(64U << 20U, 'x');
    const PrometheusText text(Metrics().text({}));
    EXPECT_GT(text["process_resident_memory_bytes"], 64e6);
    EXPECT_GE(text["process_virtual_memory_bytes"], text["process_resident_memory_bytes"]);
    EXPECT_GT(text["process_cpu_seconds_total"], 0);
    EXPECT_GT(text["process_start_time_seconds"], 1.7e9);
    EXPECT_GE(text["process_open_fds"], 3);
    EXPECT_GE(text["process_max_fds"], text["process_open_fds"]);
    EXPECT_TRUE(text.has("qvcardrecod_engine_memory_bytes"));
}

TEST(MetricsTest, NamesFollowTheConventions) {
    Metrics metrics;
    metrics.addRecognition(1ms, recognitionWith(1, {{"read", 1ms}}));
    const PrometheusText text(metrics.text({}));
    for (const auto& [name, type] : text.types()) {
        EXPECT_TRUE(name.starts_with("qvcardrecod_") || name.starts_with("process_")) << name;
        EXPECT_EQ(name.find("milli"), std::string::npos) << name;
        EXPECT_TRUE(type != "histogram" || name.ends_with("_seconds")) << name;
    }
}

TEST(MetricsTextTest, WritesNumbersWhateverTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    (void)std::setlocale(LC_ALL, "de_DE.UTF-8");
    MetricsText out;
    out.begin("half", "gauge", "A half.");
    out.add(0.5);
    out.begin("much", "gauge", "Much.");
    out.add(1234567890123.0);
    (void)std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ(out.text(),
              "# HELP half A half.\n# TYPE half gauge\nhalf 0.5\n"
              "# HELP much Much.\n# TYPE much gauge\nmuch 1234567890123\n");
}

TEST(MetricsTextTest, EscapesWhatWouldEndATextEarly) {
    MetricsText out;
    out.begin("a_total", "counter", "One \"line\",\nand a \\.");
    out.add("label", "x\"y\\z\n", std::uint64_t{1});
    EXPECT_EQ(out.text(),
              "# HELP a_total One \"line\",\\nand a \\\\.\n# TYPE a_total counter\n"
              "a_total{label=\"x\\\"y\\\\z\\n\"} 1\n");
    EXPECT_NO_THROW(PrometheusText{out.text()});
}

// The reader that the other tests lean on.
TEST(PrometheusTextTest, TakesNothingElse) {
    const std::string start = "# HELP a A.\n# TYPE a gauge\n";
    EXPECT_NO_THROW(PrometheusText{start + "a 1\n"});
    const std::string histogram = "# HELP h H.\n# TYPE h histogram\n";
    EXPECT_NO_THROW(
        PrometheusText{histogram + "h_bucket{le=\"1\"} 1\nh_bucket{le=\"+Inf\"} 1\nh_sum 0.5\nh_count 1\n"});
    for (const std::string& wrong : {
             std::string(),
             start,
             start + "a 1",
             start + "a  1\n",
             start + "a 1 \n",
             start + "a x\n",
             start + "a 1\n\n",
             start + "a 1\na 1\n",
             start + "b 1\n",
             start + "a{b=1} 1\n",
             start + "a{b=\"1} 1\n",
             start + "a{1b=\"1\"} 1\n",
             std::string("a 1\n"),
             start + "a 1\n" + start + "a{b=\"1\"} 1\n",
             std::string("# HELP a A.\n# TYPE a counter\na 1\n"),
             std::string("# HELP a_total A.\n# TYPE a_total gauge\na_total 1\n"),
             std::string("# HELP a_total A.\n# TYPE a_total counter\na_total -1\n"),
             histogram + "h_bucket{le=\"1\"} 1\nh_sum 0.5\nh_count 1\n",
             histogram + "h_bucket{le=\"1\"} 2\nh_bucket{le=\"+Inf\"} 1\nh_sum 0.5\nh_count 1\n",
             histogram + "h_bucket{le=\"+Inf\"} 2\nh_sum 0.5\nh_count 1\n",
             histogram + "h_bucket{le=\"+Inf\"} 1\nh_count 1\n",
         }) {
        EXPECT_THROW(PrometheusText{wrong}, std::runtime_error) << wrong;
    }
}

}  // namespace
}  // namespace qv::recognition
