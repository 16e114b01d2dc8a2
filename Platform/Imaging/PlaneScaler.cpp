#include "PlaneScaler.h"

#include <zimg.h>

#include <memory>
#include <stdexcept>

namespace qv::imaging {

namespace {

struct GraphFree {
    void operator()(zimg_filter_graph* graph) const { zimg_filter_graph_free(graph); }
};
using Graph = std::unique_ptr<zimg_filter_graph, GraphFree>;

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

Graph buildGraph(const ScaleAxis& horizontal, const ScaleAxis& vertical) {
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
    return Graph(zimg_filter_graph_build(&source, &target, &parameters));
}

}  // namespace

Plane scaledPlane(const Plane& source, const ScaleAxis& horizontal, const ScaleAxis& vertical) {
    const Graph graph = buildGraph(horizontal, vertical);
    std::size_t scratchSize = 0;
    if (!graph || zimg_filter_graph_get_tmp_size(graph.get(), &scratchSize) != ZIMG_ERROR_SUCCESS) {
        throw std::runtime_error("the resampler refuses these sizes");
    }
    Plane result({horizontal.count, vertical.count});
    // A plane of one column has rows of 64 bytes, which makes it the aligned scratch memory that is asked for.
    Plane scratch({1, static_cast<int>(scratchSize / 64 + 1)});
    zimg_image_buffer_const from{ZIMG_API_VERSION, {{source.row(0), source.stride(), ZIMG_BUFFER_MAX}}};
    zimg_image_buffer into{ZIMG_API_VERSION, {{result.row(0), result.stride(), ZIMG_BUFFER_MAX}}};
    if (zimg_filter_graph_process(graph.get(), &from, &into, scratch.row(0), nullptr, nullptr, nullptr, nullptr) !=
        ZIMG_ERROR_SUCCESS) {
        throw std::runtime_error("the resampler failed");
    }
    return result;
}

}  // namespace qv::imaging
