#include "Platform/Preparation.h"
#include "Platform/PreparationRows.h"
#include "Support/Inputs.h"
#include "Support/Photograph.h"
#include "Support/Row.h"
#include "Support/Similarity.h"
#include "Support/TestImages.h"
#include "Support/Vips.h"

namespace benchmarksupport {

namespace {

double similarityTo(const Luma& whole, const qv::Data& result) {
    const Luma luma = lumaOf(vips::decode(result));
    return structuralSimilarity(luma, resampledWithLanczos(whole, luma.width, luma.height));
}

// What ink looks like depends on a colour profile that neither side was given: there the picture that was encoded
// stands for its decoding.
Luma wholePicture(const Input& input, const qv::Data& data) {
    return lumaOf(input.printed ? input.printed() : vips::decode(data));
}

Row qualityOf(const Input& input) {
    const qv::Data data = readInput(input);
    const Luma whole = wholePicture(input, data);
    const double ours = similarityTo(whole, prepared(data));
    const double theirs = similarityTo(whole, vips::prepare(data));
    Row row;
    row.rival = "libvips";
    row.ours = ours;
    row.other = theirs;
    row.unit = "SSIM";
    row.kind = "difference";
    row.figure = ours - theirs;
    row.rule = Row::Rule::AtLeast;
    row.limit = -0.003;
    return row;
}

}  // namespace

void addPreparationQualityRows() {
    for (const Input& input : inputs())
        addRow("quality: " + input.name, [&input] { return qualityOf(input); });
}

}  // namespace benchmarksupport
