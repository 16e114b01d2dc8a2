#include "Server/Metrics.h"

#include "Server/MetricsText.h"
#include "Server/ProcessFigures.h"

namespace qv::recognition {
namespace {

// In the order of `Outcome`.
constexpr std::array<std::string_view, 13> kOutcomeNames = {
    "read",       "nothing_found", "no_picture", "failed",    "overloaded", "stopping",     "hung_up",
    "incomplete", "unauthorized",  "too_large",  "malformed", "not_found",  "wrong_method",
};

void writeLoad(MetricsText& out, const Load& load) {
    const auto gauge = [&out](std::string_view name, std::string_view help, std::size_t value) {
        out.begin(name, "gauge", help);
        out.add(std::uint64_t{value});
    };
    gauge("qvcardrecod_workers", "Cards that can be read at the same time.", load.workers);
    gauge("qvcardrecod_busy_workers", "Cards that are being read now.", load.busy);
    gauge("qvcardrecod_waiting_requests", "Requests in the waiting line now.", load.waiting);
    gauge("qvcardrecod_waiting_places", "Requests that the waiting line can hold.", load.places);
    gauge("qvcardrecod_connections", "Connections that are open now.", load.connections);
}

void writeFigure(MetricsText& out, std::string_view name, std::string_view type, std::string_view help,
                 const std::optional<double>& value) {
    if (!value) return;
    out.begin(name, type, help);
    out.add(*value);
}

void writeProcess(MetricsText& out, const ProcessFigures& process) {
    writeFigure(out, "qvcardrecod_engine_memory_bytes", "gauge",
                "Heap memory in use: the engines with their language models, and the cards that are being read.",
                process.heapBytes);
    writeFigure(out, "process_resident_memory_bytes", "gauge", "Resident memory size in bytes.", process.residentBytes);
    writeFigure(out, "process_virtual_memory_bytes", "gauge", "Virtual memory size in bytes.", process.virtualBytes);
    writeFigure(out, "process_cpu_seconds_total", "counter", "Total user and system CPU time spent in seconds.",
                process.processorSeconds);
    writeFigure(out, "process_start_time_seconds", "gauge",
                "Start time of the process since the Unix epoch in seconds.", process.startTime);
    writeFigure(out, "process_open_fds", "gauge", "Number of open file descriptors.", process.openFiles);
    writeFigure(out, "process_max_fds", "gauge", "Maximum number of open file descriptors.", process.mostFiles);
}

}  // namespace

void Metrics::addRecognition(std::chrono::microseconds waited, const Recognition& recognition) {
    mWaiting.add(waited);
    mFields += static_cast<std::uint64_t>(recognition.fields);
    mCutShort += recognition.isCutShort ? 1U : 0U;
    for (const auto& stage : recognition.stages)
        mStages[stage.stage].add(stage.time);
}

std::string Metrics::text(const Load& load) const {
    MetricsText out;
    out.begin("qvcardrecod_requests_total", "counter", "Requests for a card, by how they ended.");
    for (std::size_t i = 0; i < kOutcomes; ++i)
        out.add("outcome", kOutcomeNames[i], mOutcomes[i]);
    out.begin("qvcardrecod_fields_total", "counter", "Fields found on cards.");
    out.add(mFields);
    out.begin("qvcardrecod_cut_short_total", "counter", "Cards that were ended by the time limit.");
    out.add(mCutShort);
    out.begin("qvcardrecod_request_duration_seconds", "histogram",
              "Time from a request's last byte to its result, waiting included.");
    out.add("", "", mRequests);
    out.begin("qvcardrecod_waiting_duration_seconds", "histogram", "Time that requests spent in the waiting line.");
    out.add("", "", mWaiting);
    if (!mStages.empty())
        out.begin("qvcardrecod_stage_duration_seconds", "histogram", "Time of each stage of reading.");
    for (const auto& [stage, times] : mStages)
        out.add("stage", stage, times);
    writeLoad(out, load);
    writeProcess(out, processFigures());
    return out.text();
}

}  // namespace qv::recognition
