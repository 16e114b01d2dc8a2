#include "ScaleGraph.h"

#include <zimg.h>

#include <algorithm>
#include <deque>
#include <mutex>
#include <stdexcept>

namespace qv::imaging {

namespace {

zimg_image_format greyFormat(int width, int height) {
    zimg_image_format format;
    zimg_image_format_default(&format, ZIMG_API_VERSION);
    format.width = static_cast<unsigned>(width);
    format.height = static_cast<unsigned>(height);
    format.pixel_type = ZIMG_PIXEL_BYTE;
    format.pixel_range = ZIMG_RANGE_FULL;
    format.color_family = ZIMG_COLOR_GREY;
    return format;
}

zimg_filter_graph* buildGraph(const ScaleAxis& horizontal, const ScaleAxis& vertical) {
    zimg_image_format source = greyFormat(horizontal.sourceCount, vertical.sourceCount);
    source.active_region.left = horizontal.start;
    source.active_region.width = horizontal.span;
    source.active_region.top = vertical.start;
    source.active_region.height = vertical.span;
    const zimg_image_format target = greyFormat(horizontal.count, vertical.count);
    zimg_graph_builder_params parameters;
    zimg_graph_builder_params_default(&parameters, ZIMG_API_VERSION);
    parameters.resample_filter = ZIMG_RESIZE_BICUBIC;
    parameters.filter_param_a = 0;
    parameters.filter_param_b = 0.5;
    return zimg_filter_graph_build(&source, &target, &parameters);
}

/// The graphs that were used last, the latest first.
class RecentGraphs {
  public:
    std::shared_ptr<const ScaleGraph> find(const ScaleAxis& horizontal, const ScaleAxis& vertical) {
        const std::lock_guard lock(mMutex);
        const auto found = std::find_if(mEntries.begin(), mEntries.end(), [&](const Entry& entry) {
            return entry.horizontal == horizontal && entry.vertical == vertical;
        });
        if (found == mEntries.end()) return nullptr;
        std::rotate(mEntries.begin(), found, found + 1);
        return mEntries.front().graph;
    }

    void add(const ScaleAxis& horizontal, const ScaleAxis& vertical, std::shared_ptr<const ScaleGraph> graph) {
        const std::lock_guard lock(mMutex);
        mEntries.push_front({horizontal, vertical, std::move(graph)});
        if (mEntries.size() > kMost) mEntries.pop_back();
    }

  private:
    // Luma and chroma of pictures in four shapes.
    static constexpr std::size_t kMost = 8;
    struct Entry {
        ScaleAxis horizontal;
        ScaleAxis vertical;
        std::shared_ptr<const ScaleGraph> graph;
    };
    std::mutex mMutex;
    std::deque<Entry> mEntries;
};

// Never destroyed: threads may still draw while the process ends.
RecentGraphs& recentGraphs() {
    static auto& graphs = *new RecentGraphs;
    return graphs;
}

// A filter of many samples is as large as the picture that asked for it; it goes with that picture.
bool isWorthKeeping(const ScaleAxis& axis) {
    constexpr int kLongest = 16'384;
    return axis.sourceCount <= kLongest && axis.count <= kLongest;
}

}  // namespace

void ScaleGraph::Free::operator()(zimg_filter_graph* graph) const {
    zimg_filter_graph_free(graph);
}

ScaleGraph::ScaleGraph(const ScaleAxis& horizontal, const ScaleAxis& vertical)
    : mGraph(buildGraph(horizontal, vertical)) {
    if (!mGraph || zimg_filter_graph_get_tmp_size(mGraph.get(), &mScratchSize) != ZIMG_ERROR_SUCCESS) {
        throw std::runtime_error("the resampler refuses these sizes");
    }
}

// Two threads that find none both make one, and both may be kept: they are the same.
std::shared_ptr<const ScaleGraph> ScaleGraph::forAxes(const ScaleAxis& horizontal, const ScaleAxis& vertical) {
    auto graph = recentGraphs().find(horizontal, vertical);
    if (graph) return graph;
    graph = std::make_shared<const ScaleGraph>(horizontal, vertical);
    if (isWorthKeeping(horizontal) && isWorthKeeping(vertical)) recentGraphs().add(horizontal, vertical, graph);
    return graph;
}

void ScaleGraph::process(const Plane& source, Plane& result) const {
    // A plane of one column has rows of 64 bytes, which makes it the aligned scratch memory that is asked for.
    Plane scratch({1, static_cast<int>(mScratchSize / 64 + 1)});
    const zimg_image_buffer_const from{ZIMG_API_VERSION, {{source.row(0), source.stride(), ZIMG_BUFFER_MAX}}};
    const zimg_image_buffer into{ZIMG_API_VERSION, {{result.row(0), result.stride(), ZIMG_BUFFER_MAX}}};
    if (zimg_filter_graph_process(mGraph.get(), &from, &into, scratch.row(0), nullptr, nullptr, nullptr, nullptr) !=
        ZIMG_ERROR_SUCCESS) {
        throw std::runtime_error("the resampler failed");
    }
}

}  // namespace qv::imaging
