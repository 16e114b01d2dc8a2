#pragma once

#include "Page/PictureShelf.h"
#include "People/ContactSaver.h"
#include "QVCardScan/QVBusinessCardField.h"
#include "QVCardScan/QVCardScanTypes.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// A field of a card as the page shows it. The field itself never changes; a corrected one takes its place.
struct PileField {
    std::uint64_t identifier = 0;
    std::shared_ptr<const QVBusinessCardField> field;
    /// The picture it lies on; absent for one that a person added.
    std::optional<std::size_t> side;
    bool isCorrected = false;
};

/// What was read of one picture.
struct PileSide {
    /// Whether the recogniser was asked about it.
    bool isRead = false;
    /// The size that the fields' places are measured in; zero when it is not known.
    std::int64_t width = 0;
    std::int64_t height = 0;
    /// Degrees clockwise that the picture has to be turned to stand upright.
    std::int64_t orientation = 0;
    QVString result;
};

/// A card on the page: its pictures, how far its reading is, and what was read. Copies are cheap.
struct PileCard {
    enum class State { Waiting, Starting, Reading, Done, Failed };
    enum class Saving { Not, UnderWay, Done, Failed };

    std::string identifier;
    /// Grows with every change.
    std::uint64_t revision = 0;
    /// The front, and the back if there is one.
    std::vector<ShelvedPicture> pictures;
    /// Grows when the pictures change; what was read of others is then of no use.
    std::uint64_t attempt = 0;

    State state = State::Waiting;
    /// Why it failed and what to do.
    std::string problem;
    /// What a person should know besides.
    std::vector<std::string> remarks;
    QVString language;
    std::array<PileSide, 2> sides;
    /// The picture whose fields come first.
    std::size_t winner = 0;
    std::vector<PileField> fields;
    /// The highest identifier that a field has had; none comes twice.
    std::uint64_t lastField = 0;

    Saving saving = Saving::Not;
    SaveOutcome saved;
    /// Whether a field changed after it was saved.
    bool isChangedSinceSaving = false;
};

}  // namespace qvhost
