#pragma once

#include "QVPlatform/Bundle.h"

#include <optional>
#include <string>
#include <string_view>

namespace qvnote {

/// The folder of the library's own resources.
qv::Bundle libraryBundle();

/// The text of a template while it is being filled.
class NoteTemplate {
  public:
    /// One of the library's templates, read afresh; nothing when it cannot be read, which is logged.
    static std::optional<NoteTemplate> read(std::string_view name);

    explicit NoteTemplate(std::string text) : mText(std::move(text)) {}

    /// Fills every place that is so called now, also one that an earlier text brought in.
    void fill(std::string_view placeholder, std::string_view text);

    const std::string& text() const& { return mText; }
    std::string text() && { return std::move(mText); }

  private:
    std::string mText;
};

}  // namespace qvnote
