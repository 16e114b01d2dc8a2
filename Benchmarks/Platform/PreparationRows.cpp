#include "Platform/PreparationRows.h"

#include "Platform/Preparation.h"
#include "Platform/PreparationFloor.h"
#include "Support/Duel.h"
#include "Support/Inputs.h"
#include "Support/Vips.h"

namespace benchmarksupport {

void addPreparationRows() {
    for (const Input& input : inputs()) {
        addRow("prepare: " + input.name, [&input] {
            const qv::Data data = readInput(input);
            return rowAgainstRival([&] { keep(prepared(data)); }, [&] { keep(vips::prepare(data)); }, "libvips",
                                   input.leastRatio);
        });
        if (input.mostFloors <= 0) continue;
        addRow("prepare: " + input.name, [&input] {
            const qv::Data data = readInput(input);
            const PreparationFloor floor(data, prepared(data));
            return rowAgainstFloor([&] { keep(prepared(data)); }, [&] { floor.run(); }, "the codec alone",
                                   input.mostFloors);
        });
    }
}

}  // namespace benchmarksupport
