#pragma once

#include "Fields/Field.h"
#include "Text/TextLine.h"

#include <opencv2/core.hpp>

#include <filesystem>
#include <string>
#include <vector>

namespace qv::recognition {

/// Keeps what every stage made of a card, for whoever wants to know why a card was read as it was. Only ever used when
/// asked for: what it writes is what a card says. Without a folder every call does nothing. Belongs to one thread.
class DebugFolder {
  public:
    DebugFolder() = default;
    explicit DebugFolder(std::filesystem::path folder) : mFolder(std::move(folder)) {}

    /// Begins with another card: what follows is written under the next free number.
    void nextCard();
    void keep(const std::string& stage, const cv::Mat& picture) const;  ///< as NUMBER-STAGE.pgm or .ppm
    void keep(const std::string& stage, const std::vector<Word>& words) const;
    void keep(const std::string& stage, const std::vector<TextLine>& lines) const;
    void keep(const std::string& stage, const std::vector<Field>& fields) const;

  private:
    std::filesystem::path fileFor(const std::string& stage, const std::string& ending) const;

    std::filesystem::path mFolder;
    int mNumber = 0;
};

/// A type's name as answers spell it.
std::string_view nameOf(FieldType type);

}  // namespace qv::recognition
