#pragma once

#include "QVPlatform/Bundle.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qvnote {

/// The folder of the library's own resources.
qv::Bundle libraryBundle();

/// The text of a template while it is being filled, in pieces: each begins where a placeholder may stand, so that a
/// step looks at those places only and moves no text.
class NoteTemplate {
  public:
    /// One of the library's templates, read afresh; nothing when it cannot be read, which is logged.
    static std::optional<NoteTemplate> read(std::string_view name);

    explicit NoteTemplate(std::string text) { append(std::move(text)); }

    /// Fills every place that is so called now, also one that an earlier text brought in.
    void fill(std::string_view placeholder, std::string text);

    /// The whole.
    std::string text() const;

  private:
    void append(std::string text);

    std::vector<std::string> mPieces;
};

}  // namespace qvnote
