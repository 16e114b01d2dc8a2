#include "PlaneScaler.h"

#include "ScaleGraph.h"

namespace qv::imaging {

Plane scaledPlane(const Plane& source, const ScaleAxis& horizontal, const ScaleAxis& vertical) {
    const auto graph = ScaleGraph::forAxes(horizontal, vertical);
    Plane result({horizontal.count, vertical.count});
    graph->process(source, result);
    return result;
}

}  // namespace qv::imaging
