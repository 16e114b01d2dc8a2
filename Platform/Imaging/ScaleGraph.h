#pragma once

#include "PlaneScaler.h"

#include <cstddef>
#include <memory>

struct zimg_filter_graph;

namespace qv::imaging {

/// The resampler's filters for one pair of axes. Making them takes longer than resampling a small plane, so the last
/// few are kept for the process: both chroma planes of a picture have the same, and so have all pictures of one camera.
/// Immutable; any thread may use one, several at once.
class ScaleGraph {
  public:
    /// A kept one, or a new one. Throws `std::bad_alloc` or `std::runtime_error`.
    static std::shared_ptr<const ScaleGraph> forAxes(const ScaleAxis& horizontal, const ScaleAxis& vertical);

    /// Use `forAxes`.
    ScaleGraph(const ScaleAxis& horizontal, const ScaleAxis& vertical);

    /// Fills `result`, which has the axes' counts. Throws the same.
    void process(const Plane& source, Plane& result) const;

  private:
    struct Free {
        void operator()(zimg_filter_graph* graph) const;
    };
    std::unique_ptr<zimg_filter_graph, Free> mGraph;
    std::size_t mScratchSize = 0;
};

}  // namespace qv::imaging
