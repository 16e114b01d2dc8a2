#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// One card of a batch: the photographs of its sides.
struct BatchCard {
    std::filesystem::path front;
    std::optional<std::filesystem::path> back;
    /// What a person should know of the pairing; mostly empty.
    std::string remark;

    std::vector<std::string> files() const;
};

namespace CardPairs {

/// Brings the sides of cards together by the names of their files, in one folder and without regard to case and ending:
/// `x-front` and `x-back`, also with "_", "." or a blank, `x` and `x-back`, and `x_1` and `x_2` where there is no `x_3`
/// or other number, which would be a series. Everything else is a card of one side. Of several files that would do, one
/// with the same ending comes first. The cards stand in the order of their fronts.
std::vector<BatchCard> byName(const std::vector<std::filesystem::path>& pictures);

/// Every two pictures are a card, front before back.
std::vector<BatchCard> byOrder(const std::vector<std::filesystem::path>& pictures);

}  // namespace CardPairs

}  // namespace qvhost
